// A layer's texture: how a texture name becomes a layer's Source (the texture scaled
// once to cover the filter rectangle and oriented as the settings say) and View (it
// at the size the current render needs).
#pragma once

#include <cstdint>

struct EffectLayer;
struct Raster;

// Whether a failed load tells the user; the layer setup clears it around the load of
// a layer that is switched off, and sets it back afterwards.
extern bool ReportTextureFailure;
// The window that owns the failure message (the main dialog's), or null.
extern void* TextureAlertOwner;
// The data folder, a separator and `name`, in one static buffer that the next call
// overwrites.
const char* TexturePath(const char* name);

// ScaleFactor from the texture's and the filter's sizes and the layer's Scale: the
// factor that just covers the filter rectangle at Scale 0, 1.8 times it at 200.
void UpdateScaleFactor(EffectLayer& layer);

// Reads the file at `path` into layer.Source, scaled, moved and oriented, and prepares
// the layer. A missing or wrong file gives a white 1000 by 1000 texture, a corrupt one
// a white texture of the file's size with width and height exchanged; either tells the
// user when ReportTextureFailure is set. False for a null path, or when no raster
// could be had at all.
bool LoadLayerTexture(EffectLayer& layer, const char* path);

// Stores a new Scale; reloads only when the resulting factor changed.
void SetLayerScale(EffectLayer& layer, double scale);

// Slides the filter rectangle over Source: adds to the offsets and keeps them between
// Source's top left and its far edge less the filter rectangle's. Marks the layer.
void MoveLayer(EffectLayer& layer, int32_t dx, int32_t dy);

// Rebuilds View when GeometryDirty is set and Source exists. In a preview: the visible
// window of Source (or all of it) scaled by 1 / PreviewScale. At full size: Source
// itself, cut to start at the offsets. A surface's View is smoothed once here.
void PrepareLayerTexture(EffectLayer& layer);

// The preview's shortcut: when a scaled texture is larger than the work area would
// show, copies only the window on screen (plane 0, at full size) into a new raster.
// False while the dialog is closed, when the texture fits, or when memory fails.
bool FitRasterToScreen(EffectLayer& layer, Raster*& out, Raster& src);
