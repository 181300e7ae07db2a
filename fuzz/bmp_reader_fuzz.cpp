// Fuzz target for the thumbnail cache reader: any bytes as a .bmp file. A picture that
// is accepted must hold exactly its rows.
#include "pickers/BmpFile.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    ThumbImage image;
    if (!ReadBmpBytes(data, size, image)) return 0;
    if (image.width <= 0 || image.height <= 0 || image.stride < image.width * 3 ||
        image.bytes.size() != size_t(image.stride) * size_t(image.height))
        std::abort();
    volatile uint8_t sink = image.bytes.back();
    (void)sink;
    return 0;
}
