// The single object through which the library reads a Macintosh resource
// file: a font family file (FFIL), a PostScript printer font (LWFN) or a
// data-fork resource file (.dfont). The map is read once, when the object
// is made, from the resource fork of the logical Mac file (see MacForks for
// where that is found on a disk without forks), else from its data fork.
// Queries look only in this file. Every resource handed out is a copy that
// the requester owns.
//
// The editing operations change the map in memory and write a complete
// resource file back into the container the map came from (an attribute, a
// sidecar, AppleSingle, MacBinary or the data fork) on updateResFile() or
// when the object is destroyed. Identification never calls them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "resourcefork/ResourceHandle.h"
#include "resourcefork/ResourceMap.h"
#include "support/LxString.h"
#include "containers/MacForks.h"

class TypeprobeResourceFile {
public:
    // Opens the resource map of the file at `path`; null when neither fork
    // holds a valid one.
    static std::unique_ptr<TypeprobeResourceFile> initWithFile(const std::string& path,
                                                               bool readOnly);
    ~TypeprobeResourceFile();

    TypeprobeResourceFile(const TypeprobeResourceFile&) = delete;
    TypeprobeResourceFile& operator=(const TypeprobeResourceFile&) = delete;

    LxString file() const { return LxString(_kzFile); }
    bool isDataFork() const { return _kzIsDataFork; }
    bool isReadOnly() const { return _kzReadOnly; }
    // Where the forks were found.
    const MacFile& macFile() const { return macFile_; }

    int32_t countResType(uint32_t type) const;
    int32_t count1ResTypes() const;
    // The distinct IDs of a type, ascending as signed numbers.
    std::vector<int16_t> getSortedResIDsForType(uint32_t type) const;
    ResourceHandlePtr getResourceHandleForType(uint32_t type, int16_t resID) const;
    // Writes the type at a 1-based index through `type`, or 0 when there is
    // none; a null pointer is ignored.
    void getResourceTypeViaGet1IndType(uint32_t* type, int16_t resIndex) const;
    // The resource at a 1-based index within its type, in map order.
    ResourceHandlePtr getResourceHandleViaGet1IndResource(uint32_t type, int16_t resIndex) const;

    // ID, type and name of a resource; false for a null handle.
    static bool GetResInfo(const ResourceHandle* handle, int16_t* id, uint32_t* type,
                           std::string* name);

    // Editing. Each returns false on a read-only file.
    bool purgeResource(uint32_t type, int16_t resID);
    // Removes every resource of the type whose ID is not listed; of
    // several resources with one listed ID only the first is kept.
    // Returns whether something was removed.
    bool purgeAllBut(const std::vector<int16_t>& keepIDs, uint32_t type);
    // Stores a handle's (changed) data back into its resource.
    bool changedResource(const ResourceHandle& handle);
    // Renames a resource and changes its ID.
    bool setResInfo(const ResourceHandle& handle, int16_t id, const std::string& name);
    // Writes pending edits into the container; true when nothing is pending.
    bool updateResFile();

    // Font family records (FOND handles). A null or short FOND gives the
    // neutral answer: false, -1, an empty list or an empty string (true for
    // shouldHavePrinterFile).
    bool styleExists(int16_t style, const ResourceHandle* fond) const;
    std::vector<int16_t> getSortedStylesForFOND(const ResourceHandle* fond) const;
    // The distinct styles over every FOND of the file.
    std::vector<int16_t> getSortedStyles() const;
    int16_t getResIDForFOND(const ResourceHandle* fond, int index) const;
    // IDs of every entry (bitmap or outline) with this style, ascending.
    std::vector<int16_t> getSortedNFNTsForFOND(const ResourceHandle* fond, int16_t style) const;
    // False when the style has an outline entry (size 0) in the FOND.
    bool shouldHavePrinterFile(const ResourceHandle* fond, int16_t style) const;
    // The family name: the FOND's resource name, decoded as Mac Roman or,
    // for Japanese double-byte families, Mac Japanese.
    LxString getResourceNameFromFOND(const ResourceHandle* fond) const;
    bool isDoubleByteFOND(const ResourceHandle* fond) const;
    uint32_t getStyleOffsetFromFOND(const ResourceHandle* fond) const;
    LxString getPostScriptNameForFOND(const ResourceHandle* fond, int16_t style) const;
    // The printer font's file name (5+3+3 rule).
    LxString getPSPrinterNameForFOND(const ResourceHandle* fond, int16_t style) const;
    // Paths beside this file where printer fonts of its styles are expected
    // (not checked for existence).
    std::vector<LxString> getPrinterFiles() const;
    // Repairs the name of a multiple-master instance; sets *isMM when the
    // name marks one.
    LxString normalizePostScriptName(const LxString& name, const ResourceHandle* fond,
                                     bool* isMM) const;

    // FOND editing (the handle is changed and stored back).
    void promoteFOND(ResourceHandle* fond, int16_t style);
    void purgeFromFOND(ResourceHandle* fond, const std::vector<int16_t>& styles, bool deleteFONTs);
    void purgeAllBut(int16_t style, ResourceHandle* fond);

    // The folder of the file, without a trailing "/".
    std::string folder() const;

private:
    TypeprobeResourceFile(std::string path, bool readOnly);
    bool openFileForResourceAccess();
    bool openMap(const ForkLocation& fork);
    ResourceHandlePtr makeHandle(const ResourceRecord* record) const;
    bool editable() const { return !_kzReadOnly; }
    bool resourceExists(uint32_t type, int16_t id) const;
    // Removes the association entries whose style `remove` picks, last to
    // first, calling `removed` with each one's ID; then fixes the count and
    // table offsets and stores the FOND back.
    void compactFOND(ResourceHandle& fond, const std::function<bool(int16_t style)>& remove,
                     const std::function<void(int16_t id)>& removed);

    std::string _kzFile;
    bool _kzReadOnly = true;
    bool _kzIsDataFork = false;
    MacFile macFile_;
    ResourceMap map_;
    bool changed_ = false;
};
