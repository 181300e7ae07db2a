// The PAM reader and writer: byte round trips, and hostile or broken files.
#include "hostsim/Pam.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

using namespace hostsim;

std::vector<uint8_t> Bytes(const std::string& s) { return std::vector<uint8_t>(s.begin(), s.end()); }

std::string ParseError(const std::string& file) {
    PamImage image;
    std::string error;
    const std::vector<uint8_t> b = Bytes(file);
    return ParsePam(b.data(), b.size(), image, error) ? "" : error;
}

TEST(HostsimPam, RoundTripsByBytes) {
    for (const char* type : {"RGB", "RGB_ALPHA", "CMYK", "CMYK_ALPHA", "GRAYSCALE"}) {
        PamImage image;
        image.width = 5;
        image.height = 3;
        image.tupleType = type;
        image.depth = PamDepthOf(type);
        for (int i = 0; i < 15 * image.depth; ++i) image.data.push_back(uint8_t(i * 17 + 3));
        std::vector<uint8_t> bytes;
        std::string error;
        ASSERT_TRUE(EncodePam(image, bytes, error)) << error;
        PamImage back;
        ASSERT_TRUE(ParsePam(bytes.data(), bytes.size(), back, error)) << error;
        EXPECT_EQ(back.width, 5);
        EXPECT_EQ(back.height, 3);
        EXPECT_EQ(back.tupleType, type);
        EXPECT_EQ(back.data, image.data);
        std::vector<uint8_t> again;
        ASSERT_TRUE(EncodePam(back, again, error));
        EXPECT_EQ(again, bytes);
    }
    // Through a file, with comments and blank lines in a hand-written header.
    const std::string path = ::testing::TempDir() + "hostsim_pam_test.pam";
    PamImage image;
    std::string error;
    {
        std::FILE* f = std::fopen(path.c_str(), "wb");
        ASSERT_NE(f, nullptr);
        std::fputs(
            "P7\n# made by hand\nWIDTH 2\n\nHEIGHT 1 # one row\nDEPTH 1\nMAXVAL 255\nTUPLTYPE GRAYSCALE\nENDHDR\nab",
            f);
        std::fclose(f);
    }
    ASSERT_TRUE(ReadPam(path, image, error)) << error;
    EXPECT_EQ(image.data, Bytes("ab"));
    ASSERT_TRUE(WritePam(path, image, error)) << error;
    PamImage back;
    ASSERT_TRUE(ReadPam(path, back, error)) << error;
    EXPECT_EQ(back.data, image.data);
    std::remove(path.c_str());
    EXPECT_FALSE(ReadPam(path, back, error));
    EXPECT_NE(error.find("cannot open"), std::string::npos);
}

TEST(HostsimPam, HostileHeadersGiveClearErrors) {
    const std::string good = "P7\nWIDTH 2\nHEIGHT 2\nDEPTH 3\nMAXVAL 255\nTUPLTYPE RGB\nENDHDR\n";
    const std::string pixels(12, 'x');
    const struct {
        std::string file, error;
    } cases[] = {
        {"P6\n2 2\n255\n" + pixels, "no P7 signature"},
        {"P7\nHEIGHT 2\nDEPTH 3\nMAXVAL 255\nTUPLTYPE RGB\nENDHDR\n" + pixels, "lacks WIDTH"},
        {"P7\nWIDTH 2\nHEIGHT 2\nDEPTH 3\nMAXVAL 255\nENDHDR\n" + pixels, "lacks TUPLTYPE"},
        {"P7\nWIDTH 0\nHEIGHT 2\nDEPTH 3\nMAXVAL 255\nTUPLTYPE RGB\nENDHDR\n", "WIDTH is not a number in range"},
        {"P7\nWIDTH -2\nHEIGHT 2\nDEPTH 3\nMAXVAL 255\nTUPLTYPE RGB\nENDHDR\n", "WIDTH is not a number"},
        {"P7\nWIDTH 99999999999999\nHEIGHT 2\nDEPTH 3\nMAXVAL 255\nTUPLTYPE RGB\nENDHDR\n", "WIDTH is not"},
        {"P7\nWIDTH 16777216\nHEIGHT 16777216\nDEPTH 3\nMAXVAL 255\nTUPLTYPE RGB\nENDHDR\n", "too large"},
        {"P7\nWIDTH 2\nWIDTH 2\nHEIGHT 2\nDEPTH 3\nMAXVAL 255\nTUPLTYPE RGB\nENDHDR\n", "given twice"},
        {"P7\nWIDTH 2\nHEIGHT 2\nDEPTH 3\nMAXVAL 65535\nTUPLTYPE RGB\nENDHDR\n", "only MAXVAL 255"},
        {"P7\nWIDTH 2\nHEIGHT 2\nDEPTH 1\nMAXVAL 255\nTUPLTYPE BLACKANDWHITE\nENDHDR\n", "unsupported TUPLTYPE"},
        {"P7\nWIDTH 2\nHEIGHT 2\nDEPTH 4\nMAXVAL 255\nTUPLTYPE RGB\nENDHDR\n" + pixels, "does not match"},
        {"P7\nWIDTH 2 3\nHEIGHT 2\n", "exactly one value"},
        {"P7\nCOLOUR red\nENDHDR\n", "unknown header field"},
        {"P7\nWIDTH 2\nHEIGHT 2\nDEPTH 3\nMAXVAL 255\nTUPLTYPE RGB\n", "ends before ENDHDR"},
        {"P7\n#" + std::string(5000, 'c') + "\nENDHDR\n", "longer than 4096"},
        {good + pixels.substr(1), "truncated"},
    };
    for (const auto& c : cases) {
        const std::string error = ParseError(c.file);
        EXPECT_NE(error.find(c.error), std::string::npos) << "got \"" << error << "\" for " << c.file.substr(0, 60);
    }
    // Every prefix of a good file fails cleanly; the whole file parses.
    const std::string file = good + pixels;
    for (size_t n = 0; n < file.size(); ++n) EXPECT_NE(ParseError(file.substr(0, n)), "") << n;
    EXPECT_EQ(ParseError(file), "");
}

} // namespace
