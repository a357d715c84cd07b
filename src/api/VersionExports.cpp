#include "typeprobe/typeprobe.h"

extern "C" {

TP_API void TP_GetTypeprobeVersion(unsigned long* major, unsigned long* minor)
{
    if (!major || !minor) return;
    *major = 1;
    *minor = 2;
}

}  // extern "C"
