// Parameters in and out of the host: the recorded and played script descriptor and the
// settings registry, through hostsim and the real PluginMain.
#include "ShellFixture.h"

#include "hostsim/Registry.h"
#include "hostsim/Scripting.h"
#include "state/Parameters.h"
#include "host/ScriptParameters.h"
#include "resources/ResourceTables.h"

#include <cstring>
#include <set>
#include <string>

using namespace shelltest;

namespace {

// A record with a distinct value in every keyed field, as a user's look would be.
FilterParameters DistinctRecord() {
    FilterParameters p{};
    gParams = &p;
    InitParameters();
    gParams = nullptr;
    int32 n = 1;
    for (size_t i = 0; i < kParameterFieldCount; ++i) {
        const ParameterField& f = kParameterFields[i];
        char* at = reinterpret_cast<char*>(&p) + f.offset;
        ++n;
        switch (f.kind) {
        case FieldKind::Flag: *reinterpret_cast<uint8_t*>(at) = uint8_t(1 - *reinterpret_cast<uint8_t*>(at)); break;
        case FieldKind::Byte: *reinterpret_cast<uint8_t*>(at) = uint8_t(n % 5); break;
        case FieldKind::Int16: *reinterpret_cast<int16_t*>(at) = int16_t(n); break;
        case FieldKind::Int32: *reinterpret_cast<int32_t*>(at) = n * 3 - 40; break;
        case FieldKind::Color: *reinterpret_cast<uint32_t*>(at) = 0x00102030u + uint32_t(n); break;
        case FieldKind::Float: *reinterpret_cast<float*>(at) = float(n) + 0.25f; break;
        case FieldKind::Name: std::snprintf(at, kNameLength, "Look_%d.qzt", int(n)); break;
        case FieldKind::Buffer: break;
        }
    }
    p.Disposition = 2;
    p.IgnoreSelection = 1;
    p.PendingSurfacePass = 7;
    return p;
}

// The descriptor a host would hold for `record`: what WriteScriptParameters records.
hostsim::Descriptor Recording(const FilterParameters& record) {
    auto host = MakeHost(RgbDocument(4, 4));
    EXPECT_EQ(host->Call(filterSelectorParameters), noErr);
    std::memcpy(hostsim::LockHandle(host->Parameters()), &record, sizeof record);
    hostsim::UnlockHandle(host->Parameters());
    EXPECT_EQ(host->Call(filterSelectorFinish), noErr);
    return host->Recorded();
}

// The record after the plug-in has overlaid `played` at Start (the run itself cancels:
// a descriptor played with its dialog on asks for the dialog this build does not have).
FilterParameters AfterStart(hostsim::Host& host) {
    FilterParameters p;
    std::memcpy(&p, hostsim::LockHandle(host.Parameters()), sizeof p);
    hostsim::UnlockHandle(host.Parameters());
    return p;
}

bool SameField(const FilterParameters& a, const FilterParameters& b, const ParameterField& f) {
    const size_t size = f.kind == FieldKind::Name                                  ? kNameLength
                        : f.kind == FieldKind::Buffer                              ? 8
                        : f.kind == FieldKind::Int16                               ? 2
                        : (f.kind == FieldKind::Flag || f.kind == FieldKind::Byte) ? 1
                                                                                   : 4;
    return std::memcmp(reinterpret_cast<const char*>(&a) + f.offset, reinterpret_cast<const char*>(&b) + f.offset,
                       size) == 0;
}

} // namespace

TEST(ScriptParameters, RecordThenPlayReproducesEveryKeyedField) {
    const FilterParameters look = DistinctRecord();
    const hostsim::Descriptor recorded = Recording(look);
    EXPECT_FALSE(recorded.Has(FourCC("SvE1"))) << "buffers stay out of scripts";

    auto host = MakeHost(RgbDocument(4, 4));
    ASSERT_EQ(host->Call(filterSelectorParameters), noErr);
    host->GetScripting().SetPlayback(&recorded, plugInDialogDisplay);
    host->Call(filterSelectorPrepare);
    host->Call(filterSelectorStart);
    const FilterParameters played = AfterStart(*host);
    for (size_t i = 0; i < kParameterFieldCount; ++i) {
        const ParameterField& f = kParameterFields[i];
        if (!f.key[0] || f.kind == FieldKind::Buffer) continue;
        if (std::string(f.key) == "disP" || std::string(f.key) == "ignS" || std::string(f.key) == "Amnt") continue;
        EXPECT_TRUE(SameField(played, look, f)) << f.name << " (" << f.key << ")";
    }
}

TEST(ScriptParameters, IgnoreSelectionIsRecordedOnlyWhenSet) {
    FilterParameters look = DistinctRecord();
    EXPECT_TRUE(Recording(look).Has(FourCC("ignS")));
    look.IgnoreSelection = 0;
    const hostsim::Descriptor d = Recording(look);
    EXPECT_FALSE(d.Has(FourCC("ignS")));
    DescriptorEnumTypeID type = 0;
    DescriptorEnumID value = 0;
    ASSERT_TRUE(d.GetEnumerated(FourCC("disP"), type, value));
    EXPECT_EQ(value, FourCC("moD2"));
    std::string name;
    ASSERT_TRUE(d.GetText(FourCC("WFN1"), name));
    EXPECT_EQ(name, look.WashFileName1);
}

