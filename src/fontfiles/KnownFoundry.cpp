#include "fontfiles/Type1MetaData.h"

// Bridges the Type 1 reader to the foundry table.
bool KnownFoundryNamedIn(std::string_view)
{
    return false;
}
