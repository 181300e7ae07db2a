// Netpbm PAM (P7) images, the command line's picture format: tuple types RGB, RGB_ALPHA,
// CMYK, CMYK_ALPHA and GRAYSCALE, MAXVAL 255, samples interleaved, rows top to bottom.
// The reader takes hostile input: every field is checked, sizes are bounded, and a bad file
// gives an error string, never a crash or a huge allocation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace hostsim {

struct PamImage {
    int32_t width = 0;
    int32_t height = 0;
    int32_t depth = 0;         // samples a pixel; follows from the tuple type
    std::string tupleType;     // "RGB", "RGB_ALPHA", "CMYK", "CMYK_ALPHA" or "GRAYSCALE"
    std::vector<uint8_t> data; // width * height * depth bytes
};

// Samples a pixel of a tuple type we take, or 0 for any other.
int32_t PamDepthOf(const std::string& tupleType);

// Largest picture the reader accepts, in samples (width * height * depth).
constexpr uint64_t kPamMaxSamples = uint64_t(1) << 30;

bool ParsePam(const uint8_t* bytes, size_t size, PamImage& image, std::string& error);
bool ReadPam(const std::string& path, PamImage& image, std::string& error);

// Fails (with a reason) on an image whose fields do not agree with its data.
bool EncodePam(const PamImage& image, std::vector<uint8_t>& bytes, std::string& error);
bool WritePam(const std::string& path, const PamImage& image, std::string& error);

} // namespace hostsim
