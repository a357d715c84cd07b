// typeprobe version
#include <iostream>

#include "Commands.h"
#include "ExitCodes.h"
#include "JsonFace.h"
#include "Library.h"

namespace tpcli {

int RunVersion(const std::string& format)
{
    unsigned long major = 0, minor = 0;
    Library().TP_GetTypeprobeVersion(&major, &minor);
    const std::string library = std::to_string(major) + "." + std::to_string(minor);
    if (format == "json") {
        std::cout << JsonText({{"tool", ToolVersion()}, {"library", library}}, 2) << '\n';
    } else {
        std::cout << "typeprobe " << ToolVersion() << " (library " << library << ")\n";
    }
    return kExitOk;
}

const char* ToolVersion() { return TYPEPROBE_CLI_VERSION; }

}  // namespace tpcli
