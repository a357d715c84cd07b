#include "Summary.h"

#include "FileIdentification.h"

namespace tpcli {

namespace {

std::string Counted(size_t count, const char* singular, const char* plural)
{
    return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

}  // namespace

void Summary::add(const FileReport& report)
{
    ++files;
    faces += report.faces.size();
    if (report.faces.empty()) ++withoutFace;
    if (!report.problem().empty()) ++errors;
}

std::string Summary::line() const
{
    return Counted(files, "file", "files") + ", " + Counted(faces, "face", "faces") + ", " +
           Counted(withoutFace, "file", "files") + " without a face, " +
           Counted(errors, "error", "errors");
}

}  // namespace tpcli
