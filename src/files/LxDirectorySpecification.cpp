#include "files/LxDirectorySpecification.h"

#include <sys/stat.h>

#include "files/LXFileSystemException.h"
#include "files/LxFileSpecification.h"
#include "files/LxFileSystemParser.h"
#include "support/MacErrors.h"
#include "files/SpecificationHelpers.h"

LxDirectorySpecification::LxDirectorySpecification() = default;

LxDirectorySpecification::LxDirectorySpecification(const LxString& path) : path_(path) {}

LxDirectorySpecification::LxDirectorySpecification(const FSRef& ref) : path_(ref.path) {}

LxDirectorySpecification::LxDirectorySpecification(const FSSpec& fsSpec) : path_(fsSpec.path) {}

LxDirectorySpecification::LxDirectorySpecification(const LxDirectorySpecification& parent,
                                                   const LxString& name)
    : path_(SpecificationHelpers::Join(parent.path_.str(), name.str()))
{
}

LxDirectorySpecification::LxDirectorySpecification(const LxDirectorySpecification& other) =
    default;
LxDirectorySpecification& LxDirectorySpecification::operator=(
    const LxDirectorySpecification& other) = default;
LxDirectorySpecification::~LxDirectorySpecification() = default;

void LxDirectorySpecification::clearCaches() const
{
    fsSpecValid_ = false;
    fsRefValid_ = false;
}

int LxDirectorySpecification::Set(const PlatformString& path, long pathStyle)
{
    LxString utf8(path);
    return Set(utf8, pathStyle);
}

int LxDirectorySpecification::Set(LxString& path, long pathStyle)
{
    if (pathStyle != kCFURLPOSIXPathStyle || path.empty())
        return MacError::coreFoundationUnknownErr;
    path_ = path;
    clearCaches();
    return 0;
}

void LxDirectorySpecification::GetFullPathUTF8(LxString* out) const
{
    if (out) *out = path_;
}

void LxDirectorySpecification::GetName(LxString& out) const
{
    if (!LxFileSystemParser::GetFileName(path_, out))
        throw LXFileSystemException("Bad filename in LxDirectorySpecification::GetName",
                                    long(MacError::bdNamErr));
}

LxDirectorySpecification LxDirectorySpecification::GetParentDirectory() const
{
    return LxDirectorySpecification(LxFileSystemParser::GetPathDeletingLastPathComponent(path_));
}

LxDirectorySpecification& LxDirectorySpecification::operator+=(const LxString& component)
{
    path_ = SpecificationHelpers::Join(path_.str(), component.str());
    clearCaches();
    return *this;
}

bool LxDirectorySpecification::operator==(const LxDirectorySpecification& other) const
{
    return LxString::CompareNoCase(path_.str(), other.path_.str()) == 0;
}

std::optional<LxString> LxDirectorySpecification::CopyURL() const
{
    auto url = SpecificationHelpers::FileURL(path_.str());
    if (url && !LxFileSystemParser::EndsWithDelimiter(url->str())) *url += "/";
    return url;
}

std::optional<PlatformString> LxDirectorySpecification::CopyPath(long pathStyle) const
{
    if (pathStyle != kCFURLPOSIXPathStyle || path_.empty()) return std::nullopt;
    return path_.GetCFString(kCFStringEncodingUTF8);
}

namespace {

// Like the Mac's path resolution, this accepts whatever is at the path; the
// caller asks the catalog whether it is a folder.
bool itemExists(const std::string& path)
{
    struct stat status;
    return !path.empty() && stat(path.c_str(), &status) == 0;
}

}  // namespace

int LxDirectorySpecification::MacGetFSRef(FSRef& ref) const
{
    const bool exists = fsRefValid_ || itemExists(path_.str());
    return SpecificationHelpers::CachedRecord(path_.str(), exists, fsRef_, fsRefValid_, ref);
}

int LxDirectorySpecification::MacGetFSSpec(FSSpec& out) const
{
    const bool exists = fsSpecValid_ || itemExists(path_.str());
    return SpecificationHelpers::CachedRecord(path_.str(), exists, fsSpec_, fsSpecValid_, out);
}

void LxDirectorySpecification::AddDelimiter(LxFileSpecification& file)
{
    LxString path;
    file.GetFullPath(path);
    if (LxFileSystemParser::EndsWithDelimiter(path.str())) return;
    path += LxFileSystemParser::kPathDelimiterString;
    file.Set(path);
}
