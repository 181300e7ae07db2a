// What a drawer's tile shows: the grey crop of a texture (cached beside it as .bmp), the
// live renderings of a wash, a surface or the background over a small copy of the current
// image, and a colour preset's tones over the current texture. Pure pixel work over byte
// buffers, calling the engine's colour routines; the win32/ half only makes bitmaps.
#pragma once

#include "pickers/BmpFile.h"
#include "pickers/Catalogue.h"

#include <cstdint>
#include <vector>

struct EffectLayer;
struct Raster;
struct PixelView;

inline constexpr int32_t ThumbWidth = 112, ThumbHeight = 84, ThumbLeft = 5, ThumbTop = 5;
inline constexpr int32_t ThumbStride = 336;

enum : uint8_t { kWashTarget = 0, kBackgroundTarget = 1, kSurfaceTarget = 2 }; // a drawer's TargetKind

// The work buffers, one set for both drawers.
extern std::vector<uint8_t> ThumbPixels;   // 24-bit, ThumbStride x 84, bottom-up blue, green, red
extern std::vector<uint8_t> DocumentThumb; // 112 x 84, red, green, blue, top row first
extern std::vector<uint32_t> ThumbSource;  // 112 x 84 RGBA (red in the low byte), rows bottom-up
extern std::vector<uint8_t> ThumbUnderlay; // as DocumentThumb; empty for none
extern std::vector<float> ThumbLighting, ThumbRelief;
extern float ThumbDepthScale;          // the surface's depth / 150
extern EffectLayer* ThumbSurfaceLayer; // whose invert flag the light map reads

// The grey crop of a texture file at `scale` source pixels per picture pixel, centred and
// clamped to the texture, into a bottom-up 24-bit picture of width x height. False when
// the file does not read. `clipped` (may be null) tells the texture was too small.
bool GreyThumbFromTexture(const char* path, float scale, int32_t width, int32_t height, ThumbImage& out,
                          bool* clipped = nullptr);
// Folder/Name.bmp when it is exactly 112 x 84.
bool LoadThumbFile(const Catalogue& list, int32_t index, ThumbImage& out);
// The grey thumbnail of shown row `index`, written to the cache (a failed write ignored).
bool MakeThumbFromTexture(Catalogue& list, int32_t index, ThumbImage& out);
// From the source Raster of the document, when the dialog opens.
void BuildDocumentThumb(const Raster& source);
float CropSource(float scale, int32_t resolution);
void BuildLightMap(float k);
// Overwrites `picture` (112 x 84) with the effect of `targetKind` over it; the used scale.
float RenderLive(ThumbImage& picture, uint8_t targetKind, float scale, int32_t resolution);
void PrepareUnderlay(float scale, int32_t resolution, const char* folder);
// ColourBase for a colour drawer serving `targetKind`; false when the texture does not read.
bool PrepareColourBase(ThumbImage& colourBase, uint8_t targetKind, const char* folder);
// A colour preset's tones over ColourBase (background) or the prepared light map (surface).
bool RenderColourThumb(const ThumbImage& colourBase, uint8_t targetKind, const char* presetName, ThumbImage& out);
// Both tone passes end here: hue + hueOffset and saturation x saturation unless they are
// 0 and 1, clamped, stored blue, green, red.
void ShiftHueSaturation(const float colour[3], float hueOffset, float saturation, uint8_t bgr[3]);
void FreeUnderlay();     // a drawer closes
void FreeThumbBuffers(); // the texture drawer goes (DocumentThumb stays to the dialog's end)

// A tile's picture area: the hover or normal fill, the thumbnail or the placeholder cross.
void PaintTile(const PixelView& view, bool hover, const ThumbImage* picture);
// Six antialiased lines towards grey 192: the rectangle's sides and its diagonals.
void PaintPlaceholder(const PixelView& view, int32_t left, int32_t top, int32_t right, int32_t bottom);
