/* Built as C99: proves the public header is plain C and the library links. */
#include <stdio.h>
#include <typeprobe/typeprobe.h>

int main(void)
{
    unsigned long major = 0, minor = 0;
    TP_GetTypeprobeVersion(&major, &minor);
    printf("version %lu.%lu\n", major, minor);
    printf("unit tests %lu\n", TP_RunUnitTests());
    return (major == 1 && minor == 2) ? 0 : 1;
}
