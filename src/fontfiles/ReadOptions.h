// How a file is recognised: by the classic rules, which go by its name
// first, or by its bytes for every format the readers know.
#pragma once

struct ReadOptions {
    // Every format by its first bytes, the name only a hint; a face without
    // a usable naming table is kept with its names empty.
    bool allFormats = false;
};
