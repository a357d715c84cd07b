// A plain aligned table: a heading row, then rows of cells, columns two
// spaces apart and padded by their display width. Cells are made printable.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace tpcli {

class TextTable {
public:
    explicit TextTable(std::vector<std::string> headings);
    void add(std::vector<std::string> cells);
    bool empty() const { return rows_.empty(); }
    void print(std::ostream& out) const;

private:
    std::vector<std::string> headings_;
    std::vector<std::vector<std::string>> rows_;
};

}  // namespace tpcli
