// hostsim's host against small plug-ins written here: requests served through advanceState and
// Continue, sampling, padding, plane ranges, 32-bit rectangles, selections, the run's sequence
// and error handling, handles and suites.
#include "hostsim/Handles.h"
#include "hostsim/Host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <functional>
#include <optional>

namespace {

using namespace hostsim;

// The plug-in under test: each test installs what it does per selector.
std::function<int16(int16, FilterRecord*, intptr_t*)> gPlugin;

void TestEntry(int16 selector, void* record, intptr_t* data, int16* result) {
    *result = gPlugin ? gPlugin(selector, static_cast<FilterRecord*>(record), data) : int16(0);
}

struct PluginScope {
    explicit PluginScope(std::function<int16(int16, FilterRecord*, intptr_t*)> plugin) {
        gPlugin = std::move(plugin);
        TakeHandleMisuse();
    }
    ~PluginScope() { gPlugin = nullptr; }
};

Document MakeTestDocument(int32 w, int32 h, int16 mode, int32 depth, bool alpha, uint32 seed = 1) {
    const int planes = ColourPlanesOf(mode) + (alpha ? 1 : 0);
    std::vector<uint8> samples(size_t(w * h * planes) * (depth == 16 ? 2 : 1));
    for (size_t i = 0; i < samples.size(); ++i) {
        seed = seed * 1664525u + 1013904223u;
        samples[i] = uint8(seed >> 24);
    }
    if (depth == 16) // keep 16-bit samples within 0-32768
        for (size_t i = 1; i < samples.size(); i += 2) samples[i] &= 0x7F;
    return MakeDocument(w, h, mode, depth, samples, planes);
}

uint32 SampleAt(const Document& d, const Layer& layer, int plane, int32 x, int32 y) {
    const PlaneRef ref = d.Plane(layer, d.FullLayout(layer), plane);
    uint32 v = 0;
    std::memcpy(&v, ref.base + size_t(y) * ref.rowStep + size_t(x) * ref.pixelStep, size_t(d.BytesPerSample()));
    return v;
}

void SetRects(FilterRecord* r, const VRect& in, const VRect& out, const VRect& mask, bool use32) {
    if (use32) {
        r->bigDocumentData->PluginUsing32BitCoordinates = 1;
        r->bigDocumentData->inRect32 = in;
        r->bigDocumentData->outRect32 = out;
        r->bigDocumentData->maskRect32 = mask;
    } else {
        r->inRect = {int16(in.top), int16(in.left), int16(in.bottom), int16(in.right)};
        r->outRect = {int16(out.top), int16(out.left), int16(out.bottom), int16(out.right)};
        r->maskRect = {int16(mask.top), int16(mask.left), int16(mask.bottom), int16(mask.right)};
    }
}

// Inverts the filter rectangle tile by tile, asking for each tile on the way out of Start
// and Continue, as classic filters do.
struct TiledInverter {
    int32 tileH, tileW;
    bool use32;
    VRect filter{};
    int32 y = 0, x = 0;

