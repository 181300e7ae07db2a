// Loading one 2400 by 1800 texture for a 6000 by 4000 filter rectangle, the way a final
// run does it: inflate, enlarge to cover (2.5 times), orient, and the full-size prepare
// that cuts the texture at its offsets. Reported per output pixel of the filter rectangle.
#include "effects/EffectLayer.h"
#include "state/DialogState.h"
#include "state/PathTable.h"
#include "state/WorkImages.h"
#include "raster/Raster.h"
#include "effects/LayerTexture.h"

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr uint32_t kTextureWidth = 2400, kTextureHeight = 1800;
constexpr int32_t kFilterWidth = 6000, kFilterHeight = 4000;

void Put32(std::vector<uint8_t>& b, uint32_t v) {
    for (int i = 0; i < 4; ++i) b.push_back(uint8_t(v >> (8 * i)));
}

// A texture with some structure (so that it compresses like a real one), written once.
std::string TextureFile(uint32_t planes) {
    const std::string name = "qz_bench_" + std::to_string(planes) + ".qzt";
    const std::string path = TexturePath(name.c_str());
    if (std::filesystem::exists(path)) return path;
    std::vector<uint8_t> raw(size_t(kTextureWidth) * kTextureHeight * planes);
    uint32_t state = 7;
    for (size_t i = 0; i < raw.size(); ++i) {
        state = state * 214013u + 2531011u;
        const size_t x = i % kTextureWidth, y = (i / kTextureWidth) % kTextureHeight;
        raw[i] = uint8_t((x * 3 + y * 5) / 7 + ((state >> 16) & 31));
    }
    uLongf size = compressBound(uLong(raw.size()));
    std::vector<uint8_t> file = {'1', 't', 'z', 'q'};
    Put32(file, kTextureWidth);
    Put32(file, kTextureHeight);
    Put32(file, planes);
    file.resize(52, 0);
    const size_t at = file.size();
    file.resize(at + size);
    compress2(file.data() + at, &size, raw.data(), uLong(raw.size()), 6);
    file.resize(at + size);
    std::FILE* f = std::fopen(path.c_str(), "wb");
    std::fwrite(file.data(), 1, file.size(), f);
    std::fclose(f);
    return path;
}

void LoadTexture(benchmark::State& state, uint32_t planes, int32_t angle) {
    PathTable.Data = std::filesystem::temp_directory_path().string();
    const std::string path = TextureFile(planes);
    FilterWidth = kFilterWidth;
    FilterHeight = kFilterHeight;
    DialogOpen = false;
    PreviewScale = 1.0;
    for (auto _ : state) {
        EffectLayer layer;
        layer.Invert = 1;
        layer.FlipHor = 1;
        layer.FlipVer = 1;
        layer.Angle = angle;
        layer.OffsetY = 250; // of 500 rows of room: the prepare cuts the texture
        if (!LoadLayerTexture(layer, path.c_str())) state.SkipWithError("load failed");
        benchmark::DoNotOptimize(layer.View);
        DestroyLayer(layer);
    }
    state.counters["per_output_pixel"] =
        benchmark::Counter(double(kFilterWidth) * kFilterHeight,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_LoadGreyTexture(benchmark::State& state) { LoadTexture(state, 1, 0); }
void BM_LoadColourTexture(benchmark::State& state) { LoadTexture(state, 3, 0); }
void BM_LoadGreyTextureTurned(benchmark::State& state) { LoadTexture(state, 1, 90); }

} // namespace

BENCHMARK(BM_LoadGreyTexture)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_LoadColourTexture)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_LoadGreyTextureTurned)->Unit(benchmark::kMillisecond)->UseRealTime();

BENCHMARK_MAIN();
