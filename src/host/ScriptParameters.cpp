#include "host/ScriptParameters.h"

#include "host/HostSuite.h"
#include "state/Parameters.h"
#include "host/Session.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>
#include <vector>

namespace {

// The orders differ between the writers and readers; each list is as the host sees it.
constexpr const char* kScriptWriteOrder =
    "ILNL NLBs NLWs NLBk NLSf WSOn W2Ex ILNW Isd1 Isd2 WFH1 WFH2 WFV1 WFV2 WIv1 WIv2 WFN1 WFN2 "
    "STp1 STp2 WTp1 WTp2 WSt1 WSt2 WSc1 WSc2 WIt1 WIt2 WAg1 WAg2 SAg1 SAg2 Cov1 Cov2 CSc1 CSc2 "
    "EDs1 EDs2 ESf1 ESf2 Rnd1 Rnd2 BkOn BkEn ILNB ILNS BFpH BFpV BInv OW1X OW1Y OW2X OW2Y OS1X "
    "OS2X OS1Y OS2Y OfBY OfBX BkFN BScl BAng BHLt BMdt BHue BEnh BSdw BHCl BMCl BSCl SfOn SfEn "
    "SInW Sf2E SIn1 SIn2 SPO1 SFN1 SFN2 SFV1 SFV2 SFH1 SFH2 SDh1 SDh2 SSc1 SSc2 SHL1 SMD1 SBRH "
    "SfCn SHue SfIn SSw1 SHC1 SMC1 SSC1 SAp1 SBt1 ILkW ILkS ILkB Amnt disP ignS";

constexpr const char* kScriptReadKeys =
    "ILNL NLBs NLWs NLBk NLSf W2Ex ILNW WFN1 WFN2 STp1 STp2 WTp1 WTp2 WSt1 WSt2 WSc1 WSc2 WIt1 "
    "WIt2 WFH1 WFH2 WFV1 WFV2 WIv1 WIv2 WAg1 WAg2 Cov1 Cov2 CSc1 CSc2 EDs1 EDs2 ESf1 ESf2 Isd1 "
    "Isd2 Rnd1 Rnd2 BkOn BkEn ILNB ILNS BkFN BScl BFpH BFpV BInv BAng BHLt BMdt BHue BEnh BSdw "
    "BHCl BMCl BSCl SfOn SFV1 SFV2 SFH1 SFH2 SfEn SInW Sf2E SFN1 SFN2 SDh1 SDh2 SSc1 SSc2 SIn1 "
    "SIn2 SPO1 SPO2 SHL1 SHL2 SMD1 SBRH SfCn SHue SfIn SMD2 SSw1 SSw2 SAg1 SAg2 SAp1 SAp2 SBt1 "
    "SBt2 SHC1 SHC2 SMC1 SMC2 SSC1 SSC2 SvE1 SvE2 SbSR SE11 SE21 SSR1 ILkW ILkS ILkB Amnt disP";

// SFH1 stands twice and SFH2 never: SurfaceFlipHor2 does not come back from the registry.
constexpr const char* kSettingsReadOrder =
    "NLBs NLWs NLBk NLSf ILNL W2Ex ILNW WFN1 WFN2 WSOn STp1 STp2 WTp1 WTp2 WSt1 WSt2 WSc1 WSc2 "
    "WIt1 WIt2 WFH1 WFH2 WFV1 WFV2 WIv1 WIv2 SAg1 SAg2 WAg1 WAg2 Cov1 Cov2 CSc1 CSc2 EDs1 EDs2 "
    "ESf1 ESf2 Isd1 Isd2 Rnd1 Rnd2 BkOn BkEn ILNB ILNS BFpH BFpV BInv BkFN BScl BAng BHLt BMdt "
    "BHue BEnh BSdw BHCl BMCl BSCl SFN1 SFV1 SFV2 SFH1 SFH1 SFN2 SfOn SfEn SInW Sf2E SIn1 SIn2 "
    "SPO1 SDh1 SDh2 SSc1 SSc2 SHL1 SBRH SfCn SHue SfIn SMD1 SSw1 SHC1 SMC1 SSC1 SvE1 SE11 SvE2 "
    "SE21 SbSR SSR1 SAp1 SBt1 OW1X OW1Y OW2X OW2Y OS1X OS1Y OS2X OS2Y OfBX OfBY ILkW ILkS ILkB";

// The registry is written in the reading order, with SFH2 where the reader repeats SFH1, and
// without WIv2 and Isd2: those two do not survive a restart of the host.
constexpr const char* kSettingsWriteOrder =
    "NLBs NLWs NLBk NLSf ILNL W2Ex ILNW WFN1 WFN2 WSOn STp1 STp2 WTp1 WTp2 WSt1 WSt2 WSc1 WSc2 "
    "WIt1 WIt2 WFH1 WFH2 WFV1 WFV2 WIv1 SAg1 SAg2 WAg1 WAg2 Cov1 Cov2 CSc1 CSc2 EDs1 EDs2 "
    "ESf1 ESf2 Isd1 Rnd1 Rnd2 BkOn BkEn ILNB ILNS BFpH BFpV BInv BkFN BScl BAng BHLt BMdt "
    "BHue BEnh BSdw BHCl BMCl BSCl SFN1 SFV1 SFV2 SFH1 SFH2 SFN2 SfOn SfEn SInW Sf2E SIn1 SIn2 "
    "SPO1 SDh1 SDh2 SSc1 SSc2 SHL1 SBRH SfCn SHue SfIn SMD1 SSw1 SHC1 SMC1 SSC1 SvE1 SE11 SvE2 "
    "SE21 SbSR SSR1 SAp1 SBt1 OW1X OW1Y OW2X OW2Y OS1X OS1Y OS2X OS2Y OfBX OfBY ILkW ILkS ILkB";

// Truncated as the x86 conversion does: toward zero into 32 bits (the "indefinite" value
// for anything out of range), then kept to 16 bits. Defined for every input, so a hostile
// descriptor cannot make it undefined.
int16_t AmountFromPercent(double v) {
    const int32_t whole = v >= -2147483648.0 && v < 2147483648.0 ? int32_t(v) : INT32_MIN;
    return int16_t(uint16_t(uint32_t(whole)));
}

constexpr DescType kDispositionType = FourCC("mooD");
constexpr DescriptorEnumID kDispositions[4] = {FourCC("moD0"), FourCC("moD1"), FourCC("moD2"), FourCC("moD3")};

// How one key travels: a field of the record by its kind, a link flag, or a half of a buffer.
enum class Carrier { Boolean, Integer, Float, String, Link, BufferLow, BufferHigh, Amount, Disposition, None };

struct KeyBinding {
    Carrier carrier = Carrier::None;
    const ParameterField* field = nullptr;
    uint8_t* link = nullptr;
    uint64_t* buffer = nullptr;
};

std::vector<DescriptorKeyID> Keys(const char* list) {
    std::vector<DescriptorKeyID> keys;
    for (const char* k = list; *k; k += k[4] ? 5 : 4) keys.push_back(FourCC(k));
    return keys;
}

KeyBinding Bind(DescriptorKeyID key) {
    const char name[5] = {char(key >> 24), char(key >> 16), char(key >> 8), char(key), 0};
    KeyBinding b;
    struct Special {
        const char* key;
        Carrier carrier;
        uint8_t* link;
        uint64_t* buffer;
    };
    const Special specials[] = {
        {"ILkW", Carrier::Link, &LinkWash, nullptr},
        {"ILkS", Carrier::Link, &LinkSurface, nullptr},
        {"ILkB", Carrier::Link, &LinkBackground, nullptr},
        {"SvE1", Carrier::BufferLow, nullptr, &gParams->WashMaskBuffer1},
        {"SE11", Carrier::BufferHigh, nullptr, &gParams->WashMaskBuffer1},
        {"SvE2", Carrier::BufferLow, nullptr, &gParams->WashMaskBuffer2},
        {"SE21", Carrier::BufferHigh, nullptr, &gParams->WashMaskBuffer2},
        {"SbSR", Carrier::BufferLow, nullptr, &gParams->SurfaceWashAreaBuffer},
        {"SSR1", Carrier::BufferHigh, nullptr, &gParams->SurfaceWashAreaBuffer},
    };
    for (const Special& s : specials)
        if (std::strcmp(s.key, name) == 0) return {s.carrier, nullptr, s.link, s.buffer};

    b.field = FindParameterByKey(name);
    if (!b.field) return b;
    switch (WireOf(*b.field)) {
    case ValueWire::Bool: b.carrier = Carrier::Boolean; break;
    case ValueWire::Integer: b.carrier = Carrier::Integer; break;
    case ValueWire::Float: b.carrier = Carrier::Float; break;
    case ValueWire::Text: b.carrier = Carrier::String; break;
    case ValueWire::Percent: b.carrier = Carrier::Amount; break;
    case ValueWire::Disposition: b.carrier = Carrier::Disposition; break;
    }
    return b;
}

char* FieldBytes(const ParameterField& f) { return reinterpret_cast<char*>(gParams) + f.offset; }

int32_t ReadInteger(const ParameterField& f) {
    const char* at = FieldBytes(f);
    switch (f.kind) {
    case FieldKind::Flag:
    case FieldKind::Byte: return *reinterpret_cast<const uint8_t*>(at);
    case FieldKind::Int16: return *reinterpret_cast<const int16_t*>(at);
    default: return *reinterpret_cast<const int32_t*>(at);
    }
}

void StoreInteger(const ParameterField& f, int32_t v) {
    char* at = FieldBytes(f);
    switch (f.kind) {
    case FieldKind::Flag:
    case FieldKind::Byte: *reinterpret_cast<uint8_t*>(at) = uint8_t(v); break;
    case FieldKind::Int16: *reinterpret_cast<int16_t*>(at) = int16_t(v); break;
    default: *reinterpret_cast<int32_t*>(at) = v; break;
    }
}

DescriptorEnumID DispositionValue() {
    const int16_t d = gParams->Disposition;
    return d >= 0 && d <= 3 ? kDispositions[d] : kDispositions[1];
}

using DescriptorSuite = HostSuite<PSActionDescriptorProcs>;
using RegistrySuite = HostSuite<PSDescriptorRegistryProcs>;

} // namespace

