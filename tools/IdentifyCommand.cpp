// typeprobe identify PATH...
#include <iostream>

#include "Attributes.h"
#include "Commands.h"
#include "Diagnostics.h"
#include "ExitCodes.h"
#include "ReportWriter.h"

namespace tpcli {

namespace {

// The mask asked of the library and the table's columns.
bool ChooseAttributes(const std::vector<std::string>& names, unsigned long& mask,
                      unsigned long& columns)
{
    if (names.empty()) {
        mask = FullMask();
        columns = DefaultTableMask();
        return true;
    }
    mask = 0;
    for (const std::string& name : names) {
        std::string error;
        auto bits = ParseAttributeMask(name, error);
        if (!bits) {
            ReportError(error);
            return false;
        }
        mask |= *bits;
    }
    columns = mask;
    return true;
}

}  // namespace

int RunIdentify(const IdentifyOptions& options)
{
    const auto format = ParseOutputFormat(options.format);
    IdentifyRequest request;
    unsigned long columns = 0;
    if (!format || !ChooseAttributes(options.attributes, request.mask, columns))
        return kExitUsage;
    request.representation = RepresentationFor(*format);
    request.explain = options.explain;
    request.options = RecognitionOptions(options.classic);
    auto writer = MakeWriter(*format, std::cout, columns);
    const Summary summary = RunFiles(options.paths, request, options.run,
                                     [&](const FileReport& report) { writer->file(report); });
    writer->finish(summary);
    if (!options.quiet) {
        std::cout.flush();
        std::cerr << summary.line() << '\n';
    }
    return summary.errors ? kExitFailure : kExitOk;
}

}  // namespace tpcli
