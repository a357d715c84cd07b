// An exception that carries a platform error number. Its text is the message,
// a ":" and the number in decimal.
#pragma once

#include <stdexcept>
#include <string>

class OSErrException : public std::runtime_error {
public:
    OSErrException(const char* message, long code);
    OSErrException(const std::string& message, long code);

    long GetErrorCode() const { return code_; }

    // "message:code".
    static std::string ErrMsgWithValue(const std::string& message, long code);

private:
    long code_;
};
