// The flat layer through which the rest of the library reads resource
// files: wrappers over TypeprobeResourceFile that accept a null file (and a
// null family handle) and then answer their neutral value, and the quick
// tests by which font kinds are recognised inside a resource fork.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "resourcefork/ResourceHandle.h"
#include "resourcefork/TypeprobeResourceFile.h"
#include "support/LxString.h"

using ResourceFilePtr = std::unique_ptr<TypeprobeResourceFile>;

inline constexpr uint32_t kTypeFOND = 0x464F4E44;  // 'FOND'
inline constexpr uint32_t kTypeNFNT = 0x4E464E54;  // 'NFNT'
inline constexpr uint32_t kTypeFONT = 0x464F4E54;  // 'FONT'
inline constexpr uint32_t kTypeSfnt = 0x73666E74;  // 'sfnt'
inline constexpr uint32_t kTypePOST = 0x504F5354;  // 'POST'

// Null when the file has no resource map in either fork.
ResourceFilePtr AllocateResourceFile(const std::string& path, bool readOnly);
void FreeResourceFile(ResourceFilePtr& file);

int32_t countResType(const TypeprobeResourceFile* file, uint32_t type);
ResourceHandlePtr getHandleOfTypeAndIndex(const TypeprobeResourceFile* file, uint32_t type,
                                          int16_t index);
ResourceHandlePtr getHandleOfTypeAndResID(const TypeprobeResourceFile* file, uint32_t type,
                                          int16_t id);
std::vector<int16_t> getSortedResIDsForType(const TypeprobeResourceFile* file, uint32_t type);
std::vector<LxString> getPrinterFiles(const TypeprobeResourceFile* file);

// Distinct styles of a family, by count and by 0-based index (-1 when out
// of range).
int16_t getCountOfUniqueStyles(const TypeprobeResourceFile* file, const ResourceHandle* fond);
int16_t getStyleFromStyleIndex(const TypeprobeResourceFile* file, const ResourceHandle* fond,
                               int index);
// ID of the first association entry of the style, in table order; -1 when
// there is none.
int16_t getFirstResourceIDFromHandleAndStyle(const TypeprobeResourceFile* file,
                                             const ResourceHandle* fond, int16_t style);
// The IDs of one style, or of every style (-1), ascending.
std::vector<int16_t> getSortedResIDsForStyle(const TypeprobeResourceFile* file,
                                             const ResourceHandle* fond, int16_t style);

// Kind tests.
bool has_ttc_true_Flag(const TypeprobeResourceFile* file, const ResourceHandle* fond,
                       int16_t style);
bool has_OTTO_Flag_inResource(const TypeprobeResourceFile* file, const ResourceHandle* fond,
                              int16_t style);
bool is_psfont(const TypeprobeResourceFile* file);
bool is_psprinterfont(const TypeprobeResourceFile* file);
bool FileHasFONDsInResourceFork(const TypeprobeResourceFile* file);
bool FileHasPOSTsInResourceFork(const TypeprobeResourceFile* file);
bool hasValidResourcePSHeader(const TypeprobeResourceFile* file);
