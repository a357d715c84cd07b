#include "ReportWriter.h"

namespace tpcli {

std::optional<OutputFormat> ParseOutputFormat(const std::string& name)
{
    if (name == "table") return OutputFormat::Table;
    if (name == "json") return OutputFormat::Json;
    if (name == "jsonl") return OutputFormat::JsonLines;
    if (name == "xml") return OutputFormat::Xml;
    if (name == "plist") return OutputFormat::PropertyList;
    return std::nullopt;
}

Representation RepresentationFor(OutputFormat format)
{
    if (format == OutputFormat::Xml) return Representation::Xml;
    if (format == OutputFormat::PropertyList) return Representation::PropertyList;
    return Representation::None;
}

std::unique_ptr<ReportWriter> MakeWriter(OutputFormat format, std::ostream& out,
                                         unsigned long columns)
{
    switch (format) {
    case OutputFormat::Table: return MakeTableWriter(out, columns);
    case OutputFormat::Json: return MakeJsonWriter(out);
    case OutputFormat::JsonLines: return MakeJsonLinesWriter(out);
    case OutputFormat::Xml: return MakeXmlWriter(out);
    case OutputFormat::PropertyList: return MakePropertyListWriter(out);
    }
    return nullptr;
}

}  // namespace tpcli
