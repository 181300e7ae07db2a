// The dialog's preview path without a window: a 6000 by 4000 RGB document through hostsim
// in-process, an 800 by 600 preview, the default look with the generated textures. A
// stand-in for the dialog plays what the window procedure does at opening, zoom steps,
// fit, full size and a pan release (geometry, acquisition, under-image, render, picture),
// and each case is timed as a whole, host work included. A preset row clicked (every layer
// rebuilt) and a list of 500 presets read are timed the same way.
//   dialog_bench --benchmark_filter=Zoom
#include "dialog/PresetRows.h"
#include "dialog/PreviewPicture.h"
#include "effects/Background.h"
#include "effects/EffectLayer.h"
#include "effects/LayerTexture.h"
#include "effects/RenderDriver.h"
#include "effects/Surface.h"
#include "hostsim/Host.h"
#include "host/ChannelAccess.h"
#include "host/Dialog.h"
#include "host/PluginMain.h"
#include "host/PreviewGeometry.h"
#include "host/Rectangles.h"
#include "host/RunFilter.h"
#include "host/Session.h"
#include "presets/PresetFormat.h"
#include "presets/PresetLibrary.h"
#include "state/Parameters.h"
#include "state/WorkImages.h"

#include "GeneratedData.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace {

constexpr int32_t kWidth = 6000, kHeight = 4000;
constexpr int32_t kPreviewWidth = 800, kPreviewHeight = 600;

using Clock = std::chrono::steady_clock;

// Milliseconds by stage over the timed iterations, reported per iteration.
std::map<std::string, double> Stages;
template <typename F> void Stage(const char* name, F f) {
    const Clock::time_point began = Clock::now();
    f();
    Stages[name] += std::chrono::duration<double, std::milli>(Clock::now() - began).count();
}
void Report(benchmark::State& state) {
    for (const auto& [name, ms] : Stages)
        state.counters[name] = benchmark::Counter(ms / double(std::max<int64_t>(state.iterations(), 1)));
    Stages.clear();
}

std::function<void()>& Play() {
    static std::function<void()> play;
    return play;
}

// The dialog's picture from the host's output, as BuildPicture makes it.
PreviewPicture Picture(const UnderImage& under) {
    const VRect out = GetOutRect();
    const PreviewSource source{gFilterRecord->outData,
                               gFilterRecord->outRowBytes,
                               gFilterRecord->planes,
                               RectWidth(out),
                               RectHeight(out),
                               false,
                               false};
    return BuildPreviewPicture(source, &under, kPreviewWidth, kPreviewHeight);
}

// What the dialog does after new rectangles: the source anew, the buffers of a new area,
// what lies under, a render and the picture.
void Acquire(UnderImage& under, bool renew) {
    const int32_t width = ImageWidth, height = ImageHeight;
    Stage("acquire", AcquirePreviewSource);
    if (renew || (width && (ImageWidth != width || ImageHeight != height))) {
        Stage("renew", [] {
            FreeWashMaskWork();
            PrepareLayerTexture(SurfaceLayers[0]);
            if (gParams->SecondSurfaceExists) PrepareLayerTexture(SurfaceLayers[1]);
            AllocateReliefBuffers();
            AllocateBackgroundImage();
        });
    }
    Stage("under", [&under] {
        under = {};
        if (MergedBelow)
            under =
                BuildUnderImage(*MergedBelow, ImageWidth, ImageHeight, PreviewOriginX, PreviewOriginY, PreviewScale);
    });
}

void Refresh(UnderImage& under) {
    Stage("render", [] { RunFilter(); });
    Stage("picture", [&under] { benchmark::DoNotOptimize(Picture(under).bgr.data()); });
}

// Runs `body` as the dialog of a menu run over the big document, opened as the dialog
// opens; the host is made once per case.
void WithOpenDialog(benchmark::State& state, std::function<void(PreviewPan&, ZoomButtons&, UnderImage&)> body,
                    bool opening = false) {
    if (!UseGeneratedData(state)) return;
    std::vector<uint8> pixels(size_t(kWidth) * kHeight * 3);
    for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = uint8((i * 2654435761u) >> 24);
    hostsim::Host host(hostsim::MakeDocument(kWidth, kHeight, plugInModeRGBColor, 8, std::move(pixels), 3), {},
                       PluginMain);
    Play() = [&] {
        if (opening) state.ResumeTiming();
        PreviewPan pan{kPreviewWidth, kPreviewHeight};
        ZoomButtons buttons;
        UnderImage under;
        Stage("open_layers", ReadDocumentLayers);
        Stage("open_geometry", [&] { OpenPreviewGeometry(pan, buttons); });
        Acquire(under, false);
        Stage("open_engine", CreateEngine);
        Refresh(under);
        // The opening's share is reported by BM_Open alone.
        if (!opening) Stages.clear();
        body(pan, buttons, under);
    };
    DialogStandIn = [] {
        DialogOpen = true;
        Play()();
        DestroyEngine();
        FreeWorkImages();
        FreeDocumentLayers();
        DialogOpen = false;
        return false;
    };
    host.RunFilter();
    DialogStandIn = nullptr;
    Play() = nullptr;
}

