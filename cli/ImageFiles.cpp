#include "ImageFiles.h"

#include "ImageIo.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <utility>

namespace {

// The shared reader and writer put the path first; the command line names the file itself.
void DropPath(const std::string& path, std::string& error) {
    if (error.compare(0, path.size() + 2, path + ": ") == 0) error.erase(0, path.size() + 2);
}

} // namespace

PictureFormat FormatOf(const std::string& path) {
    std::string ext = std::filesystem::path(path).extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    if (ext == ".png") return PictureFormat::Png;
    if (ext == ".tif" || ext == ".tiff") return PictureFormat::Tiff;
    if (ext == ".jpg" || ext == ".jpeg") return PictureFormat::Jpeg;
    return PictureFormat::Unknown;
}

const char* ExtensionOf(PictureFormat format) {
    switch (format) {
    case PictureFormat::Tiff: return ".tif";
    case PictureFormat::Jpeg: return ".jpg";
    default: return ".png";
    }
}

bool ReadPicture(const std::string& path, Picture& out, std::string& error) {
    Image image;
    // Transparency travels to the document; wide samples are refused, not reduced.
    if (!ReadImage(path, image, error, ImageReadOptions{true, true})) {
        DropPath(path, error);
        return false;
    }
    out.width = image.width;
    out.height = image.height;
    out.channels = int(image.channels);
    out.cmyk = image.cmyk;
    out.samples = std::move(image.pixels);
    return true;
}

bool WritePicture(const std::string& path, PictureFormat format, const Picture& picture, std::string& error) {
    const Image image{picture.width, picture.height, uint32_t(picture.channels), picture.cmyk, picture.samples};
    bool written = false;
    switch (format) {
    case PictureFormat::Tiff: written = WriteTiff(path, image, error); break;
    case PictureFormat::Jpeg: written = WriteJpeg(path, image, error); break;
    default: written = WritePng(path, image, error); break;
    }
    if (!written) DropPath(path, error);
    return written;
}
