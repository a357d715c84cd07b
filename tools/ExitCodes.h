// The tool's exit statuses.
#pragma once

namespace tpcli {

constexpr int kExitOk = 0;
constexpr int kExitFailure = 1;  // some file failed, or a file named directly is not a font
constexpr int kExitUsage = 2;    // the command line is wrong

}  // namespace tpcli