OSErr ReadSavedSettings() {
    if (!BasicSuite()) return errPlugInHostInsufficient;
    RegistrySuite registry(kPSDescriptorRegistrySuite, 1);
    DescriptorSuite suite(kPSActionDescriptorSuite, 3);
    if (!registry || !suite) return errPlugInHostInsufficient;
    PIActionDescriptor d = nullptr;
    if (OSErr e = registry->Get(kSettingsKey, &d)) return e;
    if (!d) return errPlugInHostInsufficient;

    uint32 low[3] = {}, high[3] = {};
    bool lowOk[3] = {}, highOk[3] = {};
    uint64_t* buffers[3] = {&gParams->WashMaskBuffer1, &gParams->WashMaskBuffer2, &gParams->SurfaceWashAreaBuffer};

    for (DescriptorKeyID key : Keys(kSettingsReadOrder)) {
        const KeyBinding b = Bind(key);
        switch (b.carrier) {
        case Carrier::Boolean: {
            Boolean v = 0;
            if (!suite->GetBoolean(d, key, &v)) StoreInteger(*b.field, v ? 1 : 0);
            break;
        }
        case Carrier::Integer: {
            int32 v = 0;
            if (!suite->GetInteger(d, key, &v)) StoreInteger(*b.field, v);
            break;
        }
        case Carrier::Float: {
            real64 v = 0;
            if (!suite->GetFloat(d, key, &v)) *reinterpret_cast<float*>(FieldBytes(*b.field)) = float(v);
            break;
        }
        case Carrier::String: {
            uint32 length = 0;
            if (suite->GetStringLength(d, key, &length)) break;
            // Registry strings keep at most 127 characters plus the terminator, in the field.
            const uint32 n = length < uint32(kNameLength - 1) ? length : uint32(kNameLength - 1);
            char* name = FieldBytes(*b.field);
            if (!suite->GetString(d, key, name, n + 1)) name[n] = 0;
            break;
        }
        case Carrier::Link: {
            int32 v = 0;
            if (!suite->GetInteger(d, key, &v)) *b.link = uint8_t(v);
            break;
        }
        case Carrier::BufferLow:
        case Carrier::BufferHigh: {
            const int i = int(std::find(buffers, buffers + 3, b.buffer) - buffers);
            int32 v = 0;
            const bool ok = suite->GetInteger(d, key, &v) == noErr;
            (b.carrier == Carrier::BufferLow ? low : high)[i] = uint32(v);
            (b.carrier == Carrier::BufferLow ? lowOk : highOk)[i] = ok;
            break;
        }
        default: break;
        }
    }
    for (int i = 0; i < 3; ++i) *buffers[i] = lowOk[i] && highOk[i] ? uint64_t(high[i]) << 32 | low[i] : 0;

    DescriptorUnitID unit = 0;
    real64 amount = 0;
    OSErr answer = suite->GetUnitFloat(d, FourCC("Amnt"), &unit, &amount);
    if (!answer) {
        gParams->Amount = AmountFromPercent(amount);
        DescriptorEnumTypeID type = 0;
        DescriptorEnumID value = 0;
        answer = suite->GetEnumerated(d, FourCC("disP"), &type, &value);
        if (!answer) {
            Boolean ignore = 0;
            answer = suite->GetBoolean(d, FourCC("ignS"), &ignore);
            if (!answer) gParams->IgnoreSelection = ignore ? 1 : 0;
        }
    }
    suite->Free(d);
    return answer;
}

