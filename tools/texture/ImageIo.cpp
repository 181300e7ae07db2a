#include "ImageIo.h"

#include <jpeglib.h>
#include <png.h>

#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

struct FileCloser {
    void operator()(FILE* f) const { std::fclose(f); }
};
using FilePtr = std::unique_ptr<FILE, FileCloser>;

bool ReadPng(FILE* f, Image& out, std::string& error, ImageReadOptions options) {
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_read_struct(&png, nullptr, nullptr);
        error = "out of memory";
        return false;
    }
    std::vector<png_bytep> rows;
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_read_struct(&png, &info, nullptr);
        error = "not a readable PNG file (corrupt or truncated)";
        return false;
    }
    png_init_io(png, f);
    // Colour profiles are not used here; a known-bad sRGB profile is no reason to warn.
#if defined(PNG_SKIP_sRGB_CHECK_PROFILE) && defined(PNG_SET_OPTION_SUPPORTED)
    png_set_option(png, PNG_SKIP_sRGB_CHECK_PROFILE, PNG_OPTION_ON);
#endif
    png_read_info(png, info);
    const png_byte type = png_get_color_type(png, info);
    if (png_get_bit_depth(png, info) == 16) {
        if (options.refuseWide) {
            png_destroy_read_struct(&png, &info, nullptr);
            error = "16-bit PNG; the filter works in 8 bits, convert the picture to 8 bits first";
            return false;
        }
        png_set_strip_16(png);
    }
    if (type == PNG_COLOR_TYPE_PALETTE) png_set_palette_to_rgb(png);
    if (type == PNG_COLOR_TYPE_GRAY && png_get_bit_depth(png, info) < 8) png_set_expand_gray_1_2_4_to_8(png);
    if (png_get_valid(png, info, PNG_INFO_tRNS)) png_set_tRNS_to_alpha(png);
    if (!options.keepAlpha) png_set_strip_alpha(png);
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
    if (uint64_t(out.width) * out.height * out.channels > kMaxImageBytes) {
        png_destroy_read_struct(&png, &info, nullptr);
        error = "PNG of " + std::to_string(out.width) + "x" + std::to_string(out.height) + " is too large";
        return false;
    }
    out.pixels.resize(size_t(out.width) * out.height * out.channels);
    rows.resize(out.height);
    for (uint32_t y = 0; y < out.height; ++y) rows[y] = out.pixels.data() + size_t(y) * out.width * out.channels;
    png_read_image(png, rows.data());
    png_read_end(png, nullptr);
    png_destroy_read_struct(&png, &info, nullptr);
    return true;
}

struct JpegError {
    jpeg_error_mgr mgr;
    std::jmp_buf jump;
    char message[JMSG_LENGTH_MAX];
};

void JpegFail(j_common_ptr cinfo) {
    auto* err = reinterpret_cast<JpegError*>(cinfo->err);
    cinfo->err->format_message(cinfo, err->message);
    std::longjmp(err->jump, 1);
}

bool ReadJpeg(FILE* f, Image& out, std::string& error) {
    jpeg_decompress_struct cinfo;
    JpegError err;
    cinfo.err = jpeg_std_error(&err.mgr);
    err.mgr.error_exit = JpegFail;
    err.message[0] = 0;
    if (setjmp(err.jump)) {
        jpeg_destroy_decompress(&cinfo);
        error = std::string("corrupt JPEG: ") + err.message;
        return false;
    }
    jpeg_create_decompress(&cinfo);
    jpeg_stdio_src(&cinfo, f);
    jpeg_read_header(&cinfo, TRUE);
    cinfo.out_color_space = cinfo.jpeg_color_space == JCS_GRAYSCALE ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_start_decompress(&cinfo);
    out.width = cinfo.output_width;
    out.height = cinfo.output_height;
    out.channels = uint32_t(cinfo.output_components);
    if (uint64_t(out.width) * out.height * out.channels > kMaxImageBytes) {
        jpeg_destroy_decompress(&cinfo);
        error = "JPEG of " + std::to_string(out.width) + "x" + std::to_string(out.height) + " is too large";
        return false;
    }
    out.pixels.resize(size_t(out.width) * out.height * out.channels);
    while (cinfo.output_scanline < cinfo.output_height) {
        JSAMPROW row = out.pixels.data() + size_t(cinfo.output_scanline) * out.width * out.channels;
        jpeg_read_scanlines(&cinfo, &row, 1);
    }
    jpeg_finish_decompress(&cinfo);
    jpeg_destroy_decompress(&cinfo);
    return true;
}

} // namespace

