#include "CommandLine.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <string_view>

#include "Commands.h"
#include "ExitCodes.h"
#include "Library.h"
#include "ManPage.h"
#include "TextWrap.h"

namespace tpcli {

namespace {

const char* const kDescription =
    "Identifies font files: the kind of font each file holds, every face's names and version, "
    "and identity checksums that recognise a face whatever its file name, folder or container. "
    "Fonts are known by their bytes: TrueType, OpenType, collections, PostScript Type 1. "
    "Classic Mac fonts (suitcases, PostScript printer fonts, .dfont) are read from MacBinary and "
    "AppleSingle files, AppleDouble sidecars and extended attributes.";

const std::vector<ManSection> kSections = {
    {"MAC FILES",
     "A classic Mac file keeps a resource fork and Finder information beside its data. On other "
     "disks they travel in a sidecar (\"._NAME\" beside the file, \".AppleDouble/NAME\", "
     "\"__MACOSX/.../._NAME\" after unzip), in extended attributes, or with the data in one "
     "AppleSingle or MacBinary file. Sidecars are never reported as fonts of their own: folder "
     "walks skip them, and a sidecar named on the command line stands for its file. A logical "
     "Mac file NAME kept as the MacBinary file NAME.bin may be named either way and is reported "
     "once, under the name first given (a walk lists NAME.bin). When NAME and NAME.bin both "
     "exist they are two files."},
    {"EXIT STATUS",
     "0 when every file was read; 1 when a path is missing, a file cannot be read, a file named "
     "directly is not a font, or a command failed (the other files are still processed, and "
     "each problem is reported on one line naming the file); 2 when the command line is wrong."},
    {"ENVIRONMENT",
     "TYPEPROBE_RESOURCE_DIR: the folder holding the library's knowledge tables, when they are "
     "not in ../share/typeprobe beside the library."},
};

const char* const kIdentifyFooter =
    "Every font format is recognised by the file's first bytes, its name only a hint: "
    "TrueType and OpenType fonts and collections of any name, PostScript Type 1 fonts in a "
    "data fork (.pfb, .pfa, .t1, CID-keyed, Multiple Master), WOFF and WOFF2 (read as the "
    "font they wrap, a WOFF with its source's checksum), classic Mac fonts; a font "
    "without a usable naming table is listed with its names empty. Metrics files (.afm, "
    ".pfm) hold no outlines and are not fonts. --classic keeps to the classic rules of "
    "TP_CreateSpecifier, which go by the name first.\n\n"
    "Folders are walked recursively in name order; files in them that are not fonts (metrics "
    "files among them) are skipped quietly, while a file named directly that is not a font is an error. --explain "
    "adds the readers' reasons to its line (\"not a font: collection: offset entry 3 points "
    "past the end ...\") and to the json error field, says why each file met in a folder "
    "is not a font, and which parts of a font were refused (a line \"partly refused: ...\", "
    "the json field refused); these lines are not errors. Output "
    "follows the order of the command line whatever the number of jobs. The table shows the "
    "PostScript name, kind, family, foundry, version, platform and checksum unless "
    "--attributes chooses the columns; the other formats carry every attribute read, and "
    "json and jsonl what held each face (wrapper: sfnt, collection, PFB, PFA, WOFF, WOFF2, "
    "dfont, resource fork) and the Mac container it came through (container). A "
    "summary line (files, faces, files without a face, errors) ends the run on standard "
    "error.\n\nAttributes: postscript-name, kind, family, full-name, display-name, foundry, "
    "version, platform, checksum, legacy-checksum, kerning-checksum, outline-size, "
    "printer-font, windows-mm-file, all, or a number (0x4001).\n\nFormats: table (aligned "
    "columns, one row per face); json (one document: files with their faces, and the "
    "summary); jsonl (one line per face, with its path); xml (the library's XML "
    "representation, all files in one document); plist (the library's property list, all "
    "faces in one array, each with its file's Path).";

void AddFormat(CLI::App& command, std::string& format, std::vector<std::string> choices)
{
    command.add_option("-f,--format", format, "Output format")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(choices))
        ->capture_default_str();
}

void AddRunOptions(CLI::App& command, RunOptions& run, bool& quiet)
{
    command.add_option("-j,--jobs", run.jobs, "Files read at once (0: one per core)")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    command.add_flag("--no-progress", run.noProgress,
                     "No progress bar (it shows only on a terminal, for long runs)");
    command.add_flag("-q,--quiet", quiet, "No summary line");
}

void AddClassic(CLI::App& command, bool& classic)
{
    command.add_flag("--classic", classic,
                     "Only the classic rules: a file's kind by its name first, no Type 1 data "
                     "fork fonts, collections only as .ttc");
}

struct Options {
    IdentifyOptions identify;
    SplitOptions split;
    MatchOptions match;
    DuplicatesOptions duplicates;
    CatalogOptions catalog;
    ClassifyOptions classify;
    StylesOptions styles;
    std::string versionFormat = "table";
    std::string helpTopic;
    bool man = false;
};

void AddIdentify(CLI::App& app, IdentifyOptions& options)
{
    auto* command = app.add_subcommand("identify", "Identify every face of font files and folders");
    command->add_option("PATH", options.paths, "Font files and folders")
        ->required()
        ->type_name("");
    AddFormat(*command, options.format, {"table", "json", "jsonl", "xml", "plist"});
    command->add_option("-a,--attributes", options.attributes,
                        "Attributes to read, comma-separated (default: all)")
        ->type_name("LIST")
        ->allow_extra_args(false);
    command->add_flag("--explain", options.explain,
                      "Say why a file, or a part of one, was refused");
    AddClassic(*command, options.classic);
    AddRunOptions(*command, options.run, options.quiet);
    command->footer(Wrapped(kIdentifyFooter));
}

void AddSplit(CLI::App& app, SplitOptions& options)
{
    auto* command = app.add_subcommand(
        "split", "Write each face of a TrueType collection as a standalone TrueType file");
    command->add_option("COLLECTION", options.collection, "The collection (.ttc)")
        ->type_name("")
        ->required();
    command->add_option("DIR", options.directory, "The folder to write to (made when missing)")
        ->type_name("")
        ->required();
    AddFormat(*command, options.format, {"table", "json"});
    command->footer(Wrapped(
        "Files are named by face number: 0.ttf, 1.ttf, ...; a name already taken moves on to "
        "the next number, so nothing is overwritten. Each file written is listed with its "
        "face's PostScript name and family."));
}

void AddMatch(CLI::App& app, MatchOptions& options)
{
    auto* command = app.add_subcommand(
        "match", "Compare two faces: the attributes they share and those that differ");
    command->add_option("A", options.a, "The first font file")
        ->type_name("")
        ->required();
    command->add_option("B", options.b, "The second font file")
        ->type_name("")
        ->required();
    command->add_option("--face-a", options.faceA, "Face of A to compare (from 0)")
        ->type_name("N")
        ->capture_default_str();
    command->add_option("--face-b", options.faceB, "Face of B to compare (from 0)")
        ->type_name("N")
        ->capture_default_str();
    AddFormat(*command, options.format, {"table", "json"});
    command->footer(Wrapped(
        "Kind, family, PostScript name, foundry, version, kerning checksum, outline size and "
        "printer font are compared. Names are the same when equal without regard to letter "
        "case and differ when their bytes differ, so a name in another letter case is both; an "
        "empty name or a zero number never differs. The identity checksums tell whether the "
        "two faces are the same release."));
}

void AddDuplicates(CLI::App& app, DuplicatesOptions& options)
{
    auto* command = app.add_subcommand(
        "duplicates", "Find the same release in several places, and conflicting releases");
    command->add_option("PATH", options.paths, "Font files and folders")->type_name("");
    command->add_option("--catalog", options.catalog,
                        "Answer from a catalog (FILE, or the default one) instead of the files")
        ->type_name("[=FILE]")
        ->expected(0, 1);
    AddFormat(*command, options.format, {"table", "json"});
    AddClassic(*command, options.classic);
    AddRunOptions(*command, options.run, options.quiet);
    command->footer(Wrapped(
        "Faces with the same identity checksum are the same release, wherever they are and "
        "whatever their file names. Faces that share a PostScript name (letter case aside) "
        "under different checksums are conflicting releases of one font. Every font format is "
        "recognised by its bytes, as by identify; --classic keeps to the classic rules."));
}

void AddCatalog(CLI::App& app, CatalogOptions& options)
{
    auto* catalog = app.add_subcommand(
        "catalog", "Keep the faces of font folders in a catalog, and ask it");
    catalog->require_subcommand(1);
    catalog->footer(Wrapped(
        "The catalog is an SQLite database: --catalog FILE, or by default "
        "$XDG_DATA_HOME/typeprobe/catalog.sqlite (~/.local/share when unset). A rescan reads "
        "only the files whose size, modification time, inode or Mac sidecars changed; several "
        "scans may run at once, and an interrupted scan leaves a usable catalog that the next "
        "scan completes. \"typeprobe duplicates --catalog\" answers from it.\n\n"
        "catalog scan PATH... [-j N] [--no-progress]; catalog find [--postscript-name NAME] "
        "[--family NAME] [--foundry NAME] [--kind KIND] [--checksum HEX] [-i]; catalog list "
        "[PATH...]; catalog stats. Each takes --catalog FILE, -f FORMAT and -q."));
    const auto common = [&](CLI::App* command) {
        command->add_option("--catalog", options.file, "The catalog (default: the user's own)")
            ->type_name("FILE");
        command->add_flag("-q,--quiet", options.quiet, "No summary line");
        command->callback([&options, command] { options.action = command->get_name(); });
    };
    auto* scan = catalog->add_subcommand("scan", "Add or refresh font files and folders");
    scan->add_option("PATH", options.paths, "Font files and folders")->required()->type_name("");
    scan->add_option("-j,--jobs", options.run.jobs, "Files read at once (0: one per core)")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber);
    scan->add_flag("--no-progress", options.run.noProgress, "No progress bar");
    AddFormat(*scan, options.format, {"table", "json"});
    common(scan);
    scan->footer(Wrapped("Prints the files new, changed, removed (gone from under the paths), "
                         "unchanged (not read again) and the errors."));
    auto* find = catalog->add_subcommand("find", "Faces by name, family, foundry, kind or checksum");
    find->add_option("--postscript-name", options.postScriptName, "PostScript name")->type_name("NAME");
    find->add_option("--family", options.family, "Family name")->type_name("NAME");
    find->add_option("--foundry", options.foundry, "Foundry")->type_name("NAME");
    find->add_option("--kind", options.kind, "Kind (\"TrueType\", \"OpenType - PS\", ...)")->type_name("KIND");
    find->add_option("--checksum", options.checksum, "Identity checksum (hexadecimal)")->type_name("HEX");
    find->add_flag("-i,--ignore-case", options.ignoreCase, "Names in any letter case");
    AddFormat(*find, options.format, {"table", "json", "jsonl"});
    common(find);
    auto* list = catalog->add_subcommand("list", "The files and faces in the catalog");
    list->add_option("PATH", options.paths, "Only files at or below these paths")->type_name("");
    AddFormat(*list, options.format, {"table", "json", "jsonl"});
    common(list);
    auto* stats = catalog->add_subcommand("stats", "What the catalog holds");
    AddFormat(*stats, options.format, {"table", "json"});
    common(stats);
}

