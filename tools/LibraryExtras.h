// Library calls whose results need more than one fixed buffer: the
// classification and style tables, and the XML and property-list
// representations, each delivered whole.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <typeprobe/typeprobe.h>

namespace tpcli {

// TP_GetClassificationFromFamily; "--" for an unknown family, nothing when
// the call fails.
std::optional<std::string> Classification(const std::string& family,
                                          const std::optional<std::string>& alternate);

// TP_GetStyles: the built-in styles two names express, in the scanner's order.
std::optional<std::vector<std::string>> Styles(const std::string& first,
                                               const std::string& second);

// TP_GetXMLRepresentation and TP_GetPropertyListRepresentation, whole.
std::optional<std::string> XmlRepresentation(TP_FontArray* array);
std::optional<std::string> PropertyListRepresentation(TP_FontArray* array);

// TP_ExplainRefusalsWithOptions, whole: why the library refused the file or
// parts of it when it read it with `options`.
std::string RefusalReasons(const std::string& path, unsigned long options);

}  // namespace tpcli
