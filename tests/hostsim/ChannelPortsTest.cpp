// hostsim's documentInfo and channel ports: the description of a layered document, and reads
// into memory laid out with odd strides, clipped, and scaled.
#include "hostsim/ChannelPorts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace hostsim;

// Two 7 x 5 RGB layers; the upper one (the target) has transparency. Sample values encode
// layer, plane and position so any misplaced byte shows.
Document TwoLayers() {
    Document doc;
    doc.width = 7;
    doc.height = 5;
    for (int l = 0; l < 2; ++l) {
        Layer layer;
        layer.name = l ? "Upper" : "Lower";
        for (int y = 0; y < 5; ++y)
            for (int x = 0; x < 7; ++x)
                for (int p = 0; p < 3; ++p) layer.pixels.push_back(uint8(l * 100 + p * 30 + y * 7 + x));
        if (l) layer.transparency.assign(35, 200);
        doc.layers.push_back(layer);
    }
    doc.layers[0].visible = false;
    doc.targetLayer = 1;
    return doc;
}

uint8 Expected(int layer, int plane, int32 x, int32 y) { return uint8(layer * 100 + plane * 30 + y * 7 + x); }

TEST(HostsimChannelPorts, DocumentInfoDescribesLayers) {
    const Document doc = TwoLayers();
    ChannelPorts ports;
    ports.Build(doc, doc.Target(), 3);
    const ReadImageDocumentDesc* info = ports.DocumentInfo();
    EXPECT_EQ(info->minVersion, 0);
    EXPECT_GE(info->maxVersion, 2);
    EXPECT_EQ(info->layerCount, 2);
    int count = 0;
    for (const ReadChannelDesc* c = info->targetCompositeChannels; c; c = c->next, ++count) {
        EXPECT_EQ(c->channelType, ctRed + count);
        EXPECT_EQ(c->depth, 8);
        EXPECT_TRUE(c->target);
    }
    EXPECT_EQ(count, 3);
    ASSERT_NE(info->targetTransparency, nullptr);
    EXPECT_EQ(info->targetLayerMask, nullptr);
    EXPECT_EQ(info->alphaChannels, nullptr);
    EXPECT_EQ(info->selection, nullptr);

    const ReadLayerDesc* lower = info->layersDescriptor;
    ASSERT_NE(lower, nullptr);
    ASSERT_NE(lower->next, nullptr);
    EXPECT_EQ(std::string(lower->name), "Lower");
    EXPECT_FALSE(lower->isVisible);
    EXPECT_EQ(lower->transparency, nullptr);
    EXPECT_EQ(std::string(lower->next->name), "Upper");
    EXPECT_TRUE(lower->next->isVisible);
    EXPECT_NE(lower->next->transparency, nullptr);
    EXPECT_EQ(lower->next->next, nullptr);

    // The merged image is the only visible layer over nothing: its colours, its coverage.
    const PSChannelPortsSuite* suite = ChannelPorts::Suite(kPSChannelPortsSuiteVersion2);
    uint8 px[3] = {};
    VRect r = {2, 3, 3, 4};
    const PixelMemoryDesc one = {px, 24, 8, 0, 8};
    ASSERT_EQ(suite->ReadPixelsFromLevel(info->mergedCompositeChannels->next->port, 0, &r, &one), kSPNoError);
    EXPECT_EQ(px[0], Expected(1, 1, 3, 2));

    // An older host's record leaves the newer fields empty.
    ports.Build(doc, doc.Target(), 0);
    EXPECT_EQ(ports.DocumentInfo()->layersDescriptor, nullptr);
    EXPECT_NE(ports.DocumentInfo()->targetCompositeChannels, nullptr);
}