OSErr WriteSavedSettings() {
    if (!BasicSuite()) return errPlugInHostInsufficient;
    RegistrySuite registry(kPSDescriptorRegistrySuite, 1);
    DescriptorSuite suite(kPSActionDescriptorSuite, 3);
    if (!registry || !suite) return errPlugInHostInsufficient;
    PIActionDescriptor d = nullptr;
    if (OSErr e = suite->Make(&d)) return e;

    for (DescriptorKeyID key : Keys(kSettingsWriteOrder)) {
        const KeyBinding b = Bind(key);
        switch (b.carrier) {
        case Carrier::Boolean: suite->PutBoolean(d, key, Boolean(ReadInteger(*b.field) != 0)); break;
        case Carrier::Integer: suite->PutInteger(d, key, ReadInteger(*b.field)); break;
        case Carrier::Float: suite->PutFloat(d, key, *reinterpret_cast<const float*>(FieldBytes(*b.field))); break;
        case Carrier::String: suite->PutString(d, key, FieldBytes(*b.field)); break;
        case Carrier::Link: suite->PutInteger(d, key, *b.link); break;
        case Carrier::BufferLow: suite->PutInteger(d, key, int32(uint32(*b.buffer))); break;
        case Carrier::BufferHigh: suite->PutInteger(d, key, int32(uint32(*b.buffer >> 32))); break;
        default: break;
        }
    }
    suite->PutUnitFloat(d, FourCC("Amnt"), unitPercent, gParams->Amount);
    suite->PutEnumerated(d, FourCC("disP"), kDispositionType, DispositionValue());
    suite->PutBoolean(d, FourCC("ignS"), gParams->IgnoreSelection);

    const OSErr e = registry->Register(kSettingsKey, d, true);
    suite->Free(d);
    return e;
}

