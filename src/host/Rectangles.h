// The host's rectangles, read and written in their 32-bit form when the host offers
// big documents, and in the 16-bit form otherwise. Sides: top, left, bottom, right.
#pragma once

#include "host/abi/HostInterface.h"

bool UsesBigDocument();
VRect GetFilterRect();
VRect GetInRect();
VRect GetOutRect();
VRect GetMaskRect();
void SetInRect(const VRect& r);
void SetOutRect(const VRect& r);
void SetMaskRect(const VRect& r);
VPoint GetFloatCoord();
VPoint GetImageSize(); // the whole document: v rows, h columns

inline int32 RectWidth(const VRect& r) { return r.right - r.left; }
inline int32 RectHeight(const VRect& r) { return r.bottom - r.top; }
