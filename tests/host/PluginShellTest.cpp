// The selector protocol, the blocks and the gate, through hostsim and the real PluginMain.
#include "ShellFixture.h"

#include "hostsim/Scripting.h"
#include "host/Session.h"
#include "platform/Alert.h"

using namespace shelltest;

namespace {

uint8 QueryForParameters(hostsim::Host& host) {
    Handle data = reinterpret_cast<Handle>(host.DataSlot());
    return data ? uint8(**data) : 0xFF;
}

} // namespace

TEST(PluginShell, ActionWithDialogOffRunsTheWholeSequence) {
    auto host = MakeHost(RgbDocument(40, 30));
    const std::vector<uint8> before = host->Doc().TargetInterleaved();
    ASSERT_EQ(host->PlayAction(AllEffectsOff(), plugInDialogDontDisplay), noErr);
    for (int16 s : {filterSelectorParameters, filterSelectorPrepare, filterSelectorStart, filterSelectorFinish})
        EXPECT_EQ(host->Calls(s), 1) << "selector " << s;
    EXPECT_EQ(host->Calls(filterSelectorAbout), 0);
    EXPECT_EQ(host->Doc().TargetInterleaved(), before) << "all effects off leave the picture alone";
    EXPECT_EQ(QueryForParameters(*host), 0);
    ExpectNoMisuse(*host);
}

TEST(PluginShell, PrepareWithoutParametersMakesBothBlocks) {
    auto host = MakeHost(RgbDocument(16, 16));
    ASSERT_EQ(host->Call(filterSelectorPrepare), noErr);
    ASSERT_NE(host->Parameters(), nullptr);
    ASSERT_NE(host->DataSlot(), 0);
    EXPECT_EQ(hostsim::HandleSize(host->Parameters()), 976);
    EXPECT_EQ(hostsim::HandleSize(reinterpret_cast<Handle>(host->DataSlot())), 10);
    EXPECT_EQ(QueryForParameters(*host), 1) << "a block made at Prepare still wants the dialog";
    ExpectNoMisuse(*host);
}

TEST(PluginShell, RepeatStartsAtPrepareWithoutDialog) {
    auto host = MakeHost(RgbDocument(20, 10));
    ASSERT_EQ(host->PlayAction(AllEffectsOff(), plugInDialogDontDisplay), noErr);
    ASSERT_EQ(host->RepeatFilter(), noErr) << "no dialog is shown, so nothing is cancelled";
    EXPECT_EQ(host->Calls(filterSelectorParameters), 1);
    EXPECT_EQ(host->Calls(filterSelectorPrepare), 2);
    EXPECT_EQ(host->Calls(filterSelectorStart), 2);
    ExpectNoMisuse(*host);
}

TEST(PluginShell, MenuRunWantsTheDialogAndCancelsWithoutIt) {
    // This build has no dialog: an interactive run ends as a cancelled one, writing nothing.
    auto host = MakeHost(RgbDocument(12, 12));
    const std::vector<uint8> before = host->Doc().TargetInterleaved();
    EXPECT_EQ(host->RunFilter(), userCanceledErr);
    EXPECT_EQ(host->Doc().TargetInterleaved(), before);
    EXPECT_EQ(host->Calls(filterSelectorFinish), 0) << "nothing follows a failed Start";
    ExpectNoMisuse(*host);
}

TEST(PluginShell, PrepareCapsMaxSpaceAtTwoTiles) {
    struct Case {
        int32 width, height;
        int64 hostMax, expected;
        bool selection;
    };
    const Case cases[] = {
        {100, 50, int64(256) << 20, 2 * 3 * 50 * 100, false},    // small rectangle: a small tile
        {1000, 800, int64(256) << 20, 2 * 3 * 256 * 256, false}, // tiles stop at 256 by 256
        {1000, 800, 1000, 1000, false},                          // below two tiles: left alone
        {100, 50, int64(256) << 20, 2 * 4 * 50 * 100, true},     // the mask counts as a plane
    };
    for (const Case& c : cases) {
        hostsim::Document doc = RgbDocument(c.width, c.height);
        if (c.selection) {
            doc.selection.assign(doc.PixelCount(), 255);
            doc.selection[0] = 0;
        }
        hostsim::HostOptions options;
        options.maxSpace = c.hostMax;
        auto host = MakeHost(std::move(doc), options);
        ASSERT_EQ(host->Call(filterSelectorParameters), noErr);
        if (c.selection) host->MutableRecord().maskData = host->MutableRecord().parameters; // any non-null
        ASSERT_EQ(host->Call(filterSelectorPrepare), noErr);
        EXPECT_EQ(host->Record().maxSpace, c.expected) << c.width << "x" << c.height;
        EXPECT_EQ(host->Record().bufferSpace, 0);
        host->MutableRecord().maskData = nullptr;
    }
}

TEST(PluginShell, BigDocumentRectanglesAreUsedAndCleared) {
    for (bool big : {true, false}) {
        hostsim::HostOptions options;
        options.bigDocumentData = big;
        auto host = MakeHost(RgbDocument(64, 48), options);
        ASSERT_EQ(host->PlayAction(AllEffectsOff(), plugInDialogDontDisplay), noErr);
        ASSERT_FALSE(host->Requests().empty());
        const auto& first = host->Requests().front();
        EXPECT_EQ(first.used32Bit, big);
        EXPECT_EQ(first.inRect.bottom, 48);
        EXPECT_EQ(first.outRect.right, 64);
        EXPECT_EQ(first.inputRate, 0x10000);
        if (big) {
            EXPECT_EQ(host->BigDocument().PluginUsing32BitCoordinates, 1);
            const VRect in = host->BigDocument().inRect32;
            EXPECT_TRUE(hostsim::IsEmpty(in)) << "Continue ends the requests through the 32-bit rectangles";
        }
        const Rect out = host->Record().outRect;
        EXPECT_EQ(out.bottom, 0);
        ExpectNoMisuse(*host);
    }
}

TEST(PluginShell, LabIsRefusedWithItsMessage) {
    AlertCapture capture;
    auto host = MakeHost(RgbDocument(10, 10, 3, plugInModeLabColor));
    const std::vector<uint8> before = host->Doc().TargetInterleaved();
    EXPECT_EQ(host->PlayAction(AllEffectsOff(), plugInDialogDontDisplay), userCanceledErr);
    ASSERT_EQ(capture.Alerts().size(), 1u);
    EXPECT_EQ(capture.Alerts()[0].text, "This Mode is Not Supported by the Plug-in");
    EXPECT_EQ(capture.Alerts()[0].title, "");
    EXPECT_EQ(capture.Alerts()[0].icon, AlertIcon::Warning);
    EXPECT_EQ(host->Doc().TargetInterleaved(), before) << "nothing is written";
}

TEST(PluginShell, MissingBlocksAreBadParameters) {
    auto host = MakeHost(RgbDocument(8, 8));
    EXPECT_EQ(host->Call(filterSelectorStart), filterBadParameters);
    EXPECT_EQ(host->Call(filterSelectorFinish), filterBadParameters);
    ExpectNoMisuse(*host);
}
