// qz-texgen OUTDIR [--only NAME] [--jobs N]: generates the shipped texture library.
// The output is the same, byte for byte, on every run and every machine.
#include "TextureLibrary.h"
#include "TextureWriter.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

// Level 3 packs these noisy planes within a fraction of a percent of level 6, in
// half the time. The planes are the same on every machine; the compressed bytes are
// the same wherever the same zlib is used.
constexpr int kLevel = 3;

int Usage() {
    std::fprintf(stderr, "usage: qz-texgen OUTDIR [--only NAME] [--jobs N]\n");
    return 1;
}

double Seconds(std::chrono::steady_clock::time_point since) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) return Usage();
    const std::string outDir = argv[1];
    std::string only;
    unsigned jobs = std::max(1u, std::thread::hardware_concurrency());
    for (int i = 2; i < argc; ++i) {
        const std::string opt = argv[i];
        if (opt == "--only" && i + 1 < argc) {
            only = argv[++i];
        } else if (opt == "--jobs" && i + 1 < argc) {
            const int n = std::atoi(argv[++i]);
            if (n < 1) return Usage();
            jobs = unsigned(n);
        } else {
            return Usage();
        }
    }
    std::vector<const TextureSpec*> todo;
    for (const TextureSpec& s : TextureCatalogue())
        if (only.empty() || only == s.name || only + ".qzt" == s.name) todo.push_back(&s);
    if (todo.empty()) {
        std::fprintf(stderr, "qz-texgen: no texture named %s\n", only.c_str());
        return 1;
    }
    std::error_code ec;
    std::filesystem::create_directories(outDir, ec);
    if (ec) {
        std::fprintf(stderr, "qz-texgen: cannot create %s: %s\n", outDir.c_str(), ec.message().c_str());
        return 2;
    }

    const auto start = std::chrono::steady_clock::now();
    std::atomic<size_t> next{0};
    std::atomic<bool> failed{false};
    std::mutex printing;
    auto worker = [&] {
        for (size_t i = next++; i < todo.size(); i = next++) {
            const TextureSpec& entry = *todo[i];
            const auto t0 = std::chrono::steady_clock::now();
            const synth::Texture tex = RenderTexture(entry);
            std::string error;
            bool ok = tex.planes == entry.planes;
            if (!ok) error = "generator made " + std::to_string(tex.planes) + " planes";
            ok = ok && WriteTextureFile(outDir + "/" + entry.name, uint32_t(tex.w), uint32_t(tex.h),
                                        uint32_t(tex.planes), tex.data.data(), {entry.setId, 0, entry.effectMask},
                                        TextureHeaderForm::Current, error, kLevel);
            std::lock_guard<std::mutex> lock(printing);
            if (!ok) {
                failed = true;
                std::fprintf(stderr, "qz-texgen: %s: %s\n", entry.name, error.c_str());
            } else {
                std::printf("%-28s %4d x %-4d %s %5.2f s\n", entry.name, tex.w, tex.h,
                            tex.planes == 1 ? "grey  " : "colour", Seconds(t0));
            }
        }
    };
    std::vector<std::thread> threads;
    for (unsigned t = 0; t < jobs && t < todo.size(); ++t) threads.emplace_back(worker);
    for (std::thread& t : threads) t.join();
    std::printf("qz-texgen: %zu textures in %.1f s with %u jobs\n", todo.size(), Seconds(start), jobs);
    return failed ? 2 : 0;
}
