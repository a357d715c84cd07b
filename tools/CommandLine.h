// The command line: every command, option and help text is declared once
// here; --help and the manual page are both rendered from it.
#pragma once

namespace tpcli {

// Parses the arguments, runs the chosen command and returns the exit status
// (2 for a command line that cannot be parsed).
int RunCommandLine(int argc, char** argv);

}  // namespace tpcli
