// "json": one document with every file and the summary; "jsonl": one line
// per face, each carrying its file's path.
#include "JsonFace.h"
#include "ReportWriter.h"

namespace tpcli {

namespace {

class JsonWriter : public ReportWriter {
public:
    explicit JsonWriter(std::ostream& out) : out_(out), files_(nlohmann::ordered_json::array()) {}

    void file(const FileReport& report) override
    {
        const std::string problem = report.problem();
        const bool refused = !report.notice().empty();
        if (report.faces.empty() && problem.empty() && !refused) return;  // quietly skipped
        nlohmann::ordered_json entry;
        entry["path"] = report.task.path;
        if (!problem.empty()) entry["error"] = problem;
        if (refused) entry["refused"] = report.reason;
        entry["faces"] = nlohmann::ordered_json::array();
        for (const Face& face : report.faces) entry["faces"].push_back(FaceJson(face));
        files_.push_back(std::move(entry));
    }

    void finish(const Summary& summary) override
    {
        nlohmann::ordered_json document;
        document["files"] = std::move(files_);
        document["summary"] = SummaryJson(summary);
        out_ << JsonText(document, 2) << '\n';
        out_.flush();
    }

private:
    std::ostream& out_;
    nlohmann::ordered_json files_;
};

class JsonLinesWriter : public ReportWriter {
public:
    explicit JsonLinesWriter(std::ostream& out) : out_(out) {}

    void file(const FileReport& report) override
    {
        for (const Face& face : report.faces) {
            nlohmann::ordered_json line;
            line["path"] = report.task.path;
            line.update(FaceJson(face));
            out_ << JsonText(line, -1) << '\n';
        }
        out_.flush();
    }

    void finish(const Summary&) override {}

private:
    std::ostream& out_;
};

}  // namespace

std::unique_ptr<ReportWriter> MakeJsonWriter(std::ostream& out)
{
    return std::make_unique<JsonWriter>(out);
}

std::unique_ptr<ReportWriter> MakeJsonLinesWriter(std::ostream& out)
{
    return std::make_unique<JsonLinesWriter>(out);
}

}  // namespace tpcli
