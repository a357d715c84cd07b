// Whole-file reading and writing through plain C files. Results are codes:
// 0 for success, -1 for failure.
#pragma once

#include <cstdio>

#include "support/LxString.h"

class LxStreams {
public:
    static FILE* fopen(const LxString& path, const LxString& mode);
    // Stores the size in *size, then hands back a malloc'd, zero-filled
    // buffer of size + 1 bytes holding the file (the caller frees it). On a
    // failed read the buffer is freed and *buffer is null. Folders and
    // streams that cannot seek are failures.
    static int ReadWholeFile(const LxString& path, void** buffer, unsigned long* size);
    // The bytes up to the first zero byte become the text; nothing is decoded.
    static int ReadWholeUTF8File(const LxString& path, LxString* text);
    // Replaces any file at the path with the text's bytes.
    static int WriteWholeUTF8File(const LxString& path, const LxString& text);
};