TEST(HostsimChannelPorts, ReadsHonourStridesClipAndScale) {
    const Document doc = TwoLayers();
    ChannelPorts ports;
    ports.Build(doc, doc.Target(), 3);
    const ReadImageDocumentDesc* info = ports.DocumentInfo();
    const PSChannelPortsSuite* suite = ChannelPorts::Suite(kPSChannelPortsSuiteVersion3);
    ASSERT_NE(suite, nullptr);
    EXPECT_EQ(ChannelPorts::Suite(1), nullptr);
    const PIChannelPort green = info->layersDescriptor->compositeChannelsList->next->port;

    Boolean canRead = 0;
    EXPECT_EQ(suite->CanRead(green, &canRead), kSPNoError);
    EXPECT_TRUE(canRead);
    int32 levels = 0, depth = 0;
    VRect bounds{};
    EXPECT_EQ(suite->CountLevels(green, &levels), kSPNoError);
    EXPECT_EQ(suite->GetDepth(green, 0, &depth), kSPNoError);
    EXPECT_EQ(suite->GetDataBounds(green, 0, &bounds), kSPNoError);
    EXPECT_EQ(levels, 1);
    EXPECT_EQ(depth, 8);
    EXPECT_EQ(bounds.bottom, 5);
    EXPECT_EQ(bounds.right, 7);

    // Five bytes a pixel, plane at byte 2, rows of 4 pixels plus 3 bytes; the request reaches
    // past the right and bottom edges: what lies outside is untouched, the rest in place.
    const int32 rowBytes = 4 * 5 + 3;
    std::vector<uint8> mem(size_t(rowBytes) * 3, 0xEE);
    const PixelMemoryDesc desc = {mem.data(), rowBytes * 8, 40, 16, 8};
    VRect r = {3, 4, 6, 8};
    ASSERT_EQ(suite->ReadPixelsFromLevel(green, 0, &r, &desc), kSPNoError);
    EXPECT_EQ(r.top, 3);
    EXPECT_EQ(r.left, 4);
    EXPECT_EQ(r.bottom, 5);
    EXPECT_EQ(r.right, 7);
    for (int32 y = 0; y < 3; ++y)
        for (int32 i = 0; i < rowBytes; ++i) {
            const int32 x = i / 5;
            const bool written = i % 5 == 2 && x < 3 && y < 2;
            ASSERT_EQ(mem[size_t(y * rowBytes + i)], written ? Expected(0, 1, 4 + x, 3 + y) : 0xEE) << y << "," << i;
        }

    // The classic read: scaling 7 x 5 onto 4 x 3 picks the nearest source pixel.
    std::vector<uint8> small(12, 0);
    const PSScaling scaling = {{0, 0, 5, 7}, {0, 0, 3, 4}};
    const VRect write = {0, 0, 3, 4};
    VRect wrote{};
    const PixelMemoryDesc smallDesc = {small.data(), 32, 8, 0, 8};
    ASSERT_EQ(ChannelPorts::Procs()->readPixelsProc(green, &scaling, &write, &smallDesc, &wrote), noErr);
    EXPECT_EQ(wrote.bottom, 3);
    EXPECT_EQ(wrote.right, 4);
    for (int32 y = 0; y < 3; ++y)
        for (int32 x = 0; x < 4; ++x) EXPECT_EQ(small[size_t(y * 4 + x)], Expected(0, 1, x * 7 / 4, y * 5 / 3));

    // Descriptions the host cannot serve, and ports it never made.
    PixelMemoryDesc bad = desc;
    bad.depth = 16;
    EXPECT_EQ(suite->ReadPixelsFromLevel(green, 0, &r, &bad), errUnsupportedDepthConversion);
    bad = desc;
    bad.bitOffset = 3;
    EXPECT_EQ(suite->ReadPixelsFromLevel(green, 0, &r, &bad), errUnsupportedBitOffset);
    bad = desc;
    bad.colBits = 4;
    EXPECT_EQ(suite->ReadPixelsFromLevel(green, 0, &r, &bad), errUnsupportedColBits);
    int32 stranger = 0;
    EXPECT_EQ(suite->ReadPixelsFromLevel(reinterpret_cast<PIChannelPort>(&stranger), 0, &r, &desc), errUnknownPort);
    ports.Build(doc, doc.Target(), 3); // earlier ports die with the rebuild
    EXPECT_EQ(suite->CanRead(green, &canRead), errUnknownPort);
}

} // namespace

TEST(HostsimChannelPorts, AnOpaqueLayerHidesWhatLiesBelowInTheMerge) {
    Document doc = TwoLayers();
    doc.layers[0].visible = true;
    doc.layers[0].transparency.assign(35, 90);
    doc.layers[1].transparency.clear();
    std::vector<uint8> colour, transparency;
    doc.Merge(colour, transparency);
    EXPECT_EQ(colour, doc.layers[1].pixels);
    EXPECT_EQ(transparency, std::vector<uint8>(35, 255));

    // 16-bit: full coverage is 32768.
    doc.depth = 16;
    for (Layer& layer : doc.layers) {
        std::vector<uint8> wide;
        for (uint8 v : layer.pixels) wide.insert(wide.end(), {v, 1});
        layer.pixels = wide;
        if (!layer.transparency.empty()) layer.transparency.assign(70, 0);
    }
    doc.Merge(colour, transparency);
    EXPECT_EQ(colour, doc.layers[1].pixels);
    ASSERT_EQ(transparency.size(), 70u);
    for (size_t i = 0; i < 70; i += 2) EXPECT_EQ(transparency[i] | transparency[i + 1] << 8, 32768) << i;
}
