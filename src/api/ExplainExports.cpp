#include <exception>
#include <string>

#include "api/CopyOut.h"
#include "containers/MacForks.h"
#include "support/Refusal.h"
#include "typeprobe/typeprobe.h"

namespace {

std::string explain(const char* path, unsigned long options)
{
    if (!MacForks::Describe(path).exists) return "no such file";
    RefusalLog log;
    TP_FontArray* array = nullptr;
    try {
        if (TP_CreateSpecifierWithOptions(path, options, kTP_AllAttributes, &array) == kTP_Success) {
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

TP_API unsigned long TP_ExplainRefusalsWithOptions(const char* path, unsigned long options,
                                                   char* buffer, int bufferLength)
{
    if (!path || !buffer) return kTP_NullArgumentOrNotFound;
    CopyOut(explain(path, options), buffer, bufferLength);
    return kTP_Success;
}

TP_API unsigned long TP_ExplainRefusals(const char* path, char* buffer, int bufferLength)
{
    return TP_ExplainRefusalsWithOptions(path, 0, buffer, bufferLength);
}

}  // extern "C"