void AddKnowledge(CLI::App& app, Options& options)
{
    auto* classify = app.add_subcommand("classify", "The typographic classification of a family");
    classify->add_option("FAMILY", options.classify.family, "Family name")
        ->type_name("")
        ->required();
    classify->add_option("ALTERNATE", options.classify.alternate,
                         "Family name to try when the first is unknown")
        ->type_name("");
    AddFormat(*classify, options.classify.format, {"table", "json"});
    classify->footer(Wrapped("Prints \"--\" for a family the classification table does not know."));

    auto* styles = app.add_subcommand(
        "styles", "The built-in styles (weight, width, slope, variant) a face's names express");
    styles->add_option("NAME", options.styles.first, "A name of the face (its PostScript name)")
        ->type_name("")
        ->required();
    styles->add_option("NAME2", options.styles.second,
                       "Another name of the face (its full name)")
        ->type_name("");
    AddFormat(*styles, options.styles.format, {"table", "json"});
    styles->footer(Wrapped("Prints one style per line; nothing when the names express none."));
}

void AddVersionAndHelp(CLI::App& app, Options& options)
{
    auto* version = app.add_subcommand("version", "Print the tool's and the library's versions");
    AddFormat(*version, options.versionFormat, {"table", "json"});

    auto* help = app.add_subcommand("help", "Show the help of a command, or the manual page");
    help->add_option("COMMAND", options.helpTopic, "The command to explain")
        ->type_name("");
    help->add_flag("--man", options.man, "Print the manual page (troff)");
}

