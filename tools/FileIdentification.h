// Identifying one file: what a worker thread does for each file of a run.
#pragma once

#include <string>
#include <vector>

#include "FileDiscovery.h"
#include "FontFile.h"

namespace tpcli {

enum class Representation { None, Xml, PropertyList };

struct IdentifyRequest {
    unsigned long mask = 0;
    Representation representation = Representation::None;
    unsigned long options = kTP_AllFormats;  // how the library recognises a file
    bool explain = false;  // say why a file has no face
};

struct FileReport {
    enum class Outcome {
        Faces,       // at least one face
        NoFace,      // read, but not a font the library knows
        Unreadable,  // could not be opened; `message` says why
        Failed,      // the library gave up; `message` says why
    };
    FileTask task;
    Outcome outcome = Outcome::NoFace;
    std::string message;
    std::string reason;  // why the library refused the file or a part, when asked
    std::vector<Face> faces;
    std::string representation;  // the document asked for, when there are faces

    // The line to report, empty when the outcome is not worth one (a file
    // without a face met in a folder).
    std::string problem() const;
    // When the reasons were asked for: a line about a file with faces of
    // which the library refused a part, or about a file met in a folder that
    // is not a font; else empty. Not an error.
    std::string notice() const;
};

// The library's options for a run: every format, or with --classic the
// classic rules alone.
inline unsigned long RecognitionOptions(bool classic)
{
    return classic ? 0 : kTP_AllFormats;
}

FileReport IdentifyFile(const FileTask& task, const IdentifyRequest& request);

}  // namespace tpcli
