// Resampling: a texture brought to a new size in one pass per plane.
#pragma once

#include "raster/Raster.h"

// Makes a new raster of trunc(Width * scale + 0.5) by trunc(Height * scale + 0.5)
// pixels (f64), with src's mode, planes, depth and border, and stores it in `out`.
// Above 1.0 the enlarging filter: normalised squared weights on the four
// neighbours, in f32, with the source position stepped in f64 and rounded to f32
// at every step. At or below 1.0 the reducing filter: an area average in f64 whose
// first row and column count whole and whose last ones count by fraction; it reads
// the source with a stride of Width, so it is meant for rasters without a border.
// False, with `out` untouched, when src is null or without memory, or the new
// raster cannot be had.
bool ResampleRaster(Raster*& out, Raster* src, double scale, uint8_t allocKind);
