// hostsim's scripting side, driven as a plug-in drives it: classic read/write procs, the byte
// form of descriptors, the registry and its file, and the PICA action suites.
#include "hostsim/ActionSuites.h"
#include "common/TempPaths.h"
#include "hostsim/Descriptor.h"
#include "hostsim/Handles.h"
#include "hostsim/Registry.h"
#include "hostsim/Scripting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>

namespace hostsim {
namespace {

constexpr uint32 kKeyA = FourCC("AAAA");
constexpr uint32 kKeyB = FourCC("BBBB");
constexpr uint32 kKeyC = FourCC("CCCC");
constexpr uint32 kKeyD = FourCC("DDDD");
constexpr uint32 kKeyE = FourCC("EEEE");
constexpr uint32 kKeyF = FourCC("FFFF");
constexpr uint32 kKeyG = FourCC("GGGG");
constexpr uint32 kKeyH = FourCC("HHHH");
constexpr uint32 kKeyI = FourCC("IIII");
constexpr uint32 kKeyJ = FourCC("JJJJ");
constexpr uint32 kKeyK = FourCC("KKKK");
constexpr uint32 kKeyL = FourCC("LLLL");
constexpr uint32 kKeyM = FourCC("MMMM");
constexpr uint32 kKeyZ = FourCC("ZZZZ"); // never put

bool Mentions(const std::vector<std::string>& messages, const std::string& needle) {
    for (const std::string& m : messages)
        if (m.find(needle) != std::string::npos) return true;
    return false;
}

// A host handle the plug-in makes through the handle procs, holding `bytes`.
Handle PluginHandle(const std::string& bytes) {
    Handle h = GetHandleProcs()->newProc(int32(bytes.size()));
    std::memcpy(*h, bytes.data(), bytes.size());
    return h;
}

std::string HandleText(Handle h) { return std::string(*h, size_t(HandleSize(h))); }

void Dispose(Handle h) { GetHandleProcs()->disposeProc(h); }

class ScriptingTest : public ::testing::Test {
protected:
    void SetUp() override {
        TakeHandleMisuse();
        Scripting::SetCurrent(&scripting);
    }
    void TearDown() override { Scripting::SetCurrent(nullptr); }

    DocumentView View() {
        DocumentView view;
        view.targetLayerName = [this] { return target; };
        view.layerVisible = [](const std::string& name, bool& visible) {
            if (name != "Paper" && name != "Ink") return false;
            visible = name == "Paper";
            return true;
        };
        return view;
    }

    template <class T> const T* Suite(const char* name, int32 version) {
        const void* table = nullptr;
        EXPECT_EQ(scripting.Acquire(name, version, &table), kSPNoError) << name << " " << version;
        return static_cast<const T*>(table);
    }

    const ReadDescriptorProcs& Read() { return *scripting.DescriptorParameters()->readDescriptorProcs; }
    const WriteDescriptorProcs& Write() { return *scripting.DescriptorParameters()->writeDescriptorProcs; }

    void ExpectNoMisuse() {
        EXPECT_EQ(scripting.TakeMisuse(), std::vector<std::string>());
        EXPECT_EQ(TakeHandleMisuse(), std::vector<std::string>());
    }