OSErr ReadScriptParameters(bool* dialogWanted) {
    if (!dialogWanted) return errMissingParameter;
    *dialogWanted = gPluginData->QueryForParameters != 0;
    PIDescriptorParameters* params = gFilterRecord->descriptorParameters;
    if (!params || !params->readDescriptorProcs || !params->descriptor) return noErr;
    const ReadDescriptorProcs* procs = params->readDescriptorProcs;

    std::vector<DescriptorKeyID> keys = Keys(kScriptReadKeys);
    keys.push_back(0);
    PIReadDescriptor reader = procs->openReadDescriptorProc(params->descriptor, keys.data());
    if (reader) {
        DescriptorKeyID key = 0;
        DescType type = 0;
        int32 flags = 0;
        OSErr error = noErr;
        while (!error && procs->getKeyProc(reader, &key, &type, &flags)) {
            const KeyBinding b = Bind(key);
            switch (b.carrier) {
            case Carrier::Boolean: {
                Boolean v = 0;
                if (!(error = procs->getBooleanProc(reader, &v))) StoreInteger(*b.field, v ? 1 : 0);
                break;
            }
            case Carrier::Integer: {
                int32 v = 0;
                if (!(error = procs->getIntegerProc(reader, &v))) StoreInteger(*b.field, v);
                break;
            }
            case Carrier::Link: {
                int32 v = 0;
                if (!(error = procs->getIntegerProc(reader, &v))) *b.link = uint8_t(v);
                break;
            }
            case Carrier::Float: {
                real64 v = 0;
                if (!(error = procs->getFloatProc(reader, &v)))
                    *reinterpret_cast<float*>(FieldBytes(*b.field)) = float(v);
                break;
            }
            case Carrier::Amount: {
                DescriptorUnitID unit = 0;
                real64 v = 0;
                if (!(error = procs->getUnitFloatProc(reader, &unit, &v))) gParams->Amount = AmountFromPercent(v);
                break;
            }
            case Carrier::String: {
                Str255 text = {};
                if ((error = procs->getStringProc(reader, &text))) break;
                // Empty names, and names the field cannot hold with its end mark, are ignored.
                const uint8_t length = text[0];
                if (length >= 1 && length <= kNameLength - 1) {
                    char* name = FieldBytes(*b.field);
                    std::memcpy(name, text + 1, length);
                    name[length] = 0;
                }
                break;
            }
            default: break; // keys with no field here are passed over
            }
        }
        procs->closeReadDescriptorProc(reader);
    }
    gFilterRecord->handleProcs->disposeProc(params->descriptor);
    params->descriptor = nullptr;
    *dialogWanted = params->playInfo == plugInDialogDisplay;
    return noErr;
}

