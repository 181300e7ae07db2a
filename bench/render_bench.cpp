// A final run of the default look (wash, surface and background with their default
// textures from the generated data folder) on a 6000 by 4000 RGB document through
// hostsim, single thread. Reported per pixel of the document: the whole run, the
// plug-in's share of it, each stage (timed between the render's own progress marks, host
// work included), and the peak resident memory of the process.
//   render_bench --benchmark_filter=DefaultLook   (run alone for an honest peak)
#include "hostsim/Descriptor.h"
#include "hostsim/Host.h"
#include "host/PluginMain.h"

#include "GeneratedData.h"

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <chrono>
#include <map>
#include <vector>

namespace {

constexpr int32_t kWidth = 6000, kHeight = 4000;
constexpr double kPixels = double(kWidth) * kHeight;

using Clock = std::chrono::steady_clock;

double Seconds(const timeval& t) { return double(t.tv_sec) + double(t.tv_usec) * 1e-6; }

// Which stage the render is in after reporting a mark; the marks are the driver's.
const char* StageAfter(int32_t done) {
    if (done < 10) return "t0_acquire";
    if (done < 20) return "t1_surface_prepare";
    if (done < 40) return "t2_surface_shade";
    if (done < 50) return "t3_surface_merge";
    if (done < 70) return "t4_wash";
    if (done < 90) return "t5_background_place";
    return "t6_background_composite";
}

void BM_DefaultLook(benchmark::State& state) {
    if (!UseGeneratedData(state)) return;
    std::map<std::string, double> seconds;
    double pluginSeconds = 0.0, userSeconds = 0.0, systemSeconds = 0.0;
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<uint8> pixels(size_t(kWidth) * kHeight * 3);
        for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = uint8((i * 2654435761u) >> 24);
        hostsim::Host host(hostsim::MakeDocument(kWidth, kHeight, plugInModeRGBColor, 8, std::move(pixels), 3), {},
                           PluginMain);
        Clock::time_point last = Clock::now();
        const char* stage = "t0_acquire";
        int tens = 0; // the acquisition ends at 10, the engine is made before the render's 10
        host.SetProgressObserver([&](int32 done, int32 total) {
            if (total == 0) return;
            const Clock::time_point now = Clock::now();
            seconds[stage] += std::chrono::duration<double>(now - last).count();
            last = now;
            if (done == 10 && tens < 2) ++tens;
            stage = tens == 0 ? "t0_acquire" : tens == 1 && done <= 10 ? "t0_engine_create" : StageAfter(done);
        });
        rusage before = {};
        getrusage(RUSAGE_SELF, &before);
        state.ResumeTiming();
        benchmark::DoNotOptimize(host.PlayAction(hostsim::Descriptor(), plugInDialogDontDisplay));
        pluginSeconds += host.PluginSeconds();
        rusage after = {};
        getrusage(RUSAGE_SELF, &after);
        userSeconds += Seconds(after.ru_utime) - Seconds(before.ru_utime);
        systemSeconds += Seconds(after.ru_stime) - Seconds(before.ru_stime);
    }
    // The whole figure includes hostsim's own work (buffers in and out, merging); the
    // plug-in's share is what a real host would see of us.
    state.counters["plugin_ns_px"] = pluginSeconds / double(state.iterations()) * 1e9 / kPixels;
    // The whole run's processor time in user code and in the kernel (fresh pages mostly).
    state.counters["user_ns_px"] = userSeconds / double(state.iterations()) * 1e9 / kPixels;
    state.counters["kernel_ns_px"] = systemSeconds / double(state.iterations()) * 1e9 / kPixels;
    for (const auto& [name, s] : seconds)
        state.counters[name + "_ns_px"] = s / double(state.iterations()) * 1e9 / kPixels;
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["peak_bytes_px"] = double(usage.ru_maxrss) * 1024.0 / kPixels;
    state.counters["pixels"] = benchmark::Counter(kPixels, benchmark::Counter::kIsIterationInvariantRate);
}

} // namespace

BENCHMARK(BM_DefaultLook)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK_MAIN();
