// typeprobe: identifies font files from the shell.
#include "CommandLine.h"

int main(int argc, char** argv) { return tpcli::RunCommandLine(argc, argv); }
