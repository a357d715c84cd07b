// The closing line of a run: files, faces, files without a face, errors.
#pragma once

#include <cstddef>
#include <string>

namespace tpcli {

struct FileReport;

struct Summary {
    size_t files = 0;        // files examined
    size_t faces = 0;
    size_t withoutFace = 0;  // files examined that gave no face
    size_t errors = 0;       // error lines reported

    void add(const FileReport& report);
    // "12 files, 30 faces, 1 file without a face, 0 errors"
    std::string line() const;
};

}  // namespace tpcli
