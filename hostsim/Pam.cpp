#include "Pam.h"

#include <cstddef>
#include <cstdio>
#include <memory>

namespace hostsim {
namespace {

constexpr int32_t kMaxSide = 1 << 24;
constexpr size_t kMaxHeader = 4096;

bool IsSpace(uint8_t c) { return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f'; }

// One header line's tokens, without the comment.
std::vector<std::string> Tokens(const std::string& line) {
    std::vector<std::string> out;
    std::string cur;
    for (char c : line) {
        if (c == '#') break;
        if (IsSpace(uint8_t(c))) {
            if (!cur.empty()) out.push_back(std::move(cur));
            cur.clear();
        } else {
            cur += c;
        }
    }
    if (!cur.empty()) out.push_back(std::move(cur));
    return out;
}

// A positive decimal number up to `limit`; digits only.
bool ParseNumber(const std::string& s, int32_t limit, int32_t& value) {
    if (s.empty() || s.size() > 10) return false;
    int64_t v = 0;
    for (char c : s) {
        if (c < '0' || c > '9') return false;
        v = v * 10 + (c - '0');
    }
    if (v < 1 || v > limit) return false;
    value = int32_t(v);
    return true;
}

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

} // namespace

int32_t PamDepthOf(const std::string& tupleType) {
    if (tupleType == "RGB") return 3;
    if (tupleType == "RGB_ALPHA") return 4;
    if (tupleType == "CMYK") return 4;
    if (tupleType == "CMYK_ALPHA") return 5;
    if (tupleType == "GRAYSCALE") return 1;
    return 0;
}

bool ParsePam(const uint8_t* bytes, size_t size, PamImage& image, std::string& error) {
    image = PamImage();
    if (size < 3 || bytes[0] != 'P' || bytes[1] != '7' || bytes[2] != '\n') {
        error = "not a PAM file (no P7 signature)";
        return false;
    }
    size_t pos = 3;
    int32_t width = 0, height = 0, depth = 0, maxval = 0;
    std::string tuple;
    bool ended = false;
    while (!ended) {
        if (pos >= size) {
            error = "the header ends before ENDHDR";
            return false;
        }
        size_t end = pos;
        while (end < size && end < kMaxHeader && bytes[end] != '\n') ++end;
        if (end >= kMaxHeader) {
            error = "the header is longer than 4096 bytes";
            return false;
        }
        if (end >= size) {
            error = "the header ends before ENDHDR";
            return false;
        }
        const std::string line(reinterpret_cast<const char*>(bytes + pos), end - pos);
        pos = end + 1;
        const std::vector<std::string> t = Tokens(line);
        if (t.empty()) continue;
        const std::string& key = t[0];
        if (key == "ENDHDR") {
            if (t.size() != 1) {
                error = "ENDHDR takes no value";
                return false;
            }
            ended = true;
            continue;
        }
        if (t.size() != 2) {
            error = "header line \"" + key.substr(0, 32) + "\" needs exactly one value";
            return false;
        }
        int32_t* field = key == "WIDTH"    ? &width
                         : key == "HEIGHT" ? &height
                         : key == "DEPTH"  ? &depth
                         : key == "MAXVAL" ? &maxval
                                           : nullptr;
        if (field) {
            if (*field != 0) {
                error = key + " is given twice";
                return false;
            }
            if (!ParseNumber(t[1], key == "MAXVAL" ? 65535 : kMaxSide, *field)) {
                error = key + " is not a number in range: \"" + t[1].substr(0, 32) + "\"";
                return false;
            }
        } else if (key == "TUPLTYPE") {
            if (!tuple.empty()) {
                error = "TUPLTYPE is given twice";
                return false;
            }
            tuple = t[1];
        } else {
            error = "unknown header field \"" + key.substr(0, 32) + "\"";
            return false;
        }
    }
    if (!width || !height || !depth || !maxval || tuple.empty()) {
        error = std::string("the header lacks ") + (!width    ? "WIDTH"
                                                    : !height ? "HEIGHT"
                                                    : !depth  ? "DEPTH"
                                                    : !maxval ? "MAXVAL"
                                                              : "TUPLTYPE");
        return false;
    }
    if (maxval != 255) {
        error = "only MAXVAL 255 is supported";
        return false;
    }
    const int32_t expected = PamDepthOf(tuple);
    if (!expected) {
        error = "unsupported TUPLTYPE \"" + tuple.substr(0, 32) + "\"";
        return false;
    }
    if (depth != expected) {
        error = "DEPTH " + std::to_string(depth) + " does not match TUPLTYPE " + tuple;
        return false;
    }
    const uint64_t samples = uint64_t(width) * uint64_t(height) * uint64_t(depth);
    if (samples > kPamMaxSamples) {
        error = "the image is too large (" + std::to_string(width) + " x " + std::to_string(height) + ")";
        return false;
    }
    if (size - pos < samples) {
        error =
            "the pixel data is truncated: " + std::to_string(size - pos) + " of " + std::to_string(samples) + " bytes";
        return false;
    }
    image.width = width;
    image.height = height;
    image.depth = depth;
    image.tupleType = tuple;
    image.data.assign(bytes + pos, bytes + pos + samples);
    return true;
}

bool ReadPam(const std::string& path, PamImage& image, std::string& error) {
    std::unique_ptr<std::FILE, FileCloser> f(std::fopen(path.c_str(), "rb"));
    if (!f) {
        error = "cannot open " + path;
        return false;
    }
    // Read the header first, then exactly what it announces, so a hostile size costs nothing.
    std::vector<uint8_t> bytes;
    std::vector<uint8_t> chunk(1 << 16);
    for (;;) {
        const size_t n = std::fread(chunk.data(), 1, chunk.size(), f.get());
        bytes.insert(bytes.end(), chunk.begin(), chunk.begin() + ptrdiff_t(n));
        if (n < chunk.size()) break;
        if (bytes.size() > kPamMaxSamples + kMaxHeader) {
            error = path + ": the file is too large";
            return false;
        }
    }
    if (!ParsePam(bytes.data(), bytes.size(), image, error)) {
        error = path + ": " + error;
        return false;
    }
    return true;
}

bool EncodePam(const PamImage& image, std::vector<uint8_t>& bytes, std::string& error) {
    const int32_t depth = PamDepthOf(image.tupleType);
    if (!depth || depth != image.depth) {
        error = "unsupported tuple type or depth";
        return false;
    }
    if (image.width <= 0 || image.height <= 0 || image.width > kMaxSide || image.height > kMaxSide ||
        image.data.size() != size_t(image.width) * size_t(image.height) * size_t(depth)) {
        error = "the image size does not match its data";
        return false;
    }
    const std::string header = "P7\nWIDTH " + std::to_string(image.width) + "\nHEIGHT " + std::to_string(image.height) +
                               "\nDEPTH " + std::to_string(depth) + "\nMAXVAL 255\nTUPLTYPE " + image.tupleType +
                               "\nENDHDR\n";
    bytes.assign(header.begin(), header.end());
    bytes.insert(bytes.end(), image.data.begin(), image.data.end());
    return true;
}

bool WritePam(const std::string& path, const PamImage& image, std::string& error) {
    std::vector<uint8_t> bytes;
    if (!EncodePam(image, bytes, error)) return false;
    std::unique_ptr<std::FILE, FileCloser> f(std::fopen(path.c_str(), "wb"));
    if (!f || std::fwrite(bytes.data(), 1, bytes.size(), f.get()) != bytes.size()) {
        error = "cannot write " + path;
        return false;
    }
    if (std::fclose(f.release()) != 0) {
        error = "cannot write " + path;
        return false;
    }
    return true;
}

} // namespace hostsim
