#include "Diagnostics.h"

#include <cstdio>

#include "Terminal.h"

namespace tpcli {

void ReportProblem(const std::string& path, const std::string& message)
{
    std::fflush(stdout);
    std::fprintf(stderr, "typeprobe: %s: %s\n", Printable(path).c_str(), message.c_str());
}

void ReportError(const std::string& message)
{
    std::fflush(stdout);
    std::fprintf(stderr, "typeprobe: %s\n", message.c_str());
}

}  // namespace tpcli
