#include "DescriptorProcs.h"

#include "Handles.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>
#include <utility>

namespace hostsim {
namespace {

struct Reader {
    Descriptor descriptor;
    size_t next = 0;   // index getKey returns next
    long current = -1; // index of the key the gets read; -1 before the first and after the last
    DescriptorKeyID* keys = nullptr;
    OSErr worst = noErr;
    bool closed = false;
    bool leakReported = false;

    void Note(OSErr e) {
        if (e < 0 && worst >= 0) worst = e;
        else if (e > 0 && worst == noErr) worst = e;
    }
};

struct Writer {
    Descriptor descriptor;
    bool closed = false;
    bool leakReported = false;
};

} // namespace

struct DescriptorProcs::State {
    PIDescriptorParameters params{};
    ReadDescriptorProcs readProcs{};
    WriteDescriptorProcs writeProcs{};
    Handle played = nullptr;
    // Closed readers and writers stay as tombstones so that a later use is recognised.
    std::unordered_map<const void*, std::unique_ptr<Reader>> readers;
    std::unordered_map<const void*, std::unique_ptr<Writer>> writers;
    std::vector<std::string> misuse;
};

namespace {

DescriptorProcs::State* gCurrent = nullptr;

// Calls that come while no host is current have nowhere else to go.
std::vector<std::string>& Stray() {
    static std::vector<std::string> stray;
    return stray;
}

DescriptorProcs::State* Current(const char* op) {
    if (!gCurrent) Stray().push_back(std::string(op) + ": called while no host is running");
    return gCurrent;
}

void Misuse(DescriptorProcs::State* s, const char* op, const char* what) {
    s->misuse.push_back(std::string(op) + ": " + what);
}

Reader* FindReader(PIReadDescriptor token, const char* op) {
    DescriptorProcs::State* s = Current(op);
    if (!s) return nullptr;
    auto it = s->readers.find(token);
    if (it == s->readers.end()) {
        Misuse(s, op, token ? "a reader the host never opened" : "a null reader");
        return nullptr;
    }
    if (it->second->closed) {
        Misuse(s, op, "a reader used after it was closed");
        return nullptr;
    }
    return it->second.get();
}

Writer* FindWriter(PIWriteDescriptor token, const char* op) {
    DescriptorProcs::State* s = Current(op);
    if (!s) return nullptr;
    auto it = s->writers.find(token);
    if (it == s->writers.end()) {
        Misuse(s, op, token ? "a writer the host never opened" : "a null writer");
        return nullptr;
    }
    if (it->second->closed) {
        Misuse(s, op, "a writer used after it was closed");
        return nullptr;
    }
    return it->second.get();
}

// The bytes of a host handle the plug-in passes in. A null handle is only an error; a handle
// the host did not make (or already disposed) is misuse.
bool HandleBytes(Handle h, const char* op, std::string& out) {
    if (!h) return false;
    if (!IsLiveHandle(h)) {
        if (DescriptorProcs::State* s = Current(op)) Misuse(s, op, "the handle is not a live host handle");
        return false;
    }
    out.assign(*h, size_t(HandleSize(h)));
    return true;
}

Handle NewBytesHandle(const std::string& bytes) {
    Handle h = NewHandle(int32(bytes.size()));
    if (h && !bytes.empty()) std::memcpy(*h, bytes.data(), bytes.size());
    return h;
}

int32 FlagsOf(const Value& v) {
    if (v.type == typeEnumerated) return actionEnumeratedParameter;
    if (v.type == typeValueList) return actionListParameter;
    return actionSimpleParameter;
}

// One get: find the reader, hand the current value to `read`, keep the error.
template <class F> OSErr Get(PIReadDescriptor token, const char* op, F&& read) noexcept {
    try {
        Reader* r = FindReader(token, op);
        if (!r) return paramErr;
        OSErr e = paramErr;
        if (r->current >= 0 && size_t(r->current) < r->descriptor.Count())
            e = read(r->descriptor.ValueAt(size_t(r->current)));
        r->Note(e);
        return e;
    } catch (...) {
        return memFullErr;
    }
}

template <class F> OSErr Put(PIWriteDescriptor token, const char* op, F&& write) noexcept {
    try {
        Writer* w = FindWriter(token, op);
        if (!w) return paramErr;
        return write(w->descriptor);
    } catch (...) {
        return memFullErr;
    }
}

void ToStr255(const std::string& text, unsigned char* out) {
    const size_t n = std::min<size_t>(text.size(), 255);
    out[0] = uint8(n);
    if (n) std::memcpy(out + 1, text.data(), n);
}

// ---- Read procs ----

PIReadDescriptor QZ_HOSTCALL OpenRead(PIDescriptorHandle h, DescriptorKeyID* keys) {
    try {
        DescriptorProcs::State* s = Current("openReadDescriptor");
        if (!s || !h) return nullptr;
        if (!IsLiveHandle(h)) {
            Misuse(s, "openReadDescriptor", "the handle is not a live host handle");
            return nullptr;
        }
        auto r = std::make_unique<Reader>();
        if (!ReadDescriptorHandle(h, r->descriptor)) {
            Misuse(s, "openReadDescriptor", "the handle holds no descriptor");
            return nullptr;
        }
        r->keys = keys;
        auto token = reinterpret_cast<PIReadDescriptor>(r.get());
        s->readers[token] = std::move(r);
        return token;
    } catch (...) {
        return nullptr;
    }
}

OSErr QZ_HOSTCALL CloseRead(PIReadDescriptor token) {
    Reader* r = FindReader(token, "closeReadDescriptor");
    if (!r) return paramErr;
    r->closed = true;
    r->keys = nullptr;
    r->descriptor.Clear();
    return r->worst;
}

Boolean QZ_HOSTCALL GetKey(PIReadDescriptor token, DescriptorKeyID* key, DescType* type, int32* flags) {
    Reader* r = FindReader(token, "getKey");
    if (!r) return 0;
    if (r->next >= r->descriptor.Count()) {
        r->current = -1;
        return 0;
    }
    const size_t i = r->next++;
    r->current = long(i);
    const DescriptorKeyID k = r->descriptor.KeyAt(i);
    const Value& v = r->descriptor.ValueAt(i);
    if (key) *key = k;
    if (type) *type = v.type;
    if (flags) *flags = FlagsOf(v);
    if (r->keys) {
        for (DescriptorKeyID* p = r->keys; *p != 0; ++p) {
            if (*p == k) {
                *p = typeNull;
                break;
            }
        }
    }
    return 1;
}

OSErr QZ_HOSTCALL GetInteger(PIReadDescriptor token, int32* out) {
    return Get(token, "getInteger", [&](const Value& v) -> OSErr {
        if (!out || v.type != typeInteger) return paramErr;
        *out = int32(v.integer);
        return noErr;
    });
}

OSErr QZ_HOSTCALL GetFloat(PIReadDescriptor token, real64* out) {
    return Get(token, "getFloat", [&](const Value& v) -> OSErr {
        if (!out || v.type != typeFloat) return paramErr;
        *out = v.number;
        return noErr;
    });
}

OSErr QZ_HOSTCALL GetUnitFloat(PIReadDescriptor token, DescriptorUnitID* unit, real64* out) {
    return Get(token, "getUnitFloat", [&](const Value& v) -> OSErr {
        if (!out || v.type != typeUnitFloat) return paramErr;
        if (unit) *unit = v.code;
        *out = v.number;
        return noErr;
    });
}

OSErr QZ_HOSTCALL GetBoolean(PIReadDescriptor token, Boolean* out) {
    return Get(token, "getBoolean", [&](const Value& v) -> OSErr {
        if (!out || v.type != typeBoolean) return paramErr;
        *out = v.integer ? 1 : 0;
        return noErr;
    });
}

OSErr QZ_HOSTCALL GetText(PIReadDescriptor token, Handle* out) {
    return Get(token, "getText", [&](const Value& v) -> OSErr {
        if (!out || v.type != typeChar) return paramErr;
        Handle h = NewBytesHandle(v.bytes);
        if (!h) return memFullErr;
        *out = h;
        return noErr;
    });
}

OSErr QZ_HOSTCALL GetAlias(PIReadDescriptor token, Handle* out) {
    return Get(token, "getAlias", [&](const Value& v) -> OSErr {
        if (!out || v.type != typeAlias) return paramErr;
        Handle h = NewBytesHandle(v.bytes);
        if (!h) return memFullErr;
        *out = h;
        return noErr;
    });
}

OSErr QZ_HOSTCALL GetEnumerated(PIReadDescriptor token, DescriptorEnumID* out) {
    return Get(token, "getEnumerated", [&](const Value& v) -> OSErr {
        if (!out || v.type != typeEnumerated) return paramErr;
        *out = v.code2;
        return noErr;
    });
}

OSErr QZ_HOSTCALL GetClass(PIReadDescriptor token, DescType* out) {
    return Get(token, "getClass", [&](const Value& v) -> OSErr {
        if (!out || (v.type != typeClass && v.type != typeGlobalClass)) return paramErr;
        *out = v.code;
        return noErr;
    });
}

OSErr QZ_HOSTCALL GetSimpleReference(PIReadDescriptor token, PIDescriptorSimpleReference* out) {
    return Get(token, "getSimpleReference", [&](const Value& v) -> OSErr {
        if (!out || v.type != typeObjectReference || v.reference.Count() == 0) return paramErr;
        const ReferencePart& p = v.reference.At(0);
        std::memset(out, 0, sizeof *out);
        out->desiredClass = p.desiredClass;
        out->keyForm = p.form;
        if (p.form == kFormName) ToStr255(p.name, out->keyData.name);
        else if (p.form == kFormIndex || p.form == kFormIdentifier) out->keyData.index = int32(p.index);
        else if (p.form == kFormOffset) out->keyData.index = p.offset;
        else if (p.form == kFormEnumerated) {
            out->keyData.type = p.enumType;
            out->keyData.value = p.enumValue;
        } else if (p.form == kFormProperty) out->keyData.type = p.property;
        return noErr;
    });
}

OSErr QZ_HOSTCALL GetObject(PIReadDescriptor token, DescType* type, PIDescriptorHandle* out) {
    return Get(token, "getObject", [&](const Value& v) -> OSErr {
        if (!out || (v.type != typeObject && v.type != typeGlobalObject)) return paramErr;
        Handle h = NewDescriptorHandle(v.ObjectValue());
        if (!h) return memFullErr;
        if (type) *type = v.code;
        *out = h;
        return noErr;
    });
}

OSErr QZ_HOSTCALL GetCount(PIReadDescriptor token, uint32* out) {
    return Get(token, "getCount", [&](const Value& v) -> OSErr {
        if (!out) return paramErr;
        if (v.type == typeInteger) *out = uint32(int32(v.integer));
        else if (v.type == typeValueList) *out = uint32(v.list.Count());
        else return paramErr;
        return noErr;
    });
}

OSErr QZ_HOSTCALL GetString(PIReadDescriptor token, Str255* out) {
    return Get(token, "getString", [&](const Value& v) -> OSErr {
        if (!out || v.type != typeChar) return paramErr;
        ToStr255(v.bytes, *out);
        return v.bytes.size() > 255 ? coercedParamErr : noErr;
    });
}

OSErr QZ_HOSTCALL GetPinnedInteger(PIReadDescriptor token, int32 min, int32 max, int32* out) {
    return Get(token, "getPinnedInteger", [&](const Value& v) -> OSErr {
        if (!out || v.type != typeInteger) return paramErr;
        const int32 x = int32(v.integer);
        // Pin to max first, then min, so an empty range still gives a defined answer.
        const int32 pinned = std::max(min, std::min(max, x));
        *out = pinned;
        return pinned == x ? noErr : coercedParamErr;
    });
}

OSErr PinFloat(double x, const real64* min, const real64* max, real64* out) {
    double pinned = x;
    if (max && pinned > *max) pinned = *max;
    if (min && pinned < *min) pinned = *min;
    *out = pinned;
    return pinned == x ? noErr : coercedParamErr;
}

OSErr QZ_HOSTCALL GetPinnedFloat(PIReadDescriptor token, const real64* min, const real64* max, real64* out) {
    return Get(token, "getPinnedFloat", [&](const Value& v) -> OSErr {
        if (!out || v.type != typeFloat) return paramErr;
        return PinFloat(v.number, min, max, out);
    });
}

OSErr QZ_HOSTCALL GetPinnedUnitFloat(PIReadDescriptor token, const real64* min, const real64* max,
                                     DescriptorUnitID* unit, real64* out) {
    return Get(token, "getPinnedUnitFloat", [&](const Value& v) -> OSErr {
        if (!out || v.type != typeUnitFloat) return paramErr;
        // No unit conversion: the plug-in reads the unit it recorded.
        if (unit && *unit != 0 && *unit != unitNone && *unit != v.code) return paramErr;
        if (unit) *unit = v.code;
        return PinFloat(v.number, min, max, out);
    });
}

// ---- Write procs ----

PIWriteDescriptor QZ_HOSTCALL OpenWrite() {
    try {
        DescriptorProcs::State* s = Current("openWriteDescriptor");
        if (!s) return nullptr;
        auto w = std::make_unique<Writer>();
        auto token = reinterpret_cast<PIWriteDescriptor>(w.get());
        s->writers[token] = std::move(w);
        return token;
    } catch (...) {
        return nullptr;
    }
}

OSErr QZ_HOSTCALL CloseWrite(PIWriteDescriptor token, PIDescriptorHandle* out) {
    try {
        Writer* w = FindWriter(token, "closeWriteDescriptor");
        if (!w) return paramErr;
        w->closed = true;
        const Descriptor written = std::move(w->descriptor);
        w->descriptor.Clear();
        if (!out) return paramErr;
        Handle h = NewDescriptorHandle(written);
        if (!h) return memFullErr;
        *out = h;
        return noErr;
    } catch (...) {
        return memFullErr;
    }
}

OSErr QZ_HOSTCALL PutInteger(PIWriteDescriptor token, DescriptorKeyID key, int32 value) {
    return Put(token, "putInteger", [&](Descriptor& d) -> OSErr {
        d.PutInteger(key, value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL PutFloat(PIWriteDescriptor token, DescriptorKeyID key, const real64* value) {
    return Put(token, "putFloat", [&](Descriptor& d) -> OSErr {
        if (!value) return paramErr;
        d.PutFloat(key, *value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL PutUnitFloat(PIWriteDescriptor token, DescriptorKeyID key, DescriptorUnitID unit,
                               const real64* value) {
    return Put(token, "putUnitFloat", [&](Descriptor& d) -> OSErr {
        if (!value) return paramErr;
        d.PutUnitFloat(key, unit, *value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL PutBoolean(PIWriteDescriptor token, DescriptorKeyID key, Boolean value) {
    return Put(token, "putBoolean", [&](Descriptor& d) -> OSErr {
        d.PutBoolean(key, value != 0);
        return noErr;
    });
}

OSErr QZ_HOSTCALL PutText(PIWriteDescriptor token, DescriptorKeyID key, Handle value) {
    return Put(token, "putText", [&](Descriptor& d) -> OSErr {
        std::string bytes;
        if (!HandleBytes(value, "putText", bytes)) return paramErr;
        d.PutText(key, std::move(bytes));
        return noErr;
    });
}

OSErr QZ_HOSTCALL PutAlias(PIWriteDescriptor token, DescriptorKeyID key, Handle value) {
    return Put(token, "putAlias", [&](Descriptor& d) -> OSErr {
        std::string bytes;
        if (!HandleBytes(value, "putAlias", bytes)) return paramErr;
        d.PutAlias(key, std::move(bytes));
        return noErr;
    });
}

OSErr QZ_HOSTCALL PutEnumerated(PIWriteDescriptor token, DescriptorKeyID key, DescType type, DescriptorEnumID value) {
    return Put(token, "putEnumerated", [&](Descriptor& d) -> OSErr {
        d.PutEnumerated(key, type, value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL PutClass(PIWriteDescriptor token, DescriptorKeyID key, DescType value) {
    return Put(token, "putClass", [&](Descriptor& d) -> OSErr {
        d.PutClass(key, value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL PutSimpleReference(PIWriteDescriptor token, DescriptorKeyID key,
                                     const PIDescriptorSimpleReference* value) {
    return Put(token, "putSimpleReference", [&](Descriptor& d) -> OSErr {
        if (!value) return paramErr;
        ReferencePart p;
        p.desiredClass = value->desiredClass;
        p.form = value->keyForm;
        const PIDescriptorKeyData& k = value->keyData;
        if (p.form == kFormName) p.name.assign(reinterpret_cast<const char*>(k.name + 1), k.name[0]);
        else if (p.form == kFormIndex || p.form == kFormIdentifier) p.index = uint32(k.index);
        else if (p.form == kFormOffset) p.offset = k.index;
        else if (p.form == kFormEnumerated) {
            p.enumType = k.type;
            p.enumValue = k.value;
        } else if (p.form == kFormProperty) p.property = k.type;
        Reference ref;
        if (!ref.Add(std::move(p))) return paramErr;
        d.PutReference(key, std::move(ref));
        return noErr;
    });
}

OSErr PutObjectFrom(PIWriteDescriptor token, const char* op, DescriptorKeyID key, DescType type,
                    PIDescriptorHandle value, bool global) {
    return Put(token, op, [&](Descriptor& d) -> OSErr {
        std::string bytes;
        if (!HandleBytes(value, op, bytes)) return paramErr;
        Descriptor object;
        if (!Descriptor::Deserialize(bytes.data(), bytes.size(), object)) {
            if (DescriptorProcs::State* s = Current(op)) Misuse(s, op, "the handle holds no descriptor");
            return paramErr;
        }
        d.Put(key, global ? Value::GlobalObject(type, object) : Value::Object(type, object));
        return noErr;
    });
}

OSErr QZ_HOSTCALL PutObject(PIWriteDescriptor token, DescriptorKeyID key, DescType type, PIDescriptorHandle value) {
    return PutObjectFrom(token, "putObject", key, type, value, false);
}

OSErr QZ_HOSTCALL PutCount(PIWriteDescriptor token, DescriptorKeyID key, uint32 value) {
    return Put(token, "putCount", [&](Descriptor& d) -> OSErr {
        d.PutInteger(key, int32(value));
        return noErr;
    });
}

OSErr QZ_HOSTCALL PutString(PIWriteDescriptor token, DescriptorKeyID key, const unsigned char* value) {
    return Put(token, "putString", [&](Descriptor& d) -> OSErr {
        if (!value) return paramErr;
        d.PutText(key, std::string(reinterpret_cast<const char*>(value + 1), value[0]));
        return noErr;
    });
}

OSErr QZ_HOSTCALL PutScopedClass(PIWriteDescriptor token, DescriptorKeyID key, DescType value) {
    return Put(token, "putScopedClass", [&](Descriptor& d) -> OSErr {
        d.Put(key, Value::GlobalClass(value));
        return noErr;
    });
}

OSErr QZ_HOSTCALL PutScopedObject(PIWriteDescriptor token, DescriptorKeyID key, DescType type,
                                  PIDescriptorHandle value) {
    return PutObjectFrom(token, "putScopedObject", key, type, value, true);
}

} // namespace

DescriptorProcs::DescriptorProcs() : state_(std::make_unique<State>()) {
    State& s = *state_;
    s.readProcs = ReadDescriptorProcs{kCurrentReadDescriptorProcsVersion,
                                      kCurrentReadDescriptorProcsCount,
                                      OpenRead,
                                      CloseRead,
                                      GetKey,
                                      GetInteger,
                                      GetFloat,
                                      GetUnitFloat,
                                      GetBoolean,
                                      GetText,
                                      GetAlias,
                                      GetEnumerated,
                                      GetClass,
                                      GetSimpleReference,
                                      GetObject,
                                      GetCount,
                                      GetString,
                                      GetPinnedInteger,
                                      GetPinnedFloat,
                                      GetPinnedUnitFloat};
    s.writeProcs = WriteDescriptorProcs{kCurrentWriteDescriptorProcsVersion,
                                        kCurrentWriteDescriptorProcsCount,
                                        OpenWrite,
                                        CloseWrite,
                                        PutInteger,
                                        PutFloat,
                                        PutUnitFloat,
                                        PutBoolean,
                                        PutText,
                                        PutAlias,
                                        PutEnumerated,
                                        PutClass,
                                        PutSimpleReference,
                                        PutObject,
                                        PutCount,
                                        PutString,
                                        PutScopedClass,
                                        PutScopedObject};
    s.params.descriptorParametersVersion = kCurrentDescriptorParametersVersion;
    // As a run from the menu: nothing to play, show the dialog.
    s.params.playInfo = plugInDialogDisplay;
    s.params.recordInfo = plugInDialogOptional;
    s.params.descriptor = nullptr;
    s.params.writeDescriptorProcs = &s.writeProcs;
    s.params.readDescriptorProcs = &s.readProcs;
}

DescriptorProcs::~DescriptorProcs() {
    State& s = *state_;
    if (s.params.descriptor && s.params.descriptor != s.played && IsLiveHandle(s.params.descriptor))
        DisposeHandle(s.params.descriptor);
    if (s.played && IsLiveHandle(s.played)) DisposeHandle(s.played);
    if (gCurrent == state_.get()) gCurrent = nullptr;
}

PIDescriptorParameters* DescriptorProcs::Parameters() { return &state_->params; }

void DescriptorProcs::SetPlayback(const Descriptor* descriptor, int16 playInfo) {
    State& s = *state_;
    // Whatever an earlier run left is the host's to dispose.
    if (s.params.descriptor && s.params.descriptor != s.played && IsLiveHandle(s.params.descriptor))
        DisposeHandle(s.params.descriptor);
    if (s.played && IsLiveHandle(s.played)) DisposeHandle(s.played);
    s.played = descriptor ? NewDescriptorHandle(*descriptor) : nullptr;
    s.params.descriptor = s.played;
    s.params.playInfo = playInfo;
    s.params.recordInfo = plugInDialogOptional;
}

bool DescriptorProcs::TakeRecorded(Descriptor& recorded, int16& recordInfo) {
    State& s = *state_;
    recorded.Clear();
    recordInfo = s.params.recordInfo;
    Handle h = s.params.descriptor;
    s.params.descriptor = nullptr;
    bool ok = false;
    if (h) {
        if (!IsLiveHandle(h)) {
            s.misuse.push_back("recorded descriptor: not a live host handle");
        } else {
            ok = ReadDescriptorHandle(h, recorded);
            if (!ok) s.misuse.push_back("recorded descriptor: the handle holds no descriptor");
            DisposeHandle(h);
        }
    }
    // The played handle is the host's unless the plug-in disposed it or handed it back.
    if (s.played && s.played != h && IsLiveHandle(s.played)) DisposeHandle(s.played);
    s.played = nullptr;
    return ok;
}

std::vector<std::string> DescriptorProcs::TakeMisuse() {
    State& s = *state_;
    for (auto& [token, r] : s.readers) {
        if (!r->closed && !r->leakReported) {
            r->leakReported = true;
            s.misuse.push_back("openReadDescriptor: a reader was never closed");
        }
    }
    for (auto& [token, w] : s.writers) {
        if (!w->closed && !w->leakReported) {
            w->leakReported = true;
            s.misuse.push_back("openWriteDescriptor: a writer was never closed");
        }
    }
    std::vector<std::string> all = std::exchange(Stray(), {});
    all.insert(all.end(), s.misuse.begin(), s.misuse.end());
    s.misuse.clear();
    return all;
}

void DescriptorProcs::SetCurrent(DescriptorProcs* procs) { gCurrent = procs ? procs->state_.get() : nullptr; }

} // namespace hostsim
