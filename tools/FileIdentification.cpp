#include "FileIdentification.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <exception>

#include "LibraryExtras.h"

namespace tpcli {

namespace {

// errno of opening the file for reading (its MacBinary copy for a logical
// Mac file); 0 when it opens.
int OpenError(const std::string& path)
{
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0 && errno == ENOENT) fd = ::open((path + ".bin").c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return errno;
    ::close(fd);
    return 0;
}

void Diagnose(FileReport& report)
{
    if (const int error = OpenError(report.task.path)) {
        report.outcome = FileReport::Outcome::Unreadable;
        report.message = std::strerror(error);
    } else {
        report.outcome = FileReport::Outcome::NoFace;
    }
}

void Identify(FileReport& report, const IdentifyRequest& request)
{
    auto file = FontFile::Open(report.task.path, request.mask, request.options);
    if (!file) {
        Diagnose(report);
        return;
    }
    report.faces = file->faces();
    report.outcome = report.faces.empty() ? FileReport::Outcome::NoFace : FileReport::Outcome::Faces;
    if (request.representation == Representation::Xml)
        report.representation = XmlRepresentation(file->array()).value_or("");
    else if (request.representation == Representation::PropertyList)
        report.representation = PropertyListRepresentation(file->array()).value_or("");
}

}  // namespace

std::string FileReport::notice() const
{
    if (reason.empty()) return {};
    if (outcome == Outcome::Faces) return "partly refused: " + reason;
    if (outcome == Outcome::NoFace && !task.named) return "not a font: " + reason;
    return {};
}

std::string FileReport::problem() const
{
    switch (outcome) {
    case Outcome::Faces: return {};
    case Outcome::NoFace:
        if (!task.named) return "";
        return reason.empty() ? "not a font" : "not a font: " + reason;
    case Outcome::Unreadable:
    case Outcome::Failed: return message;
    }
    return {};
}

FileReport IdentifyFile(const FileTask& task, const IdentifyRequest& request)
{
    FileReport report;
    report.task = task;
    try {
        Identify(report, request);
        if (request.explain && report.outcome != FileReport::Outcome::Unreadable)
            report.reason = RefusalReasons(report.task.path, request.options);
    } catch (const std::exception& error) {
        report.outcome = FileReport::Outcome::Failed;
        report.message = std::string("identification failed: ") + error.what();
    } catch (...) {
        report.outcome = FileReport::Outcome::Failed;
        report.message = "identification failed";
    }
    return report;
}

}  // namespace tpcli
