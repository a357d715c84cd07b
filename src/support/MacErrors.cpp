#include "support/MacErrors.h"

#include <cerrno>

namespace MacError {

short FromErrno(int err)
{
    switch (err) {
    case 0: return noErr;
    case ENOENT: return fnfErr;
    case EEXIST: return dupFNErr;
    case EINVAL:
    case EFAULT:
    case EBADF: return paramErr;
    case EXDEV: return diffVolErr;
    case EIO: return ioErr;
    case ENAMETOOLONG:
    case ELOOP:
    case EILSEQ: return bdNamErr;
    case ENOTDIR: return dirNFErr;
    case EISDIR: return notAFileErr;
    case EACCES:
    case EPERM: return afpAccessDenied;
    case EROFS: return wPrErr;
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return dskFulErr;
    case ENOTEMPTY:
    case EBUSY:
    case ETXTBSY: return fBsyErr;
    case EMFILE:
    case ENFILE: return tmfoErr;
    case ENOMEM: return memFullErr;
    case ENODEV:
    case ENXIO: return nsvErr;
    default: return ioErr;
    }
}

}  // namespace MacError
