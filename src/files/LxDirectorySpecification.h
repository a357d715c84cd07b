// A folder named by a UTF-8 path, which may or may not end in "/".
#pragma once

#include <optional>

#include "support/LxString.h"
#include "files/PlatformFileRefs.h"

class LxFileSpecification;

class LxDirectorySpecification {
public:
    LxDirectorySpecification();
    LxDirectorySpecification(const LxString& path);
    LxDirectorySpecification(const FSRef& ref);
    LxDirectorySpecification(const FSSpec& fsSpec);
    // `name` inside `parent`.
    LxDirectorySpecification(const LxDirectorySpecification& parent, const LxString& name);
    LxDirectorySpecification(const LxDirectorySpecification& other);
    LxDirectorySpecification& operator=(const LxDirectorySpecification& other);
    virtual ~LxDirectorySpecification();

    // Only the POSIX style can be made into a path here; another style or an
    // empty path returns -4960 and leaves the object unchanged.
    int Set(const PlatformString& path, long pathStyle);
    int Set(LxString& path, long pathStyle);

    void GetFullPath(LxString& out) const { out = path_; }
    void GetFullPathUTF8(LxString* out) const;
    operator LxString() const { return path_; }

    // The last component (a trailing "/" ignored); throws
    // LXFileSystemException (-37) when there is none.
    void GetName(LxString& out) const;
    LxDirectorySpecification GetParentDirectory() const;
    LxDirectorySpecification& operator+=(const LxString& component);

    // Paths compared ignoring case, like files.
    bool operator==(const LxDirectorySpecification& other) const;
    bool operator!=(const LxDirectorySpecification& other) const { return !(*this == other); }

    std::optional<LxString> CopyURL() const;
    std::optional<PlatformString> CopyPath(long pathStyle) const;

    // 0 when something exists at the path (the reference is cached), else -43.
    int MacGetFSRef(FSRef& ref) const;
    int MacGetFSSpec(FSSpec& out) const;

    // Appends "/" to the file's path when it does not end in one.
    static void AddDelimiter(LxFileSpecification& file);

private:
    void clearCaches() const;

    LxString path_;
    mutable FSSpec fsSpec_;
    mutable bool fsSpecValid_ = false;
    mutable FSRef fsRef_;
    mutable bool fsRefValid_ = false;
};
