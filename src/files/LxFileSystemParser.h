// Parsing of "/"-separated paths, the Mac bundle test, and the standard
// folders. Standard folders map onto the user's home and XDG folders here and
// are returned ending in "/".
#pragma once

#include <string>

#include "support/LxString.h"

class LxDirectorySpecification;

class LxFileSystemParser {
public:
    static constexpr char kPathDelimiter = '/';
    static constexpr const char* kPathDelimiterString = "/";
    static constexpr char kExtensionDelimiter = '.';
    static constexpr const char* kExtensionDelimiterString = ".";
    static constexpr char kIllegalFilenameChars[] = "\"/\\[]:;=,\r\n\t()<>&|";
    static constexpr char kUnderscore = '_';

    // Folder domains and types of MacGetStandardFolder.
    enum : short { kSystemDomain = -32766, kLocalDomain = -32765, kUserDomain = -32763 };
    enum : unsigned long {
        kTemporaryFolderType = 0x74656D70,           // 'temp'
        kPreferencesFolderType = 0x70726566,         // 'pref'
        kApplicationSupportFolderType = 0x61737570,  // 'asup'
        kDocumentsFolderType = 0x646F6373,           // 'docs'
        kDesktopFolderType = 0x6465736B,             // 'desk'
    };

    // Each illegal byte, and a "." in the first position (which would hide
    // the file), becomes "_". Returns 0, also for null.
    static int ReplaceIllegalFilenameChars(LxString* name);
    // The first "." of the last component, so "a/b.tar.gz" reports the dot of
    // ".tar"; that choice is intended.
    static bool HasExtension(const LxString& path, unsigned long& dotPosition);
    // The byte after the last "/", or `path` itself; null stays null.
    static char* FindFileName(char* path);
    static bool IsPathAMacBundle(LxString& path, long& error);
    static bool IsPathOnBootVolume(LxString& path, long& error);

    static bool PathExists(const LxString& path);
    // `path` with its extension (the last "." of the last component, not its
    // first byte) replaced by `ext`; an empty `ext` only removes it.
    static void ChangeExtension(const LxString& path, const LxString& ext, LxString& out);
    // "/a/b" gives "/a", "/a" gives "/", "a" gives "", trailing "/" ignored.
    static LxString GetPathDeletingLastPathComponent(const LxString& path);
    // The last component, a trailing "/" ignored; false when there is none.
    static bool GetFileName(const LxString& path, LxString& name);
    static bool EndsWithDelimiter(const std::string& path);

    // Standard folders. The by-value forms give empty text on failure; the
    // others return 0 or a platform error number. `create` makes a missing
    // folder.
    static LxString GetTempDirectory(bool create = false);
    static int GetTempDirectory(LxString& out, bool create = false);
    // The folder of the running program.
    static LxString GetApplicationDirectory(bool create = false);
    static int GetApplicationDirectory(LxString& out, bool create = false);
    // The process's current directory.
    static LxString GetWorkingDirectory(bool create = false);
    static int GetWorkingDirectory(LxString& out, bool create = false);
    static LxString CreateWorkingDirectoryURL(bool create = false);
    static int CreateWorkingDirectoryURL(LxString& out, bool create = false);
    static LxString GetUserPreferencesDirectory(bool create = false);
    static int GetUserPreferencesDirectory(LxString& out, bool create = false);
    static LxString GetUserAppDataDirectory(bool create = false);
    static int GetUserAppDataDirectory(LxString& out, bool create = false);
    static LxString GetUserDocumentsDirectory(bool create = false);
    static int GetUserDocumentsDirectory(LxString& out, bool create = false);
    static LxString GetUserDesktopDirectory(bool create = false);
    static int GetUserDesktopDirectory(LxString& out, bool create = false);

    // 0, -43 for a folder type or domain without a counterpart here, or the
    // error of creating it.
    static int MacGetStandardFolder(short domain, unsigned long folderType, LxString& out,
                                    bool create);
    // Folders by volume and directory number do not exist here: always -43.
    static int MacGenerateDirectory(short volume, long directoryID, LxDirectorySpecification& out);
};
