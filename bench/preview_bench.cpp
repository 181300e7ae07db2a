// The preview's re-render costs: the engine as the dialog drives it (DialogOpen 1) on an
// 800 by 533 work area showing a 6000 by 4000 document at fit scale (7.5 filter pixels a
// work pixel), the default look with the generated textures. Each case changes one
// setting the way the dialog's control does, then times RenderLayers alone.
#include "effects/Engine.h"
#include "state/Parameters.h"
#include "effects/RenderDriver.h"

#include "EngineWithoutHost.h"
#include "GeneratedData.h"

#include <benchmark/benchmark.h>

#include <optional>

namespace {

constexpr int32_t kDocWidth = 6000, kDocHeight = 4000;
constexpr int32_t kWorkWidth = 800, kWorkHeight = 533;

// The dialog's state after it opened on the document: a work area, the layers made.
class Preview {
public:
    bool Open(benchmark::State& state) {
        if (!UseGeneratedData(state)) return false;
        engine_.emplace(kDocWidth, kDocHeight, kWorkWidth, kWorkHeight, true);
        CreateEngine();
        RenderLayers(ViewCodeComposite);
        return true;
    }

private:
    std::optional<EngineWithoutHost> engine_;
};

template <typename Change> void Rerender(benchmark::State& state, Change change) {
    Preview preview;
    if (!preview.Open(state)) return;
    int32_t step = 0;
    for (auto _ : state) {
        state.PauseTiming();
        change(++step);
        state.ResumeTiming();
        RenderLayers(ViewCodeComposite);
    }
}

// While the slider is pressed only the curve follows; the setter runs at the release
// and, by its GeometryDirty, prepares the texture again.
void BM_IntensityDrag(benchmark::State& state) {
    Rerender(state, [](int32_t step) {
        gParams->WashIntensity1 = 90 + step % 20;
        WashLayers[0].Intensity = gParams->WashIntensity1;
        SetCurve(WashLayers[0], gParams->WashIntensity1);
    });
}

void BM_IntensityRelease(benchmark::State& state) {
    Rerender(state, [](int32_t step) {
        gParams->WashIntensity1 = 90 + step % 20;
        SetLayerIntensity(WashLayers[0], gParams->WashIntensity1);
    });
}

void BM_CoverageChange(benchmark::State& state) {
    Rerender(state, [](int32_t step) {
        gParams->WashCoverage1 = -40 + step % 60;
        SetLayerCoverage(WashLayers[0], gParams->WashCoverage1);
    });
}

void BM_SurfaceColorChange(benchmark::State& state) {
    Rerender(state, [](int32_t step) {
        gParams->SurfaceMidtoneColor = 0x0000C8C8u + uint32_t(step % 50);
        SurfaceShadeDirty = 1;
    });
}

void BM_ZoomStep(benchmark::State& state) {
    Rerender(state, [](int32_t) {
        MarkAllLayersDirty();
        MarkWashesCoverageDirty();
        for (EffectLayer* wash : {&WashLayers[0], &WashLayers[1]}) wash->EdgeDirty = 1;
    });
}

} // namespace

BENCHMARK(BM_IntensityDrag)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_IntensityRelease)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CoverageChange)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SurfaceColorChange)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ZoomStep)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
