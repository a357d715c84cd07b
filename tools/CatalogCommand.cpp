// typeprobe catalog scan | find | list | stats
#include <filesystem>
#include <iostream>

#include <Catalog.h>

#include "Attributes.h"
#include "CatalogRows.h"
#include "CatalogScan.h"
#include "Commands.h"
#include "Diagnostics.h"
#include "ExitCodes.h"
#include "JsonFace.h"
#include "Library.h"
#include "ReportWriter.h"
#include "TextTable.h"

namespace tpcli {

namespace {

int Scan(const CatalogOptions& options, const std::string& file)
{
    Library();  // before the catalog is made, and not in a worker
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(file).parent_path(), ignored);
    tpcatalog::Catalog catalog(file, tpcatalog::Catalog::Use::Scan);
    const ScanCounts counts = ScanIntoCatalog(catalog, options.paths, options.run);
    if (options.format == "json") {
        std::cout << JsonText({{"new", counts.added},
                               {"changed", counts.changed},
                               {"removed", counts.removed},
                               {"unchanged", counts.unchanged},
                               {"errors", counts.errors}},
                              2)
                  << '\n';
    } else if (!options.quiet) {
        std::cout << counts.line() << '\n';
    }
    return counts.errors ? kExitFailure : kExitOk;
}

// The search of "find"; false after reporting a checksum that is not one.
bool Criteria(const CatalogOptions& options, std::vector<tpcatalog::Criterion>& criteria)
{
    const std::pair<unsigned long, const std::string*> texts[] = {
        {kTP_AttrPostScriptName, &options.postScriptName},
        {kTP_AttrFamilyName, &options.family},
        {kTP_AttrFoundryName, &options.foundry},
        {kTP_AttrKindName, &options.kind}};
    for (const auto& [bit, text] : texts)
        if (!text->empty()) criteria.push_back({bit, *text, std::nullopt});
    if (!options.checksum.empty()) {
        size_t end = 0;
        unsigned long value = 0;
        try {
            value = std::stoul(options.checksum, &end, 16);
        } catch (const std::exception&) {
            end = 0;
        }
        if (end != options.checksum.size() || value > 0xFFFFFFFFUL) {
            ReportError("not a checksum: \"" + options.checksum + "\" (8 hexadecimal digits)");
            return false;
        }
        criteria.push_back({kTP_AttrTypeprobeChecksum, "", value});
    }
    return true;
}

// find and list print what identify prints for the files they give.
class Listing {
public:
    Listing(const CatalogOptions& options, Summary summary)
        : writer_(MakeWriter(*ParseOutputFormat(options.format), std::cout, DefaultTableMask())),
          summary_(std::move(summary)),
          quiet_(options.quiet)
    {
    }

    void add(tpcatalog::FileRow&& row, const std::string& shownPath)
    {
        const FileReport report = ReportOf(std::move(row), shownPath, FullMask());
        summary_.add(report);
        writer_->file(report);
    }

    void finish()
    {
        writer_->finish(summary_);
        if (!quiet_) std::cerr << summary_.line() << '\n';
    }

private:
    std::unique_ptr<ReportWriter> writer_;
    Summary summary_;
    bool quiet_;
};

int Find(const CatalogOptions& options, tpcatalog::Catalog& catalog)
{
    std::vector<tpcatalog::Criterion> criteria;
    if (!Criteria(options, criteria)) return kExitUsage;
    if (criteria.empty()) {
        ReportError("find: nothing to look for (--postscript-name, --family, --foundry, --kind, --checksum)");
        return kExitUsage;
    }
    Listing listing(options, {});
    catalog.find(criteria, options.ignoreCase, [&](tpcatalog::FileRow& row) {
        row.outcome = int(FileReport::Outcome::Faces);
        const std::string path = row.path;
        listing.add(std::move(row), path);
    });
    listing.finish();
    return kExitOk;
}

int List(const CatalogOptions& options, tpcatalog::Catalog& catalog)
{
    Summary summary;
    auto files = FilesInWalkOrder(catalog, options.paths, summary.errors);
    const bool failed = summary.errors != 0;
    Listing listing(options, std::move(summary));
    for (ShownFile& file : files) listing.add(std::move(file.row), file.path);
    listing.finish();
    return failed ? kExitFailure : kExitOk;
}

int Stats(const CatalogOptions& options, tpcatalog::Catalog& catalog, const std::string& file)
{
    const tpcatalog::CatalogStats stats = catalog.stats();
    std::error_code ignored;
    const auto bytes = std::filesystem::file_size(file, ignored);
    if (options.format == "json") {
        nlohmann::ordered_json kinds = nlohmann::ordered_json::object();
        for (const auto& [kind, count] : stats.kinds) kinds[kind] = count;
        std::cout << JsonText({{"catalog", file},
                               {"schemaVersion", stats.schemaVersion},
                               {"bytes", bytes == std::uintmax_t(-1) ? 0 : bytes},
                               {"files", stats.files},
                               {"faces", stats.faces},
                               {"filesWithoutFace", stats.filesWithoutFace},
                               {"errors", stats.errors},
                               {"lastIdentifiedNs", stats.lastIdentifiedNs},
                               {"kinds", kinds}},
                              2)
                  << '\n';
        return kExitOk;
    }
    TextTable table({"CATALOG", file});
    table.add({"schema", std::to_string(stats.schemaVersion)});
    table.add({"files", std::to_string(stats.files)});
    table.add({"faces", std::to_string(stats.faces)});
    table.add({"files without a face", std::to_string(stats.filesWithoutFace)});
    table.add({"errors", std::to_string(stats.errors)});
    for (const auto& [kind, count] : stats.kinds)
        table.add({"kind " + (kind.empty() ? std::string("-") : kind), std::to_string(count)});
    table.print(std::cout);
    return kExitOk;
}

}  // namespace

int RunCatalog(const CatalogOptions& options)
{
    const std::string file = CatalogFile(options.file);
    try {
        if (options.action == "scan") return Scan(options, file);
        tpcatalog::Catalog catalog(file, tpcatalog::Catalog::Use::Query);
        if (options.action == "find") return Find(options, catalog);
        if (options.action == "list") return List(options, catalog);
        return Stats(options, catalog, file);
    } catch (const LibraryUnavailable&) {
        throw;
    } catch (const std::exception& error) {
        // A catalog error names the file already.
        const std::string message = error.what();
        ReportError(message.rfind(file, 0) == 0 ? message : file + ": " + message);
        return kExitFailure;
    }
}

}  // namespace tpcli
