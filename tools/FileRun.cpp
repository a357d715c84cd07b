#include "FileRun.h"

#include "Diagnostics.h"
#include "FileDiscovery.h"
#include "Library.h"
#include "ParallelRunner.h"
#include "ProgressBar.h"

namespace tpcli {

Summary RunFiles(const std::vector<std::string>& paths, const IdentifyRequest& request,
                 const RunOptions& options, const std::function<void(const FileReport&)>& deliver)
{
    Library();  // here, not in a worker: a library that will not load is one error
    Summary summary;
    const Discovery discovery = DiscoverFiles(paths);
    for (const PathProblem& problem : discovery.problems) {
        ReportProblem(problem.path, problem.message);
        ++summary.errors;
    }
    const auto& files = discovery.files;
    ProgressBar progress(!options.noProgress, files.size(), "files");
    ParallelRunner<FileReport> runner(options.jobs, [&](size_t i) {
        return IdentifyFile(files[i], request);
    });
    runner.run(
        files.size(),
        [&](size_t, FileReport&& report) {
            for (const std::string& line : {report.problem(), report.notice()}) {
                if (line.empty()) continue;
                progress.clear();
                ReportProblem(report.task.path, line);
            }
            summary.add(report);
            deliver(report);
        },
        [&](size_t done) { progress.update(done); });
    progress.clear();
    return summary;
}

}  // namespace tpcli
