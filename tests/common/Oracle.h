// Outside checks: runs a shell command (fontTools, fc-scan, ...) and hands
// back its standard output, one line per element.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace oracle {

// Lines printed by `command`; empty when it cannot run.
inline std::vector<std::string> lines(const std::string& command)
{
    std::vector<std::string> out;
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), &pclose);
    if (!pipe) return out;
    std::string line;
    for (int c; (c = std::fgetc(pipe.get())) != EOF;)
        c == '\n' ? (out.push_back(line), line.clear()) : line.push_back(char(c));
    if (!line.empty()) out.push_back(line);
    return out;
}

// Runs a program under Debian's Python, where fontTools is installed; sys.argv[1:] = args.
inline std::vector<std::string> python(const std::string& program, const std::string& args)
{
    return lines("/usr/bin/python3 -c '" + program + "' " + args + " 2>/dev/null");
}

}  // namespace oracle
