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
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "resourcefork/ResourceHandle.h"
#include "resourcefork/ResourceMap.h"
#include "support/LxString.h"
#include "support/MacForks.h"

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

private:
    TypeprobeResourceFile(std::string path, bool readOnly);
    bool openFileForResourceAccess();
    bool openMap(const ForkLocation& fork);
    ResourceHandlePtr makeHandle(const ResourceRecord* record) const;
    bool editable() const { return !_kzReadOnly; }

    std::string _kzFile;
    bool _kzReadOnly = true;
    bool _kzIsDataFork = false;
    MacFile macFile_;
    ResourceMap map_;
    bool changed_ = false;
};