bool ReadImage(const std::string& path, Image& out, std::string& error, ImageReadOptions options) {
    FilePtr f(std::fopen(path.c_str(), "rb"));
    if (!f) {
        error = path + ": " + std::strerror(errno);
        return false;
    }
    unsigned char magic[8] = {};
    const size_t got = std::fread(magic, 1, sizeof magic, f.get());
    std::rewind(f.get());
    const bool tiff = got >= 4 && ((magic[0] == 'I' && magic[1] == 'I' && magic[2] == 42 && magic[3] == 0) ||
                                   (magic[0] == 'M' && magic[1] == 'M' && magic[2] == 0 && magic[3] == 42));
    if (tiff) {
        f.reset();
        return ReadTiff(path, out, error, options);
    }
    bool ok = false;
    if (got == 8 && png_sig_cmp(magic, 0, 8) == 0) {
        ok = ReadPng(f.get(), out, error, options);
    } else if (got >= 3 && magic[0] == 0xFF && magic[1] == 0xD8 && magic[2] == 0xFF) {
        ok = ReadJpeg(f.get(), out, error);
    } else {
        error = "not a PNG, JPEG or TIFF file";
    }
    if (!ok) error = path + ": " + error;
    return ok;
}

bool WritePng(const std::string& path, const Image& image, std::string& error) {
    static const int kColorTypes[5] = {0, PNG_COLOR_TYPE_GRAY, PNG_COLOR_TYPE_GRAY_ALPHA, PNG_COLOR_TYPE_RGB,
                                       PNG_COLOR_TYPE_RGB_ALPHA};
    if (image.channels < 1 || image.channels > 4 || image.cmyk) {
        error = path + ": cannot write " + std::to_string(image.channels) + (image.cmyk ? " CMYK" : "") +
                " channels as PNG";
        return false;
    }
    FilePtr f(std::fopen(path.c_str(), "wb"));
    if (!f) {
        error = path + ": " + std::strerror(errno);
        return false;
    }
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_write_struct(&png, nullptr);
        error = path + ": out of memory";
        return false;
    }
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        error = path + ": write failed";
        return false;
    }
    png_init_io(png, f.get());
    png_set_IHDR(png, info, image.width, image.height, 8, kColorTypes[image.channels], PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (uint32_t y = 0; y < image.height; ++y)
        png_write_row(png, image.pixels.data() + size_t(y) * image.width * image.channels);
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    if (std::fflush(f.get()) != 0) {
        error = path + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

bool WriteJpeg(const std::string& path, const Image& image, std::string& error, int quality) {
    if ((image.channels != 1 && image.channels != 3) || image.cmyk) {
        error = path + ": JPEG keeps no transparency: write PNG or TIFF, or run the picture flat";
        return false;
    }
    FilePtr f(std::fopen(path.c_str(), "wb"));
    if (!f) {
        error = path + ": " + std::strerror(errno);
        return false;
    }
    jpeg_compress_struct cinfo;
    JpegError err;
    cinfo.err = jpeg_std_error(&err.mgr);
    err.mgr.error_exit = JpegFail;
    err.message[0] = 0;
    if (setjmp(err.jump)) {
        jpeg_destroy_compress(&cinfo);
        error = path + ": " + err.message;
        return false;
    }
    jpeg_create_compress(&cinfo);
    jpeg_stdio_dest(&cinfo, f.get());
    cinfo.image_width = image.width;
    cinfo.image_height = image.height;
    cinfo.input_components = int(image.channels);
    cinfo.in_color_space = image.channels == 1 ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&cinfo);
    jpeg_set_quality(&cinfo, quality, TRUE);
    jpeg_start_compress(&cinfo, TRUE);
    while (cinfo.next_scanline < cinfo.image_height) {
        JSAMPROW row =
            const_cast<uint8_t*>(image.pixels.data()) + size_t(cinfo.next_scanline) * image.width * image.channels;
        jpeg_write_scanlines(&cinfo, &row, 1);
    }
    jpeg_finish_compress(&cinfo);
    jpeg_destroy_compress(&cinfo);
    if (std::fflush(f.get()) != 0) {
        error = path + ": " + std::strerror(errno);
        return false;
    }
    return true;
}
