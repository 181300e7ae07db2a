// The one set of work buffers both drawers share, and their release.
#include "pickers/Thumbnails.h"

std::vector<uint8_t> ThumbPixels;
std::vector<uint8_t> DocumentThumb;
std::vector<uint32_t> ThumbSource;
std::vector<uint8_t> ThumbUnderlay;
std::vector<float> ThumbLighting, ThumbRelief;
float ThumbDepthScale = 0.0f;
EffectLayer* ThumbSurfaceLayer = nullptr;

namespace {
template <typename T> void Release(std::vector<T>& v) { std::vector<T>().swap(v); }
} // namespace

void FreeUnderlay() { Release(ThumbUnderlay); }

void FreeThumbBuffers() {
    Release(ThumbPixels);
    Release(ThumbSource);
    Release(ThumbLighting);
    Release(ThumbRelief);
}
