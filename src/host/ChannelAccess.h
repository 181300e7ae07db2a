// The document beyond inData: the target layer at full resolution read through the
// host's channel ports, the visible layers under it merged, and the layer properties
// asked of the host's action suites.
#pragma once

#include "host/abi/HostInterface.h"
#include "raster/Raster.h"

#include <memory>

extern Raster* LayerRaster; // the target layer, its transparency in plane 3
extern Raster* MergedBelow; // the visible layers under the target, bottom first, merged

// Channels of the target: the composite list, else the alpha channels; planes without
// documentInfo.
int32 ChannelCount();
// One channel a plane into `raster`; false (the host result set) when a read fails.
bool ReadChannelToRaster(const ReadChannelDesc* list, Raster* raster);
// Property 'Nm  ' of the target layer, or null.
std::unique_ptr<char[]> TargetLayerName();
// Property 'Vsbl' of the layer of that name; any failure gives false.
bool LayerVisible(const char* layerName);
// Fills LayerRaster and MergedBelow, when the dialog opens.
void ReadDocumentLayers();
void FreeDocumentLayers();
