#include "api/FaceWrapper.h"

#include "checksum/CChecksum.h"
#include "containers/MacForks.h"
#include "containers/WebFont.h"
#include "fontfiles/TFontData.h"
#include "resourcefork/ResourceFileAccess.h"
#include "resourcefork/TypeprobeResourceFile.h"

namespace {

bool facesFromResources(const TypeprobeResourceFile* file)
{
    return countResType(file, kTypeFOND) > 0 || countResType(file, kTypePOST) > 0;
}

}  // namespace

void SetFaceWrapper(TP_FontSpecifier& face, const std::string& path,
                    const TypeprobeResourceFile* file)
{
    const char* dataFork = facesFromResources(file) ? nullptr : DataForkWrapper(path);
    if (dataFork || !file) {
        // Without a resource map a face can only come from the data fork;
        // the readers took it for an sfnt if its bytes say nothing else.
        face.wrapper = dataFork ? dataFork : "sfnt";
        face.container = ContainerName(MacForks::Resolve(path).dataContainer);
        return;
    }
    const MacFile& forks = file->macFile();
    face.wrapper = file->isDataFork() ? "dfont" : "resource fork";
    face.container =
        ContainerName(file->isDataFork() ? forks.dataContainer : forks.resourceContainer);
}

bool WrappedAsWebFont(const TP_FontSpecifier& face)
{
    return face.wrapper == "WOFF" || face.wrapper == "WOFF2";
}

unsigned long DecodedWebFontCRC(const std::string& path)
{
    const std::optional<SharedBytes> font = WebFont::DecodeDataFork(path);
    if (!font) return 0;
    return CChecksum::icrc(font->view().data(), font->view().size(), 0);
}
