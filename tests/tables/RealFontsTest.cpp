// Acceptance on the faces of Debian's font packages, with fontconfig as the
// oracle: the styles found from a face's PostScript and full names must
// agree with fontconfig's weight and slant, and the face's family must have
// a classification.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/ResourceDirectory.h"
#include "tables/LxFontStyleScan.h"
#include "typeprobe/typeprobe.h"

namespace {

const char* const kPackages[] = {"fonts-dejavu-core", "fonts-liberation2", "fonts-urw-base35",
                                 "fonts-texgyre", "fonts-noto-cjk"};

struct Face {
    std::string postScriptName;
    std::string fullName;
    int weight = 0;
    int slant = 0;
    std::vector<std::string> families;
};

std::string run(const std::string& command)
{
    std::string output;
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    if (!pipe) return output;
    char chunk[4096];
    size_t got;
    while ((got = fread(chunk, 1, sizeof chunk, pipe.get())) > 0) output.append(chunk, got);
    return output;
}

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::stringstream stream(text);
    std::string part;
    while (std::getline(stream, part, separator)) parts.push_back(part);
    return parts;
}

bool isFontFile(const std::string& path)
{
    for (const char* extension : {".ttf", ".otf", ".ttc", ".t1", ".pfb"})
        if (path.size() > 4 && path.compare(path.size() - std::strlen(extension), std::string::npos,
                                            extension) == 0)
            return true;
    return false;
}

// Every face of the packages, as fontconfig describes it.
std::vector<Face> packageFaces()
{
    std::vector<Face> faces;
    for (const char* package : kPackages) {
        for (const std::string& path : split(run(std::string("dpkg-query -L ") + package + " 2>/dev/null"), '\n')) {
            if (!isFontFile(path)) continue;
            std::string format = "%{postscriptname}|%{fullname}|%{weight}|%{slant}|%{family}\\n";
            for (const std::string& line : split(run("fc-scan --format '" + format + "' '" + path + "'"), '\n')) {
                std::vector<std::string> fields = split(line, '|');
                if (fields.size() != 5) continue;
                Face face;
                face.postScriptName = fields[0];
                // The first of fontconfig's full names, like its first family.
                face.fullName = split(fields[1], ',').empty() ? "" : split(fields[1], ',')[0];
                face.weight = std::atoi(fields[2].c_str());
                face.slant = std::atoi(fields[3].c_str());
                face.families = split(fields[4], ',');
                faces.push_back(face);
            }
        }
    }
    return faces;
}

const std::vector<Face>& faces()
{
    static const std::vector<Face> all = packageFaces();
    return all;
}

std::vector<std::string> stylesOf(const Face& face)
{
    const unsigned long kMax = 16;
    std::vector<std::string> storage(kMax, std::string(64, '\0'));
    std::vector<char*> buffers;
    for (std::string& buffer : storage) buffers.push_back(buffer.data());
    unsigned long count = 0;
    TP_GetStyles(face.postScriptName.c_str(), face.fullName.c_str(), kMax, 64, &count, buffers.data());
    std::vector<std::string> styles;
    for (unsigned long i = 0; i < count; ++i) styles.push_back(storage[i].c_str());
    return styles;
}

// Fontconfig's weight for each weight the keyword table names.
const std::map<std::string, int> kWeights = {
    {"Hairline", 0},     {"Thin", 0},          {"Extra Thin", 0},   {"Ultra Thin", 0},
    {"Extra Light", 40}, {"Ultra Light", 40},  {"Light", 50},       {"Semilight", 55},
    {"Book", 75},        {"Regular", 80},      {"Medium", 100},     {"Semibold", 180},
    {"Demibold", 180},   {"Bold", 200},        {"Extra Bold", 205}, {"Ultra Bold", 205},
    {"Heavy", 210},      {"Black", 210},       {"Extra Heavy", 215}, {"Extra Black", 215},
    {"Ultra Black", 215},
};
const int kRegular = 80;

// The weight a style names: all of a weight style, or the weight that a
// compound style ("Bold Condensed Italic") starts with.
bool weightNamed(const std::string& style, bool wholeOnly, int& weight)
{
    size_t best = 0;
    for (const auto& [name, value] : kWeights) {
        bool whole = style == name;
        bool prefix = !wholeOnly && style.compare(0, name.size() + 1, name + " ") == 0;
        if ((whole || prefix) && name.size() > best) {
            best = name.size();
            weight = value;
        }
    }
    return best > 0;
}

