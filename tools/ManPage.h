// The manual page, rendered in troff from the same command-line declarations
// that --help prints.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tpcli {

struct ManSection {
    std::string title;  // "EXIT STATUS"
    std::string text;   // paragraphs separated by blank lines
};

std::string ManPage(const CLI::App& app, const std::string& version,
                    const std::vector<ManSection>& sections);

}  // namespace tpcli
