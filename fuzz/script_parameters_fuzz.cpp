// Fuzz target: a played descriptor of any keys, types and sizes, read by
// ReadScriptParameters through hostsim's classic descriptor procs. The record must
// keep its names terminated within their fields, whatever comes.
#include "hostsim/Descriptor.h"
#include "hostsim/Host.h"
#include "hostsim/Scripting.h"
#include "state/Parameters.h"
#include "host/ScriptParameters.h"
#include "host/Session.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// The keys the reader knows, and a few it does not.
constexpr const char* kKeys[] = {"WFN1", "WFN2", "BkFN", "SFN1", "SFN2", "WIt1", "WTp1", "STp2",
                                 "SAp1", "SBt1", "Amnt", "disP", "ignS", "ILkW", "ILNS", "NLBs",
                                 "WSOn", "SvE1", "SMD2", "Cov1", "BHCl", "zzzz", "Nm  ", "\x01\x02\x03\x04"};

struct Bytes {
    const uint8_t* p;
    size_t n;
    uint8_t Next() { return n ? (--n, *p++) : 0; }
    uint32_t Word() {
        return uint32_t(Next()) | uint32_t(Next()) << 8 | uint32_t(Next()) << 16 | uint32_t(Next()) << 24;
    }
};

hostsim::Descriptor Build(Bytes& in) {
    hostsim::Descriptor d;
    while (in.n) {
        const char* name = kKeys[in.Next() % (sizeof kKeys / sizeof *kKeys)];
        const DescriptorKeyID key = uint32_t(uint8_t(name[0])) << 24 | uint32_t(uint8_t(name[1])) << 16 |
                                    uint32_t(uint8_t(name[2])) << 8 | uint8_t(name[3]);
        switch (in.Next() % 7) {
        case 0: d.PutInteger(key, int32(in.Word())); break;
        case 1: d.PutBoolean(key, in.Next() & 1); break;
        case 2: d.PutFloat(key, double(int32(in.Word())) / 7.0); break;
        case 3: d.PutUnitFloat(key, FourCC("#Prc"), double(int32(in.Word()))); break;
        case 4: d.PutEnumerated(key, FourCC("mooD"), in.Word()); break;
        case 5: d.PutText(key, std::string(size_t(in.Next()) * (in.Next() % 4 + 1), char('A' + in.Next() % 26))); break;
        default: d.PutInt64(key, int64(in.Word()) << 20); break;
        }
    }
    return d;
}

void QZ_HOSTCALL ReadAtStart(int16 selector, void* record, intptr_t*, int16* result) {
    if (selector != filterSelectorStart) return;
    gSelector = selector;
    gFilterRecord = static_cast<FilterRecord*>(record);
    gResult = result;
    static FilterParameters params;
    static PluginData data;
    gParams = &params;
    gPluginData = &data;
    InitParameters();
    bool dialog = false;
    ReadScriptParameters(&dialog);
    for (const char* name : {params.WashFileName1, params.WashFileName2, params.BackgroundFileName,
                             params.SurfaceFileName1, params.SurfaceFileName2})
        if (!std::memchr(name, 0, kNameLength)) std::abort();
    gFilterRecord = nullptr;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Bytes in{data, size};
    const hostsim::Descriptor played = Build(in);
    hostsim::Host host(hostsim::MakeDocument(2, 2, plugInModeRGBColor, 8, std::vector<uint8>(12, 9), 3), {},
                       ReadAtStart);
    host.GetScripting().SetPlayback(&played, plugInDialogDontDisplay);
    host.Call(filterSelectorStart);
    host.TakeMisuse();
    return 0;
}
