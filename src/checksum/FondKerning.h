// Checksums over the kerning table of a font family resource (FOND).
#pragma once

#include "support/ByteView.h"

// Unsigned byte sum, modulo 2^32, of every kerning entry of `style`: its
// 4 header bytes and its pair bytes.
unsigned long GetVaultlineChecksum(ByteView fond, short style);

// CRC-32 from 0 over the pair bytes (not the headers) of every kerning
// entry of `style`; 0 when the family has no usable kerning table.
unsigned long KerningPairsCRC(ByteView fond, short style);
