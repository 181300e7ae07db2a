#include "ImageFiles.h"

#include "ImageIo.h"

#include <utility>

namespace {

// The shared reader and writer put the path first; the command line names the file itself.
void DropPath(const std::string& path, std::string& error) {
    if (error.compare(0, path.size() + 2, path + ": ") == 0) error.erase(0, path.size() + 2);
}

} // namespace

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
    out.samples = std::move(image.pixels);
    return true;
}

bool WritePicture(const std::string& path, const Picture& picture, std::string& error) {
    Image image{picture.width, picture.height, uint32_t(picture.channels), picture.samples};
    if (WritePng(path, image, error)) return true;
    DropPath(path, error);
    return false;
}
