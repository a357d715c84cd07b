// The hot paths of identification: whole files through TP_CreateSpecifier
// (a small TrueType font, a large collection, a suitcase with printer
// files), the naming-table reader and the CRC. Fonts come from Debian's
// packages (see scripts/setup.sh) and the Mac test fonts.
#include <benchmark/benchmark.h>
#include <libdeflate.h>
#include <zlib.h>

#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "checksum/CChecksum.h"
#include "fontfiles/NamingTable.h"
#include "fontfiles/TrueTypeCollectionFont.h"
#include "typeprobe/typeprobe.h"

namespace {

const char* const kSmallTrueType = "/usr/share/fonts/truetype/liberation2/LiberationSans-Regular.ttf";
const char* const kLargeCollection = "/usr/share/fonts/opentype/noto/NotoSerifCJK-Regular.ttc";
const std::string kSuitcase = std::string(TYPEPROBE_TEST_DATA_DIR) + "/mac/ps-family/DejaVuSerif.bin";

std::vector<uint8_t> readFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {});
}

// Every face with every attribute; bytes per second over the file itself.
void identify(benchmark::State& state, const std::string& path)
{
    const size_t size = readFile(path).size();
    if (size == 0) return state.SkipWithError((path + " is not installed").c_str());
    for (auto _ : state) {
        TP_FontArray* fonts = nullptr;
        if (TP_CreateSpecifier(path.c_str(), 0, kTP_AllAttributes, &fonts) != 0)
            return state.SkipWithError("no faces");
        unsigned long count = 0;
        TP_GetFontCount(fonts, &count);
        benchmark::DoNotOptimize(count);
        TP_SpecifierFree(fonts);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(size));
}

void BM_SmallTrueType(benchmark::State& state) { identify(state, kSmallTrueType); }
void BM_LargeCollection(benchmark::State& state) { identify(state, kLargeCollection); }
void BM_SuitcaseWithPrinterFiles(benchmark::State& state) { identify(state, kSuitcase); }

// Every name output of one face of the large collection, which carries
// names in many languages, read from its standalone bytes.
void BM_NamingTable(benchmark::State& state)
{
    TrueTypeCollectionFont collection(kLargeCollection);
    std::vector<char> face;
    if (collection.GetDataPtrForFace(0, face) != 0)
        return state.SkipWithError("the collection is not installed");
    const ByteView font(face.data(), face.size());
    for (auto _ : state) {
        LxString foundry, family, version, postScriptName, displayName, fullName;
        benchmark::DoNotOptimize(getMetaDataFromNamesTable(font, nullptr, nullptr, 0, &foundry,
                                                           &family, &version, &postScriptName,
                                                           &displayName, &fullName));
    }
}

std::vector<unsigned char> randomBytes(size_t size)
{
    std::mt19937 random(1);
    std::vector<unsigned char> bytes(size);
    for (auto& byte : bytes) byte = static_cast<unsigned char>(random());
    return bytes;
}

// The library's CRC-32 (ISA-L) against zlib's and libdeflate's, on buffers
// from 4 KB to 16 MB.
void BM_CRC(benchmark::State& state)
{
    const auto bytes = randomBytes(size_t(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(CChecksum::icrc(bytes.data(), bytes.size(), 0));
    state.SetBytesProcessed(int64_t(state.iterations()) * state.range(0));
}

void BM_CRC_zlib(benchmark::State& state)
{
    const auto bytes = randomBytes(size_t(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(crc32(0, bytes.data(), uInt(bytes.size())));
    state.SetBytesProcessed(int64_t(state.iterations()) * state.range(0));
}

void BM_CRC_libdeflate(benchmark::State& state)
{
    const auto bytes = randomBytes(size_t(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(libdeflate_crc32(0, bytes.data(), bytes.size()));
    state.SetBytesProcessed(int64_t(state.iterations()) * state.range(0));
}

}  // namespace

BENCHMARK(BM_SmallTrueType)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LargeCollection)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SuitcaseWithPrinterFiles)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_NamingTable)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_CRC)->Arg(4 << 10)->Arg(1 << 20)->Arg(16 << 20);
BENCHMARK(BM_CRC_zlib)->Arg(4 << 10)->Arg(1 << 20)->Arg(16 << 20);
BENCHMARK(BM_CRC_libdeflate)->Arg(4 << 10)->Arg(1 << 20)->Arg(16 << 20);
