// The art generator as the build runs it: the same bytes on every run, and files that
// match the table of ids the module and the dialog rely on.
#include "common/ArtChecks.h"
#include "common/TempPaths.h"

#include "resources/ArtIds.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::vector<uint8_t> ReadAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

uint32_t Le(const std::vector<uint8_t>& b, size_t at, int bytes) {
    uint32_t v = 0;
    for (int i = 0; i < bytes && at + size_t(i) < b.size(); ++i) v |= uint32_t(b[at + size_t(i)]) << (8 * i);
    return v;
}

std::map<std::string, std::vector<uint8_t>> Generate(const fs::path& dir) {
    const std::string command = std::string("\"") + QZ_ARTGEN + "\" \"" + dir.string() + "\"";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    std::map<std::string, std::vector<uint8_t>> files;
    for (const auto& entry : fs::directory_iterator(dir))
        files[entry.path().filename().string()] = ReadAll(entry.path());
    return files;
}

// Each image entry of a cursor or icon file: width, height, and the two words after them.
struct DirEntry {
    uint32_t width, height, word1, word2;
};

std::vector<DirEntry> IconDirectory(const std::vector<uint8_t>& file, uint32_t type) {
    std::vector<DirEntry> entries;
    EXPECT_EQ(Le(file, 0, 2), 0u);
    EXPECT_EQ(Le(file, 2, 2), type);
    for (uint32_t i = 0, n = Le(file, 4, 2); i < n; ++i) {
        const size_t at = 6 + 16 * size_t(i);
        const uint32_t length = Le(file, at + 8, 4), offset = Le(file, at + 12, 4);
        EXPECT_LE(size_t(offset) + length, file.size());
        const uint32_t w = file[at] ? file[at] : 256, h = file[at + 1] ? file[at + 1] : 256;
        // The image: an info header whose height counts the colour rows and the mask rows.
        EXPECT_EQ(Le(file, offset, 4), 40u);
        EXPECT_EQ(Le(file, offset + 4, 4), w);
        EXPECT_EQ(Le(file, offset + 8, 4), 2 * h);
        EXPECT_EQ(Le(file, offset + 14, 2), 32u);
        EXPECT_EQ(length, 40 + w * h * 4 + (w + 31) / 32 * 4 * h);
        entries.push_back({w, h, Le(file, at + 4, 2), Le(file, at + 6, 2)});
    }
    return entries;
}

} // namespace

TEST(ArtGenerator, TwoRunsWriteTheSameFilesThatMatchTheTable) {
    const fs::path one = ProcessTempDir() / "art-one", two = ProcessTempDir() / "art-two";
    const auto first = Generate(one), second = Generate(two);
    ASSERT_FALSE(first.empty());
    ASSERT_EQ(first.size(), second.size());
    for (const auto& [name, bytes] : first) {
        if (name == "art.rc") continue; // names its own folder
        ASSERT_TRUE(second.count(name)) << name;
        EXPECT_TRUE(bytes == second.at(name)) << name << " differs between two runs";
    }

    // Every bitmap of the table, as a BMP file of its size and depth.
    std::set<std::string> expected = {"art.rc", "cursor-144.cur", "cursor-145.cur", "icon-230.ico", "sound-236.wav"};
    for (const art::BitmapSpec& want : art::kBitmaps) {
        const std::string name = "bitmap-" + std::to_string(want.id) + ".bmp";
        expected.insert(name);
        ASSERT_TRUE(first.count(name)) << name;
        const std::vector<uint8_t>& bmp = first.at(name);
        ASSERT_GT(bmp.size(), 54u);
        EXPECT_EQ(bmp[0], 'B');
        EXPECT_EQ(bmp[1], 'M');
        EXPECT_EQ(Le(bmp, 2, 4), bmp.size());
        EXPECT_EQ(Le(bmp, 10, 4), 54 + (want.bits == 8 ? 4 * Le(bmp, 46, 4) : 0))
            << name << ": pixels follow the palette";
        CheckDib(bmp.data() + 14, bmp.size() - 14, want);
        if (want.id == art::kCornerWeights) CheckCornerWeights(bmp.data() + 14, bmp.size() - 14);
    }
    std::set<std::string> written;
    for (const auto& [name, bytes] : first) written.insert(name);
    EXPECT_EQ(written, expected);

    for (int id : {art::kCursorPreviewDrag, art::kCursorPreviewHover}) {
        const auto entries = IconDirectory(first.at("cursor-" + std::to_string(id) + ".cur"), 2);
        ASSERT_EQ(entries.size(), 1u);
        EXPECT_EQ(entries[0].width, uint32_t(art::kCursorSize));
        EXPECT_LT(entries[0].word1, entries[0].width) << "hot spot x";
        EXPECT_LT(entries[0].word2, entries[0].height) << "hot spot y";
    }
    const auto icons = IconDirectory(first.at("icon-230.ico"), 1);
    ASSERT_EQ(icons.size(), std::size(art::kIconSizes));
    for (size_t i = 0; i < icons.size(); ++i) EXPECT_EQ(icons[i].width, uint32_t(art::kIconSizes[i]));

    const std::vector<uint8_t>& wave = first.at("sound-236.wav");
    CheckAutoSound(wave.data(), wave.size());

    // The resource script names every file once, by its number and type.
    const std::vector<uint8_t>& rc = first.at("art.rc");
    std::istringstream lines(std::string(rc.begin(), rc.end()));
    std::set<std::string> named;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("//", 0) == 0 || line.empty()) continue;
        std::istringstream words(line);
        std::string id, type, path;
        words >> id >> type >> path;
        const std::string file = fs::path(path.substr(1, path.size() - 2)).filename().string();
        EXPECT_TRUE(named.insert(file).second) << file << " named twice";
        EXPECT_NE(file.find(id), std::string::npos) << line;
        const std::string ext = fs::path(file).extension().string();
        const std::map<std::string, std::string> types = {
            {".bmp", "BITMAP"}, {".cur", "CURSOR"}, {".ico", "ICON"}, {".wav", "WAVE"}};
        EXPECT_EQ(type, types.at(ext)) << line;
    }
    EXPECT_EQ(named.size(), expected.size() - 1);
}
