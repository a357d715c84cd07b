#include "typeprobe/typeprobe.h"

extern "C" {

TP_API unsigned long TP_RunUnitTests(void)
{
    return kTP_IndexOutOfRange;
}

}  // extern "C"