bool isWeightStyle(const std::string& display)
{
    for (const SBuiltinStyle& style : LxFontStyleScan::gBuiltinStyles)
        if (style.display == display) return style.isWeight;
    return false;
}

// The weights named by the weight styles found, else by the compound
// styles, else regular.
std::set<int> weightsOf(const std::vector<std::string>& styles)
{
    std::set<int> weights;
    for (const std::string& style : styles) {
        int weight;
        if (isWeightStyle(style) && weightNamed(style, true, weight)) weights.insert(weight);
    }
    for (const std::string& style : styles) {
        int weight;
        if (weights.empty() && weightNamed(style, false, weight)) weights.insert(weight);
    }
    if (weights.empty()) weights.insert(kRegular);
    return weights;
}

std::set<int> slantsOf(const std::vector<std::string>& styles)
{
    std::set<int> slants;
    for (const std::string& style : styles)
        for (const std::string& word : split(style, ' ')) {
            if (word == "Italic") slants.insert(100);
            if (word == "Oblique" || word == "Slanted") slants.insert(110);
        }
    if (slants.empty()) slants.insert(0);
    return slants;
}

bool sameWeight(int named, int fontconfig)
{
    // Book and Regular are one weight to fontconfig's readers of these files.
    auto bookOrRegular = [](int w) { return w == 75 || w == 80; };
    return named == fontconfig || (bookOrRegular(named) && bookOrRegular(fontconfig));
}

TEST(RealFonts, StylesAgreeWithFontconfigForNearlyEveryFace)
{
    ASSERT_FALSE(faces().empty()) << "no faces found: run scripts/setup.sh to install the font packages";
    LxFontStyleScan::Initialize();
    size_t agreeing = 0;
    for (const Face& face : faces()) {
        std::vector<std::string> styles = stylesOf(face);
        std::set<int> weights = weightsOf(styles);
        std::set<int> slants = slantsOf(styles);
        bool weightAgrees = weights.size() == 1 && sameWeight(*weights.begin(), face.weight);
        bool slopeAgrees = slants.size() == 1 && *slants.begin() == face.slant;
        if (weightAgrees && slopeAgrees) {
            ++agreeing;
            continue;
        }
        std::string found;
        for (const std::string& style : styles) found += "[" + style + "]";
        std::cout << "  disagrees: " << face.postScriptName << " | " << face.fullName << " -> " << found
                  << " (fontconfig weight " << face.weight << ", slant " << face.slant << ")\n";
    }
    double percent = 100.0 * double(agreeing) / double(faces().size());
    std::cout << "Styles agree with fontconfig for " << agreeing << " of " << faces().size() << " faces ("
              << percent << "%)\n";
    RecordProperty("StyleAgreementPercent", std::to_string(percent));
    EXPECT_GE(percent, 95.0);
}

TEST(RealFonts, FamiliesHaveAClassification)
{
    if (ResourceDirectory::FilePath("DefaultClassifications.plist").empty() ||
        !std::ifstream(ResourceDirectory::FilePath("DefaultClassifications.plist")).good())
        GTEST_SKIP() << "DefaultClassifications.plist is not in the data folder yet";
    ASSERT_FALSE(faces().empty()) << "no faces found: run scripts/setup.sh to install the font packages";
    std::set<std::string> families;
    for (const Face& face : faces())
        if (!face.families.empty()) families.insert(face.families[0]);
    size_t classified = 0;
    for (const std::string& family : families) {
        char buffer[256] = "";
        TP_GetClassificationFromFamily(family.c_str(), nullptr, buffer, sizeof buffer);
        if (std::string(buffer) != "--" && buffer[0] != '\0')
            ++classified;
        else
            std::cout << "  unclassified: " << family << "\n";
    }
    double percent = 100.0 * double(classified) / double(families.size());
    std::cout << "Classified " << classified << " of " << families.size() << " families (" << percent
              << "%)\n";
    RecordProperty("ClassifiedPercent", std::to_string(percent));
    EXPECT_GE(percent, 90.0);
}

}  // namespace
