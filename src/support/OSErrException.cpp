#include "support/OSErrException.h"

OSErrException::OSErrException(const char* message, long code)
    : OSErrException(std::string(message ? message : ""), code)
{
}

OSErrException::OSErrException(const std::string& message, long code)
    : std::runtime_error(ErrMsgWithValue(message, code)), code_(code)
{
}

std::string OSErrException::ErrMsgWithValue(const std::string& message, long code)
{
    return message + ":" + std::to_string(code);
}
