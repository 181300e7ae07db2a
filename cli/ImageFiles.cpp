#include "ImageFiles.h"

#include "ImageIo.h"

#include <png.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

// The PNG reader keeps alpha and refuses 16-bit samples, which the shared reader does not.
bool ReadPng(std::FILE* f, Picture& out, std::string& error) {
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_read_struct(&png, nullptr, nullptr);
        error = "out of memory";
        return false;
    }
    // Kept outside the jump so that nothing with a destructor lives across setjmp.
    std::vector<png_bytep> rows;
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_read_struct(&png, &info, nullptr);
        error = "not a readable PNG file (corrupt or truncated)";
        return false;
    }
    png_init_io(png, f);
    png_read_info(png, info);
    if (png_get_bit_depth(png, info) == 16) {
        png_destroy_read_struct(&png, &info, nullptr);
        error = "16-bit PNG; the filter works in 8 bits, convert the picture to 8 bits first";
        return false;
    }
    const png_byte type = png_get_color_type(png, info);
    if (type == PNG_COLOR_TYPE_PALETTE) png_set_palette_to_rgb(png);
    if (type == PNG_COLOR_TYPE_GRAY && png_get_bit_depth(png, info) < 8) png_set_expand_gray_1_2_4_to_8(png);
    if (png_get_valid(png, info, PNG_INFO_tRNS)) png_set_tRNS_to_alpha(png);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    out.width = png_get_image_width(png, info);
    out.height = png_get_image_height(png, info);
    out.channels = png_get_channels(png, info);
    if (out.channels < 1 || out.channels > 4 || png_get_bit_depth(png, info) != 8) {
        png_destroy_read_struct(&png, &info, nullptr);
        error = "unsupported PNG layout";
        return false;
    }
    const size_t rowBytes = size_t(out.width) * size_t(out.channels);
    out.samples.resize(rowBytes * out.height);
    rows.resize(out.height);
    for (uint32_t y = 0; y < out.height; ++y) rows[y] = out.samples.data() + y * rowBytes;
    png_read_image(png, rows.data());
    png_read_end(png, nullptr);
    png_destroy_read_struct(&png, &info, nullptr);
    return true;
}

} // namespace

bool ReadPicture(const std::string& path, Picture& out, std::string& error) {
    FilePtr f(std::fopen(path.c_str(), "rb"));
    if (!f) {
        error = std::strerror(errno);
        return false;
    }
    unsigned char magic[8] = {};
    const size_t got = std::fread(magic, 1, sizeof magic, f.get());
    std::rewind(f.get());
    if (got == 8 && png_sig_cmp(magic, 0, 8) == 0) return ReadPng(f.get(), out, error);
    if (got >= 3 && magic[0] == 0xFF && magic[1] == 0xD8 && magic[2] == 0xFF) {
        f.reset();
        Image image;
        if (!ReadImage(path, image, error)) {
            // The shared reader puts the path first; the caller names the file itself.
            if (error.compare(0, path.size() + 2, path + ": ") == 0) error.erase(0, path.size() + 2);
            return false;
        }
        out.width = image.width;
        out.height = image.height;
        out.channels = int(image.channels);
        out.samples = std::move(image.pixels);
        return true;
    }
    error = "not a PNG or JPEG file";
    return false;
}

bool WritePicture(const std::string& path, const Picture& picture, std::string& error) {
    static const int kTypes[5] = {0, PNG_COLOR_TYPE_GRAY, PNG_COLOR_TYPE_GRAY_ALPHA, PNG_COLOR_TYPE_RGB,
                                  PNG_COLOR_TYPE_RGB_ALPHA};
    if (picture.channels < 1 || picture.channels > 4) {
        error = "cannot write " + std::to_string(picture.channels) + " channels as PNG";
        return false;
    }
    FilePtr f(std::fopen(path.c_str(), "wb"));
    if (!f) {
        error = std::strerror(errno);
        return false;
    }
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_write_struct(&png, nullptr);
        error = "out of memory";
        return false;
    }
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        error = "write failed";
        return false;
    }
    png_init_io(png, f.get());
    png_set_IHDR(png, info, picture.width, picture.height, 8, kTypes[picture.channels], PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    const size_t rowBytes = size_t(picture.width) * size_t(picture.channels);
    for (uint32_t y = 0; y < picture.height; ++y)
        png_write_row(png, picture.samples.data() + y * rowBytes);
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    if (std::fflush(f.get()) != 0) {
        error = std::strerror(errno);
        return false;
    }
    return true;
}
