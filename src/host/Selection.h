// The shape the filter works through: the layer's transparency times the host's
// selection mask, one byte a pixel, and the same pixels as RGBA with that alpha.
#pragma once

#include <cstdint>

extern uint8_t* SelectionMask; // SelectionRowLength bytes a row
extern uint8_t* SourceRGBA;    // four bytes a pixel
extern int32_t SelectionRowLength;
extern int32_t SelectionWidth, SelectionHeight;

void BuildSelectionMask();
void FreeSelectionMask();