    void Ask(FilterRecord* r) const {
        const VRect tile = {y, x, std::min(y + tileH, filter.bottom), std::min(x + tileW, filter.right)};
        SetRects(r, y < filter.bottom ? tile : VRect{}, y < filter.bottom ? tile : VRect{}, VRect{}, use32);
    }
    int16 operator()(int16 selector, FilterRecord* r, intptr_t*) {
        if (selector == filterSelectorStart) {
            const Rect f = r->filterRect;
            filter = use32 ? r->bigDocumentData->filterRect32 : VRect{f.top, f.left, f.bottom, f.right};
            y = filter.top;
            x = filter.left;
            r->inLoPlane = r->outLoPlane = 0;
            r->inHiPlane = r->outHiPlane = int16(r->planes - 1);
            Ask(r);
        } else if (selector == filterSelectorContinue) {
            const int32 h = std::min(tileH, filter.bottom - y),
                        rowSamples = std::min(tileW, filter.right - x) * r->planes;
            for (int32 row = 0; row < h; ++row)
                for (int32 i = 0; i < rowSamples; ++i) {
                    if (r->depth == 16) {
                        const auto* in =
                            reinterpret_cast<const uint16*>(static_cast<uint8*>(r->inData) + row * r->inRowBytes);
                        auto* out = reinterpret_cast<uint16*>(static_cast<uint8*>(r->outData) + row * r->outRowBytes);
                        out[i] = uint16(32768 - in[i]);
                    } else {
                        static_cast<uint8*>(r->outData)[row * r->outRowBytes + i] =
                            uint8(255 - static_cast<const uint8*>(r->inData)[row * r->inRowBytes + i]);
                    }
                }
            if ((x += tileW) >= filter.right) x = filter.left, y += tileH;
            Ask(r);
        }
        return 0;
    }
};

void ExpectInvertedInside(const Document& before, const Document& after, const VRect& f) {
    const int full = before.depth == 16 ? 32768 : 255;
    const int planes = before.FullLayout(before.Target()).Total();
    for (int p = 0; p < planes; ++p)
        for (int32 y = 0; y < before.height; ++y)
            for (int32 x = 0; x < before.width; ++x) {
                const bool inside = y >= f.top && y < f.bottom && x >= f.left && x < f.right;
                const uint32 was = SampleAt(before, before.Target(), p, x, y);
                ASSERT_EQ(SampleAt(after, after.Target(), p, x, y), inside ? uint32(full) - was : was)
                    << "plane " << p << " at " << x << "," << y;
            }
}

// ---- Requests ----

TEST(HostsimHost, TiledInverterRoundTrips) {
    struct Case {
        int16 mode;
        int32 depth;
        bool alpha, use32;
        std::optional<VRect> filterRect;
    };
    const Case cases[] = {{plugInModeRGBColor, 8, true, false, std::nullopt},
                          {plugInModeCMYKColor, 8, false, true, VRect{1, 2, 6, 11}},
                          {plugInModeRGB48, 16, false, false, VRect{0, 3, 7, 13}}};
    for (const Case& c : cases) {
        PluginScope scope(TiledInverter{3, 5, c.use32});
        Document doc = MakeTestDocument(13, 7, c.mode, c.depth, c.alpha);
        doc.filterRect = c.filterRect;
        Host host(doc, HostOptions{}, TestEntry);
        ASSERT_EQ(host.RunFilter(), 0);
        const VRect f = host.FilterRect();
        const int tiles = ((f.bottom - f.top + 2) / 3) * ((f.right - f.left + 4) / 5);
        EXPECT_EQ(host.Calls(filterSelectorContinue), tiles);
        EXPECT_EQ(host.Calls(filterSelectorFinish), 1);
        ExpectInvertedInside(doc, host.Doc(), f);
        EXPECT_TRUE(host.TakeMisuse().empty());
    }
}

// With 32-bit coordinates in use, clearing only the 16-bit rectangles leaves the request
// standing: the host serves it once more (handing back what was written) before Continue.
TEST(HostsimHost, ThirtyTwoBitRectanglesGovernOnceTheyAreUsed) {
    PluginScope scope([](int16 selector, FilterRecord* r, intptr_t*) -> int16 {
        BigDocumentStruct* big = r->bigDocumentData;
        if (selector == filterSelectorStart) {
            SetRects(r, big->filterRect32, big->filterRect32, VRect{}, true);
            r->inHiPlane = r->outHiPlane = int16(r->planes - 1);
            if (OSErr err = r->advanceState()) return err;
            const int32 n = r->inRowBytes * (big->filterRect32.bottom - big->filterRect32.top);
            for (int32 i = 0; i < n; ++i)
                static_cast<uint8*>(r->outData)[i] = uint8(255 - static_cast<uint8*>(r->inData)[i]);
            r->inRect = r->outRect = r->maskRect = Rect{};
        } else if (selector == filterSelectorContinue) {
            SetRects(r, VRect{}, VRect{}, VRect{}, true);
        }
        return 0;
    });
    const Document doc = MakeTestDocument(9, 5, plugInModeRGBColor, 8, false);
    Host host(doc, HostOptions{}, TestEntry);
    ASSERT_EQ(host.RunFilter(), 0);
    ASSERT_EQ(host.Requests().size(), 2u);
    EXPECT_TRUE(host.Requests()[1].used32Bit);
    EXPECT_EQ(host.Calls(filterSelectorContinue), 1);
    ExpectInvertedInside(doc, host.Doc(), {0, 0, 5, 9});
}

// A proxy at rate r: inRect is in sampled coordinates and sample (y, x) is image pixel
// floor((top + y) * r), floor((left + x) * r).
TEST(HostsimHost, SampledProxiesPickEveryRthPixel) {
    const Document doc = MakeTestDocument(20, 14, plugInModeRGBColor, 8, false, 7);
    for (const Fixed rate : {Fixed(2 << 16), Fixed(3 << 16), Fixed(0x18000)}) {
        const VRect in = {1, 2, int32((int64(14) << 16) / rate), int32((int64(20) << 16) / rate)};
        std::vector<uint8> got;
        int32 rowBytes = 0;
        PluginScope scope([&](int16 selector, FilterRecord* r, intptr_t*) -> int16 {
            if (selector != filterSelectorStart) return 0;
            r->inputRate = rate;
            r->inHiPlane = 2;
            SetRects(r, in, VRect{}, VRect{}, false);
            if (OSErr err = r->advanceState()) return err;
            rowBytes = r->inRowBytes;
            got.assign(static_cast<uint8*>(r->inData),
                       static_cast<uint8*>(r->inData) + rowBytes * (in.bottom - in.top));
            r->inRect = Rect{};
            return 0;
        });
        Host host(doc, HostOptions{}, TestEntry);
        ASSERT_EQ(host.RunFilter(), 0) << "rate " << rate;
        ASSERT_EQ(rowBytes, (in.right - in.left) * 3);
        for (int32 y = 0; y < in.bottom - in.top; ++y)
            for (int32 x = 0; x < in.right - in.left; ++x)
                for (int p = 0; p < 3; ++p) {
                    const int32 iy = int32((int64(in.top + y) * rate) >> 16),
                                ix = int32((int64(in.left + x) * rate) >> 16);
                    ASSERT_EQ(got[size_t(y * rowBytes + x * 3 + p)], SampleAt(doc, doc.Target(), p, ix, iy))
                        << "rate " << rate << " at " << x << "," << y;
                }
    }
}

TEST(HostsimHost, PaddingFillsReplicatesOrRefuses) {
    const Document doc = MakeTestDocument(6, 4, plugInModeRGBColor, 8, false, 3);
    const VRect in = {-2, -1, 6, 8}; // two rows above and below, one or two columns aside
    for (const int16 padding : {int16(-3), int16(-1), int16(-2), int16(0), int16(77)}) {
        std::vector<uint8> got;
        OSErr served = 1;
        PluginScope scope([&](int16 selector, FilterRecord* r, intptr_t*) -> int16 {
            if (selector != filterSelectorStart) return 0;
            r->inputPadding = padding;
            r->inLoPlane = r->inHiPlane = 1;
            SetRects(r, in, VRect{}, VRect{}, false);
            served = r->advanceState();
            if (!served) got.assign(static_cast<uint8*>(r->inData), static_cast<uint8*>(r->inData) + 8 * 9);
            r->inRect = Rect{};
            return 0;
        });
        Host host(doc, HostOptions{}, TestEntry);
        host.RunFilter();
        if (padding == plugInWantsErrorOnBoundsException) {
            EXPECT_EQ(served, paramErr);
            continue;
        }
        ASSERT_EQ(served, noErr) << padding;
        const auto at = [&](int32 y, int32 x) { return got[size_t((y - in.top) * 9 + (x - in.left))]; };
        EXPECT_EQ(at(1, 2), SampleAt(doc, doc.Target(), 1, 2, 1)); // inside: the pixel itself
        if (padding == plugInWantsEdgeReplication) {
            EXPECT_EQ(at(-2, -1), SampleAt(doc, doc.Target(), 1, 0, 0));
            EXPECT_EQ(at(5, 7), SampleAt(doc, doc.Target(), 1, 5, 3));
            EXPECT_EQ(at(2, 6), SampleAt(doc, doc.Target(), 1, 5, 2));
        } else if (padding >= 0) {
            EXPECT_EQ(at(-2, -1), padding);
            EXPECT_EQ(at(5, 7), padding);
        }
    }
}

TEST(HostsimHost, PlaneRangesAndRectanglesAreChecked) {
    // Planes 1-2 in, the transparency (plane 3) out: only the transparency changes.
    const Document doc = MakeTestDocument(5, 3, plugInModeRGBColor, 8, true, 9);
    std::vector<OSErr> answers;
    PluginScope scope([&](int16 selector, FilterRecord* r, intptr_t*) -> int16 {
        if (selector != filterSelectorStart) return 0;
        const VRect whole = {0, 0, 3, 5};
        r->inLoPlane = 1, r->inHiPlane = 2, r->outLoPlane = r->outHiPlane = 3;
        SetRects(r, whole, whole, VRect{}, false);
        answers.push_back(r->advanceState());
        EXPECT_EQ(r->inRowBytes, 10);
        EXPECT_EQ(r->outRowBytes, 5);
        EXPECT_EQ(static_cast<uint8*>(r->inData)[3], SampleAt(doc, doc.Target(), 2, 1, 0));
        for (int i = 0; i < 15; ++i) static_cast<uint8*>(r->outData)[(i / 5) * r->outRowBytes + i % 5] = 0;
        r->inHiPlane = 4; // past the last plane
        answers.push_back(r->advanceState());
        r->inHiPlane = 2;
        SetRects(r, whole, {0, 0, 4, 5}, VRect{}, false); // out of the filter rectangle
        answers.push_back(r->advanceState());
        SetRects(r, whole, whole, {0, 1, 3, 6}, false); // mask out of it
        answers.push_back(r->advanceState());
        r->inputPadding = 0;
        SetRects(r, {INT32_MIN / 2, INT32_MIN / 2, INT32_MAX / 2, INT32_MAX / 2}, VRect{}, VRect{}, true);
        answers.push_back(r->advanceState()); // absurdly large, padded or not
        SetRects(r, VRect{}, VRect{}, VRect{}, true);
        return 0;
    });
    Host host(doc, HostOptions{}, TestEntry);
    ASSERT_EQ(host.RunFilter(), 0);
    EXPECT_EQ(answers, (std::vector<OSErr>{noErr, paramErr, paramErr, paramErr, memFullErr}));
    for (int32 y = 0; y < 3; ++y)
        for (int32 x = 0; x < 5; ++x) {
            EXPECT_EQ(SampleAt(host.Doc(), host.Doc().Target(), 3, x, y), 0u);
            EXPECT_EQ(SampleAt(host.Doc(), host.Doc().Target(), 0, x, y), SampleAt(doc, doc.Target(), 0, x, y));
        }
}

// ---- Selections ----

TEST(HostsimHost, SelectionsComeAsMaskOrRectangle) {
    Document doc = MakeTestDocument(8, 6, plugInModeRGBColor, 8, false, 5);
    doc.selection.assign(48, 0);
    for (int32 y = 1; y < 5; ++y)
        for (int32 x = 2; x < 7; ++x) doc.selection[size_t(y * 8 + x)] = x == 2 ? 128 : 255;
    // A plug-in that blackens everything it is given and copies the mask it sees.
    std::vector<uint8> mask;
    bool hadMask = false;
    const auto blacken = [&](int16 selector, FilterRecord* r, intptr_t*) -> int16 {
        if (selector != filterSelectorStart) return 0;
        const Rect f = r->filterRect;
        const VRect whole = {f.top, f.left, f.bottom, f.right};
        r->outHiPlane = 2;
        SetRects(r, VRect{}, whole, whole, false);
        if (OSErr err = r->advanceState()) return err;
        hadMask = r->haveMask && r->maskData;
        mask.clear();
        for (int32 y = 0; hadMask && y < whole.bottom - whole.top; ++y)
            for (int32 x = 0; x < whole.right - whole.left; ++x)
                mask.push_back(static_cast<uint8*>(r->maskData)[y * r->maskRowBytes + x]);
        for (int32 y = 0; y < whole.bottom - whole.top; ++y)
            std::memset(static_cast<uint8*>(r->outData) + y * r->outRowBytes, 0, size_t(r->outRowBytes));
        SetRects(r, VRect{}, VRect{}, VRect{}, false);
        return 0;
    };
    {
        PluginScope scope(blacken);
        Host host(doc, HostOptions{}, TestEntry);
        ASSERT_EQ(host.RunFilter(), 0);
        EXPECT_EQ(host.Record().filterCase, filterCaseFlatImageWithSelection);
        EXPECT_EQ(host.FilterRect().top, 1);
        EXPECT_EQ(host.FilterRect().left, 2);
        ASSERT_TRUE(hadMask);
        EXPECT_EQ(mask[0], 128);
        EXPECT_EQ(mask[1], 255);
        // autoMask blends the black through the selection: half at the soft edge.
        for (int p = 0; p < 3; ++p) {
            EXPECT_EQ(SampleAt(host.Doc(), host.Doc().Target(), p, 3, 2), 0u);
            EXPECT_EQ(SampleAt(host.Doc(), host.Doc().Target(), p, 2, 2),
                      (SampleAt(doc, doc.Target(), p, 2, 2) * 127 + 127) / 255);
            EXPECT_EQ(SampleAt(host.Doc(), host.Doc().Target(), p, 0, 0), SampleAt(doc, doc.Target(), p, 0, 0));
        }
    }
    // A rectangular selection may come as the filter rectangle alone.
    for (uint8& m : doc.selection) m = m ? 255 : 0;
    PluginScope scope(blacken);
    HostOptions options;
    options.maskOffer = MaskOffer::NonRectangular;
    Host host(doc, options, TestEntry);
    ASSERT_EQ(host.RunFilter(), 0);
    EXPECT_FALSE(hadMask);
    EXPECT_EQ(host.Record().filterCase, filterCaseFlatImageWithSelection);
    EXPECT_EQ(SampleAt(host.Doc(), host.Doc().Target(), 0, 2, 1), 0u);
    EXPECT_EQ(SampleAt(host.Doc(), host.Doc().Target(), 0, 1, 1), SampleAt(doc, doc.Target(), 0, 1, 1));
}

// ---- The run ----

TEST(HostsimHost, RunSequenceAndErrors) {
    const Document doc = MakeTestDocument(6, 4, plugInModeRGBColor, 8, false);
    std::vector<int16> seen;
    int16 failAt = -1;
    PluginScope scope([&](int16 selector, FilterRecord* r, intptr_t* data) -> int16 {
        seen.push_back(selector);
        if (selector == filterSelectorParameters) {
            r->parameters = r->handleProcs->newProc(16);
            *data = reinterpret_cast<intptr_t>(r->handleProcs->newProc(4));
        }
        if (selector == filterSelectorStart || selector == filterSelectorContinue) {
            // One whole-image request, written black, then Continue once more.
            const VRect whole = {0, 0, 4, 6};
            r->outHiPlane = 2;
            SetRects(r, VRect{}, selector == filterSelectorStart ? whole : VRect{}, VRect{}, false);
            if (selector == filterSelectorStart && r->advanceState() == noErr)
                std::memset(r->outData, 0, size_t(r->outRowBytes) * 4);
            SetRects(r, VRect{}, selector == filterSelectorStart ? whole : VRect{}, VRect{}, false);
        }
        return selector == failAt ? int16(filterBadParameters) : int16(0);
    });
    Host host(doc, HostOptions{}, TestEntry);
    ASSERT_EQ(host.RunFilter(), 0);
    EXPECT_EQ(seen, (std::vector<int16>{1, 2, 3, 4, 5}));
    const intptr_t data = host.DataSlot();
    EXPECT_NE(host.Parameters(), nullptr);
    EXPECT_EQ(SampleAt(host.Doc(), host.Doc().Target(), 0, 5, 3), 0u);

    // The parameter block exists now: no Parameters, the data slot kept.
    host.MutableDoc() = doc;
    seen.clear();
    failAt = filterSelectorContinue;
    EXPECT_EQ(host.RunFilter(), filterBadParameters);
    EXPECT_EQ(seen, (std::vector<int16>{2, 3, 4, 5})); // Finish still comes after a failed Continue
    EXPECT_EQ(host.DataSlot(), data);
    EXPECT_EQ(SampleAt(host.Doc(), host.Doc().Target(), 0, 5, 3), SampleAt(doc, doc.Target(), 0, 5, 3));

    seen.clear();
    failAt = filterSelectorStart;
    EXPECT_EQ(host.RepeatFilter(), filterBadParameters);
    EXPECT_EQ(seen, (std::vector<int16>{2, 3})); // nothing after a failed Start
    EXPECT_EQ(host.Doc().Target().pixels, doc.Target().pixels);
    EXPECT_TRUE(host.HandlesUnlocked());
    EXPECT_TRUE(host.TakeMisuse().empty());
}

// Played descriptors reach the plug-in, what it records in Finish comes back, and the scripting
// suites are reached through the basic suite.
TEST(HostsimHost, ScriptingIsWiredIntoRuns) {
    std::vector<std::pair<int16, bool>> played;
    PluginScope scope([&](int16 selector, FilterRecord* r, intptr_t*) -> int16 {
        PIDescriptorParameters* p = r->descriptorParameters;
        if (selector == filterSelectorStart) {
            played.push_back({p->playInfo, p->descriptor != nullptr});
            const void* table = nullptr;
            if (r->sSPBasic->AcquireSuite(kPSActionDescriptorSuite, 2, &table) == kSPNoError)
                r->sSPBasic->ReleaseSuite(kPSActionDescriptorSuite, 2);
            EXPECT_NE(table, nullptr);
        }
        if (selector == filterSelectorFinish) {
            PIWriteDescriptor w = p->writeDescriptorProcs->openWriteDescriptorProc();
            p->writeDescriptorProcs->putIntegerProc(w, FourCC("Amnt"), 42);
            p->writeDescriptorProcs->closeWriteDescriptorProc(w, &p->descriptor);
        }
        return 0;
    });
    Host host(MakeTestDocument(3, 3, plugInModeRGBColor, 8, false), HostOptions{}, TestEntry);
    ASSERT_EQ(host.RunFilter(), 0);
    Descriptor step;
    step.PutInteger(FourCC("Amnt"), 7);
    ASSERT_EQ(host.PlayAction(step, plugInDialogDontDisplay), 0);
    EXPECT_EQ(played,
              (std::vector<std::pair<int16, bool>>{{plugInDialogDisplay, false}, {plugInDialogDontDisplay, true}}));
    ASSERT_TRUE(host.HasRecorded());
    int32 amount = 0;
    EXPECT_TRUE(host.Recorded().GetInteger(FourCC("Amnt"), amount));
    EXPECT_EQ(amount, 42);
    const std::vector<std::string> misuse = host.TakeMisuse();
    EXPECT_TRUE(misuse.empty()) << ::testing::PrintToString(misuse);
}

TEST(HostsimHost, ProgressHandlesAndSuitesAreWatched) {
    HostOptions options;
    options.zeroFillNewHandles = false;
    options.omitSuites = {kPSChannelPortsSuite};
    std::vector<SPErr> acquired;
    uint8 firstByte = 0;
    PluginScope scope([&](int16 selector, FilterRecord* r, intptr_t*) -> int16 {
        if (selector == filterSelectorParameters) {
            r->parameters = r->handleProcs->newProc(8);
            firstByte = uint8(**r->parameters);
            r->handleProcs->lockProc(r->parameters, 0); // and never unlocked
        }
        if (selector == filterSelectorStart) {
            r->progressProc(1, 3);
            r->progressProc(3, 3);
            EXPECT_EQ(r->abortProc(), 0);
            const void* suite = nullptr;
            for (const auto& [name, version] : {std::pair<const char*, int32>{kPSColorSpaceSuite, 1},
                                                {kPSColorSpaceSuite, 2},
                                                {kPSChannelPortsSuite, 2},
                                                {"no such", 1}})
                acquired.push_back(r->sSPBasic->AcquireSuite(name, version, &suite));
            // The colour space suite is acquired once and released twice.
            r->sSPBasic->ReleaseSuite(kPSColorSpaceSuite, 1);
            r->sSPBasic->ReleaseSuite(kPSColorSpaceSuite, 1);
        }
        return 0;
    });
    Host host(MakeTestDocument(4, 4, plugInModeRGBColor, 8, false), options, TestEntry);
    ASSERT_EQ(host.RunFilter(), 0);
    EXPECT_EQ(firstByte, 0xA5);
    ASSERT_EQ(host.Progress().size(), 2u);
    EXPECT_EQ(host.Progress()[1].done, 3);
    EXPECT_EQ(host.AbortChecks(), 1);
    EXPECT_EQ(acquired,
              (std::vector<SPErr>{kSPNoError, kSPSuiteNotFoundError, kSPSuiteNotFoundError, kSPSuiteNotFoundError}));
    EXPECT_FALSE(host.HandlesUnlocked());
    const std::vector<std::string> misuse = host.TakeMisuse();
    ASSERT_EQ(misuse.size(), 5u) << ::testing::PrintToString(misuse); // locked after 1, 2, 3, 5 + release
    EXPECT_NE(misuse[0].find("locked after selector 1"), std::string::npos);
    UnlockHandle(host.Parameters());
}

TEST(HostsimHost, RecordDescribesDocumentAndHost) {
    Document doc = MakeTestDocument(40000, 1, plugInModeCMYKColor, 8, true);
    doc.layers[0].layerMask.assign(40000, 255);
    struct Seen {
        int16 planes, mode, filterCase, layerPlanes, transparency, masks;
        int32 depth, width32;
        OSType sig;
        bool basic, docInfo, colours, big;
        char sampling;
    } seen{};
    PluginScope scope([&](int16 selector, FilterRecord* r, intptr_t*) -> int16 {
        if (selector == filterSelectorPrepare)
            seen = {r->planes,
                    r->imageMode,
                    r->filterCase,
                    r->inLayerPlanes,
                    r->inTransparencyMask,
                    r->inLayerMasks,
                    r->depth,
                    r->bigDocumentData ? r->bigDocumentData->imageSize32.h : -1,
                    r->hostSig,
                    r->sSPBasic != nullptr,
                    r->documentInfo != nullptr,
                    r->colorServices != nullptr,
                    r->bigDocumentData != nullptr,
                    r->samplingSupport};
        return 0;
    });
    HostOptions options;
    options.filterLayerMasks = true;
    Host host(doc, options, TestEntry);
    ASSERT_EQ(host.RunFilter(), 0);
    EXPECT_EQ(seen.planes, 6);
    EXPECT_EQ(seen.mode, plugInModeCMYKColor);
    EXPECT_EQ(seen.filterCase, filterCaseEditableTransparencyNoSelection);
    EXPECT_EQ(seen.layerPlanes, 4);
    EXPECT_EQ(seen.transparency, 1);
    EXPECT_EQ(seen.masks, 1);
    EXPECT_EQ(seen.depth, 8);
    EXPECT_EQ(seen.width32, 40000); // wider than the 16-bit fields hold
    EXPECT_EQ(seen.sig, FourCC("8BIM"));
    EXPECT_TRUE(seen.basic && seen.docInfo && seen.colours && seen.big);
    EXPECT_EQ(seen.sampling, hostSupportsFractionalSampling);

    // A minimal host, with the transparency locked.
    doc.layers[0].transparencyLocked = true;
    options = HostOptions{};
    options.basicSuite = options.documentInfo = options.colorServices = options.bigDocumentData = false;
    Host minimal(doc, options, TestEntry);
    ASSERT_EQ(minimal.RunFilter(), 0);
    EXPECT_EQ(seen.planes, 4);
    EXPECT_EQ(seen.filterCase, filterCaseProtectedTransparencyNoSelection);
    EXPECT_FALSE(seen.basic || seen.docInfo || seen.colours || seen.big);
}

} // namespace
