// Free utilities on "/"-separated UTF-8 paths. Several scans deliberately
// never look at byte 0, so a leading "." or "/" is never taken for a
// separator or an extension.
#pragma once

#include "support/LxString.h"

// The text after the last "." of the last component, without the dot;
// empty when there is none. ".profile" has no extension.
LxString GetFileExtension(const LxString& path);
// Replaces the extension by `ext` (with or without its dot); an empty `ext`
// only removes it. A one-byte path throws std::out_of_range.
void SetFileExtension(LxString* path, const LxString& ext);
// The text after the last "/" at index 1 or later; false (`name` untouched)
// when there is none.
bool ExtractFileNamePart(const LxString& path, LxString* name);
LxString GetFileNamePart(const LxString& path);
// The text after the last "/" (a trailing "/" passed over, the "/" at index 0
// not counted) replaced by `newName`; without such a "/" nothing changes.
LxString ReplaceLastPathComponent(const LxString& path, const LxString& newName);
void ReplaceFileNamePart(LxString* path, const LxString& newName);
// `folder` ends in "/", is shorter than `file` and begins it, ignoring case.
bool FileIsDescendantOfFolder(const LxString& file, const LxString& folder);
// Creates every folder before each "/" or "\" of `path` that is missing; the
// part after the last delimiter is not created. 0 or the first failure.
int MakeFullPath(const LxString& path);

// True when `folder` can be listed and holds nothing; with `ignoreDotFiles`
// names beginning with "." do not count. False for a folder that cannot be
// listed.
bool FolderIsEmpty(const LxString& folder, bool ignoreDotFiles);
// Removes `folder` when it is truly empty; true when it was removed.
bool DeleteIfEmpty(const LxString& folder);
// Removes the folders above `path` while they are empty, stopping at `stopAt`
// (never removed) and at anything outside it; an empty `stopAt` removes
// nothing. Returns the number of folders removed.
int DeleteEmptyParentFolders(const LxString& path, const LxString& stopAt);
