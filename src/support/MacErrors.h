// The Mac file-system error numbers that this layer reports, and the mapping
// from POSIX errno values onto them. Callers test some of these by value, so
// a missing file is -43 here just as it is on the Mac.
#pragma once

namespace MacError {

enum : short {
    noErr = 0,
    dskFulErr = -34,
    nsvErr = -35,
    ioErr = -36,
    bdNamErr = -37,
    tmfoErr = -42,
    fnfErr = -43,
    wPrErr = -44,
    fBsyErr = -47,
    dupFNErr = -48,
    paramErr = -50,
    memFullErr = -108,
    dirNFErr = -120,
    notAFileErr = -1302,
    diffVolErr = -1303,
    coreFoundationUnknownErr = -4960,
    afpAccessDenied = -5000,
};

// The Mac error number that stands for `err`; 0 for 0, ioErr for values
// without a closer match.
short FromErrno(int err);

}  // namespace MacError
