// A drawer page of 15 tiles, as the dialog fills it: from the cache files, from the cache
// with Live Preview (wash, background, surface), and the first visit, when every texture
// is inflated and its cache written. The generated textures are copied to a folder of
// the bench's own, so the caches never land in the build's data folder.
//   thumbs_bench --benchmark_filter=Live
#include "pickers/Thumbnails.h"
#include "raster/Raster.h"
#include "state/Parameters.h"
#include "state/WorkImages.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr int kPage = 15;

struct Fixture {
    fs::path folder;
    Catalogue list;
    FilterParameters params{};
    std::vector<uint8_t> proxy;
    bool ready = false;

    Fixture() {
        const fs::path data = QZ_DATA_DIR;
        if (!fs::exists(data)) return;
        folder = fs::temp_directory_path() / "qz-thumbs-bench";
        fs::remove_all(folder);
        fs::create_directories(folder);
        std::vector<std::string> names;
        for (const fs::directory_entry& e : fs::directory_iterator(data))
            if (e.path().extension() == ".qzt") {
                fs::copy_file(e.path(), folder / e.path().filename());
                if (e.path().filename() != "No_Texture.qzt") names.push_back(e.path().filename().string());
            }
        std::sort(names.begin(), names.end());
        if (names.size() < size_t(kPage)) return;
        std::strncpy(list.Folder, folder.string().c_str(), sizeof list.Folder - 1);
        for (int i = 0; i < kPage; ++i) {
            TextureEntry entry;
            std::strncpy(entry.Name, names[size_t(i)].c_str(), kEntryNameLength);
            entry.SourceIndex = i;
            list.AllEntries.push_back(entry);
        }
        list.ShownEntries = list.AllEntries;

        std::memset(&params, 0, sizeof params);
        gParams = &params;
        InitParameters();
        // An 800 x 600 preview proxy, half of it partly transparent.
        proxy.resize(size_t(800) * 600 * 4);
        for (size_t i = 0; i < proxy.size(); ++i) proxy[i] = uint8_t(i * 2654435761u >> 24);
        for (size_t i = 3; i < proxy.size() / 2; i += 4) proxy[i] = 255;
        SourceRGBA = proxy.data();
        SelectionWidth = 800;
        SelectionHeight = 600;
        Raster* document = NewRaster(3, RasterRect{0, 0, 600, 800}, 4, 8, 0, 0);
        if (document && document->Pixels()) {
            std::memset(document->Pixels(), 120, document->Storage.Bytes);
            BuildDocumentThumb(*document);
        }
        FreeRaster(document);
        ThumbDepthScale = float(params.SurfaceDepth1) / 150.0f;
        ready = true;
    }
    ~Fixture() {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    void DropCaches() {
        for (const TextureEntry& e : list.ShownEntries) fs::remove(folder / (std::string(e.Name) + ".bmp"));
    }
};

Fixture& Data(benchmark::State& state) {
    static Fixture fixture;
    if (!fixture.ready) state.SkipWithError("the generated data folder is missing");
    return fixture;
}

// A page's picture of row i, from its cache file or made (and cached) when there is none.
ThumbImage PageThumb(Fixture& f, int i) {
    ThumbImage picture;
    if (!LoadThumbFile(f.list, i, picture)) MakeThumbFromTexture(f.list, i, picture);
    return picture;
}

void WarmCaches(Fixture& f) {
    for (int i = 0; i < kPage; ++i) PageThumb(f, i);
}

void BM_PageFirstVisit(benchmark::State& state) {
    Fixture& f = Data(state);
    if (!f.ready) return;
    for (auto _ : state) {
        state.PauseTiming();
        f.DropCaches();
        state.ResumeTiming();
        for (int i = 0; i < kPage; ++i) benchmark::DoNotOptimize(PageThumb(f, i).bytes.data());
    }
}
BENCHMARK(BM_PageFirstVisit)->Unit(benchmark::kMillisecond);

void BM_PageFromCache(benchmark::State& state) {
    Fixture& f = Data(state);
    if (!f.ready) return;
    WarmCaches(f);
    for (auto _ : state)
        for (int i = 0; i < kPage; ++i) {
            ThumbImage picture;
            LoadThumbFile(f.list, i, picture);
            benchmark::DoNotOptimize(picture.bytes.data());
        }
}
BENCHMARK(BM_PageFromCache)->Unit(benchmark::kMillisecond);

// Arg: the drawer's target, 0 wash, 1 background, 2 surface.
void BM_PageLive(benchmark::State& state) {
    Fixture& f = Data(state);
    if (!f.ready) return;
    const uint8_t target = uint8_t(state.range(0));
    if (target == kWashTarget) PrepareUnderlay(4.0f, 2048, f.list.Folder);
    WarmCaches(f);
    for (auto _ : state)
        for (int i = 0; i < kPage; ++i) {
            ThumbImage picture;
            LoadThumbFile(f.list, i, picture);
            RenderLive(picture, target, 4.0f, 2048);
            benchmark::DoNotOptimize(picture.bytes.data());
        }
    FreeUnderlay();
}
BENCHMARK(BM_PageLive)->Arg(kWashTarget)->Arg(kBackgroundTarget)->Arg(kSurfaceTarget)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