OSErr WriteScriptParameters() {
    PIDescriptorParameters* params = gFilterRecord->descriptorParameters;
    if (!params || !params->writeDescriptorProcs) return noErr;
    const WriteDescriptorProcs* procs = params->writeDescriptorProcs;
    PIWriteDescriptor writer = procs->openWriteDescriptorProc();
    if (!writer) return errMissingParameter;

    for (DescriptorKeyID key : Keys(kScriptWriteOrder)) {
        const KeyBinding b = Bind(key);
        switch (b.carrier) {
        case Carrier::Boolean:
            if (key == FourCC("ignS") && !gParams->IgnoreSelection) break;
            procs->putBooleanProc(writer, key, Boolean(ReadInteger(*b.field) != 0));
            break;
        case Carrier::Integer: procs->putIntegerProc(writer, key, ReadInteger(*b.field)); break;
        case Carrier::Link: procs->putIntegerProc(writer, key, *b.link); break;
        case Carrier::Float: {
            const real64 v = *reinterpret_cast<const float*>(FieldBytes(*b.field));
            procs->putFloatProc(writer, key, &v);
            break;
        }
        case Carrier::Amount: {
            const real64 v = gParams->Amount;
            procs->putUnitFloatProc(writer, key, unitPercent, &v);
            break;
        }
        case Carrier::Disposition: procs->putEnumeratedProc(writer, key, kDispositionType, DispositionValue()); break;
        case Carrier::String: {
            // A counted string; an empty name goes as 255 zero bytes.
            Str255 text = {};
            const char* name = FieldBytes(*b.field);
            const size_t length = strnlen(name, kNameLength);
            text[0] = uint8_t(length);
            std::memcpy(text + 1, name, length);
            procs->putStringProc(writer, key, text);
            break;
        }
        default: break;
        }
    }

    if (params->descriptor) gFilterRecord->handleProcs->disposeProc(params->descriptor);
    params->descriptor = nullptr;
    procs->closeWriteDescriptorProc(writer, &params->descriptor);
    params->recordInfo = plugInDialogOptional;
    return noErr;
}
