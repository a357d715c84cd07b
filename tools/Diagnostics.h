// Error lines on standard error: "typeprobe: PATH: what went wrong".
#pragma once

#include <string>

namespace tpcli {

void ReportProblem(const std::string& path, const std::string& message);
void ReportError(const std::string& message);

}  // namespace tpcli
