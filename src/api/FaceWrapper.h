// What held a face in its file, and the web-font identity that follows from
// it.
#pragma once

#include <string>

#include "api/FontSpecifier.h"

class TypeprobeResourceFile;

// Sets face.wrapper and face.container. A face made from the font families
// or printer-font resources of `file` comes from its resource map ("dfont"
// when the map is the data fork, else "resource fork"); any other face from
// its data fork, named by the data fork's first bytes.
void SetFaceWrapper(TP_FontSpecifier& face, const std::string& path,
                    const TypeprobeResourceFile* file);

// True for a face read from a WOFF or WOFF2: its identity is the decoded
// font's.
bool WrappedAsWebFont(const TP_FontSpecifier& face);

// The CRC-32 of the font the web font at `path` wraps, as decoded.
unsigned long DecodedWebFontCRC(const std::string& path);
