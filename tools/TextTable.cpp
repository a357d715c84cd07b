#include "TextTable.h"

#include <algorithm>

#include "Terminal.h"

namespace tpcli {

TextTable::TextTable(std::vector<std::string> headings) : headings_(std::move(headings)) {}

void TextTable::add(std::vector<std::string> cells)
{
    cells.resize(headings_.size());
    for (std::string& cell : cells) cell = Printable(cell);
    rows_.push_back(std::move(cells));
}

void TextTable::print(std::ostream& out) const
{
    std::vector<size_t> widths;
    for (const std::string& heading : headings_) widths.push_back(DisplayWidth(heading));
    for (const auto& row : rows_)
        for (size_t c = 0; c < row.size(); ++c) widths[c] = std::max(widths[c], DisplayWidth(row[c]));
    const auto printRow = [&](const std::vector<std::string>& cells) {
        std::string line;
        for (size_t c = 0; c < cells.size(); ++c) {
            line += cells[c];
            if (c + 1 < cells.size()) line.append(widths[c] - DisplayWidth(cells[c]) + 2, ' ');
        }
        while (!line.empty() && line.back() == ' ') line.pop_back();
        out << line << '\n';
    };
    printRow(headings_);
    for (const auto& row : rows_) printRow(row);
}

}  // namespace tpcli
