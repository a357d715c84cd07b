#include "CatalogScan.h"

#include <dirent.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <unordered_set>

#include "Attributes.h"
#include "CatalogRows.h"
#include "Diagnostics.h"
#include "FileDiscovery.h"
#include "ParallelRunner.h"
#include "ProgressBar.h"

namespace tpcli {

namespace {

// Files written per transaction, and the longest a written file waits for
// its transaction: a killed scan loses at most this much work.
constexpr size_t kBatchFiles = 256;
constexpr auto kBatchTime = std::chrono::seconds(1);

// The extended attributes that hold a Mac file's forks, as the library reads them.
constexpr const char* kForkAttributes[] = {
    "user.com.apple.ResourceFork", "user.com.apple.FinderInfo",
    "user.org.netatalk.ResourceFork", "user.org.netatalk.Metadata"};

int64_t Nanoseconds(const struct timespec& time)
{
    return int64_t(time.tv_sec) * 1000000000 + time.tv_nsec;
}

std::string Parent(const std::string& path)
{
    const size_t slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

std::string Joined(const std::string& folder, const std::string& rest)
{
    return folder == "/" ? "/" + rest : folder + "/" + rest;
}

// "tag:size:mtime;" for a sidecar that exists.
void AddPlace(std::string& forks, const char* tag, const std::string& path)
{
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return;
    forks += std::string(tag) + ":" + std::to_string(info.st_size) + ":" +
             std::to_string(Nanoseconds(info.st_mtim)) + ";";
}

// "name:size;" for each fork attribute. Writing an attribute changes neither
// size nor modification time of the file, so its size stands for it.
void AddAttributes(std::string& forks, const std::string& path)
{
    char names[4096];
    const ssize_t length = ::listxattr(path.c_str(), names, sizeof names);
    if (length == 0) return;
    for (const char* name : kForkAttributes) {
        const bool listed = length < 0 || std::string_view(names, size_t(length)).find(name) != std::string_view::npos;
        if (!listed) continue;
        const ssize_t size = ::getxattr(path.c_str(), name, nullptr, 0);
        if (size >= 0) forks += std::string(name) + ":" + std::to_string(size) + ";";
    }
}

tpcatalog::FileRow RowOf(const FileReport& report, tpcatalog::FileStamp stamp)
{
    tpcatalog::FileRow row;
    row.path = report.task.path;
    row.stamp = std::move(stamp);
    row.identifiedNs = std::chrono::duration_cast<std::chrono::nanoseconds>(
                           std::chrono::system_clock::now().time_since_epoch())
                           .count();
    row.outcome = int(report.outcome);
    row.error = report.problem();
    for (const Face& face : report.faces) row.faces.push_back(tpcli::RowOf(face));
    return row;
}

bool Below(const std::string& path, const std::string& folder)
{
    return path == folder || (path.size() > folder.size() && path.compare(0, folder.size(), folder) == 0 &&
                              (folder.back() == '/' || path[folder.size()] == '/'));
}

struct ScanResult {
    enum class Kind { Unchanged, Read, Vanished } kind = Kind::Unchanged;
    FileReport report;
    tpcatalog::FileStamp stamp;
};

// Writes the files read in batches, one transaction each.
class BatchWriter {
public:
    explicit BatchWriter(tpcatalog::Catalog& catalog) : catalog_(catalog) {}

    void add(tpcatalog::FileRow row)
    {
        rows_.push_back(std::move(row));
        if (rows_.size() >= kBatchFiles || Clock::now() - started_ >= kBatchTime) flush();
    }
    void remove(std::string path) { gone_.push_back(std::move(path)); }
    void flush()
    {
        catalog_.write(rows_, gone_);
        rows_.clear();
        gone_.clear();
        started_ = Clock::now();
    }

private:
    using Clock = std::chrono::steady_clock;
    tpcatalog::Catalog& catalog_;
    std::vector<tpcatalog::FileRow> rows_;
    std::vector<std::string> gone_;
    Clock::time_point started_ = Clock::now();
};

}  // namespace

std::string CatalogPathOf(const std::string& path)
{
    std::error_code error;
    std::string normal = std::filesystem::absolute(path, error).lexically_normal().string();
    if (error) normal = path;
    while (normal.size() > 1 && normal.back() == '/') normal.pop_back();
    return normal;
}

SidecarFolders FindSidecarFolders(const std::vector<std::string>& paths)
{
    std::set<std::string> folders;
    for (const std::string& path : paths)
        for (std::string folder = Parent(path); folders.insert(folder).second && folder != "/";)
            folder = Parent(folder);
    // One listing per folder instead of a look-up per file: most folders
    // hold no sidecar at all.
    SidecarFolders found;
    for (const std::string& folder : folders) {
        DIR* dir = ::opendir(folder.c_str());
        if (!dir) continue;
        while (const dirent* entry = ::readdir(dir)) {
            const std::string_view name = entry->d_name;
            if (name == ".AppleDouble") found.appleDouble.insert(folder);
            if (name == "__MACOSX") found.macosx.insert(folder);
            if (name.size() > 2 && name.substr(0, 2) == "._") found.dotUnderscore.insert(folder);
        }
        ::closedir(dir);
    }
    return found;
}

std::optional<tpcatalog::FileStamp> StampFile(const FileTask& task, const SidecarFolders& folders)
{
    const std::string& path = task.path;
    std::string onDisk = path;
    struct stat info {};
    if (task.status) {
        info = *task.status;
    } else if (::stat(onDisk.c_str(), &info) != 0) {
        onDisk = path + ".bin";
        if (errno != ENOENT || ::stat(onDisk.c_str(), &info) != 0) return std::nullopt;
    }
    tpcatalog::FileStamp stamp{info.st_size, Nanoseconds(info.st_mtim), int64_t(info.st_dev),
                               int64_t(info.st_ino), {}};
    // The places the library looks for the forks of `path`, in its order.
    const std::string folder = Parent(path);
    const std::string name = path.substr(path.rfind('/') + 1);
    if (folders.dotUnderscore.count(folder)) AddPlace(stamp.forks, "._", Joined(folder, "._" + name));
    if (folders.appleDouble.count(folder))
        AddPlace(stamp.forks, ".AppleDouble", Joined(folder, ".AppleDouble/" + name));
    for (std::string ancestor = folder, below;;) {
        if (folders.macosx.count(ancestor))
            AddPlace(stamp.forks, "__MACOSX", Joined(ancestor, "__MACOSX/" + below + "._" + name));
        if (ancestor == "/") break;
        below = ancestor.substr(ancestor.rfind('/') + 1) + "/" + below;
        ancestor = Parent(ancestor);
    }
    AddAttributes(stamp.forks, onDisk);
    return stamp;
}

std::string ScanCounts::line() const
{
    return std::to_string(added) + " new, " + std::to_string(changed) + " changed, " +
           std::to_string(removed) + " removed, " + std::to_string(unchanged) + " unchanged, " +
           std::to_string(errors) + (errors == 1 ? " error" : " errors");
}

ScanCounts ScanIntoCatalog(tpcatalog::Catalog& catalog, const std::vector<std::string>& paths,
                           const RunOptions& options)
{
    ScanCounts counts;
    std::vector<std::string> roots;
    for (const std::string& path : paths) roots.push_back(CatalogPathOf(path));
    const Discovery discovery = DiscoverFiles(roots);
    // Rows below a folder that could not be read stay; those below a path
    // that is gone go.
    std::vector<std::string> unreadable;
    for (const PathProblem& problem : discovery.problems) {
        ReportProblem(problem.path, problem.message);
        ++counts.errors;
        if (problem.message != std::strerror(ENOENT)) unreadable.push_back(problem.path);
    }

    std::unordered_map<std::string, tpcatalog::FileStamp> stored;
    for (const std::string& root : roots) stored.merge(catalog.stampsUnder(root));
    std::unordered_set<std::string> found;
    std::vector<std::string> files;
    for (const FileTask& task : discovery.files) {
        found.insert(task.path);
        files.push_back(task.path);
    }
    BatchWriter writer(catalog);
    for (const auto& [path, stamp] : stored) {
        if (found.count(path)) continue;
        bool kept = false;
        for (const std::string& folder : unreadable) kept = kept || Below(path, folder);
        if (kept) continue;
        writer.remove(path);
        ++counts.removed;
    }
    writer.flush();

    const SidecarFolders folders = FindSidecarFolders(files);
    const IdentifyRequest request{FullMask(), Representation::None, kTP_AllFormats, false};
    ProgressBar progress(!options.noProgress, files.size(), "files");
    ParallelRunner<ScanResult> runner(options.jobs, [&](size_t i) {
        ScanResult result;
        auto stamp = StampFile(discovery.files[i], folders);
        if (!stamp) {
            result.kind = ScanResult::Kind::Vanished;
            return result;
        }
        auto known = stored.find(files[i]);
        if (known != stored.end() && known->second == *stamp) return result;
        result.kind = ScanResult::Kind::Read;
        result.report = IdentifyFile(discovery.files[i], request);
        result.stamp = std::move(*stamp);
        return result;
    });
    runner.run(
        files.size(),
        [&](size_t i, ScanResult&& result) {
            if (result.kind == ScanResult::Kind::Unchanged) {
                ++counts.unchanged;
                return;
            }
            if (result.kind == ScanResult::Kind::Vanished) {
                if (stored.count(files[i])) {
                    writer.remove(files[i]);
                    ++counts.removed;
                }
                return;
            }
            if (const std::string problem = result.report.problem(); !problem.empty()) {
                progress.clear();
                ReportProblem(files[i], problem);
                ++counts.errors;
            }
            ++(stored.count(files[i]) ? counts.changed : counts.added);
            writer.add(RowOf(result.report, std::move(result.stamp)));
        },
        [&](size_t done) { progress.update(done); });
    progress.clear();
    writer.flush();
    return counts;
}

}  // namespace tpcli