// typeprobe help [COMMAND] | --man
int RunHelp(CLI::App& app, const Options& options)
{
    if (options.man) {
        std::cout << ManPage(app, ToolVersion(), kSections);
        return kExitOk;
    }
    if (options.helpTopic.empty()) {
        std::cout << app.help();
        return kExitOk;
    }
    try {
        std::cout << app.get_subcommand(options.helpTopic)->help("typeprobe");
    } catch (const CLI::OptionNotFound&) {
        std::cerr << "typeprobe: no command \"" << options.helpTopic << "\"\n";
        return kExitUsage;
    }
    return kExitOk;
}

int Dispatch(CLI::App& app, const Options& options)
{
    const auto chosen = app.get_subcommands();
    const std::string name = chosen.empty() ? "" : chosen.front()->get_name();
    if (name == "identify") return RunIdentify(options.identify);
    if (name == "split") return RunSplit(options.split);
    if (name == "match") return RunMatch(options.match);
    if (name == "duplicates") return RunDuplicates(options.duplicates);
    if (name == "catalog") return RunCatalog(options.catalog);
    if (name == "classify") return RunClassify(options.classify);
    if (name == "styles") return RunStyles(options.styles);
    if (name == "version") return RunVersion(options.versionFormat);
    if (name == "help") return RunHelp(app, options);
    std::cerr << app.help();  // no command
    return kExitUsage;
}

