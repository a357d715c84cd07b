// The foundry accessors: the foundry text a face carries, resolved through
// the foundry table to one canonical name.
#include "api/AccessorFrame.h"
#include "tables/CFoundryNameTable.h"

namespace {

LxString LegacyFoundryName(const TP_FontSpecifier& face)
{
    const CFoundryNameTable* table = CFoundryNameTable::GetSharedFoundryNameTable();
    LxString result;
    if (!table) return result;
    // Codes that font tools stamp on files say nothing about the foundry:
    // only a foundry named in the font's own text counts then.
    if (table->IsQuestionableCreatorCode(face.fileCreator) ||
        table->IsQuestionableCreatorCode(face.outlineFileCreator)) {
        if (!table->ContainsKnownFoundryName(face.foundryName, &result, nullptr)) result.clear();
    }
    if (result.empty() && !table->IsKnownCreatorCode(face.fileCreator, result) &&
        !table->IsKnownCreatorCode(face.outlineFileCreator, result))
        result = table->GetCanonicalFoundryName(face.outlineFileCreator, face.foundryName);
    return result;
}

LxString FoundryName(const TP_FontSpecifier& face)
{
    if (face.platform == "mac") return LegacyFoundryName(face);
    const CFoundryNameTable* table = CFoundryNameTable::GetSharedFoundryNameTable();
    LxString result;
    if (!table || !table->ContainsKnownFoundryName(face.foundryName, &result, nullptr))
        result = "--";
    return result;
}

unsigned long AccessFoundry(TP_FontArray* array, unsigned long index, char* buffer,
                            int bufferLength, LxString (*resolve)(const TP_FontSpecifier&))
{
    return AccessFace(array, index, buffer, kTP_AttrFoundryName, [&](const TP_FontSpecifier& face) {
        CopyOut(resolve(face).str(), buffer, bufferLength);
    });
}

}  // namespace

extern "C" {

TP_API unsigned long TP_GetFoundryName(TP_FontArray* array, unsigned long index, char* buffer,
                                       int bufferLength)
{
    return AccessFoundry(array, index, buffer, bufferLength, FoundryName);
}

TP_API unsigned long TP_GetLegacyFoundryName(TP_FontArray* array, unsigned long index,
                                             char* buffer, int bufferLength)
{
    return AccessFoundry(array, index, buffer, bufferLength, LegacyFoundryName);
}

}  // extern "C"
