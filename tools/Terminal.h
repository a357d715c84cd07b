// What the tool knows of its terminal.
#pragma once

#include <string>

namespace tpcli {

bool IsTerminal(int fd);

// Columns of the terminal at `fd`; 80 when unknown.
int TerminalWidth(int fd);

// Columns a UTF-8 text takes: wide East Asian characters count two,
// combining marks none.
size_t DisplayWidth(const std::string& text);

// The text with control characters and invalid UTF-8 replaced by U+FFFD, so
// that names read from a font cannot drive the terminal.
std::string Printable(const std::string& text);

}  // namespace tpcli
