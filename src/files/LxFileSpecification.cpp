#include "files/LxFileSpecification.h"

#include <sys/stat.h>

#include <exception>

#include "containers/FileBytes.h"
#include "files/LXFileSystemException.h"
#include "files/LxDirectorySpecification.h"
#include "files/LxFileSystem.h"
#include "files/LxFileSystemParser.h"
#include "support/MacErrors.h"
#include "containers/MacForks.h"
#include "files/PathUtilities.h"
#include "files/SpecificationHelpers.h"

LxFileSpecification::LxFileSpecification()
{
    SetInvalid();
}

LxFileSpecification::LxFileSpecification(const LxString& path)
{
    Set(path);
}

LxFileSpecification::LxFileSpecification(const char* folder, const char* name)
{
    Set(SpecificationHelpers::Join(folder ? folder : "", name ? name : ""));
}

LxFileSpecification::LxFileSpecification(const LxDirectorySpecification& folder,
                                         const LxString& name)
{
    LxString folderPath;
    folder.GetFullPath(folderPath);
    Set(SpecificationHelpers::Join(folderPath.str(), name.str()));
}

LxFileSpecification::LxFileSpecification(const PlatformString& path, long pathStyle)
{
    LxString utf8(path);
    Set(utf8, pathStyle, 0);
}

LxFileSpecification::LxFileSpecification(const FSRef& ref)
{
    Set(LxString(ref.path));
}

LxFileSpecification::LxFileSpecification(const FSSpec& fsSpec)
{
    Set(LxString(fsSpec.path));
}

LxFileSpecification::LxFileSpecification(const LxFileSpecification& other) = default;
LxFileSpecification& LxFileSpecification::operator=(const LxFileSpecification& other) = default;
LxFileSpecification::~LxFileSpecification() = default;

void LxFileSpecification::SetInvalid()
{
    path_.clear();
    ClearCachedFSSpec();
    ClearCachedFSRef();
    typeAndCreatorUnknown_ = true;
    fileType_ = LxFileSystem::kDefaultFileType;
    fileCreator_ = LxFileSystem::kDefaultCreatorType;
}

void LxFileSpecification::Set(const LxString& path)
{
    SetInvalid();
    path_ = path;
    Internal_SetTypeAndCreatorFromFile();
}

int LxFileSpecification::Set(LxString& path, long pathStyle, unsigned char)
{
    if (pathStyle != kCFURLPOSIXPathStyle || path.empty()) {
        SetInvalid();
        return MacError::coreFoundationUnknownErr;
    }
    Set(path);
    return 0;
}

void LxFileSpecification::Internal_SetTypeAndCreatorFromFile()
{
    if (path_.empty()) return;
    FSRef ref;
    if (MacGetFSRef(ref) != 0) return;
    // A regular file seen during this identification needs no second look.
    struct stat status;
    if (!FileBytes::RegularFileSize(path_.str()) && stat(path_.c_str(), &status) == 0 &&
        S_ISDIR(status.st_mode))
        return;
    MacForkInfo info;
    try {
        info = MacForks::Describe(path_.str());
    } catch (const std::exception&) {
        return;  // any failure keeps the defaults
    }
    if (!info.exists) return;
    // An existing file without Finder info has zero codes, as the Finder
    // reports them; the defaults stand only for files that cannot be read.
    fileType_ = info.hasFinderInfo ? info.fileType : 0;
    fileCreator_ = info.hasFinderInfo ? info.fileCreator : 0;
    typeAndCreatorUnknown_ = false;
}

void LxFileSpecification::GetFullPathUTF8(LxString* out) const
{
    if (out) *out = path_;
}

bool LxFileSpecification::operator==(const LxFileSpecification& other) const
{
    return LxString::CompareNoCase(path_.str(), other.path_.str()) == 0;
}

void LxFileSpecification::GetName(LxString& out) const
{
    if (!LxFileSystemParser::GetFileName(path_, out))
        throw LXFileSystemException("Bad filename in LxFileSpecification::GetName",
                                    long(MacError::bdNamErr));
}

