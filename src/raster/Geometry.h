// Whole-raster geometry: mirror images and quarter turns. There is no rotation by
// other angles and no tiling.
#pragma once

#include "raster/Raster.h"

// Left to right, over all bytes of all planes, borders included. False and nothing
// done unless row bits, Height, Width and Planes agree.
bool FlipRasterHor(Raster& dest, Raster& src);
// Top to bottom: row i of each plane of dest is row Height - 1 - i of that plane of
// src. The same test as FlipRasterHor.
bool FlipRasterVer(Raster& dest, Raster& src);

// New rasters a quarter turn on, with src's mode, planes and depth, bounds
// transposed, no border; only plane 0 is filled. RotateRaster90Cw keeps the
// system's own index: destination column H' - 1 - y counted from the new height,
// over min(H, H') source rows and min(W, W') source columns. On a square raster
// that is the true turn; on another, part of the result stays 0.
bool RotateRaster90Cw(Raster*& out, Raster& src);
bool RotateRaster90Ccw(Raster*& out, Raster& src);

// What the layer operations do to their Source: a flip goes through a copy without
// border and back; a turn replaces the raster, and does nothing when it failed.
bool FlipRasterInPlaceHor(Raster& raster);
bool FlipRasterInPlaceVer(Raster& raster);
bool TurnRasterCw(Raster*& raster);
bool TurnRasterCcw(Raster*& raster);
