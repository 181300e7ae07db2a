// The cache files: what is written reads back byte for byte, and damaged or hostile
// files are refused without reading past their end.
#include "pickers/BmpFile.h"

#include "common/TempPaths.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

std::vector<uint8_t> FileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {});
}

void Set32(std::vector<uint8_t>& b, size_t i, uint32_t v) {
    for (int k = 0; k < 4; ++k) b[i + k] = uint8_t(v >> (8 * k));
}

} // namespace

TEST(BmpFile, RoundTripsByBytesWithAndWithoutRowPadding) {
    // 112 wide needs no padding (336 bytes a row); 61 wide pads 183 bytes to 184. The
    // caller's rows are wider still and hold junk past their pixels.
    for (const auto& [width, padded] : {std::pair{112, 336}, std::pair{61, 184}}) {
        const int32_t height = width == 112 ? 84 : 61, stride = padded + 8;
        std::vector<uint8_t> pixels(size_t(stride) * height, 0xEE);
        for (int32_t y = 0; y < height; ++y)
            for (int32_t x = 0; x < width * 3; ++x) pixels[size_t(y) * stride + x] = uint8_t(x * 7 + y * 13);
        const std::string path = (ProcessTempDir() / ("rt" + std::to_string(width) + ".bmp")).string();
        ASSERT_TRUE(WriteBmp(pixels.data(), width, height, stride, path.c_str()));
        const std::vector<uint8_t> file = FileBytes(path);
        ASSERT_EQ(file.size(), size_t(54 + padded * height));
        EXPECT_EQ(file[2] | file[3] << 8 | file[4] << 16, int(file.size()));

        ThumbImage image;
        ASSERT_TRUE(ReadBmp(path.c_str(), image));
        ASSERT_TRUE(image.width == width && image.height == height && image.stride == padded);
        for (int32_t y = 0; y < height; ++y)
            for (int32_t x = 0; x < padded; ++x)
                ASSERT_EQ(image.bytes[size_t(y) * padded + x], x < width * 3 ? pixels[size_t(y) * stride + x] : 0);
    }
}

TEST(BmpFile, DamagedAndHostileFilesAreRefused) {
    std::vector<uint8_t> pixels(size_t(184) * 61, 90);
    const std::string path = (ProcessTempDir() / "good.bmp").string();
    ASSERT_TRUE(WriteBmp(pixels.data(), 61, 61, 184, path.c_str()));
    const std::vector<uint8_t> good = FileBytes(path);
    struct Damage {
        const char* what;
        size_t at; // 0: cut the file to `value` bytes
        uint32_t value;
    };
    const Damage damages[] = {{"one byte short", 0, uint32_t(good.size() - 1)},
                              {"magic", 0, 0xFFFFFFFF},
                              {"depth 32", 28, 32},
                              {"top-down", 22, uint32_t(-61)},
                              {"absurd width", 18, 0x7FFFFFFF},
                              {"offset wraps", 10, 0xFFFFFFF0u},
                              {"offset past the end", 10, uint32_t(good.size() + 100)}};
    for (const Damage& d : damages) {
        std::vector<uint8_t> b = good;
        if (d.value == 0xFFFFFFFF) b[1] = 'A';
        else if (d.at == 0) b.resize(d.value);
        else Set32(b, d.at, d.value);
        ThumbImage image{5, 5, 15, {1}};
        EXPECT_FALSE(ReadBmpBytes(b.data(), b.size(), image)) << d.what;
        EXPECT_TRUE(image.width == 0 && image.bytes.empty()) << d.what;
    }
}
