// Library functions beyond identification: the knowledge tables (foundry
// names, classifications, styles) and the XML and property-list
// representations. Each answers "not available" when the library it was
// built against lacks the function.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <typeprobe/typeprobe.h>

namespace tpcli {

using TextAccessor = unsigned long (*)(TP_FontArray*, unsigned long, char*, int);

// TP_GetFoundryName and TP_GetLegacyFoundryName, or null.
TextAccessor FoundryAccessor();
TextAccessor LegacyFoundryAccessor();

// TP_GetClassificationFromFamily; "--" for an unknown family.
std::optional<std::string> Classification(const std::string& family,
                                          const std::optional<std::string>& alternate);

// TP_GetStyles: the built-in styles two names express, in the scanner's order.
std::optional<std::vector<std::string>> Styles(const std::string& first,
                                               const std::string& second);

// Whether the library has the representations and the knowledge tables.
bool HasRepresentations();
bool HasKnowledgeTables();

// TP_GetXMLRepresentation and TP_GetPropertyListRepresentation, whole.
std::optional<std::string> XmlRepresentation(TP_FontArray* array);
std::optional<std::string> PropertyListRepresentation(TP_FontArray* array);

}  // namespace tpcli
