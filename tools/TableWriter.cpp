// The table of "identify": one row per face, the file named on its first
// face's row. Empty values show as "-".
#include "Attributes.h"
#include "ReportWriter.h"
#include "TextTable.h"

namespace tpcli {

namespace {

class TableWriter : public ReportWriter {
public:
    TableWriter(std::ostream& out, unsigned long columns)
        : out_(out), columns_(columns), table_(headings(columns))
    {
    }

    void file(const FileReport& report) override
    {
        bool first = true;
        for (const Face& face : report.faces) {
            std::vector<std::string> cells{first ? report.task.path : ""};
            for (const Attribute& attribute : AllAttributes()) {
                if (!(columns_ & attribute.bit)) continue;
                std::string value = face.display(attribute.bit);
                cells.push_back(value.empty() ? "-" : value);
            }
            table_.add(std::move(cells));
            first = false;
        }
    }

    void finish(const Summary&) override
    {
        if (!table_.empty()) table_.print(out_);
        out_.flush();
    }

private:
    std::ostream& out_;
    unsigned long columns_;
    TextTable table_;

    static std::vector<std::string> headings(unsigned long columns)
    {
        std::vector<std::string> headings{"FILE"};
        for (const Attribute& attribute : AllAttributes())
            if (columns & attribute.bit) headings.push_back(attribute.heading);
        return headings;
    }
};

}  // namespace

std::unique_ptr<ReportWriter> MakeTableWriter(std::ostream& out, unsigned long columns)
{
    return std::make_unique<TableWriter>(out, columns);
}

}  // namespace tpcli
