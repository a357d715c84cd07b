// A file named by a UTF-8 path. Building one reads the file's Finder type and
// creator; until they are known they are 'TEXT' / 'ttxt'. Platform references
// are resolved lazily and cached until the path changes.
#pragma once

#include <optional>

#include "support/LxString.h"
#include "files/PlatformFileRefs.h"

class LxDirectorySpecification;

class LxFileSpecification {
public:
    LxFileSpecification();
    LxFileSpecification(const LxString& path);
    // `name` inside `folder`; a "/" is put between them when missing.
    LxFileSpecification(const char* folder, const char* name);
    LxFileSpecification(const LxDirectorySpecification& folder, const LxString& name);
    // A path in the given style (see Set).
    LxFileSpecification(const PlatformString& path, long pathStyle);
    LxFileSpecification(const FSRef& ref);
    LxFileSpecification(const FSSpec& fsSpec);
    LxFileSpecification(const LxFileSpecification& other);
    LxFileSpecification& operator=(const LxFileSpecification& other);
    virtual ~LxFileSpecification();

    void SetInvalid();
    void Set(const LxString& path);
    // Only the POSIX style can be made into a path here: another style, or an
    // empty path, leaves the object invalid and returns -4960.
    int Set(LxString& path, long pathStyle, unsigned char isDirectory);

    void GetFullPath(LxString& out) const { out = path_; }
    void GetFullPathUTF8(LxString* out) const;
    operator LxString() const { return path_; }

    // Paths compared ignoring case, intended for case-insensitive disks.
    bool operator==(const LxFileSpecification& other) const;
    bool operator!=(const LxFileSpecification& other) const { return !(*this == other); }

    // The last path component; throws LXFileSystemException (-37) when none.
    void GetName(LxString& out) const;
    // 0 and -43 pass; any other code throws LXFileSystemException.
    void FailOnError(short code) const;
    // An absolute name replaces the path; a relative one goes inside the path
    // when it names a directory and replaces its last component otherwise.
    LxFileSpecification& operator=(const LxString& name);

    LxDirectorySpecification GetParentDirectory() const;
    // Copies into caller buffers, cut silently to fit (zero-terminated).
    // 0, or -50 for a missing buffer, or -37 when there is no name.
    int GetLocationUTF8(unsigned char* buffer, unsigned long size) const;
    int GetFullPathUTF8(unsigned char* buffer, unsigned long size) const;
    int GetNameUTF8(void* buffer, unsigned long size) const;
    int GetNameUnicode(HFSUniStr255* name) const;

    // A "file://" URL; nothing for an empty path.
    std::optional<LxString> CopyURL() const;
    // Nothing when there is no name.
    std::optional<PlatformString> CopyName() const;
    // Nothing for an empty path or a style other than POSIX.
    std::optional<PlatformString> CopyPath(long pathStyle) const;

    // 0 when the logical file exists (the reference is cached), else -43.
    int MacGetFSRef(FSRef& ref) const;
    int MacGetFSSpec(FSSpec& out) const;
    // The stored codes; no file access.
    void MacGetTypeAndCreator(unsigned long& type, unsigned long& creator) const;
    void MacSetTypeAndCreator(unsigned long type, unsigned long creator);
    bool IsTypeAndCreatorUnknown() const { return typeAndCreatorUnknown_; }

    void ClearCachedFSSpec() const { fsSpecValid_ = false; }
    void ClearCachedFSRef() const { fsRefValid_ = false; }

private:
    void Internal_SetTypeAndCreatorFromFile();

    LxString path_;
    mutable FSSpec fsSpec_;
    mutable bool fsSpecValid_ = false;
    mutable FSRef fsRef_;
    mutable bool fsRefValid_ = false;
    bool typeAndCreatorUnknown_ = true;
    uint32_t fileType_ = 0;
    uint32_t fileCreator_ = 0;
};
