#include "fontfiles/Type1MetaData.h"
#include "tables/CFoundryNameTable.h"

// Bridges the Type 1 reader to the foundry table.
bool KnownFoundryNamedIn(std::string_view text)
{
    const CFoundryNameTable* table = CFoundryNameTable::GetSharedFoundryNameTable();
    return table && table->ContainsKnownFoundryName(LxString(std::string(text)), nullptr, nullptr);
}
