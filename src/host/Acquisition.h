// Acquisition: the host's pixels (or the dialog's layer) made into SourceImage, with the
// filter rectangle and the selection handed to the engine as plain values.
#pragma once

#include "state/WorkImages.h"

void AcquireSource();
// Samples LayerRaster at the preview's scale into outData (toHost) or SourceImage.
void CopyOriginalToOutput(bool toHost);