void LxFileSpecification::FailOnError(short code) const
{
    if (code == MacError::noErr || code == MacError::fnfErr) return;
    throw LXFileSystemException("Error in LxFileSpecification::GetName", long(code));
}

LxFileSpecification& LxFileSpecification::operator=(const LxString& name)
{
    ClearCachedFSSpec();
    ClearCachedFSRef();
    if (!name.empty() && name.str()[0] == LxFileSystemParser::kPathDelimiter) {
        Set(name);
        return *this;
    }
    // The current path has to name a folder, or have a parent folder, for a
    // relative name to be placed.
    const std::string& current = path_.str();
    struct stat status;
    bool isFolder = LxFileSystemParser::EndsWithDelimiter(current) ||
                    (!current.empty() && stat(current.c_str(), &status) == 0 &&
                     S_ISDIR(status.st_mode));
    if (current.empty() || (!isFolder && current.find('/') == std::string::npos))
        throw LXFileSystemException("Path not found in LxFileSpecification::GetName",
                                    long(MacError::ioErr));
    if (isFolder)
        Set(SpecificationHelpers::Join(current, name.str()));
    else
        Set(SpecificationHelpers::Join(
            LxFileSystemParser::GetPathDeletingLastPathComponent(path_).str(), name.str()));
    return *this;
}

LxDirectorySpecification LxFileSpecification::GetParentDirectory() const
{
    return LxDirectorySpecification(LxFileSystemParser::GetPathDeletingLastPathComponent(path_));
}

int LxFileSpecification::GetLocationUTF8(unsigned char* buffer, unsigned long size) const
{
    return SpecificationHelpers::CopyToBuffer(
        LxFileSystemParser::GetPathDeletingLastPathComponent(path_).str(), buffer, size);
}

int LxFileSpecification::GetFullPathUTF8(unsigned char* buffer, unsigned long size) const
{
    return SpecificationHelpers::CopyToBuffer(path_.str(), buffer, size);
}

int LxFileSpecification::GetNameUTF8(void* buffer, unsigned long size) const
{
    LxString name;
    if (!LxFileSystemParser::GetFileName(path_, name)) return MacError::bdNamErr;
    return SpecificationHelpers::CopyToBuffer(name.str(), static_cast<unsigned char*>(buffer),
                                              size);
}

int LxFileSpecification::GetNameUnicode(HFSUniStr255* out) const
{
    if (!out) return MacError::paramErr;
    LxString name;
    if (!LxFileSystemParser::GetFileName(path_, name)) return MacError::bdNamErr;
    return SpecificationHelpers::CopyToUniStr(name.str(), *out);
}

std::optional<LxString> LxFileSpecification::CopyURL() const
{
    return SpecificationHelpers::FileURL(path_.str());
}

std::optional<PlatformString> LxFileSpecification::CopyName() const
{
    LxString name;
    if (!LxFileSystemParser::GetFileName(path_, name)) return std::nullopt;
    return name.GetCFString(kCFStringEncodingUTF8);
}

std::optional<PlatformString> LxFileSpecification::CopyPath(long pathStyle) const
{
    if (pathStyle != kCFURLPOSIXPathStyle || path_.empty()) return std::nullopt;
    return path_.GetCFString(kCFStringEncodingUTF8);
}

int LxFileSpecification::MacGetFSRef(FSRef& ref) const
{
    const bool exists = fsRefValid_ || SpecificationHelpers::LogicalFileExists(path_.str());
    return SpecificationHelpers::CachedRecord(path_.str(), exists, fsRef_, fsRefValid_, ref);
}

int LxFileSpecification::MacGetFSSpec(FSSpec& out) const
{
    const bool exists = fsSpecValid_ || SpecificationHelpers::LogicalFileExists(path_.str());
    return SpecificationHelpers::CachedRecord(path_.str(), exists, fsSpec_, fsSpecValid_, out);
}

void LxFileSpecification::MacGetTypeAndCreator(unsigned long& type, unsigned long& creator) const
{
    type = fileType_;
    creator = fileCreator_;
}

void LxFileSpecification::MacSetTypeAndCreator(unsigned long type, unsigned long creator)
{
    fileType_ = uint32_t(type);
    fileCreator_ = uint32_t(creator);
}