    Registry registry;
    std::string target = "Paper";
    Scripting scripting{registry, View()};
};

// ---- Classic procs ----

// Everything the write procs can put comes back through the read procs, in order, with the
// key array overwritten as keys are met and unknown keys still returned.
TEST_F(ScriptingTest, ClassicWriteThenReadEveryType) {
    const WriteDescriptorProcs& w = Write();
    const ReadDescriptorProcs& r = Read();
    EXPECT_EQ(w.writeDescriptorProcsVersion, 0);
    EXPECT_EQ(w.numWriteDescriptorProcs, 16);
    EXPECT_EQ(r.readDescriptorProcsVersion, 0);
    EXPECT_EQ(r.numReadDescriptorProcs, 18);

    // A sub-descriptor first: it travels as a handle.
    PIWriteDescriptor inner = w.openWriteDescriptorProc();
    ASSERT_NE(inner, nullptr);
    EXPECT_EQ(w.putIntegerProc(inner, kKeyA, -7), noErr);
    PIDescriptorHandle innerHandle = nullptr;
    EXPECT_EQ(w.closeWriteDescriptorProc(inner, &innerHandle), noErr);

    const double f = 0.1, uf = 42.5;
    Handle text = PluginHandle(std::string("wash\0out", 8));
    Handle alias = PluginHandle("C:\\tex");
    PIDescriptorSimpleReference ref{};
    ref.desiredClass = FourCC("Lyr ");
    ref.keyForm = kFormName;
    ref.keyData.name[0] = 3;
    std::memcpy(ref.keyData.name + 1, "Ink", 3);
    const unsigned char pascal[] = {5, 'h', 'e', 'l', 'l', 'o'};

    PIWriteDescriptor writer = w.openWriteDescriptorProc();
    EXPECT_EQ(w.putIntegerProc(writer, kKeyA, 123456), noErr);
    EXPECT_EQ(w.putFloatProc(writer, kKeyB, &f), noErr);
    EXPECT_EQ(w.putUnitFloatProc(writer, kKeyC, unitPercent, &uf), noErr);
    EXPECT_EQ(w.putBooleanProc(writer, kKeyD, 0x7F), noErr); // any non-zero byte is true
    EXPECT_EQ(w.putTextProc(writer, kKeyE, text), noErr);
    EXPECT_EQ(w.putAliasProc(writer, kKeyF, alias), noErr);
    EXPECT_EQ(w.putEnumeratedProc(writer, kKeyG, FourCC("Mode"), FourCC("Soft")), noErr);
    EXPECT_EQ(w.putClassProc(writer, kKeyH, FourCC("Lyr ")), noErr);
    EXPECT_EQ(w.putSimpleReferenceProc(writer, kKeyI, &ref), noErr);
    EXPECT_EQ(w.putObjectProc(writer, kKeyJ, FourCC("Wash"), innerHandle), noErr);
    EXPECT_EQ(w.putCountProc(writer, kKeyK, 9), noErr);
    EXPECT_EQ(w.putStringProc(writer, kKeyL, pascal), noErr);
    EXPECT_EQ(w.putFloatProc(writer, kKeyM, nullptr), paramErr);
    PIDescriptorHandle written = nullptr;
    EXPECT_EQ(w.closeWriteDescriptorProc(writer, &written), noErr);
    ASSERT_TRUE(IsLiveHandle(written));
    // The writer copied what it was given: the plug-in disposes its own handles.
    Dispose(text);
    Dispose(alias);
    Dispose(innerHandle);

    // The plug-in asks for some keys, in its own order, and one the descriptor lacks.
    DescriptorKeyID keys[] = {kKeyL, kKeyB, kKeyZ, kKeyA, 0};
    PIReadDescriptor reader = r.openReadDescriptorProc(written, keys);
    ASSERT_NE(reader, nullptr);
    std::vector<DescriptorKeyID> seen;
    DescriptorKeyID key;
    DescType type;
    int32 flags;
    while (r.getKeyProc(reader, &key, &type, &flags)) {
        seen.push_back(key);
        switch (key) {
        case kKeyA: {
            int32 v = 0;
            EXPECT_EQ(type, typeInteger);
            EXPECT_EQ(r.getIntegerProc(reader, &v), noErr);
            EXPECT_EQ(v, 123456);
            break;
        }
        case kKeyB: {
            double v = 0;
            EXPECT_EQ(r.getFloatProc(reader, &v), noErr);
            EXPECT_EQ(v, 0.1);
            break;
        }
        case kKeyC: {
            double v = 0;
            DescriptorUnitID unit = 0;
            EXPECT_EQ(r.getUnitFloatProc(reader, &unit, &v), noErr);
            EXPECT_EQ(unit, unitPercent);
            EXPECT_EQ(v, 42.5);
            break;
        }
        case kKeyD: {
            Boolean v = 0;
            EXPECT_EQ(r.getBooleanProc(reader, &v), noErr);
            EXPECT_EQ(v, 1);
            break;
        }
        case kKeyE: {
            Handle h = nullptr;
            EXPECT_EQ(r.getTextProc(reader, &h), noErr);
            EXPECT_EQ(HandleText(h), std::string("wash\0out", 8)); // raw: no length, no terminator
            Dispose(h);
            break;
        }
        case kKeyF: {
            Handle h = nullptr;
            EXPECT_EQ(r.getAliasProc(reader, &h), noErr);
            EXPECT_EQ(HandleText(h), "C:\\tex");
            Dispose(h);
            break;
        }
        case kKeyG: {
            DescriptorEnumID v = 0;
            EXPECT_EQ(flags, actionEnumeratedParameter);
            EXPECT_EQ(r.getEnumeratedProc(reader, &v), noErr);
            EXPECT_EQ(v, FourCC("Soft"));
            break;
        }
        case kKeyH: {
            DescType v = 0;
            EXPECT_EQ(r.getClassProc(reader, &v), noErr);
            EXPECT_EQ(v, FourCC("Lyr "));
            break;
        }
        case kKeyI: {
            PIDescriptorSimpleReference v;
            std::memset(&v, 0xCC, sizeof v);
            EXPECT_EQ(r.getSimpleReferenceProc(reader, &v), noErr);
            EXPECT_EQ(v.desiredClass, FourCC("Lyr "));
            EXPECT_EQ(v.keyForm, kFormName);
            EXPECT_EQ(std::string(reinterpret_cast<char*>(v.keyData.name + 1), v.keyData.name[0]), "Ink");
            break;
        }
        case kKeyJ: {
            DescType cls = 0;
            PIDescriptorHandle h = nullptr;
            EXPECT_EQ(r.getObjectProc(reader, &cls, &h), noErr);
            EXPECT_EQ(cls, FourCC("Wash"));
            PIReadDescriptor sub = r.openReadDescriptorProc(h, nullptr);
            int32 v = 0;
            EXPECT_TRUE(r.getKeyProc(sub, &key, &type, &flags));
            EXPECT_EQ(r.getIntegerProc(sub, &v), noErr);
            EXPECT_EQ(v, -7);
            EXPECT_FALSE(r.getKeyProc(sub, &key, &type, &flags));
            EXPECT_EQ(r.closeReadDescriptorProc(sub), noErr);
            Dispose(h);
            break;
        }
        case kKeyK: {
            uint32 v = 0;
            EXPECT_EQ(r.getCountProc(reader, &v), noErr);
            EXPECT_EQ(v, 9u);
            break;
        }
        case kKeyL: {
            Str255 s;
            std::memset(s, 0xAA, sizeof s);
            EXPECT_EQ(r.getStringProc(reader, &s), noErr);
            EXPECT_EQ(s[0], 5);
            EXPECT_EQ(std::memcmp(s + 1, "hello", 5), 0);
            EXPECT_EQ(s[6], 0xAA); // no terminator
            break;
        }
        default: ADD_FAILURE() << "unexpected key " << CodeText(key);
        }
    }
    EXPECT_EQ(r.closeReadDescriptorProc(reader), noErr);
    EXPECT_EQ(seen, (std::vector<DescriptorKeyID>{kKeyA, kKeyB, kKeyC, kKeyD, kKeyE, kKeyF, kKeyG, kKeyH, kKeyI, kKeyJ,
                                                  kKeyK, kKeyL}));
    // Found keys read 'null' now; the absent one still holds its key; the end is intact.
    EXPECT_EQ(keys[0], typeNull);
    EXPECT_EQ(keys[1], typeNull);
    EXPECT_EQ(keys[2], kKeyZ);
    EXPECT_EQ(keys[3], typeNull);
    EXPECT_EQ(keys[4], 0u);
    Dispose(written);
    ExpectNoMisuse();
}

// A get of the wrong type answers paramErr and poisons close, but later gets still work;
// pinned reads pin and say so; a coercion alone is what close reports when nothing is worse.
TEST_F(ScriptingTest, ClassicErrorsAreStickyAndPinningCoerces) {
    Descriptor d;
    d.PutInteger(kKeyA, 500);
    d.PutFloat(kKeyB, 2.5);
    d.PutUnitFloat(kKeyC, unitPixels, 7.0);
    d.PutText(kKeyD, std::string(300, 'x'));
    scripting.SetPlayback(&d, plugInDialogSilent);
    PIDescriptorParameters* params = scripting.DescriptorParameters();
    EXPECT_EQ(params->descriptorParametersVersion, 0);
    EXPECT_EQ(params->playInfo, plugInDialogSilent);
    const ReadDescriptorProcs& r = Read();

    DescriptorKeyID key;
    DescType type;
    int32 flags;
    PIReadDescriptor reader = r.openReadDescriptorProc(params->descriptor, nullptr);
    int32 i = 0;
    EXPECT_EQ(r.getIntegerProc(reader, &i), paramErr); // no key yet
    ASSERT_TRUE(r.getKeyProc(reader, &key, &type, &flags));
    EXPECT_EQ(r.getPinnedIntegerProc(reader, 0, 100, &i), coercedParamErr);
    EXPECT_EQ(i, 100);
    EXPECT_EQ(r.getPinnedIntegerProc(reader, 0, 1000, &i), noErr);
    EXPECT_EQ(i, 500);
    ASSERT_TRUE(r.getKeyProc(reader, &key, &type, &flags));
    EXPECT_EQ(r.getIntegerProc(reader, &i), paramErr);
    double x = 0;
    EXPECT_EQ(r.getFloatProc(reader, &x), noErr);
    EXPECT_EQ(x, 2.5);
    const double lo = 1.0, hi = 2.0;
    EXPECT_EQ(r.getPinnedFloatProc(reader, &lo, &hi, &x), coercedParamErr);
    EXPECT_EQ(x, 2.0);
    EXPECT_EQ(r.getPinnedFloatProc(reader, nullptr, nullptr, &x), noErr); // no bounds
    ASSERT_TRUE(r.getKeyProc(reader, &key, &type, &flags));
    DescriptorUnitID unit = unitPercent;
    EXPECT_EQ(r.getPinnedUnitFloatProc(reader, &lo, &hi, &unit, &x), paramErr); // no conversion
    unit = unitPixels;
    EXPECT_EQ(r.getPinnedUnitFloatProc(reader, &lo, &hi, &unit, &x), coercedParamErr);
    EXPECT_EQ(x, 2.0);
    ASSERT_TRUE(r.getKeyProc(reader, &key, &type, &flags));
    Str255 s;
    EXPECT_EQ(r.getStringProc(reader, &s), coercedParamErr);
    EXPECT_EQ(s[0], 255);
    EXPECT_FALSE(r.getKeyProc(reader, &key, &type, &flags));
    EXPECT_EQ(r.closeReadDescriptorProc(reader), paramErr); // the first error, not the coercions

    reader = r.openReadDescriptorProc(params->descriptor, nullptr);
    ASSERT_TRUE(r.getKeyProc(reader, &key, &type, &flags));
    EXPECT_EQ(r.getPinnedIntegerProc(reader, -5, 5, &i), coercedParamErr);
    EXPECT_EQ(r.closeReadDescriptorProc(reader), coercedParamErr);
    ExpectNoMisuse();
}

// Play, then record as the SDK's helpers do: dispose the played handle, close a writer into a
// new one, leave it in the record. The host reads and disposes it, with no handle misuse.
TEST_F(ScriptingTest, ClassicPlaybackAndRecordingThroughTheRecord) {
    Descriptor played;
    played.PutInteger(kKeyA, 3);
    scripting.SetPlayback(&played, plugInDialogDontDisplay);
    PIDescriptorParameters* params = scripting.DescriptorParameters();
    const Handle playedHandle = params->descriptor;
    ASSERT_TRUE(IsLiveHandle(playedHandle));

    PIWriteDescriptor writer = Write().openWriteDescriptorProc();
    Write().putIntegerProc(writer, kKeyA, 4);
    Write().putBooleanProc(writer, kKeyB, 1);
    Dispose(params->descriptor);
    EXPECT_EQ(Write().closeWriteDescriptorProc(writer, &params->descriptor), noErr);
    params->recordInfo = plugInDialogRequired;

    Descriptor recorded;
    int16 recordInfo = 0;
    ASSERT_TRUE(scripting.TakeRecorded(recorded, recordInfo));
    EXPECT_EQ(recordInfo, plugInDialogRequired);
    Descriptor expected;
    expected.PutInteger(kKeyA, 4);
    expected.PutBoolean(kKeyB, true);
    EXPECT_EQ(recorded, expected);
    EXPECT_EQ(params->descriptor, nullptr);
    EXPECT_FALSE(IsLiveHandle(playedHandle));

    // A plug-in that records nothing and leaves the played handle: the host takes it as is.
    scripting.SetPlayback(&played, plugInDialogDisplay);
    ASSERT_TRUE(scripting.TakeRecorded(recorded, recordInfo));
    EXPECT_EQ(recorded, played);
    scripting.SetPlayback(nullptr, plugInDialogDisplay);
    EXPECT_EQ(params->descriptor, nullptr);
    EXPECT_FALSE(scripting.TakeRecorded(recorded, recordInfo));
    ExpectNoMisuse();

    // A block the host never made, left where a descriptor handle goes.
    char* block = nullptr;
    params->descriptor = &block;
    EXPECT_FALSE(scripting.TakeRecorded(recorded, recordInfo));
    EXPECT_TRUE(Mentions(scripting.TakeMisuse(), "not a live host handle"));

    Scripting omitted(registry, View());
    omitted.OmitDescriptorParameters();
    EXPECT_EQ(omitted.DescriptorParameters(), nullptr);
}

TEST_F(ScriptingTest, ClassicMisuseIsRecorded) {
    const ReadDescriptorProcs& r = Read();
    const WriteDescriptorProcs& w = Write();
    Descriptor d;
    d.PutInteger(kKeyA, 1);
    Handle h = NewDescriptorHandle(d);

    PIReadDescriptor left = r.openReadDescriptorProc(h, nullptr);
    PIReadDescriptor closed = r.openReadDescriptorProc(h, nullptr);
    EXPECT_EQ(r.closeReadDescriptorProc(closed), noErr);
    DescriptorKeyID key;
    EXPECT_FALSE(r.getKeyProc(closed, &key, nullptr, nullptr));
    EXPECT_EQ(r.closeReadDescriptorProc(closed), paramErr);
    w.openWriteDescriptorProc();
    char* notHost = nullptr;
    EXPECT_EQ(r.openReadDescriptorProc(&notHost, nullptr), nullptr);
    Handle junk = PluginHandle("not a descriptor");
    EXPECT_EQ(r.openReadDescriptorProc(junk, nullptr), nullptr);

    const std::vector<std::string> misuse = scripting.TakeMisuse();
    EXPECT_TRUE(Mentions(misuse, "reader was never closed"));
    EXPECT_TRUE(Mentions(misuse, "writer was never closed"));
    EXPECT_TRUE(Mentions(misuse, "used after it was closed"));
    EXPECT_TRUE(Mentions(misuse, "not a live host handle"));
    EXPECT_TRUE(Mentions(misuse, "holds no descriptor"));
    EXPECT_TRUE(scripting.TakeMisuse().empty()); // each reported once
    EXPECT_EQ(r.closeReadDescriptorProc(left), noErr);
    Dispose(h);
    Dispose(junk);
}

// ---- The byte form ----

Descriptor EveryType() {
    Descriptor inner;
    inner.PutText(kKeyA, "");
    inner.PutInt64(kKeyB, std::numeric_limits<int64>::min());
    ValueList nested;
    nested.Add(Value::Bool(false));
    ValueList list;
    list.Add(Value::Integer(-1));
    list.Add(Value::List(nested));
    list.Add(Value::Object(FourCC("Wash"), inner));
    list.Add(Value::Enumerated(FourCC("Mode"), FourCC("Hard")));
    Reference ref;
    ref.Add(ReferencePart::Property(FourCC("Prpr"), FourCC("Nm  ")));
    ref.Add(ReferencePart::Name(FourCC("Lyr "), "Ink"));
    ref.Add(ReferencePart::Index(FourCC("Chnl"), 2));
    ref.Add(ReferencePart::Identifier(FourCC("Lyr "), 77));
    ref.Add(ReferencePart::Offset(FourCC("Lyr "), -1));
    ref.Add(ReferencePart::Enumerated(FourCC("Dcmn"), FourCC("Ordn"), FourCC("Trgt")));
    ref.Add(ReferencePart::Class(FourCC("capp")));

    Descriptor d;
    d.PutInteger(kKeyA, std::numeric_limits<int32>::min());
    d.PutFloat(kKeyB, std::nan(""));
    d.PutUnitFloat(kKeyC, unitAngle, -0.0);
    d.PutBoolean(kKeyD, true);
    d.PutText(kKeyE, std::string("a\0b", 3));
    d.PutEnumerated(kKeyF, FourCC("Mode"), FourCC("Soft"));
    d.PutClass(kKeyG, FourCC("Lyr "));
    d.PutObject(kKeyH, FourCC("Wash"), inner);
    d.PutList(kKeyI, list);
    d.PutReference(kKeyJ, ref);
    d.PutInt64(kKeyK, 1LL << 40);
    d.PutData(kKeyL, std::string("\xFF\x00\x01", 3));
    d.PutAlias(kKeyM, "C:\\a");
    d.Put(FourCC("GlbC"), Value::GlobalClass(FourCC("Fltr")));
    d.Put(FourCC("GlbO"), Value::GlobalObject(FourCC("Fltr"), inner));
    return d;
}

TEST(DescriptorBytes, RoundTripAndHostileBytes) {
    const Descriptor d = EveryType();
    const std::string bytes = d.Serialize();
    Descriptor back;
    ASSERT_TRUE(Descriptor::Deserialize(bytes.data(), bytes.size(), back));
    EXPECT_EQ(back, d);
    EXPECT_EQ(back.Serialize(), bytes);

    // Putting a key again replaces it where it stands; a type not carried is refused.
    Descriptor order = d;
    order.PutInteger(kKeyC, 5);
    EXPECT_EQ(order.KeyAt(2), kKeyC);
    EXPECT_EQ(order.TypeOf(kKeyC), typeInteger);
    double unused;
    EXPECT_FALSE(order.GetFloat(kKeyC, unused));
    EXPECT_FALSE(order.Put(kKeyA, Value()));

    // Every cut, every extra byte, every single-byte change: no crash, and never a
    // half-read descriptor.
    for (size_t n = 0; n < bytes.size(); ++n) {
        EXPECT_FALSE(Descriptor::Deserialize(bytes.data(), n, back)) << n;
        EXPECT_EQ(back.Count(), 0u);
    }
    EXPECT_FALSE(Descriptor::Deserialize((bytes + '\0').data(), bytes.size() + 1, back));
    for (size_t i = 0; i < bytes.size(); ++i) {
        for (uint8 v : {uint8(0x00), uint8(0xFF), uint8(0x7F), uint8(0x01)}) {
            std::string bad = bytes;
            bad[i] = char(v);
            if (Descriptor::Deserialize(bad.data(), bad.size(), back)) {
                EXPECT_EQ(back.Serialize(), bad);
            }
        }
    }
    EXPECT_FALSE(Descriptor::Deserialize(nullptr, 0, back));

    // A claimed count far beyond the bytes, and nesting deeper than the reader allows.
    std::string huge = bytes.substr(0, 4) + std::string("\xFF\xFF\xFF\x7F", 4);
    EXPECT_FALSE(Descriptor::Deserialize(huge.data(), huge.size(), back));
    Descriptor deep;
    for (int i = 0; i < 100; ++i) {
        Descriptor outer;
        outer.PutObject(kKeyA, FourCC("Objc"), deep);
        deep = outer;
    }
    const std::string deepBytes = deep.Serialize();
    EXPECT_FALSE(Descriptor::Deserialize(deepBytes.data(), deepBytes.size(), back));

    // The same bytes in a host handle.
    Handle h = NewDescriptorHandle(d);
    ASSERT_TRUE(ReadDescriptorHandle(h, back));
    EXPECT_EQ(back, d);
    DisposeHandle(h);
    EXPECT_FALSE(ReadDescriptorHandle(h, back));
    EXPECT_TRUE(TakeHandleMisuse().empty());
}

// ---- Registry ----

TEST(Registry, PersistentEntriesSurviveAFile) {
    const std::filesystem::path path = ProcessTempDir() / "registry-test.bin";
    Descriptor kept = EveryType();
    Descriptor session;
    session.PutInteger(kKeyA, 1);
    {
        Registry first;
        first.Register("{kept}", kept, true);
        first.Register("{session}", session, false);
        ASSERT_TRUE(first.Save(path.string()));
    }
    Registry second;
    second.Register("{stale}", session, false);
    ASSERT_TRUE(second.Load(path.string()));
    EXPECT_EQ(second.Keys(), std::vector<std::string>{"{kept}"});
    Descriptor back;
    ASSERT_TRUE(second.Get("{kept}", back));
    EXPECT_EQ(back, kept);
    EXPECT_TRUE(second.IsPersistent("{kept}"));

    // Hostile files leave the registry as it was.
    std::string bytes;
    {
        std::ifstream in(path, std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(in), {});
    }
    for (size_t n : {size_t(0), size_t(3), size_t(9), bytes.size() / 2, bytes.size() - 1}) {
        std::ofstream(path, std::ios::binary | std::ios::trunc).write(bytes.data(), std::streamsize(n));
        EXPECT_FALSE(second.Load(path.string())) << n;
        EXPECT_EQ(second.Count(), 1u);
    }
    std::filesystem::remove(path);
    EXPECT_FALSE(second.Load(path.string()));
    EXPECT_EQ(second.Count(), 1u);
}

TEST_F(ScriptingTest, RegistrySuiteHandsOutCopies) {
    const auto* reg = Suite<PSDescriptorRegistryProcs>(kPSDescriptorRegistrySuite, 1);
    const auto* desc = Suite<PSActionDescriptorProcs>(kPSActionDescriptorSuite, 2);
    PIActionDescriptor d = nullptr;
    desc->Make(&d);
    desc->PutFloat(d, kKeyA, 0.5);
    EXPECT_EQ(reg->Register("{q}", d, 1), noErr);
    desc->PutFloat(d, kKeyA, 0.75); // the registry kept a copy
    EXPECT_TRUE(registry.IsPersistent("{q}"));

    PIActionDescriptor got = nullptr;
    EXPECT_EQ(reg->Get("{q}", &got), noErr);
    ASSERT_NE(got, nullptr);
    double v = 0;
    EXPECT_EQ(desc->GetFloat(got, kKeyA, &v), noErr);
    EXPECT_EQ(v, 0.5);
    EXPECT_EQ(reg->Erase("{q}"), noErr);
    EXPECT_EQ(reg->Get("{q}", &got), noErr);
    EXPECT_EQ(got, nullptr);
    EXPECT_EQ(reg->Register(nullptr, d, 0), paramErr);
    desc->Free(d);
    EXPECT_TRUE(Mentions(scripting.TakeMisuse(), "1 action descriptor(s) never freed"));
}

// ---- Action suites ----

TEST_F(ScriptingTest, ActionSuitesCarryEveryValue) {
    const void* table = nullptr;
    EXPECT_EQ(scripting.Acquire(kPSActionDescriptorSuite, 4, &table), kSPSuiteNotFoundError);
    EXPECT_EQ(scripting.Acquire("no such suite", 1, &table), kSPSuiteNotFoundError);
    EXPECT_EQ(Suite<PSActionDescriptorProcs>(kPSActionDescriptorSuite, 2)->PutInteger64, nullptr);
    EXPECT_EQ(Suite<PSActionListProcs>(kPSActionListSuite, 1)->GetInteger64, nullptr);
    const auto* desc = Suite<PSActionDescriptorProcs>(kPSActionDescriptorSuite, 3);
    const auto* list = Suite<PSActionListProcs>(kPSActionListSuite, 2);
    const auto* ref = Suite<PSActionReferenceProcs>(kPSActionReferenceSuite, 3);
    ASSERT_NE(desc->GetInteger64, nullptr);
    ASSERT_NE(list->GetInteger64, nullptr);

    PIActionReference r = nullptr, container = nullptr, last = nullptr;
    ref->Make(&r);
    ref->PutName(r, FourCC("Lyr "), "Ink");
    ref->PutIndex(r, FourCC("Dcmn"), 2);
    PIActionList l = nullptr;
    list->Make(&l);
    list->PutUnitFloat(l, unitPixels, 3.5);
    list->PutString(l, "abc");
    list->PutReference(l, r);
    const int32 ints[] = {4, 5, 6};
    list->PutIntegers(l, 3, ints);
    list->PutInteger64(l, -(1LL << 40));

    PIActionDescriptor d = nullptr, sub = nullptr;
    desc->Make(&d);
    desc->Make(&sub);
    desc->PutBoolean(sub, kKeyA, 1);
    desc->PutInteger(d, kKeyA, -3);
    desc->PutFloat(d, kKeyB, 1.25);
    desc->PutString(d, kKeyC, "Paper sack");
    desc->PutList(d, kKeyD, l);
    desc->PutObject(d, kKeyE, FourCC("Wash"), sub);
    desc->PutEnumerated(d, kKeyF, FourCC("Mode"), FourCC("Soft"));
    desc->PutClass(d, kKeyG, FourCC("Lyr "));
    desc->PutIntegers(d, kKeyH, 3, ints);
    desc->PutData(d, kKeyI, 3, const_cast<char*>("\0\1\2"));
    desc->PutInteger64(d, kKeyJ, 1LL << 50);
    desc->PutReference(d, kKeyK, r);

    uint32 count = 0;
    char buffer[16];
    EXPECT_EQ(desc->GetCount(d, &count), noErr);
    EXPECT_EQ(count, 11u);
    EXPECT_EQ(desc->GetStringLength(d, kKeyC, &count), noErr);
    EXPECT_EQ(count, 10u);
    EXPECT_EQ(desc->GetString(d, kKeyC, buffer, 6), noErr); // maxLength counts the terminator
    EXPECT_STREQ(buffer, "Paper");
    EXPECT_EQ(desc->GetString(d, kKeyC, buffer, 0), paramErr);
    int32 i = 0;
    EXPECT_EQ(desc->GetInteger(d, kKeyB, &i), paramErr);
    EXPECT_EQ(desc->GetInteger(d, kKeyZ, &i), errMissingParameter);
    int32 back[3] = {};
    EXPECT_EQ(desc->GetIntegers(d, kKeyH, 3, back), noErr);
    EXPECT_EQ(back[2], 6);
    EXPECT_EQ(desc->GetIntegers(d, kKeyH, 4, back), paramErr);
    int32 length = 0;
    char data[3] = {};
    EXPECT_EQ(desc->GetDataLength(d, kKeyI, &length), noErr);
    EXPECT_EQ(desc->GetData(d, kKeyI, data), noErr);
    EXPECT_EQ(length, 3);
    EXPECT_EQ(std::memcmp(data, "\0\1\2", 3), 0);
    int64 big = 0;
    EXPECT_EQ(desc->GetInteger64(d, kKeyJ, &big), noErr);
    EXPECT_EQ(big, 1LL << 50);
    ASSERT_EQ(desc->PutZString(d, kKeyA, nullptr), kErrNoZStrings);

    // Objects handed out are copies the caller frees.
    DescriptorClassID cls = 0;
    PIActionDescriptor gotSub = nullptr;
    Boolean b = 0;
    EXPECT_EQ(desc->GetObject(d, kKeyE, &cls, &gotSub), noErr);
    EXPECT_EQ(cls, FourCC("Wash"));
    EXPECT_EQ(desc->IsEqual(gotSub, sub, &b), noErr);
    EXPECT_EQ(b, 1);
    PIActionList gotList = nullptr;
    EXPECT_EQ(desc->GetList(d, kKeyD, &gotList), noErr);
    EXPECT_EQ(list->GetCount(gotList, &count), noErr);
    EXPECT_EQ(count, 7u);
    DescriptorUnitID unit = 0;
    double x = 0;
    EXPECT_EQ(list->GetUnitFloat(gotList, 0, &unit, &x), noErr);
    EXPECT_EQ(unit, unitPixels);
    EXPECT_EQ(x, 3.5);
    EXPECT_EQ(list->GetString(gotList, 1, buffer, sizeof buffer), noErr);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(list->GetIntegers(gotList, 3, back), paramErr); // item 0 is no integer
    EXPECT_EQ(list->GetInteger(gotList, 5, &i), noErr);
    EXPECT_EQ(i, 6);
    EXPECT_EQ(list->GetInteger64(gotList, 6, &big), noErr);
    EXPECT_EQ(big, -(1LL << 40));
    EXPECT_EQ(list->GetInteger(gotList, 7, &i), paramErr);

    // The reference: first part is what is named, the next its container.
    PIActionReference gotRef = nullptr;
    EXPECT_EQ(list->GetReference(gotList, 2, &gotRef), noErr);
    DescriptorFormID form = 0;
    EXPECT_EQ(ref->GetForm(gotRef, &form), noErr);
    EXPECT_EQ(form, kFormName);
    EXPECT_EQ(ref->GetName(gotRef, buffer, sizeof buffer), noErr);
    EXPECT_STREQ(buffer, "Ink");
    EXPECT_EQ(ref->GetIndex(gotRef, &count), paramErr);
    EXPECT_EQ(ref->GetContainer(gotRef, &container), noErr);
    ASSERT_NE(container, nullptr);
    EXPECT_EQ(ref->GetIndex(container, &count), noErr);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(ref->GetDesiredClass(container, &cls), noErr);
    EXPECT_EQ(cls, FourCC("Dcmn"));
    EXPECT_EQ(ref->GetContainer(container, &last), noErr);
    EXPECT_EQ(last, nullptr);

    // The classic form of a PICA descriptor reads with the classic procs, and back.
    PIDescriptorHandle h = nullptr;
    EXPECT_EQ(desc->AsHandle(d, &h), noErr);
    PIReadDescriptor reader = Read().openReadDescriptorProc(h, nullptr);
    DescriptorKeyID key;
    DescType type;
    int32 flags;
    ASSERT_TRUE(Read().getKeyProc(reader, &key, &type, &flags));
    EXPECT_EQ(Read().getIntegerProc(reader, &i), noErr);
    EXPECT_EQ(i, -3);
    EXPECT_EQ(Read().closeReadDescriptorProc(reader), noErr);
    PIActionDescriptor fromHandle = nullptr;
    EXPECT_EQ(desc->HandleToDescriptor(h, &fromHandle), noErr);
    EXPECT_EQ(desc->IsEqual(fromHandle, d, &b), noErr);
    EXPECT_EQ(b, 1);
    Dispose(h);

    for (PIActionDescriptor x2 : {d, sub, gotSub, fromHandle}) EXPECT_EQ(desc->Free(x2), noErr);
    for (PIActionList x2 : {l, gotList}) EXPECT_EQ(list->Free(x2), noErr);
    for (PIActionReference x2 : {r, gotRef, container}) EXPECT_EQ(ref->Free(x2), noErr);
    ExpectNoMisuse();
}

TEST_F(ScriptingTest, BasicActionControlReadsTheDocument) {
    const auto* bac = Suite<PSBasicActionControlProcs>(kPSBasicActionControlSuite, 2);
    const auto* ref = Suite<PSActionReferenceProcs>(kPSActionReferenceSuite, 2);
    const auto* desc = Suite<PSActionDescriptorProcs>(kPSActionDescriptorSuite, 2);
    EXPECT_EQ(Suite<PSBasicActionControlProcs>(kPSBasicActionControlSuite, 1)->Get, bac->Get);

    const auto get = [&](DescriptorKeyID property, bool byName, DescriptorEnumTypeID enumType, const char* name,
                         PIActionDescriptor* out) {
        PIActionReference r = nullptr;
        ref->Make(&r);
        ref->PutProperty(r, FourCC("Prpr"), property);
        if (byName) ref->PutName(r, FourCC("Lyr "), name);
        else ref->PutEnumerated(r, FourCC("Lyr "), enumType, FourCC("Trgt"));
        const OSErr e = bac->Get(out, r);
        ref->Free(r);
        return e;
    };
    PIActionDescriptor result = nullptr;
    char name[32];
    ASSERT_EQ(get(FourCC("Nm  "), false, FourCC("Ordn"), nullptr, &result), noErr);
    EXPECT_EQ(desc->GetString(result, FourCC("Nm  "), name, sizeof name), noErr);
    EXPECT_STREQ(name, "Paper");
    desc->Free(result);
    ASSERT_EQ(get(FourCC("Nm  "), false, typeEnumerated, nullptr, &result), noErr);
    desc->Free(result);

    Boolean visible = 1;
    ASSERT_EQ(get(FourCC("Vsbl"), true, 0, "Ink", &result), noErr);
    EXPECT_EQ(desc->GetBoolean(result, FourCC("Vsbl"), &visible), noErr);
    EXPECT_EQ(visible, 0);
    desc->Free(result);
    EXPECT_EQ(get(FourCC("Vsbl"), true, 0, "Smudge", &result), kErrNoSuchElement);
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(get(FourCC("Opct"), false, FourCC("Ordn"), nullptr, &result), kErrNoSuchElement);
    target.clear(); // no layers
    EXPECT_EQ(get(FourCC("Nm  "), false, FourCC("Ordn"), nullptr, &result), kErrNoSuchElement);

    DescriptorTypeID id = 0, other = 0;
    EXPECT_EQ(bac->StringIDToTypeID("layer", &id), noErr);
    EXPECT_EQ(id, FourCC("Lyr "));
    EXPECT_EQ(bac->StringIDToTypeID("quenzitWash", &id), noErr);
    EXPECT_EQ(bac->StringIDToTypeID("quenzitWash", &other), noErr);
    EXPECT_EQ(id, other);
    EXPECT_LT(id, 0x20202020u); // not mistaken for a character code
    EXPECT_EQ(bac->TypeIDToStringID(id, name, sizeof name), noErr);
    EXPECT_STREQ(name, "quenzitWash");
    EXPECT_EQ(bac->TypeIDToStringID(id, name, 5), paramErr);
    EXPECT_EQ(bac->MakeStringAlias("washAlias", "quenzitWash"), noErr);
    EXPECT_EQ(bac->StringIDToTypeID("washAlias", &other), noErr);
    EXPECT_EQ(id, other);
    ExpectNoMisuse();
}

TEST_F(ScriptingTest, ActionObjectMisuseIsRecordedNotFatal) {
    const auto* desc = Suite<PSActionDescriptorProcs>(kPSActionDescriptorSuite, 2);
    const auto* list = Suite<PSActionListProcs>(kPSActionListSuite, 1);
    PIActionDescriptor d = nullptr;
    PIActionList l = nullptr;
    desc->Make(&d);
    list->Make(&l);
    EXPECT_EQ(desc->Free(d), noErr);
    EXPECT_EQ(desc->Free(d), paramErr);
    EXPECT_EQ(desc->PutInteger(d, kKeyA, 1), paramErr);
    EXPECT_EQ(desc->PutList(reinterpret_cast<PIActionDescriptor>(l), kKeyA, l), paramErr);
    int dummy = 0;
    EXPECT_EQ(desc->Clear(reinterpret_cast<PIActionDescriptor>(&dummy)), paramErr);

    const std::vector<std::string> misuse = scripting.TakeMisuse();
    EXPECT_TRUE(Mentions(misuse, "freed twice"));
    EXPECT_TRUE(Mentions(misuse, "used after Free"));
    EXPECT_TRUE(Mentions(misuse, "action list passed as an action descriptor"));
    EXPECT_TRUE(Mentions(misuse, "never made"));
    EXPECT_TRUE(Mentions(misuse, "1 action list(s) never freed"));

    scripting.Omit(kPSActionListSuite);
    const void* table = &dummy;
    EXPECT_EQ(scripting.Acquire(kPSActionListSuite, 1, &table), kSPSuiteNotFoundError);
    EXPECT_EQ(table, nullptr);
    EXPECT_TRUE(scripting.Owns(kPSActionListSuite));
    EXPECT_FALSE(scripting.Owns(kPSColorSpaceSuite));
    list->Free(l);
}

} // namespace
} // namespace hostsim
