/*
 * Typeprobe: font file identification.
 *
 * A caller hands the library the path of a font file and receives an opaque
 * array of font specifiers, one per face, whose attributes it reads by face
 * index. Every function returns one of the result codes below; text leaves
 * through a caller buffer by the copy-out rule: nothing is written when the
 * length is below 1, otherwise at most length - 1 bytes and a terminating
 * zero, truncating silently.
 *
 * Plain C; safe to include from C and C++.
 */
#ifndef TYPEPROBE_TYPEPROBE_H
#define TYPEPROBE_TYPEPROBE_H

#ifdef __cplusplus
extern "C" {
#endif

#if defined(__GNUC__)
#define TP_API __attribute__((visibility("default")))
#else
#define TP_API
#endif

/* Opaque array of the faces identified in one file. Owned by the caller
 * until TP_SpecifierFree. */
typedef struct TP_FontArray TP_FontArray;

/* Result codes. */
enum {
    kTP_Success = 0,
    /* a required pointer is null, or nothing was found */
    kTP_NullArgumentOrNotFound = 1,
    /* a face index is out of range; also the fixed result of TP_RunUnitTests */
    kTP_IndexOutOfRange = 4,
    /* the attribute was not requested when the face was made */
    kTP_AttributeNotRequested = 5
};

/* Attribute bits: the creation mask, each face's valid attributes and the
 * result masks of TP_Match. 0x40 to 0x800 are not defined. */
enum {
    kTP_AttrPostScriptName = 0x1,
    kTP_AttrKindName = 0x2,
    kTP_AttrFoundryName = 0x4,
    kTP_AttrVersion = 0x8,
    kTP_AttrKerningChecksum = 0x10,
    kTP_AttrOutlineFileSize = 0x20,
    kTP_AttrFamilyName = 0x1000,
    kTP_AttrPrinterFontName = 0x2000,
    kTP_AttrTypeprobeChecksum = 0x4000,
    kTP_AttrDisplayName = 0x8000,
    kTP_AttrFullName = 0x10000,
    kTP_AttrLegacyTypeprobeChecksum = 0x20000,
    kTP_AttrPlatform = 0x40000,
    kTP_AttrWindowsMMFile = 0x80000
};

/* Every defined attribute bit. */
#define kTP_AllAttributes 0xFF03FUL

/* Identifies every face of the font file at `path` (UTF-8), computing the
 * attributes of `attributeMask` (kTP_Attr bits; kTP_AllAttributes for all).
 * On success (0) *result receives a new array that the caller releases with
 * TP_SpecifierFree. 1 when an argument is null or no face could be
 * identified; *result is then left untouched. `reserved` is not used. */
TP_API unsigned long TP_CreateSpecifier(const char* path, unsigned long reserved,
                                        unsigned long attributeMask, TP_FontArray** result);

/* Options of TP_CreateSpecifierWithOptions. */
enum {
    /* Recognise every font format by the file's first bytes, the name only a
     * hint: PostScript Type 1 in a data fork (PFB, PFA, CID-keyed, Multiple
     * Master), collections and sfnt fonts of any name; a font without a
     * usable naming table is kept with its names empty. Metrics files (AFM,
     * PFM) give no face. */
    kTP_AllFormats = 0x1
};

/* TP_CreateSpecifier with options (kTP_ options). With options 0 it returns
 * exactly what TP_CreateSpecifier returns. */
TP_API unsigned long TP_CreateSpecifierWithOptions(const char* path, unsigned long options,
                                                   unsigned long attributeMask,
                                                   TP_FontArray** result);

/* Why TP_CreateSpecifier finds no face, or fewer faces than the file holds,
 * in the file at `path`: identifies it again, noting where each reader
 * refused what it read ("collection: offset entry 3 points past the end
 * ..."), and copies the reasons, "; " between them, by the copy-out rule (see
 * the accessors). The text is empty when nothing was refused. Returns 1 when
 * `path` or `buffer` is null, else 0. Only this call listens for reasons:
 * TP_CreateSpecifier pays nothing for them. */
TP_API unsigned long TP_ExplainRefusals(const char* path, char* buffer, int bufferLength);

/* TP_ExplainRefusals for an identification made with `options`, as by
 * TP_CreateSpecifierWithOptions. */
TP_API unsigned long TP_ExplainRefusalsWithOptions(const char* path, unsigned long options,
                                                   char* buffer, int bufferLength);

/* ---- Splitting a TrueType collection ---- */

/* Writes each face of the TrueType collection at `collectionPath` as a
 * standalone TrueType file in the existing folder `directory`, named by face
 * number: "0.ttf", "1.ttf", ... (a name already taken moves on to the next
 * number). The paths written, each followed by a newline, are copied into
 * `buffer`: on entry *length holds its capacity, on return the size the
 * whole list needs with its terminating zero (the list is truncated when
 * that exceeds the capacity). *count receives the number of files written.
 * Returns 0 when every face was written; 1 when a pointer is null or
 * nothing was written because the file is not a readable collection;
 * otherwise the code of the last face that failed: 1 a face that cannot
 * stand alone, 4 a file that cannot be written, 5 a face outside the file. */
TP_API unsigned long TP_SeparateTTCFonts(const char* collectionPath, const char* directory,
                                         char* buffer, unsigned long* length,
                                         unsigned long* count);

/* Stores the library's version (1.2) when both pointers are non-null. */
TP_API void TP_GetTypeprobeVersion(unsigned long* major, unsigned long* minor);

/* Number of faces in the array. */
TP_API unsigned long TP_GetFontCount(TP_FontArray* array, unsigned long* count);

/* Index of the first face with this font family resource number and style.
 * Stores 0 in index first; 1 when nothing matches. */
TP_API unsigned long TP_GetFontIndexForFONDResourceID(TP_FontArray* array, short fondResourceID,
                                                      short style, unsigned long* index);

/* Compares face A with face B: the attributes both have that are equal (case
 * blind for names) and those that both have and differ (byte exact). Zeroes
 * both outputs first; 4 for an index out of range. */
TP_API unsigned long TP_Match(TP_FontArray* arrayA, unsigned long indexA, TP_FontArray* arrayB,
                              unsigned long indexB, unsigned long* matching,
                              unsigned long* differing);

/* Per-face accessors. Each returns 1 when the handle or the output is null
 * and 5 when the face was made without the attribute's bit; text leaves by
 * the copy-out rule. The index is not checked: pass one below the count that
 * TP_GetFontCount reports. An index at or past that count raises a C++
 * exception (std::out_of_range) out of the accessor: from C, where nothing
 * can catch it, the program ends. TP_Match and TP_GetWindowsMMFile check
 * the index and return a result code instead. */
TP_API unsigned long TP_GetKindName(TP_FontArray* array, unsigned long index, char* buffer,
                                    int bufferLength);
TP_API unsigned long TP_GetFamilyName(TP_FontArray* array, unsigned long index, char* buffer,
                                      int bufferLength);
TP_API unsigned long TP_GetPostScriptName(TP_FontArray* array, unsigned long index, char* buffer,
                                          int bufferLength);
TP_API unsigned long TP_GetFullName(TP_FontArray* array, unsigned long index, char* buffer,
                                    int bufferLength);
/* The menu name. */
TP_API unsigned long TP_GetDisplayName(TP_FontArray* array, unsigned long index, char* buffer,
                                       int bufferLength);
/* Path of the outline font file of a bitmap or resource-fork face; empty
 * when the face is itself the outline. */
TP_API unsigned long TP_GetPrinterFont(TP_FontArray* array, unsigned long index, char* buffer,
                                       int bufferLength);
/* "mac" or "crossplatform". */
TP_API unsigned long TP_GetPlatform(TP_FontArray* array, unsigned long index, char* buffer,
                                    int bufferLength);
TP_API unsigned long TP_GetKerningChecksum(TP_FontArray* array, unsigned long index,
                                           unsigned long* value);
/* The identity checksum, independent of the file's name and location. */
TP_API unsigned long TP_GetTypeprobeChecksum(TP_FontArray* array, unsigned long index,
                                             unsigned long* value);
/* The older identity checksum. */
TP_API unsigned long TP_GetLegacyTypeprobeChecksum(TP_FontArray* array, unsigned long index,
                                                   unsigned long* value);
/* Size in bytes of the outline file (the printer font file if there is one,
 * else the font file itself). */
TP_API unsigned long TP_GetOutlineFileSize(TP_FontArray* array, unsigned long index,
                                           unsigned long* value);
/* The foundry, resolved through the foundry table to a canonical name ("--"
 * when unknown). Faces of the "mac" platform take the legacy resolution. */
TP_API unsigned long TP_GetFoundryName(TP_FontArray* array, unsigned long index, char* buffer,
                                       int bufferLength);
/* The foundry resolved through the file's Mac creator codes first, then the
 * font's own foundry text. */
TP_API unsigned long TP_GetLegacyFoundryName(TP_FontArray* array, unsigned long index,
                                             char* buffer, int bufferLength);
/* The version text from its first digit up to the first character that is
 * neither a digit, "-" nor "." ("Version 1.002;PS 001.002" gives "1.002"). */
TP_API unsigned long TP_GetVersion(TP_FontArray* array, unsigned long index, char* buffer,
                                   int bufferLength);
/* The Windows multiple-master file (".mmm") that belongs to a ".pfb" printer
 * font. Checks the index; 5 without kTP_AttrWindowsMMFile, 1 without
 * kTP_AttrPrinterFontName or when the printer font is not a ".pfb" name. */
TP_API unsigned long TP_GetWindowsMMFile(TP_FontArray* array, unsigned long index, char* buffer,
                                         int bufferLength);

/* What held the face in its file: "sfnt", "collection", "PFB", "PFA",
 * "WOFF", "WOFF2", "dfont" or "resource fork". Every face has one, whatever
 * the attribute mask; the XML and property-list forms do not carry it.
 * Checks the index. */
TP_API unsigned long TP_GetWrapper(TP_FontArray* array, unsigned long index, char* buffer,
                                   int bufferLength);
/* The Mac container the face's bytes came through: "" for an ordinary file,
 * else "MacBinary", "AppleSingle", "AppleDouble sidecar", "extended
 * attributes" or "native resource fork". As TP_GetWrapper. */
TP_API unsigned long TP_GetContainer(TP_FontArray* array, unsigned long index, char* buffer,
                                     int bufferLength);

/* The PostScript name from the naming table of sfnt data in memory. Does
 * nothing when any pointer is null, and leaves the buffer untouched when the
 * font has no such name. */
TP_API void TP_GetPostScriptNameFromNamesTable(const char* fontData, unsigned long length,
                                               void* resourceFile, char** fondHandle, int style,
                                               char* buffer, int bufferLength);

/* Releases the array and all its faces. */
TP_API unsigned long TP_SpecifierFree(TP_FontArray* array);

/* Runs no tests in this library: always returns 4. */
TP_API unsigned long TP_RunUnitTests(void);

/* ---- Knowledge tables (no font array needed) ---- */

/* Typographic classification of a family, looked up by the whole family
 * name ignoring case; "--" when the family is unknown, in which case a
 * non-null alternateFamily is looked up instead. An empty text when the
 * classification table is missing. 1 when family or buffer is null. */
TP_API unsigned long TP_GetClassificationFromFamily(const char* family, const char* alternateFamily,
                                                    char* buffer, int bufferLength);

/* The built-in styles (weights, widths, slopes, variants) that two names of
 * a face express, typically its PostScript name and its full name. Stores
 * the number delivered (at most maxStyles) in styleCount and copies the
 * i-th style name into styleBuffers[i] (null entries are skipped), each a
 * buffer of bufferLength bytes. When no style is found, returns 0 and
 * leaves styleCount and the buffers alone. 1 when a pointer, or
 * styleBuffers[0], is null. */
TP_API unsigned long TP_GetStyles(const char* firstName, const char* secondName,
                                  unsigned long maxStyles, int bufferLength,
                                  unsigned long* styleCount, char** styleBuffers);

/* ---- Stored forms: XML and property list ---- */

/* An array can be stored as an XML document or as an XML property list and
 * rebuilt from either. Each face carries its kind, PostScript
 * name, foundry (as TP_GetFoundryName resolves it), family, version (as
 * TP_GetVersion cleans it), Typeprobe checksum, kerning checksum, outline
 * file size and outline file name. Checksums are written in hexadecimal and
 * read back as signed 32-bit numbers, so one with its top bit set comes back
 * as 0x7FFFFFFF. A rebuilt face has no full or display name, platform,
 * legacy checksum, resource numbers or file codes. */

/* On entry *length holds the buffer's capacity, on return the document's
 * length plus one. 1 when a pointer is null (nothing written); 4 when the
 * document is not shorter than the capacity (it is truncated by the
 * copy-out rule; nothing is written for a capacity that is below 1 taken as
 * signed); otherwise 0, or 1 for an array without faces, whose document is
 * still delivered. The XML form is not escaped: values go in byte for byte. */
TP_API unsigned long TP_GetXMLRepresentation(TP_FontArray* array, char* buffer,
                                             unsigned long* length);
TP_API unsigned long TP_GetPropertyListRepresentation(TP_FontArray* array, char* buffer,
                                                      unsigned long* length);

/* Rebuilds an array from XML text: each "<FontData>" block becomes a face.
 * 1 when a pointer is null, 4 when no block is complete; on 0 *result
 * receives a new array to release with TP_SpecifierFree. */
TP_API unsigned long TP_CreateSpecifierFromXML(const char* xml, TP_FontArray** result);

/* Rebuilds an array from an XML property list (zero-terminated text) whose
 * top level is an array of dictionaries. 1 on any failure: a null pointer,
 * text that is not an XML property list (a binary one included), a top
 * level that is not an array, no face. */
TP_API unsigned long TP_CreateSpecifierFromPropertyList(const char* plist,
                                                        TP_FontArray** result);

/* The keys of a face's dictionary in the property-list form. Every face
 * has all of them, with string values; Keywords and Path are always empty. */
extern TP_API const char* const kTP_KindKey;            /* "FontKind" */
extern TP_API const char* const kTP_PostScriptNameKey;  /* "PostScriptName" */
extern TP_API const char* const kTP_FoundryKey;         /* "Foundry" */
extern TP_API const char* const kTP_FamilyKey;          /* "Family" */
extern TP_API const char* const kTP_VersionKey;         /* "Version" */
extern TP_API const char* const kTP_KerningChecksumKey; /* "KerningChecksum" */
extern TP_API const char* const kTP_ChecksumKey;        /* "Checksum" */
extern TP_API const char* const kTP_OutlineFileSizeKey; /* "OutlineFileSize" */
extern TP_API const char* const kTP_OutlineFileNameKey; /* "OutlineFileName" */
extern TP_API const char* const kTP_KeywordsKey;        /* "Keywords" */
extern TP_API const char* const kTP_PathKey;            /* "Path" */

#ifdef __cplusplus
}
#endif

#endif /* TYPEPROBE_TYPEPROBE_H */
