// The cache files: what is written reads back byte for byte, and damaged or hostile
// files are refused without reading past their end.
#include "pickers/BmpFile.h"

#include "common/TempPaths.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

std::vector<uint8_t> FileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {});
}

uint32_t At32(const std::vector<uint8_t>& b, size_t i) {
    return uint32_t(b[i]) | uint32_t(b[i + 1]) << 8 | uint32_t(b[i + 2]) << 16 | uint32_t(b[i + 3]) << 24;
}
void Set32(std::vector<uint8_t>& b, size_t i, uint32_t v) {
    for (int k = 0; k < 4; ++k) b[i + k] = uint8_t(v >> (8 * k));
}

} // namespace

TEST(BmpFile, RoundTripsByBytesWithAndWithoutRowPadding) {
    // 112 wide needs no padding (336 bytes a row); 61 wide pads 183 bytes to 184.
    for (const int32_t width : {112, 61}) {
        const int32_t height = width == 112 ? 84 : 61;
        const int32_t padded = width == 112 ? 336 : 184;
        // The caller's buffer is wider than a row and holds junk past each row's pixels.
        const int32_t stride = padded + 8;
        std::vector<uint8_t> pixels(size_t(stride) * height, 0xEE);
        for (int32_t y = 0; y < height; ++y)
            for (int32_t x = 0; x < width * 3; ++x) pixels[size_t(y) * stride + x] = uint8_t(x * 7 + y * 13);
        const std::string path = (ProcessTempDir() / ("rt" + std::to_string(width) + ".bmp")).string();
        ASSERT_TRUE(WriteBmp(pixels.data(), width, height, stride, path.c_str()));

        const std::vector<uint8_t> file = FileBytes(path);
        ASSERT_EQ(file.size(), size_t(54 + padded * height));
        EXPECT_EQ(file[0], 'B');
        EXPECT_EQ(file[1], 'M');
        EXPECT_EQ(At32(file, 2), uint32_t(file.size()));
        EXPECT_EQ(At32(file, 10), 54u);
        EXPECT_EQ(At32(file, 14), 40u);
        EXPECT_EQ(file[28], 24);

        ThumbImage image;
        ASSERT_TRUE(ReadBmp(path.c_str(), image));
        EXPECT_EQ(image.width, width);
        EXPECT_EQ(image.height, height);
        EXPECT_EQ(image.stride, padded);
        for (int32_t y = 0; y < height; ++y)
            for (int32_t x = 0; x < padded; ++x) {
                const uint8_t want = x < width * 3 ? pixels[size_t(y) * stride + x] : 0; // padding zeroed
                ASSERT_EQ(image.bytes[size_t(y) * padded + x], want) << x << "," << y;
            }
        // Written again from what was read: the same file.
        const std::string again = path + ".2";
        ASSERT_TRUE(WriteBmp(image.bytes.data(), width, height, image.stride, again.c_str()));
        EXPECT_EQ(FileBytes(again), file);
    }
}

TEST(BmpFile, DamagedAndHostileFilesAreRefused) {
    std::vector<uint8_t> pixels(size_t(184) * 61, 90);
    const std::string path = (ProcessTempDir() / "good.bmp").string();
    ASSERT_TRUE(WriteBmp(pixels.data(), 61, 61, 184, path.c_str()));
    const std::vector<uint8_t> good = FileBytes(path);
    ThumbImage image;
    ASSERT_TRUE(ReadBmpBytes(good.data(), good.size(), image));

    auto refused = [&](std::vector<uint8_t> bytes, const char* what) {
        image.width = 5;
        EXPECT_FALSE(ReadBmpBytes(bytes.data(), bytes.size(), image)) << what;
        EXPECT_EQ(image.width, 0) << what;
        EXPECT_TRUE(image.bytes.empty()) << what;
    };
    refused(std::vector<uint8_t>(good.begin(), good.end() - 1), "one byte short");
    refused(std::vector<uint8_t>(good.begin(), good.begin() + 53), "short of the headers");
    std::vector<uint8_t> b = good;
    b[1] = 'A';
    refused(b, "magic");
    b = good;
    b[28] = 32;
    refused(b, "depth");
    b = good;
    Set32(b, 30, 1);
    refused(b, "compressed");
    b = good;
    Set32(b, 22, uint32_t(-61));
    refused(b, "top-down");
    b = good;
    Set32(b, 18, 0);
    refused(b, "zero width");
    b = good;
    Set32(b, 18, 0x7FFFFFFF);
    refused(b, "absurd width");
    b = good;
    Set32(b, 18, 0x2AAAAAAB); // width * 3 wraps a 32-bit row size
    refused(b, "row size overflow");
    b = good;
    Set32(b, 10, uint32_t(good.size()) + 100);
    refused(b, "offset past the end");
    b = good;
    Set32(b, 10, 0xFFFFFFF0u);
    refused(b, "offset wraps");
    b = good;
    Set32(b, 10, 4);
    refused(b, "offset inside the headers");

    EXPECT_FALSE(ReadBmp((ProcessTempDir() / "missing.bmp").string().c_str(), image));
}

TEST(BmpFile, WritesThatCannotHappenAnswerFalse) {
    std::vector<uint8_t> pixels(336 * 84, 1);
    const std::string path = (ProcessTempDir() / "no-such-folder" / "x.bmp").string();
    EXPECT_FALSE(WriteBmp(pixels.data(), 112, 84, 336, path.c_str()));
    EXPECT_FALSE(WriteBmp(pixels.data(), 112, 84, 335, (ProcessTempDir() / "narrow.bmp").string().c_str()));
    EXPECT_FALSE(std::ifstream((ProcessTempDir() / "narrow.bmp").string()).good());
}