void BM_Open(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        WithOpenDialog(
            state, [&state](PreviewPan&, ZoomButtons&, UnderImage&) { state.PauseTiming(); }, true);
        state.ResumeTiming();
    }
    Report(state);
}

void BM_ZoomOutAndIn(benchmark::State& state) {
    WithOpenDialog(state, [&state](PreviewPan& pan, ZoomButtons& buttons, UnderImage& under) {
        for (auto _ : state) {
            Stage("geometry", [&] { ZoomDown(pan, buttons); });
            Acquire(under, false);
            Refresh(under);
            Stage("geometry", [&] { ZoomUp(pan, buttons); });
            Acquire(under, true);
            Refresh(under);
        }
    });
    Report(state);
}

void BM_FitAndActual(benchmark::State& state) {
    WithOpenDialog(state, [&state](PreviewPan& pan, ZoomButtons& buttons, UnderImage& under) {
        for (auto _ : state) {
            Stage("geometry", [&] { ZoomToFit(pan, buttons); });
            Acquire(under, false);
            Refresh(under);
            Stage("geometry", [&] { ZoomToActual(pan, buttons); });
            Acquire(under, false);
            Refresh(under);
        }
    });
    Report(state);
}

void BM_PanRelease(benchmark::State& state) {
    WithOpenDialog(state, [&state](PreviewPan& pan, ZoomButtons&, UnderImage& under) {
        int32_t step = 0;
        for (auto _ : state) {
            const int32_t d = ++step % 2 ? -100 : 100;
            pan.dragMovedX = d, pan.dragMovedY = d;
            ReleasePan(pan);
            Stage("geometry", [&] { ApplyPan(pan); });
            Acquire(under, false);
            Refresh(under);
        }
    });
    Report(state);
}

// Two shipped Basic presets in turn, as their rows' clicks do it: load, rebuild, render.
void BM_PresetRow(benchmark::State& state) {
    WithOpenDialog(state, [&state](PreviewPan&, ZoomButtons&, UnderImage& under) {
        const std::vector<std::string> rows = FillPresetList(PresetBasic);
        if (rows.size() < 4) {
            state.SkipWithError("no shipped Basic presets");
            return;
        }
        const FilterParameters lastUsed = *gParams;
        size_t next = 2;
        for (auto _ : state) {
            Stage("load", [&] { ApplyPresetRow(PresetBasic, int32_t(next), rows[next], lastUsed, nullptr); });
            Stage("rebuild", [] {
                CreateEngine();
                KeepWashLayers = KeepSurfaceLayers = KeepBackgroundLayer = false;
            });
            Refresh(under);
            next = next == 2 ? 3 : 2;
        }
    });
    Report(state);
}

// A folder of 500 presets read into rows, as a page's list is filled.
void BM_ListOf500(benchmark::State& state) {
    const std::filesystem::path root = std::filesystem::temp_directory_path() / "qz-bench-presets";
    std::filesystem::remove_all(root);
    std::filesystem::create_directories(root / "Quenzit" / "Presets" / "User");
    for (int i = 0; i < 500; ++i)
        std::ofstream(root / "Quenzit" / "Presets" / "User" / ("Look_" + std::to_string(i) + ".qztpst"))
            << kPresetHeader << "\n";
    SetModuleFilePathOverride((root / "Quenzit64.8bf").string());
    ComputePaths();
    for (auto _ : state) benchmark::DoNotOptimize(FillPresetList(PresetUser).size());
    std::filesystem::remove_all(root);
}

} // namespace

BENCHMARK(BM_Open)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_ZoomOutAndIn)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_FitAndActual)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_PanRelease)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_PresetRow)->Unit(benchmark::kMillisecond)->Iterations(6);
BENCHMARK(BM_ListOf500)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
