// The engine's globals set as a run sets them, without a host: an RGB document, the default parameters, and work images
// holding a noisy picture. The benchmarks drive the stages themselves on top of it.
#pragma once

#include "effects/EffectLayer.h"
#include "state/DialogState.h"
#include "state/Parameters.h"
#include "state/WorkImages.h"
#include "effects/LayerTexture.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class EngineWithoutHost {
public:
    // A document of docWidth by docHeight seen through a work area of workWidth by
    // workHeight: at full size they are the same, in a preview the scale is their ratio.
    EngineWithoutHost(int32_t docWidth, int32_t docHeight, int32_t workWidth, int32_t workHeight, bool dialog) {
        DocumentPlanes = 3;
        ModeIsCMYK = false;
        gParams = &params_;
        InitParameters();
        DialogOpen = dialog;
        FilterWidth = FilterRectRight = docWidth;
        FilterHeight = FilterRectBottom = docHeight;
        ImageWidth = workWidth;
        ImageHeight = workHeight;
        WorkRowBytes = workWidth * 4;
        PreviewScale = double(docWidth) / workWidth;
        PreviewOriginX = PreviewOriginY = 0.0;
        source_.resize(size_t(workHeight) * size_t(WorkRowBytes));
        for (size_t i = 0; i < source_.size(); ++i) source_[i] = i % 4 == 3 ? 255 : uint8_t((i * 2654435761u) >> 24);
        work_.assign(source_.size(), 0);
        SourceImage = source_.data();
        WorkImage = work_.data();
    }
    ~EngineWithoutHost() {
        DestroyEngine();
        DialogOpen = false;
        SourceImage = WorkImage = nullptr;
        gParams = nullptr;
        DocumentPlanes = 0;
    }
    EngineWithoutHost(const EngineWithoutHost&) = delete;
    EngineWithoutHost& operator=(const EngineWithoutHost&) = delete;

private:
    FilterParameters params_ = {};
    std::vector<uint8_t> source_, work_;
};
