// A directory lister in the manner of the Windows file finder: FindFile()
// lists a folder and steps onto its first entry, FindNextFile() moves on.
// "." and ".." are listed too; entries come in byte order of their names.
#pragma once

#include <dirent.h>

#include <string>
#include <vector>

#include "support/LxString.h"

class LxFileFind {
public:
    LxFileFind();
    LxFileFind(const LxFileFind&) = delete;
    LxFileFind& operator=(const LxFileFind&) = delete;
    virtual ~LxFileFind();

    // Lists the folder of `pattern` (the pattern without its last component;
    // a relative one is taken from the current directory). The name part
    // does not filter. False when the folder cannot be opened.
    virtual bool FindFile(const LxString& pattern);
    virtual bool FindNextFile();

    virtual LxString GetFileName() const;
    virtual LxString GetFilePath() const;
    // The name without its extension.
    virtual LxString GetFileTitle() const;
    virtual LxString GetFileURL() const;
    // The listed folder, ending in "/".
    virtual LxString GetRoot() const;
    // The entry's size in bytes; 0 when it cannot be read.
    virtual unsigned long GetLength() const;

    // stat succeeds and the mode has the directory bit (0x4000).
    virtual bool IsDirectory() const;
    // Any directory whose name begins with "." (not only "." and ".."),
    // which is intended.
    virtual bool IsDots() const;

    // Attributes this platform does not keep: always false, times 0.
    virtual bool IsReadOnly() const { return false; }
    virtual bool IsHidden() const { return false; }
    virtual bool IsSystem() const { return false; }
    virtual bool IsTemporary() const { return false; }
    virtual bool IsNormal() const { return false; }
    virtual bool IsArchived() const { return false; }
    virtual bool IsCompressed() const { return false; }
    virtual bool MatchesMask(unsigned long) const { return false; }
    virtual bool GetLastWriteTime(long* time) const;
    virtual bool GetLastAccessTime(long* time) const;
    virtual bool GetCreationTime(long* time) const;

    virtual void Close();
    void CloseContext() { Close(); }

    const LxString& GetPattern() const { return pattern_; }
    // The last component of the pattern, kept for callers; never applied.
    const LxString& GetNamePart() const { return namePart_; }

private:
    bool hasEntry() const { return current_ < entries_.size(); }
    static bool noTime(long* time);

    LxString pattern_;
    LxString namePart_;
    std::string root_;
    DIR* dir_ = nullptr;
    std::vector<std::string> entries_;
    size_t current_ = 0;
};
