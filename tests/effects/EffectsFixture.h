// Small rasters and a work area for the engine's tests, without a host.
#pragma once

#include "effects/EffectLayer.h"
#include "state/WorkImages.h"
#include "state/DialogState.h"
#include "state/Parameters.h"
#include "effects/RenderDriver.h"

#include "raster/Raster.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace effectstest {

// A one-plane raster whose image proper holds `value` everywhere, border included.
inline Raster* Plane(int32_t w, int32_t h, uint32_t border, uint8_t value) {
    Raster* r = NewRaster(1, RasterRect{0, 0, h, w}, 1, 8, border, 0);
    uint8_t* p = r->Pixels(); // allocates: Storage.Bytes is known only after
    std::memset(p, value, r->Storage.Bytes);
    return r;
}

inline uint8_t& At(Raster& r, int32_t y, int32_t x) { return r.ImageOrigin()[size_t(y) * r.RowBytes() + x]; }

// A final-run work area of w by h with every global the engine reads at rest.
class EngineTest : public ::testing::Test {
protected:
    void Work(int32_t w, int32_t h) {
        ImageWidth = FilterWidth = w;
        ImageHeight = FilterHeight = h;
        WorkRowBytes = w * 4;
        work_.assign(size_t(h) * WorkRowBytes, 0);
        WorkImage = work_.data();
    }
    void SetUp() override {
        DialogOpen = false;
        PreviewScale = 1.0;
        PreviewOriginX = PreviewOriginY = 0.0;
        HaveMask = false;
        HostMaskData = nullptr;
        KeepWashArea = false;
        ModeIsCMYK = false;
        Work(4, 4);
    }
    void TearDown() override {
        DestroyLayer(layer_);
        WorkImage = nullptr;
    }
    EffectLayer layer_;
    std::vector<uint8_t> work_;
};

// The same with a record of defaults in gParams.
class ParamsEngineTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        std::memset(&params_, 0, sizeof params_);
        gParams = &params_;
        InitParameters();
    }
    void TearDown() override {
        gParams = nullptr;
        EngineTest::TearDown();
    }
    FilterParameters params_;
};

} // namespace effectstest
