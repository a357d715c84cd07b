// The output formats of "identify". A writer receives every file's report
// in order and the summary at the end.
#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "FileIdentification.h"
#include "Summary.h"

namespace tpcli {

enum class OutputFormat { Table, Json, JsonLines, Xml, PropertyList };

// "table", "json", "jsonl", "xml", "plist".
std::optional<OutputFormat> ParseOutputFormat(const std::string& name);

// What the library must produce per file for this format.
Representation RepresentationFor(OutputFormat format);

class ReportWriter {
public:
    virtual ~ReportWriter() = default;
    virtual void file(const FileReport& report) = 0;
    virtual void finish(const Summary& summary) = 0;
};

// `columns`: the attributes a table shows.
std::unique_ptr<ReportWriter> MakeTableWriter(std::ostream& out, unsigned long columns);
std::unique_ptr<ReportWriter> MakeJsonWriter(std::ostream& out);
std::unique_ptr<ReportWriter> MakeJsonLinesWriter(std::ostream& out);
std::unique_ptr<ReportWriter> MakeXmlWriter(std::ostream& out);
std::unique_ptr<ReportWriter> MakePropertyListWriter(std::ostream& out);

std::unique_ptr<ReportWriter> MakeWriter(OutputFormat format, std::ostream& out,
                                         unsigned long columns);

}  // namespace tpcli
