// The catalog's schema, as the steps that built it: a catalog of an older
// version runs the steps it has not seen, a new one runs them all.
#include "Catalog.h"

#include <typeprobe/typeprobe.h>

namespace tpcatalog {

const std::vector<FaceColumn>& FaceColumns()
{
    static const std::vector<FaceColumn> columns = {
        {kTP_AttrPostScriptName, "postscript_name", false},
        {kTP_AttrKindName, "kind", false},
        {kTP_AttrFamilyName, "family", false},
        {kTP_AttrFullName, "full_name", false},
        {kTP_AttrDisplayName, "display_name", false},
        {kTP_AttrFoundryName, "foundry", false},
        {kTP_AttrVersion, "version", false},
        {kTP_AttrPlatform, "platform", false},
        {kTP_AttrTypeprobeChecksum, "checksum", true},
        {kTP_AttrLegacyTypeprobeChecksum, "legacy_checksum", true},
        {kTP_AttrKerningChecksum, "kerning_checksum", true},
        {kTP_AttrOutlineFileSize, "outline_size", true},
        {kTP_AttrPrinterFontName, "printer_font", false},
        {kTP_AttrWindowsMMFile, "windows_mm_file", false},
    };
    return columns;
}

const std::vector<const char*>& MigrationSteps()
{
    static const std::vector<const char*> steps = {
        // 0 -> 1. Paths are BLOBs so that any bytes round-trip and compare
        // byte-wise; names are looked up with or without letter case through
        // one NOCASE index each.
        R"(
        CREATE TABLE files(
            id INTEGER PRIMARY KEY,
            path BLOB NOT NULL UNIQUE,
            size INTEGER NOT NULL,
            mtime_ns INTEGER NOT NULL,
            device INTEGER NOT NULL,
            inode INTEGER NOT NULL,
            forks BLOB NOT NULL,
            identified_ns INTEGER NOT NULL,
            outcome INTEGER NOT NULL,
            error TEXT);
        CREATE TABLE faces(
            file_id INTEGER NOT NULL REFERENCES files(id) ON DELETE CASCADE,
            face_index INTEGER NOT NULL,
            mask INTEGER NOT NULL,
            postscript_name TEXT, kind TEXT, family TEXT, full_name TEXT, display_name TEXT,
            foundry TEXT, legacy_foundry TEXT, version TEXT, platform TEXT,
            checksum INTEGER, legacy_checksum INTEGER, kerning_checksum INTEGER,
            outline_size INTEGER, printer_font TEXT, windows_mm_file TEXT,
            wrapper TEXT NOT NULL DEFAULT '', container TEXT NOT NULL DEFAULT '',
            PRIMARY KEY(file_id, face_index)) WITHOUT ROWID;
        CREATE INDEX faces_postscript_name ON faces(postscript_name COLLATE NOCASE);
        CREATE INDEX faces_family ON faces(family COLLATE NOCASE);
        CREATE INDEX faces_foundry ON faces(foundry COLLATE NOCASE);
        CREATE INDEX faces_kind ON faces(kind COLLATE NOCASE);
        CREATE INDEX faces_checksum ON faces(checksum);
        )",
        // 1 -> 2. A search by PostScript name reads one run of index pages
        // and nothing else: each face carries its file's path (a file's row
        // keeps its path for life), and the name's index holds every column
        // a search gives. A later step that adds a face column rebuilds it.
        R"(
        ALTER TABLE faces ADD COLUMN path BLOB NOT NULL DEFAULT x'';
        UPDATE faces SET path = (SELECT path FROM files WHERE files.id = faces.file_id);
        DROP INDEX faces_postscript_name;
        CREATE INDEX faces_postscript_name ON faces(postscript_name COLLATE NOCASE, path, face_index,
            mask, legacy_foundry, wrapper, container, kind, family, full_name, display_name, foundry,
            version, platform, checksum, legacy_checksum, kerning_checksum, outline_size, printer_font,
            windows_mm_file);
        )",
    };
    return steps;
}

int Catalog::CurrentSchemaVersion() { return int(MigrationSteps().size()); }

}  // namespace tpcatalog
