// typeprobe classify FAMILY, typeprobe styles NAME [NAME2]: the library's
// knowledge tables, without a font file.
#include <iostream>

#include "Commands.h"
#include "Diagnostics.h"
#include "ExitCodes.h"
#include "JsonFace.h"
#include "LibraryExtras.h"

namespace tpcli {

int RunClassify(const ClassifyOptions& options)
{
    const auto classification = Classification(options.family, options.alternate.empty()
                                                               ? std::nullopt
                                                               : std::optional(options.alternate));
    if (!classification) {
        ReportError("the classification table could not be read");
        return kExitFailure;
    }
    if (options.format == "json") {
        nlohmann::ordered_json json{{"family", options.family}};
        if (!options.alternate.empty()) json["alternate"] = options.alternate;
        json["classification"] = *classification;
        std::cout << JsonText(json, 2) << '\n';
    } else {
        std::cout << *classification << '\n';
    }
    return kExitOk;
}

int RunStyles(const StylesOptions& options)
{
    const auto styles = Styles(options.first, options.second);
    if (!styles) {
        ReportError("the style keyword table could not be read");
        return kExitFailure;
    }
    if (options.format == "json") {
        std::cout << JsonText(nlohmann::ordered_json(*styles), 2) << '\n';
    } else {
        for (const std::string& style : *styles) std::cout << style << '\n';
    }
    return kExitOk;
}

}  // namespace tpcli
