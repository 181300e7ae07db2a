#include "state/WorkImages.h"

#include "platform/PageMemory.h"

#include <cstdlib>

int32_t ImageWidth = 0, ImageHeight = 0;
int32_t FilterWidth = 0, FilterHeight = 0;
int32_t WorkPixelBytes = 4, WorkRowBytes = 0;
uint8_t* SourceImage = nullptr;
uint8_t* WorkImage = nullptr;
bool ModeIsCMYK = false;
bool Depth16 = false;
int32_t DocumentPlanes = 0;
int32_t FilterRectRight = kFilterEdgeUnset;
int32_t FilterRectBottom = kFilterEdgeUnset;
double PreviewScale = 1.0;
double PreviewOriginX = 0.0, PreviewOriginY = 0.0;
bool HaveMask = false;
const uint8_t* HostMaskData = nullptr;
int32_t HostMaskRowBytes = 0;
uint8_t* SelectionMask = nullptr;
uint8_t* SourceRGBA = nullptr;
int32_t SelectionRowLength = 0;
int32_t SelectionWidth = 0, SelectionHeight = 0;

int32_t FilterRightEdge() { return FilterRectRight == kFilterEdgeUnset ? FilterWidth : FilterRectRight; }
int32_t FilterBottomEdge() { return FilterRectBottom == kFilterEdgeUnset ? FilterHeight : FilterRectBottom; }

bool DocumentHasAlpha() { return DocumentPlanes >= (ModeIsCMYK ? 5 : 4); }

void FreeWorkImages() {
    const size_t bytes = size_t(ImageHeight) * size_t(WorkRowBytes);
    FreePages(WorkImage, bytes);
    FreePages(SourceImage, bytes);
    WorkImage = SourceImage = nullptr;
}

void FreeSelectionMask() {
    std::free(SelectionMask);
    std::free(SourceRGBA);
    SelectionMask = SourceRGBA = nullptr;
}
