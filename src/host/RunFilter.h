// The one call that produces a result: the mode test, the render and the write-back
// of WorkImage into the host's output.
#pragma once

#include <cstdint>

// RGB, CMYK and their 16-bit forms, as a bit mask over modes 0 to 13.
inline constexpr uint32_t kAcceptedModes = 0x2818;

extern int32_t DocumentDepth;

void RunFilter();
// WorkImage into the host's outData, converted to the document's mode.
void WriteBack();