// The declarations of the commands, in the order help lists them, each with
// the commands it declares that may stand alone ("help" needs them all).
struct Declaration {
    std::vector<std::string_view> commands;
    void (*declare)(CLI::App&, Options&);
};
const Declaration kDeclarations[] = {
    {{"identify"}, [](CLI::App& app, Options& options) { AddIdentify(app, options.identify); }},
    {{"split"}, [](CLI::App& app, Options& options) { AddSplit(app, options.split); }},
    {{"match"}, [](CLI::App& app, Options& options) { AddMatch(app, options.match); }},
    {{"duplicates"}, [](CLI::App& app, Options& options) { AddDuplicates(app, options.duplicates); }},
    {{"catalog"}, [](CLI::App& app, Options& options) { AddCatalog(app, options.catalog); }},
    {{"classify", "styles"}, AddKnowledge},
    {{"version"}, AddVersionAndHelp},
};

// Declares the command that the command line names, alone: a short command
// (a catalog query) then starts without building every other command's
// options. The tool's own help and a name that is no command need them all.
void DeclareCommands(CLI::App& app, Options& options, int argc, char** argv)
{
    const auto named = std::find_if(argv + 1, argv + argc, [](const char* arg) { return arg[0] != '-'; });
    for (const Declaration& declaration : kDeclarations) {
        if (named != argv + argc && std::ranges::count(declaration.commands, *named)) {
            declaration.declare(app, options);
            return;
        }
    }
    for (const Declaration& declaration : kDeclarations) declaration.declare(app, options);
}

std::string MainFooter()
{
    std::string footer = "Run \"typeprobe COMMAND --help\" for a command's options.";
    for (const ManSection& section : kSections)
        footer += "\n\n" + section.title + "\n" + Wrapped(section.text);
    return footer;
}

}  // namespace

int RunCommandLine(int argc, char** argv)
{
    CLI::App app("", "typeprobe");
    app.set_version_flag("--version", std::string("typeprobe ") + ToolVersion());
    app.footer(MainFooter());
    app.description(Wrapped(kDescription));
    app.get_formatter()->column_width(28);
    Options options;
    DeclareCommands(app, options, argc, argv);
    app.require_subcommand(0, 1);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const int status = app.exit(error);
        return status == 0 ? kExitOk : kExitUsage;
    }
    try {
        return Dispatch(app, options);
    } catch (const LibraryUnavailable& error) {
        std::cerr << "typeprobe: " << error.what() << '\n';
        return kExitFailure;
    }
}

}  // namespace tpcli