TEST(ScriptParameters, RestartBringsBackAllButThreeFields) {
    const FilterParameters look = DistinctRecord();
    hostsim::HostOptions options;
    options.registry = std::make_shared<hostsim::Registry>();
    {
        auto host = MakeHost(RgbDocument(4, 4), options);
        ASSERT_EQ(host->Call(filterSelectorParameters), noErr);
        std::memcpy(hostsim::LockHandle(host->Parameters()), &look, sizeof look);
        hostsim::UnlockHandle(host->Parameters());
        ASSERT_EQ(host->Call(filterSelectorFinish), noErr);
    }
    // A new host on the same registry: a fresh record overlaid by the saved settings.
    auto host = MakeHost(RgbDocument(4, 4), options);
    ASSERT_EQ(host->Call(filterSelectorParameters), noErr);
    host->GetScripting().SetPlayback(nullptr, plugInDialogDisplay);
    host->Call(filterSelectorStart);
    const FilterParameters restored = AfterStart(*host);
    // The registry keeps the disposition, but its value is dropped when it is read.
    const std::set<std::string> lost = {"WashInvert2", "WashInside2", "SurfaceFlipHor2", "Disposition"};
    for (size_t i = 0; i < kParameterFieldCount; ++i) {
        const ParameterField& f = kParameterFields[i];
        if (!f.key[0] || f.kind == FieldKind::Buffer) continue;
        EXPECT_EQ(SameField(restored, look, f), !lost.count(f.name)) << f.name;
    }
    EXPECT_EQ(restored.Amount, look.Amount);
    EXPECT_EQ(restored.IgnoreSelection, 1);
}

TEST(ScriptParameters, PartialPlaybackOverlaysTheRegistry) {
    hostsim::HostOptions options;
    options.registry = std::make_shared<hostsim::Registry>();
    FilterParameters look = DistinctRecord();
    {
        auto host = MakeHost(RgbDocument(4, 4), options);
        ASSERT_EQ(host->Call(filterSelectorParameters), noErr);
        std::memcpy(hostsim::LockHandle(host->Parameters()), &look, sizeof look);
        hostsim::UnlockHandle(host->Parameters());
        ASSERT_EQ(host->Call(filterSelectorFinish), noErr);
    }
    hostsim::Descriptor partial;
    partial.PutInteger(FourCC("WIt1"), 42);
    partial.PutText(FourCC("BkFN"), "Brick_Wall.qzt");
    partial.PutText(FourCC("WFN1"), std::string(128, 'x')); // too long: left as it was
    partial.PutText(FourCC("WFN2"), "");                    // empty: left as it was
    partial.PutText(FourCC("SFN1"), "Oak_Planks.qzt");
    partial.PutFloat(FourCC("WSc1"), 3.0); // wrong type: reading stops here
    partial.PutInteger(FourCC("SDh1"), 99);
    auto host = MakeHost(RgbDocument(4, 4), options);
    ASSERT_EQ(host->Call(filterSelectorParameters), noErr);
    host->GetScripting().SetPlayback(&partial, plugInDialogDisplay);
    host->Call(filterSelectorStart);
    const FilterParameters p = AfterStart(*host);
    EXPECT_EQ(p.WashIntensity1, 42);
    EXPECT_STREQ(p.BackgroundFileName, "Brick_Wall.qzt");
    EXPECT_STREQ(p.WashFileName1, look.WashFileName1);
    EXPECT_STREQ(p.WashFileName2, look.WashFileName2);
    EXPECT_STREQ(p.SurfaceFileName1, "Oak_Planks.qzt");
    EXPECT_EQ(p.WashScale1, look.WashScale1);
    EXPECT_EQ(p.SurfaceDepth1, look.SurfaceDepth1) << "keys after a failed read are not taken";
    EXPECT_EQ(p.WashCoverage2, look.WashCoverage2) << "absent keys keep the registry's value";
}

TEST(ScriptParameters, TerminologyNamesOnlyKeysThatTravel) {
    // The colour preset keys stand in the terminology for presets; every other one is a
    // field that scripts carry.
    const std::set<std::string> presetOnly = {"Ctgr", "HiCl", "MdCl", "SdCl"};
    for (const auto& t : resources::kTerminologyParameters) {
        const char key[5] = {char(t.key >> 24), char(t.key >> 16), char(t.key >> 8), char(t.key), 0};
        if (presetOnly.count(key)) continue;
        const ParameterField* f = FindParameterByKey(key);
        ASSERT_NE(f, nullptr) << key;
        const bool isName = f->kind == FieldKind::Name;
        EXPECT_EQ(t.type == FourCC("TEXT"), isName) << key;
        EXPECT_EQ(t.type == FourCC("doub"), f->kind == FieldKind::Float) << key;
    }
}

TEST(ScriptParameters, AnyAmountIsTakenWithoutUndefinedConversions) {
    // Found by fuzzing: a percent far beyond 16 bits. It is truncated as the x86
    // conversion does: into 32 bits, out-of-range values to the "indefinite" one, then 16.
    const std::pair<double, int16_t> cases[] = {{1.0e9, int16_t(-13824)}, {3.0e9, 0}, {-75.9, -75}};
    for (auto [percent, expected] : cases) {
        hostsim::Descriptor d = AllEffectsOff();
        d.PutUnitFloat(FourCC("Amnt"), FourCC("#Prc"), percent);
        auto host = MakeHost(RgbDocument(4, 4));
        ASSERT_EQ(host->PlayAction(d, plugInDialogDontDisplay), noErr);
        DescriptorUnitID unit = 0;
        double recorded = 0;
        ASSERT_TRUE(host->Recorded().GetUnitFloat(FourCC("Amnt"), unit, recorded));
        EXPECT_EQ(recorded, double(expected)) << percent;
    }
}
