#include "ManPage.h"

#include <CLI/CLI.hpp>

#include <sstream>

namespace tpcli {

namespace {

// Text safe in troff: backslashes and hyphens escaped, no line starting
// with a control character.
std::string Roff(const std::string& text)
{
    std::string out;
    bool lineStart = true;
    for (char c : text) {
        if (lineStart && (c == '.' || c == '\'')) out += "\\&";
        if (c == '\\')
            out += "\\e";
        else if (c == '-')
            out += "\\-";
        else
            out += c;
        lineStart = c == '\n';
    }
    return out;
}

std::string Paragraphs(const std::string& text)
{
    std::string out;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) out += line.empty() ? ".PP\n" : Roff(line) + "\n";
    return out;
}

// CLI11 appends a validator's description to the type name:
// "FORMAT:{table,json}", "N:NONNEGATIVE".
std::string TypeName(const CLI::Option* option)
{
    const std::string type = option->get_type_name();
    return type.substr(0, type.find(':'));
}

std::string Choices(const CLI::Option* option)
{
    const std::string type = option->get_type_name();
    const size_t open = type.find(":{"), close = type.rfind('}');
    if (open == std::string::npos || close == std::string::npos || close < open) return {};
    std::string choices = type.substr(open + 2, close - open - 2);
    std::string spaced;
    for (char c : choices) spaced += c == ',' ? std::string(", ") : std::string(1, c);
    return spaced;
}

std::string OptionNames(const CLI::Option* option)
{
    std::string names;
    for (const std::string& name : option->get_snames())
        names += (names.empty() ? "" : ", ") + std::string("\\fB\\-") + Roff(name) + "\\fR";
    for (const std::string& name : option->get_lnames())
        names += (names.empty() ? "" : ", ") + std::string("\\fB\\-\\-") + Roff(name) + "\\fR";
    const std::string type = TypeName(option);
    if (option->get_type_size() != 0 && !type.empty()) names += " \\fI" + Roff(type) + "\\fR";
    return names;
}

std::string Synopsis(const CLI::App& command)
{
    std::string out = "\\fBtypeprobe " + Roff(command.get_name()) + "\\fR [\\fIOPTIONS\\fR]";
    for (const CLI::Option* option : command.get_options()) {
        if (!option->get_positional()) continue;
        std::string name = Roff(option->get_name());
        if (option->get_items_expected_max() > 1) name += "...";
        out += option->get_required() ? " \\fI" + name + "\\fR" : " [\\fI" + name + "\\fR]";
    }
    return out;
}

void Command(std::ostream& out, const CLI::App& command)
{
    out << ".SS \"" << command.get_name() << "\"\n" << Synopsis(command) << "\n.PP\n";
    out << Paragraphs(command.get_description() + ".");
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_positional()) continue;
        out << ".TP\n" << OptionNames(option) << "\n" << Roff(option->get_description());
        const std::string choices = Choices(option);
        if (!choices.empty()) out << ": " << Roff(choices);
        const std::string fallback = option->get_default_str();
        if (!fallback.empty()) out << " (default: " << Roff(fallback) << ")";
        out << "\n";
    }
    if (!command.get_footer().empty()) out << ".PP\n" << Paragraphs(command.get_footer());
}

}  // namespace

std::string ManPage(const CLI::App& app, const std::string& version,
                    const std::vector<ManSection>& sections)
{
    std::ostringstream out;
    out << ".TH TYPEPROBE 1 \"\" \"typeprobe " << version << "\" \"User Commands\"\n";
    out << ".SH NAME\ntypeprobe \\- identify font files, classic Mac fonts included\n";
    out << ".SH SYNOPSIS\n\\fBtypeprobe\\fR \\fICOMMAND\\fR [\\fIOPTIONS\\fR] [\\fIARGUMENTS\\fR]\n";
    out << ".br\n\\fBtypeprobe\\fR \\fB\\-\\-help\\fR | \\fB\\-\\-version\\fR\n";
    out << ".SH DESCRIPTION\n" << Paragraphs(app.get_description());
    out << ".SH COMMANDS\n";
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        Command(out, *command);
    for (const ManSection& section : sections)
        out << ".SH \"" << section.title << "\"\n" << Paragraphs(section.text);
    return out.str();
}

}  // namespace tpcli
