// Fuzz target for the update check's readers: any bytes as the server's answer and as
// the update file, through every reader and the rewrite after a failure.
#include "online/TextureSets.h"
#include "online/UpdateFile.h"

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // Both arrive as zero-terminated text, the answer in a buffer with its zero.
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::string body;
    if (ReadAnswerBody(text.c_str(), body)) BuildTextureSets(StampedText(1, body).c_str());
    StampIsFresh(text.c_str(), 1764000000);
    ReadLatestVersion(text.c_str());
    BuildTextureSets(text.c_str());
    const std::string rewritten = RestampAfterFailure(text, 1764000000);
    if (!StampIsFresh(rewritten.c_str(), 1764000001)) __builtin_trap();
    if (TextureSetCount < 0 || TextureSetCount > kMaxTextureSets) __builtin_trap();
    return 0;
}
