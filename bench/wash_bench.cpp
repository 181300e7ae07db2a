// The wash path of a final run on a 6000 by 4000 RGB document, stage by stage and whole.
// Reported per pixel of the document. BM_WashPath times the default wash's own stages
// with its texture loaded already (noise, coverage cut and blur, edge source and distance
// transform, edge mask, its sampling into the work area, the composite); the whole run
// plays the default wash (Scratched, from the generated data folder) with surfaces and
// background off through hostsim, acquisition, texture load and write-back included.
#include "effects/Engine.h"
#include "effects/Noise.h"
#include "effects/WashMask.h"
#include "effects/RenderDriver.h"
#include "hostsim/Descriptor.h"
#include "hostsim/Host.h"
#include "host/PluginMain.h"
#include "raster/Raster.h"

#include "EngineWithoutHost.h"
#include "GeneratedData.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <vector>

namespace {

constexpr int32_t kWidth = 6000, kHeight = 4000;
constexpr double kPixels = double(kWidth) * kHeight;

// Pixels a second; 1e9 divided by it is the time per pixel in ns.
void PerPixel(benchmark::State& state) {
    state.counters["pixels"] = benchmark::Counter(kPixels, benchmark::Counter::kIsIterationInvariantRate);
}

void BM_FillNoiseFull(benchmark::State& state) {
    Raster raster;
    raster.MakeRaster(1, RasterRect{0, 0, kHeight, kWidth}, 1, 8, 1, 1);
    for (auto _ : state) benchmark::DoNotOptimize(FillNoiseFull(&raster, 123, kNoiseBlack, kNoiseWhite, 128.0));
    PerPixel(state);
}

void BM_DistanceTransform(benchmark::State& state) {
    std::vector<uint32_t> map(size_t(kWidth) * kHeight);
    for (auto _ : state) {
        state.PauseTiming();
        // A selection-like shape: everything inside a frame is away from the edge.
        for (int32_t y = 0; y < kHeight; ++y)
            for (int32_t x = 0; x < kWidth; ++x)
                map[size_t(y) * kWidth + x] = (x > 0 && y > 0 && x < kWidth - 1 && y < kHeight - 1) ? 1u : 0u;
        state.ResumeTiming();
        benchmark::DoNotOptimize(DistanceTransform(map.data(), kWidth, kHeight));
    }
    PerPixel(state);
}

void BM_WashPath(benchmark::State& state) {
    if (!UseGeneratedData(state)) return;
    const EngineWithoutHost engine(kWidth, kHeight, kWidth, kHeight, false);
    EffectLayer& wash = WashLayers[0];
    FillLayer(wash, LayerWash, false); // the texture load, untimed
    PrepareLayerTexture(wash);
    wash.EdgeMaskWork = static_cast<uint8_t*>(std::calloc(size_t(kWidth) * kHeight, 1));
    for (auto _ : state) {
        wash.CoverageDirty = 1;
        BuildCoverageNoise(wash);
        BuildEdgeSource(wash);
        ResetWorkImage();
        CompositeWash(wash);
    }
    PerPixel(state);
}

void BM_WashFinalRun(benchmark::State& state) {
    if (!UseGeneratedData(state)) return;
    std::vector<uint8> pixels(size_t(kWidth) * kHeight * 3);
    for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = uint8((i * 2654435761u) >> 24);
    hostsim::Descriptor look;
    for (const char* key : {"SFN1", "SFN2", "BkFN"})
        look.PutText(FourCC(*reinterpret_cast<const char(*)[5]>(key)), "No_Texture.qzt");
    double pluginSeconds = 0.0;
    for (auto _ : state) {
        state.PauseTiming();
        hostsim::Host host(hostsim::MakeDocument(kWidth, kHeight, plugInModeRGBColor, 8, pixels, 3), {}, PluginMain);
        state.ResumeTiming();
        benchmark::DoNotOptimize(host.PlayAction(look, plugInDialogDontDisplay));
        pluginSeconds += host.PluginSeconds();
    }
    PerPixel(state);
    // Without hostsim's own work: what a real host would see of us.
    state.counters["plugin_ns_px"] = pluginSeconds / double(state.iterations()) * 1e9 / kPixels;
}

} // namespace

BENCHMARK(BM_FillNoiseFull)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_DistanceTransform)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_WashPath)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_WashFinalRun)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK_MAIN();
