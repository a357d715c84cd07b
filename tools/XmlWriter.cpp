// "xml": the library's own XML representation of every file, merged into
// one document: the header and closing line once, each file's face blocks
// after a comment naming the file. The library reads it back whole.
#include <sstream>

#include "ReportWriter.h"

namespace tpcli {

namespace {

// Used only when no file had a face, so no library header was seen.
constexpr const char* kEmptyHeader = "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n<TypeprobeData>\n";
constexpr const char* kEmptyClosing = "</TypeprobeData>\n";

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line + "\n");
    return lines;
}

// A comment may not hold "--".
std::string CommentText(std::string text)
{
    for (size_t at; (at = text.find("--")) != std::string::npos;) text.replace(at, 2, "- -");
    return text;
}

class XmlWriter : public ReportWriter {
public:
    explicit XmlWriter(std::ostream& out) : out_(out) {}

    void file(const FileReport& report) override
    {
        const auto lines = Lines(report.representation);
        if (lines.size() < 3) return;  // no document, or no face in it
        if (closing_.empty()) {
            out_ << lines[0] << lines[1];
            closing_ = lines.back();
        }
        out_ << "\t<!-- " << CommentText(report.task.path) << " -->\n";
        for (size_t i = 2; i + 1 < lines.size(); ++i) out_ << lines[i];
        out_.flush();
    }

    void finish(const Summary&) override
    {
        if (closing_.empty())
            out_ << kEmptyHeader << kEmptyClosing;
        else
            out_ << closing_;
        out_.flush();
    }

private:
    std::ostream& out_;
    std::string closing_;
};

}  // namespace

std::unique_ptr<ReportWriter> MakeXmlWriter(std::ostream& out)
{
    return std::make_unique<XmlWriter>(out);
}

}  // namespace tpcli
