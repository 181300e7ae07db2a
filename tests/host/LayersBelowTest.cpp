// The layers below the target merged as the shell reads them: a visible lower layer with
// transparency blends over what lies under it, by the byte rule d + (s - d) * t / 255.
#include "ShellFixture.h"

#include "host/ChannelAccess.h"
#include "host/Session.h"

#include <array>
#include <functional>

using namespace shelltest;

namespace {

std::function<void()> gLayersProbe;
void QZ_HOSTCALL LayersEntry(int16 selector, void* record, intptr_t* data, int16* result) {
    if (selector != filterSelectorStart) return;
    gSelector = selector;
    gFilterRecord = static_cast<FilterRecord*>(record);
    gDataSlot = data;
    gResult = result;
    gLayersProbe();
    gFilterRecord = nullptr;
}

hostsim::Layer Solid(const char* name, int32 pixels, std::array<uint8, 3> rgb, bool visible = true) {
    hostsim::Layer layer;
    layer.name = name;
    layer.visible = visible;
    for (int32 i = 0; i < pixels; ++i) layer.pixels.insert(layer.pixels.end(), rgb.begin(), rgb.end());
    return layer;
}

uint8 At(Raster& r, int plane, int32 y, int32 x) {
    return r.ImageOrigin()[size_t(plane) * r.PlaneBytes() + size_t(y) * r.RowBytes() + x];
}

} // namespace

TEST(LayersBelow, AVisibleLayerWithTransparencyBlendsOverTheOnesUnderIt) {
    const int32 w = 4, h = 3, n = w * h;
    for (bool groundShown : {true, false}) {
        hostsim::Document doc = RgbDocument(w, h, 4);
        hostsim::Layer top = doc.layers[0];
        top.name = "Top";
        hostsim::Layer veil = Solid("Veil", n, {200, 100, 0});
        for (int32 i = 0; i < n; ++i) veil.transparency.push_back(uint8(i * 23));
        doc.layers = {Solid("Ground", n, {10, 20, 30}, groundShown), veil, top};
        doc.targetLayer = 2;
        gLayersProbe = [&] {
            ReadDocumentLayers();
            ASSERT_NE(MergedBelow, nullptr);
            for (int32 y = 0; y < h; ++y)
                for (int32 x = 0; x < w; ++x) {
                    const int t = (y * w + x) * 23;
                    // Over the opaque ground, or over black with nothing under the veil.
                    const int under[3] = {groundShown ? 10 : 0, groundShown ? 20 : 0, groundShown ? 30 : 0};
                    const int over[3] = {200, 100, 0};
                    for (int p = 0; p < 3; ++p)
                        EXPECT_EQ(At(*MergedBelow, p, y, x), under[p] + (over[p] - under[p]) * t / 255)
                            << "plane " << p << " at " << x << ", " << y;
                    EXPECT_EQ(At(*MergedBelow, 3, y, x), groundShown ? 255 : t) << "the larger coverage";
                }
            FreeDocumentLayers();
        };
        hostsim::Host host(std::move(doc), {}, LayersEntry);
        host.Call(filterSelectorStart);
        for (const std::string& m : host.TakeMisuse()) ADD_FAILURE() << m;
    }
}
