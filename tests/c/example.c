/* The README's example: identify a font file and print each face. */
#include <stdio.h>
#include <typeprobe/typeprobe.h>

int main(int argc, char** argv)
{
    TP_FontArray* faces = NULL;
    unsigned long count = 0, checksum = 0, i;
    if (argc < 2 || TP_CreateSpecifier(argv[1], 0, kTP_AllAttributes, &faces) != kTP_Success) {
        fprintf(stderr, "no font faces found\n");
        return 1;
    }
    TP_GetFontCount(faces, &count);
    for (i = 0; i < count; ++i) {
        char name[256], family[256], kind[64], version[64], foundry[128];
        TP_GetPostScriptName(faces, i, name, sizeof name);
        TP_GetFamilyName(faces, i, family, sizeof family);
        TP_GetKindName(faces, i, kind, sizeof kind);
        TP_GetVersion(faces, i, version, sizeof version);
        TP_GetFoundryName(faces, i, foundry, sizeof foundry);
        TP_GetTypeprobeChecksum(faces, i, &checksum);
        printf("%s (%s), %s %s by %s, checksum %08lX\n", name, family, kind, version, foundry,
               checksum);
    }
    TP_SpecifierFree(faces);
    return 0;
}
