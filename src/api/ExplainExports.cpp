#include <exception>
#include <string>

#include "api/CopyOut.h"
#include "containers/MacForks.h"
#include "support/Refusal.h"
#include "typeprobe/typeprobe.h"

namespace {

std::string explain(const char* path)
{
    if (!MacForks::Describe(path).exists) return "no such file";
    RefusalLog log;
    TP_FontArray* array = nullptr;
    try {
        if (TP_CreateSpecifier(path, 0, kTP_AllAttributes, &array) == kTP_Success) {
            TP_SpecifierFree(array);
            return log.text();
        }
    } catch (const std::exception& error) {
        Refuse("identification stopped: ", error.what());
    }
    return log.reasons().empty() ? "no reader recognised the file" : log.text();
}

}  // namespace

extern "C" {

TP_API unsigned long TP_ExplainRefusals(const char* path, char* buffer, int bufferLength)
{
    if (!path || !buffer) return kTP_NullArgumentOrNotFound;
    CopyOut(explain(path), buffer, bufferLength);
    return kTP_Success;
}

}  // extern "C"
