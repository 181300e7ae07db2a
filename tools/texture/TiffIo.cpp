// TIFF through libtiff: 8-bit grey, RGB and CMYK, with or without one alpha sample, in
// contiguous or separate planes, any compression libtiff reads.
#include "ImageIo.h"

#include <tiffio.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <memory>

namespace {

// libtiff reports through global handlers; the last message becomes the error.
thread_local std::string gTiffMessage;

void TiffError(const char*, const char* format, va_list args) {
    char text[512];
    std::vsnprintf(text, sizeof text, format, args);
    gTiffMessage = text;
}
void TiffWarning(const char*, const char*, va_list) {}

struct TiffCloser {
    void operator()(TIFF* t) const { TIFFClose(t); }
};
using TiffPtr = std::unique_ptr<TIFF, TiffCloser>;

TiffPtr Open(const std::string& path, const char* mode) {
    TIFFSetErrorHandler(TiffError);
    TIFFSetWarningHandler(TiffWarning);
    gTiffMessage.clear();
    return TiffPtr(TIFFOpen(path.c_str(), mode));
}

std::string Reason(const char* fallback) { return gTiffMessage.empty() ? fallback : gTiffMessage; }

// The layout a file's tags describe, or false with the reason.
bool Layout(TIFF* t, Image& out, uint16_t& photometric, uint16_t& planar, std::string& error) {
    uint32_t w = 0, h = 0;
    uint16_t bits = 0, samples = 0, format = SAMPLEFORMAT_UINT, inkSet = INKSET_CMYK;
    TIFFGetField(t, TIFFTAG_IMAGEWIDTH, &w);
    TIFFGetField(t, TIFFTAG_IMAGELENGTH, &h);
    TIFFGetFieldDefaulted(t, TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetFieldDefaulted(t, TIFFTAG_SAMPLESPERPIXEL, &samples);
    TIFFGetFieldDefaulted(t, TIFFTAG_SAMPLEFORMAT, &format);
    TIFFGetFieldDefaulted(t, TIFFTAG_PLANARCONFIG, &planar);
    TIFFGetFieldDefaulted(t, TIFFTAG_INKSET, &inkSet);
    if (!TIFFGetField(t, TIFFTAG_PHOTOMETRIC, &photometric)) photometric = PHOTOMETRIC_MINISBLACK;
    if (bits != 8 || format != SAMPLEFORMAT_UINT) {
        error = std::to_string(bits) + "-bit TIFF; the filter works in 8 bits, convert the picture to 8 bits first";
        return false;
    }
    uint32_t colours = 0;
    if (photometric == PHOTOMETRIC_MINISBLACK || photometric == PHOTOMETRIC_MINISWHITE) colours = 1;
    if (photometric == PHOTOMETRIC_RGB) colours = 3;
    if (photometric == PHOTOMETRIC_SEPARATED && inkSet == INKSET_CMYK) colours = 4;
    if (!colours) {
        error = "TIFF colour model " + std::to_string(photometric) + " is not taken (grey, RGB or CMYK)";
        return false;
    }
    if (samples < colours || samples > colours + 1) {
        error = "TIFF with " + std::to_string(samples) + " samples a pixel is not taken";
        return false;
    }
    if (w == 0 || h == 0 || uint64_t(w) * h * samples > kMaxImageBytes) {
        error = "TIFF of " + std::to_string(w) + "x" + std::to_string(h) + " is empty or too large";
        return false;
    }
    out.width = w;
    out.height = h;
    out.channels = samples;
    out.cmyk = colours == 4;
    return true;
}

} // namespace

bool ReadTiff(const std::string& path, Image& out, std::string& error, ImageReadOptions options) {
    TiffPtr t = Open(path, "r");
    if (!t) {
        error = path + ": " + Reason("not a readable TIFF file");
        return false;
    }
    uint16_t photometric = 0, planar = PLANARCONFIG_CONTIG;
    if (!Layout(t.get(), out, photometric, planar, error)) {
        error = path + ": " + error;
        return false;
    }
    const uint32_t n = out.channels;
    const tmsize_t lineBytes = TIFFScanlineSize(t.get());
    const tmsize_t expected = planar == PLANARCONFIG_CONTIG ? tmsize_t(out.width) * n : tmsize_t(out.width);
    if (lineBytes < expected) {
        error = path + ": inconsistent TIFF rows";
        return false;
    }
    // Rows are added as they are read: a file that claims a huge size and holds little
    // fails before much memory is taken.
    const size_t rowBytes = size_t(out.width) * n;
    out.pixels.clear();
    std::vector<uint8_t> line(static_cast<size_t>(lineBytes));
    const uint32_t planes = planar == PLANARCONFIG_CONTIG ? 1 : n;
    for (uint32_t s = 0; s < planes; ++s) {
        for (uint32_t y = 0; y < out.height; ++y) {
            if (TIFFReadScanline(t.get(), line.data(), y, uint16_t(s)) < 0) {
                error = path + ": " + Reason("corrupt or truncated TIFF");
                return false;
            }
            if (s == 0) out.pixels.resize(size_t(y + 1) * rowBytes);
            uint8_t* row = out.pixels.data() + size_t(y) * rowBytes;
            if (planes == 1) std::copy(line.begin(), line.begin() + expected, row);
            else
                for (uint32_t x = 0; x < out.width; ++x) row[size_t(x) * n + s] = line[x];
        }
    }
    if (photometric == PHOTOMETRIC_MINISWHITE)
        for (size_t i = 0; i < out.pixels.size(); i += n) out.pixels[i] = uint8_t(255 - out.pixels[i]);
    const uint32_t colours = out.cmyk ? 4 : n >= 3 ? 3 : 1;
    if (!options.keepAlpha && n > colours) {
        std::vector<uint8_t> flat(size_t(out.width) * out.height * colours);
        for (size_t i = 0, o = 0; o < flat.size(); i += n, o += colours)
            std::copy(out.pixels.begin() + ptrdiff_t(i), out.pixels.begin() + ptrdiff_t(i + colours),
                      flat.begin() + ptrdiff_t(o));
        out.pixels = std::move(flat);
        out.channels = colours;
    }
    return true;
}

bool WriteTiff(const std::string& path, const Image& image, std::string& error) {
    const uint32_t n = image.channels;
    const uint32_t colours = image.cmyk ? 4 : n >= 3 ? 3 : 1;
    if (n < colours || n > colours + 1 || image.pixels.size() != size_t(image.width) * image.height * n) {
        error = path + ": cannot write " + std::to_string(n) + " channels as TIFF";
        return false;
    }
    TiffPtr t = Open(path, "w");
    if (!t) {
        error = path + ": " + Reason("cannot create the file");
        return false;
    }
    TIFF* f = t.get();
    TIFFSetField(f, TIFFTAG_IMAGEWIDTH, image.width);
    TIFFSetField(f, TIFFTAG_IMAGELENGTH, image.height);
    TIFFSetField(f, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(f, TIFFTAG_SAMPLESPERPIXEL, n);
    TIFFSetField(f, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(f, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
    TIFFSetField(f, TIFFTAG_PHOTOMETRIC,
                 image.cmyk     ? PHOTOMETRIC_SEPARATED
                 : colours == 3 ? PHOTOMETRIC_RGB
                                : PHOTOMETRIC_MINISBLACK);
    if (image.cmyk) TIFFSetField(f, TIFFTAG_INKSET, INKSET_CMYK);
    if (n > colours) {
        const uint16_t extra[1] = {EXTRASAMPLE_UNASSALPHA};
        TIFFSetField(f, TIFFTAG_EXTRASAMPLES, 1, extra);
    }
    TIFFSetField(f, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(f, 0));
    std::vector<uint8_t> line(size_t(image.width) * n);
    for (uint32_t y = 0; y < image.height; ++y) {
        // libtiff may encode in place: hand it a copy of the row.
        std::copy_n(image.pixels.begin() + ptrdiff_t(size_t(y) * line.size()), line.size(), line.begin());
        if (TIFFWriteScanline(f, line.data(), y, 0) < 0) {
            error = path + ": " + Reason("write failed");
            return false;
        }
    }
    if (!TIFFFlush(f)) {
        error = path + ": " + Reason("write failed");
        return false;
    }
    return true;
}
