// The rotor's sphere painter at the control's size: it repaints at every mouse step of a
// drag, so a paint must stay well under a millisecond. Lit and pad, at a few light angles.
#include "controls/Sphere.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace {

void PaintAt(benchmark::State& state, bool pad) {
    const int32_t size = int32_t(state.range(0));
    std::vector<uint32_t> bits(size_t(size) * size);
    const PixelView view{bits.data(), size, size, size};
    float alpha = 0;
    for (auto _ : state) {
        // A drag moves the light a little each step.
        PaintSphere(view, SphereLook{alpha, 40.0f, pad, true, PixelOf(240, 240, 240)});
        alpha = alpha > 170.0f ? -180.0f : alpha + 7.0f;
        benchmark::DoNotOptimize(bits.data());
    }
    state.SetItemsProcessed(state.iterations());
}

void BM_LightingSphere(benchmark::State& state) { PaintAt(state, false); }
void BM_OffsetPad(benchmark::State& state) { PaintAt(state, true); }

BENCHMARK(BM_LightingSphere)->Arg(60)->Arg(120)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_OffsetPad)->Arg(60)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
