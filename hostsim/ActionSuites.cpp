#include "ActionSuites.h"

#include "Handles.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <unordered_map>
#include <utility>

namespace hostsim {
namespace {

enum class Kind { Descriptor, List, Reference };

const char* KindName(Kind kind) {
    switch (kind) {
    case Kind::Descriptor: return "action descriptor";
    case Kind::List: return "action list";
    default: return "action reference";
    }
}

struct Object {
    Kind kind = Kind::Descriptor;
    bool freed = false;
    bool leakReported = false;
    Descriptor descriptor;
    ValueList list;
    Reference reference;
};

// What basic action control's Get understands.
constexpr DescriptorClassID kClassProperty = FourCC("Prpr");
constexpr DescriptorClassID kClassLayer = FourCC("Lyr ");
constexpr DescriptorEnumTypeID kTypeOrdinal = FourCC("Ordn");
constexpr DescriptorEnumID kEnumTarget = FourCC("Trgt");
constexpr DescriptorKeyID kKeyName = FourCC("Nm  ");
constexpr DescriptorKeyID kKeyVisible = FourCC("Vsbl");

constexpr uint32 kFirstRuntimeId = 0x1000;

struct CommonId {
    const char* stringId;
    uint32 typeId;
};

const CommonId kCommonIds[] = {
    {"null", FourCC("null")},         {"application", FourCC("capp")}, {"document", FourCC("Dcmn")},
    {"layer", FourCC("Lyr ")},        {"channel", FourCC("Chnl")},     {"property", FourCC("Prpr")},
    {"ordinal", FourCC("Ordn")},      {"targetEnum", FourCC("Trgt")},  {"name", FourCC("Nm  ")},
    {"visible", FourCC("Vsbl")},      {"opacity", FourCC("Opct")},     {"mode", FourCC("Md  ")},
    {"width", FourCC("Wdth")},        {"height", FourCC("Hght")},      {"count", FourCC("Cnt ")},
    {"layerID", FourCC("LyrI")},      {"itemIndex", FourCC("ItmI")},   {"percentUnit", FourCC("#Prc")},
    {"pixelsUnit", FourCC("#Pxl")},   {"angleUnit", FourCC("#Ang")},   {"densityUnit", FourCC("#Rsl")},
    {"distanceUnit", FourCC("#Rlt")},
};

} // namespace

struct ActionSuites::State {
    DocumentView view;
    // Freed objects stay as tombstones so that a later use is recognised.
    std::unordered_map<const void*, std::unique_ptr<Object>> objects;
    std::vector<std::string> misuse;
    std::map<std::string, uint32> typeIds;   // string id -> type id
    std::map<uint32, std::string> stringIds; // type id -> its first string id
    uint32 nextRuntimeId = kFirstRuntimeId;
};

namespace {

using State = ActionSuites::State;

ActionSuites* gCurrent = nullptr;
State* gCurrentState = nullptr;

std::vector<std::string>& Stray() {
    static std::vector<std::string> stray;
    return stray;
}

State* Cur(const char* op) {
    if (!gCurrentState) Stray().push_back(std::string(op) + ": called while no host is running");
    return gCurrentState;
}

void Misuse(State* s, const char* op, const std::string& what) { s->misuse.push_back(std::string(op) + ": " + what); }

Object* Find(State* s, const void* token, Kind kind, const char* op) {
    if (!s) return nullptr;
    const std::string name = KindName(kind);
    if (!token) {
        Misuse(s, op, "a null " + name);
        return nullptr;
    }
    auto it = s->objects.find(token);
    if (it == s->objects.end()) {
        Misuse(s, op, "an " + name + " the host never made");
        return nullptr;
    }
    Object* o = it->second.get();
    if (o->kind != kind) {
        Misuse(s, op, std::string("an ") + KindName(o->kind) + " passed as an " + name);
        return nullptr;
    }
    if (o->freed) {
        Misuse(s, op, std::strcmp(op, "Free") == 0 ? "an " + name + " freed twice" : "an " + name + " used after Free");
        return nullptr;
    }
    return o;
}

Descriptor* D(PIActionDescriptor token, const char* op) {
    Object* o = Find(Cur(op), token, Kind::Descriptor, op);
    return o ? &o->descriptor : nullptr;
}

ValueList* L(PIActionList token, const char* op) {
    Object* o = Find(Cur(op), token, Kind::List, op);
    return o ? &o->list : nullptr;
}

Reference* R(PIActionReference token, const char* op) {
    Object* o = Find(Cur(op), token, Kind::Reference, op);
    return o ? &o->reference : nullptr;
}

Object* NewObject(State* s, Kind kind) {
    auto o = std::make_unique<Object>();
    o->kind = kind;
    Object* raw = o.get();
    s->objects[raw] = std::move(o);
    return raw;
}

PIActionDescriptor NewDescriptorObject(State* s, const Descriptor& d) {
    Object* o = NewObject(s, Kind::Descriptor);
    o->descriptor = d;
    return reinterpret_cast<PIActionDescriptor>(o);
}

PIActionList NewListObject(State* s, const ValueList& l) {
    Object* o = NewObject(s, Kind::List);
    o->list = l;
    return reinterpret_cast<PIActionList>(o);
}

PIActionReference NewReferenceObject(State* s, const Reference& r) {
    Object* o = NewObject(s, Kind::Reference);
    o->reference = r;
    return reinterpret_cast<PIActionReference>(o);
}

OSErr FreeObject(const void* token, Kind kind) {
    if (!token) return noErr; // freeing nothing is harmless
    Object* o = Find(Cur("Free"), token, kind, "Free");
    if (!o) return paramErr;
    o->freed = true;
    o->descriptor.Clear();
    o->list.Clear();
    o->reference = Reference();
    return noErr;
}

// Nothing thrown below may cross into the plug-in.
template <class F> OSErr Guard(F&& f) noexcept {
    try {
        return f();
    } catch (...) {
        return memFullErr;
    }
}

// ---- Values out: shared by the descriptor and list suites ----

OSErr OutInteger(const Value& v, int32* out) {
    if (!out || v.type != typeInteger) return paramErr;
    *out = int32(v.integer);
    return noErr;
}

OSErr OutInteger64(const Value& v, int64* out) {
    if (!out || v.type != typeSInt64) return paramErr;
    *out = v.integer;
    return noErr;
}

OSErr OutFloat(const Value& v, real64* out) {
    if (!out || v.type != typeFloat) return paramErr;
    *out = v.number;
    return noErr;
}

OSErr OutUnitFloat(const Value& v, DescriptorUnitID* unit, real64* out) {
    if (!out || v.type != typeUnitFloat) return paramErr;
    if (unit) *unit = v.code;
    *out = v.number;
    return noErr;
}

OSErr OutStringLength(const Value& v, uint32* out) {
    if (!out || v.type != typeChar) return paramErr;
    *out = uint32(v.bytes.size());
    return noErr;
}

// maxLength counts the terminator.
OSErr CopyCString(const std::string& s, char* out, uint32 maxLength) {
    if (!out || maxLength == 0) return paramErr;
    const size_t n = std::min<size_t>(s.size(), maxLength - 1);
    if (n) std::memcpy(out, s.data(), n);
    out[n] = '\0';
    return noErr;
}

OSErr OutString(const Value& v, char* out, uint32 maxLength) {
    if (v.type != typeChar) return paramErr;
    return CopyCString(v.bytes, out, maxLength);
}

OSErr OutBoolean(const Value& v, Boolean* out) {
    if (!out || v.type != typeBoolean) return paramErr;
    *out = v.integer ? 1 : 0;
    return noErr;
}

OSErr OutList(const Value& v, PIActionList* out) {
    if (!out || v.type != typeValueList) return paramErr;
    *out = NewListObject(gCurrentState, v.list);
    return noErr;
}

OSErr OutObject(const Value& v, DescType wanted, DescriptorClassID* cls, PIActionDescriptor* out) {
    if (!out || v.type != wanted) return paramErr;
    if (cls) *cls = v.code;
    *out = NewDescriptorObject(gCurrentState, v.ObjectValue());
    return noErr;
}

OSErr OutEnumerated(const Value& v, DescriptorEnumTypeID* type, DescriptorEnumID* out) {
    if (!out || v.type != typeEnumerated) return paramErr;
    if (type) *type = v.code;
    *out = v.code2;
    return noErr;
}

OSErr OutReference(const Value& v, PIActionReference* out) {
    if (!out || v.type != typeObjectReference) return paramErr;
    *out = NewReferenceObject(gCurrentState, v.reference);
    return noErr;
}

OSErr OutClass(const Value& v, DescType wanted, DescriptorClassID* out) {
    if (!out || v.type != wanted) return paramErr;
    *out = v.code;
    return noErr;
}

OSErr OutAlias(const Value& v, Handle* out) {
    if (!out || v.type != typeAlias) return paramErr;
    Handle h = NewHandle(int32(v.bytes.size()));
    if (!h) return memFullErr;
    if (!v.bytes.empty()) std::memcpy(*h, v.bytes.data(), v.bytes.size());
    *out = h;
    return noErr;
}

OSErr OutDataLength(const Value& v, int32* out) {
    if (!out || v.type != typeRawData) return paramErr;
    *out = int32(v.bytes.size());
    return noErr;
}

OSErr OutData(const Value& v, void* out) {
    if (!out || v.type != typeRawData) return paramErr;
    if (!v.bytes.empty()) std::memcpy(out, v.bytes.data(), v.bytes.size());
    return noErr;
}

// The first `count` values of a list, all integers.
OSErr OutIntegers(const ValueList& list, uint32 count, int32* out) {
    if (!out && count > 0) return paramErr;
    if (count > list.Count()) return paramErr;
    for (uint32 i = 0; i < count; ++i)
        if (list.At(i).type != typeInteger) return paramErr;
    for (uint32 i = 0; i < count; ++i) out[i] = int32(list.At(i).integer);
    return noErr;
}

// ---- Values in ----

OSErr InString(const char* s, Value& v) {
    if (!s) return paramErr;
    v = Value::Text(s);
    return noErr;
}

OSErr InList(PIActionList list, const char* op, Value& v) {
    const ValueList* l = L(list, op);
    if (!l) return paramErr;
    v = Value::List(*l);
    return noErr;
}

OSErr InObject(PIActionDescriptor object, DescriptorClassID cls, bool global, const char* op, Value& v) {
    const Descriptor* d = D(object, op);
    if (!d) return paramErr;
    v = global ? Value::GlobalObject(cls, *d) : Value::Object(cls, *d);
    return noErr;
}

OSErr InReference(PIActionReference reference, const char* op, Value& v) {
    const Reference* r = R(reference, op);
    if (!r) return paramErr;
    v = Value::Ref(*r);
    return noErr;
}

OSErr InAlias(Handle h, const char* op, Value& v) {
    if (!h) return paramErr;
    if (!IsLiveHandle(h)) {
        if (State* s = Cur(op)) Misuse(s, op, "the handle is not a live host handle");
        return paramErr;
    }
    v = Value::Alias(std::string(*h, size_t(HandleSize(h))));
    return noErr;
}

OSErr InData(int32 length, const void* data, Value& v) {
    if (length < 0 || (length > 0 && !data)) return paramErr;
    v = Value::Data(std::string(static_cast<const char*>(data), size_t(length)));
    return noErr;
}

// ---- Action descriptor suite ----

// A get by key: find the descriptor and the key, hand the value on.
template <class F> OSErr DescGet(PIActionDescriptor d, DescriptorKeyID key, const char* op, F&& read) {
    return Guard([&]() -> OSErr {
        const Descriptor* desc = D(d, op);
        if (!desc) return paramErr;
        const Value* v = desc->Find(key);
        if (!v) return errMissingParameter;
        return read(*v);
    });
}

template <class F> OSErr DescPut(PIActionDescriptor d, DescriptorKeyID key, const char* op, F&& make) {
    return Guard([&]() -> OSErr {
        Descriptor* desc = D(d, op);
        if (!desc) return paramErr;
        Value v;
        const OSErr e = make(v);
        if (e != noErr) return e;
        return desc->Put(key, std::move(v)) ? noErr : paramErr;
    });
}

OSErr QZ_HOSTCALL DMake(PIActionDescriptor* out) {
    return Guard([&]() -> OSErr {
        State* s = Cur("Make");
        if (!s || !out) return paramErr;
        *out = NewDescriptorObject(s, Descriptor());
        return noErr;
    });
}

OSErr QZ_HOSTCALL DFree(PIActionDescriptor d) {
    return Guard([&] { return FreeObject(d, Kind::Descriptor); });
}

OSErr QZ_HOSTCALL DGetType(PIActionDescriptor d, DescriptorKeyID key, DescriptorTypeID* type) {
    return DescGet(d, key, "GetType", [&](const Value& v) -> OSErr {
        if (!type) return paramErr;
        *type = v.type;
        return noErr;
    });
}

OSErr QZ_HOSTCALL DGetKey(PIActionDescriptor d, uint32 index, DescriptorKeyID* key) {
    return Guard([&]() -> OSErr {
        const Descriptor* desc = D(d, "GetKey");
        if (!desc || !key || index >= desc->Count()) return paramErr;
        *key = desc->KeyAt(index);
        return noErr;
    });
}

OSErr QZ_HOSTCALL DHasKey(PIActionDescriptor d, DescriptorKeyID key, Boolean* hasKey) {
    return Guard([&]() -> OSErr {
        const Descriptor* desc = D(d, "HasKey");
        if (!desc || !hasKey) return paramErr;
        *hasKey = desc->Has(key) ? 1 : 0;
        return noErr;
    });
}

OSErr QZ_HOSTCALL DGetCount(PIActionDescriptor d, uint32* count) {
    return Guard([&]() -> OSErr {
        const Descriptor* desc = D(d, "GetCount");
        if (!desc || !count) return paramErr;
        *count = uint32(desc->Count());
        return noErr;
    });
}

OSErr QZ_HOSTCALL DIsEqual(PIActionDescriptor d, PIActionDescriptor other, Boolean* isEqual) {
    return Guard([&]() -> OSErr {
        const Descriptor* a = D(d, "IsEqual");
        const Descriptor* b = D(other, "IsEqual");
        if (!a || !b || !isEqual) return paramErr;
        *isEqual = *a == *b ? 1 : 0;
        return noErr;
    });
}

OSErr QZ_HOSTCALL DErase(PIActionDescriptor d, DescriptorKeyID key) {
    return Guard([&]() -> OSErr {
        Descriptor* desc = D(d, "Erase");
        if (!desc) return paramErr;
        desc->Erase(key); // an absent key is already erased
        return noErr;
    });
}

OSErr QZ_HOSTCALL DClear(PIActionDescriptor d) {
    return Guard([&]() -> OSErr {
        Descriptor* desc = D(d, "Clear");
        if (!desc) return paramErr;
        desc->Clear();
        return noErr;
    });
}

OSErr QZ_HOSTCALL DPutInteger(PIActionDescriptor d, DescriptorKeyID key, int32 value) {
    return DescPut(d, key, "PutInteger", [&](Value& v) {
        v = Value::Integer(value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL DPutFloat(PIActionDescriptor d, DescriptorKeyID key, real64 value) {
    return DescPut(d, key, "PutFloat", [&](Value& v) {
        v = Value::Float(value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL DPutUnitFloat(PIActionDescriptor d, DescriptorKeyID key, DescriptorUnitID unit, real64 value) {
    return DescPut(d, key, "PutUnitFloat", [&](Value& v) {
        v = Value::UnitFloat(unit, value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL DPutString(PIActionDescriptor d, DescriptorKeyID key, const char* cstr) {
    return DescPut(d, key, "PutString", [&](Value& v) { return InString(cstr, v); });
}

OSErr QZ_HOSTCALL DPutBoolean(PIActionDescriptor d, DescriptorKeyID key, Boolean value) {
    return DescPut(d, key, "PutBoolean", [&](Value& v) {
        v = Value::Bool(value != 0);
        return noErr;
    });
}

OSErr QZ_HOSTCALL DPutList(PIActionDescriptor d, DescriptorKeyID key, PIActionList value) {
    return DescPut(d, key, "PutList", [&](Value& v) { return InList(value, "PutList", v); });
}

OSErr QZ_HOSTCALL DPutObject(PIActionDescriptor d, DescriptorKeyID key, DescriptorClassID type,
                             PIActionDescriptor value) {
    return DescPut(d, key, "PutObject", [&](Value& v) { return InObject(value, type, false, "PutObject", v); });
}

OSErr QZ_HOSTCALL DPutGlobalObject(PIActionDescriptor d, DescriptorKeyID key, DescriptorClassID type,
                                   PIActionDescriptor value) {
    return DescPut(d, key, "PutGlobalObject",
                   [&](Value& v) { return InObject(value, type, true, "PutGlobalObject", v); });
}

OSErr QZ_HOSTCALL DPutEnumerated(PIActionDescriptor d, DescriptorKeyID key, DescriptorEnumTypeID type,
                                 DescriptorEnumID value) {
    return DescPut(d, key, "PutEnumerated", [&](Value& v) {
        v = Value::Enumerated(type, value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL DPutReference(PIActionDescriptor d, DescriptorKeyID key, PIActionReference value) {
    return DescPut(d, key, "PutReference", [&](Value& v) { return InReference(value, "PutReference", v); });
}

OSErr QZ_HOSTCALL DPutClass(PIActionDescriptor d, DescriptorKeyID key, DescriptorClassID value) {
    return DescPut(d, key, "PutClass", [&](Value& v) {
        v = Value::Class(value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL DPutGlobalClass(PIActionDescriptor d, DescriptorKeyID key, DescriptorClassID value) {
    return DescPut(d, key, "PutGlobalClass", [&](Value& v) {
        v = Value::GlobalClass(value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL DPutAlias(PIActionDescriptor d, DescriptorKeyID key, Handle value) {
    return DescPut(d, key, "PutAlias", [&](Value& v) { return InAlias(value, "PutAlias", v); });
}

OSErr QZ_HOSTCALL DGetInteger(PIActionDescriptor d, DescriptorKeyID key, int32* value) {
    return DescGet(d, key, "GetInteger", [&](const Value& v) { return OutInteger(v, value); });
}

OSErr QZ_HOSTCALL DGetFloat(PIActionDescriptor d, DescriptorKeyID key, real64* value) {
    return DescGet(d, key, "GetFloat", [&](const Value& v) { return OutFloat(v, value); });
}

OSErr QZ_HOSTCALL DGetUnitFloat(PIActionDescriptor d, DescriptorKeyID key, DescriptorUnitID* unit, real64* value) {
    return DescGet(d, key, "GetUnitFloat", [&](const Value& v) { return OutUnitFloat(v, unit, value); });
}

OSErr QZ_HOSTCALL DGetStringLength(PIActionDescriptor d, DescriptorKeyID key, uint32* length) {
    return DescGet(d, key, "GetStringLength", [&](const Value& v) { return OutStringLength(v, length); });
}

OSErr QZ_HOSTCALL DGetString(PIActionDescriptor d, DescriptorKeyID key, char* cstr, uint32 maxLength) {
    return DescGet(d, key, "GetString", [&](const Value& v) { return OutString(v, cstr, maxLength); });
}

OSErr QZ_HOSTCALL DGetBoolean(PIActionDescriptor d, DescriptorKeyID key, Boolean* value) {
    return DescGet(d, key, "GetBoolean", [&](const Value& v) { return OutBoolean(v, value); });
}

OSErr QZ_HOSTCALL DGetList(PIActionDescriptor d, DescriptorKeyID key, PIActionList* value) {
    return DescGet(d, key, "GetList", [&](const Value& v) { return OutList(v, value); });
}

OSErr QZ_HOSTCALL DGetObject(PIActionDescriptor d, DescriptorKeyID key, DescriptorClassID* type,
                             PIActionDescriptor* value) {
    return DescGet(d, key, "GetObject", [&](const Value& v) { return OutObject(v, typeObject, type, value); });
}

OSErr QZ_HOSTCALL DGetGlobalObject(PIActionDescriptor d, DescriptorKeyID key, DescriptorClassID* type,
                                   PIActionDescriptor* value) {
    return DescGet(d, key, "GetGlobalObject",
                   [&](const Value& v) { return OutObject(v, typeGlobalObject, type, value); });
}

OSErr QZ_HOSTCALL DGetEnumerated(PIActionDescriptor d, DescriptorKeyID key, DescriptorEnumTypeID* type,
                                 DescriptorEnumID* value) {
    return DescGet(d, key, "GetEnumerated", [&](const Value& v) { return OutEnumerated(v, type, value); });
}

OSErr QZ_HOSTCALL DGetReference(PIActionDescriptor d, DescriptorKeyID key, PIActionReference* value) {
    return DescGet(d, key, "GetReference", [&](const Value& v) { return OutReference(v, value); });
}

OSErr QZ_HOSTCALL DGetClass(PIActionDescriptor d, DescriptorKeyID key, DescriptorClassID* value) {
    return DescGet(d, key, "GetClass", [&](const Value& v) { return OutClass(v, typeClass, value); });
}

OSErr QZ_HOSTCALL DGetGlobalClass(PIActionDescriptor d, DescriptorKeyID key, DescriptorClassID* value) {
    return DescGet(d, key, "GetGlobalClass", [&](const Value& v) { return OutClass(v, typeGlobalClass, value); });
}

OSErr QZ_HOSTCALL DGetAlias(PIActionDescriptor d, DescriptorKeyID key, Handle* value) {
    return DescGet(d, key, "GetAlias", [&](const Value& v) { return OutAlias(v, value); });
}

OSErr QZ_HOSTCALL DHasKeys(PIActionDescriptor d, const DescriptorKeyID* keys, Boolean* hasKeys) {
    return Guard([&]() -> OSErr {
        const Descriptor* desc = D(d, "HasKeys");
        if (!desc || !keys || !hasKeys) return paramErr;
        bool all = true;
        for (const DescriptorKeyID* k = keys; *k != 0 && all; ++k) all = desc->Has(*k);
        *hasKeys = all ? 1 : 0;
        return noErr;
    });
}

OSErr QZ_HOSTCALL DPutIntegers(PIActionDescriptor d, DescriptorKeyID key, uint32 count, const int32* values) {
    return DescPut(d, key, "PutIntegers", [&](Value& v) -> OSErr {
        if (!values && count > 0) return paramErr;
        ValueList list;
        for (uint32 i = 0; i < count; ++i) list.Add(Value::Integer(values[i]));
        v = Value::List(std::move(list));
        return noErr;
    });
}

OSErr QZ_HOSTCALL DGetIntegers(PIActionDescriptor d, DescriptorKeyID key, uint32 count, int32* values) {
    return DescGet(d, key, "GetIntegers", [&](const Value& v) -> OSErr {
        if (v.type != typeValueList) return paramErr;
        return OutIntegers(v.list, count, values);
    });
}

OSErr QZ_HOSTCALL DAsHandle(PIActionDescriptor d, PIDescriptorHandle* value) {
    return Guard([&]() -> OSErr {
        const Descriptor* desc = D(d, "AsHandle");
        if (!desc || !value) return paramErr;
        Handle h = NewDescriptorHandle(*desc);
        if (!h) return memFullErr;
        *value = h;
        return noErr;
    });
}

OSErr QZ_HOSTCALL DHandleToDescriptor(PIDescriptorHandle value, PIActionDescriptor* d) {
    return Guard([&]() -> OSErr {
        State* s = Cur("HandleToDescriptor");
        if (!s || !value || !d) return paramErr;
        if (!IsLiveHandle(value)) {
            Misuse(s, "HandleToDescriptor", "the handle is not a live host handle");
            return paramErr;
        }
        Descriptor read;
        if (!ReadDescriptorHandle(value, read)) {
            Misuse(s, "HandleToDescriptor", "the handle holds no descriptor");
            return paramErr;
        }
        *d = NewDescriptorObject(s, read);
        return noErr;
    });
}

OSErr QZ_HOSTCALL DPutZString(PIActionDescriptor, DescriptorKeyID, ASZString) { return kErrNoZStrings; }

OSErr QZ_HOSTCALL DGetZString(PIActionDescriptor, DescriptorKeyID, ASZString* zstring) {
    if (zstring) *zstring = nullptr;
    return kErrNoZStrings;
}

OSErr QZ_HOSTCALL DPutData(PIActionDescriptor d, DescriptorKeyID key, int32 length, void* value) {
    return DescPut(d, key, "PutData", [&](Value& v) { return InData(length, value, v); });
}

OSErr QZ_HOSTCALL DGetDataLength(PIActionDescriptor d, DescriptorKeyID key, int32* length) {
    return DescGet(d, key, "GetDataLength", [&](const Value& v) { return OutDataLength(v, length); });
}

OSErr QZ_HOSTCALL DGetData(PIActionDescriptor d, DescriptorKeyID key, void* value) {
    return DescGet(d, key, "GetData", [&](const Value& v) { return OutData(v, value); });
}

OSErr QZ_HOSTCALL DPutInteger64(PIActionDescriptor d, DescriptorKeyID key, int64 value) {
    return DescPut(d, key, "PutInteger64", [&](Value& v) {
        v = Value::Int64(value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL DGetInteger64(PIActionDescriptor d, DescriptorKeyID key, int64* value) {
    return DescGet(d, key, "GetInteger64", [&](const Value& v) { return OutInteger64(v, value); });
}

// ---- Action list suite ----

template <class F> OSErr ListGet(PIActionList l, uint32 index, const char* op, F&& read) {
    return Guard([&]() -> OSErr {
        const ValueList* list = L(l, op);
        if (!list || index >= list->Count()) return paramErr;
        return read(list->At(index));
    });
}

template <class F> OSErr ListPut(PIActionList l, const char* op, F&& make) {
    return Guard([&]() -> OSErr {
        ValueList* list = L(l, op);
        if (!list) return paramErr;
        Value v;
        const OSErr e = make(v);
        if (e != noErr) return e;
        return list->Add(std::move(v)) ? noErr : paramErr;
    });
}

OSErr QZ_HOSTCALL LMake(PIActionList* out) {
    return Guard([&]() -> OSErr {
        State* s = Cur("Make");
        if (!s || !out) return paramErr;
        *out = NewListObject(s, ValueList());
        return noErr;
    });
}

OSErr QZ_HOSTCALL LFree(PIActionList l) {
    return Guard([&] { return FreeObject(l, Kind::List); });
}

OSErr QZ_HOSTCALL LGetType(PIActionList l, uint32 index, DescriptorTypeID* type) {
    return ListGet(l, index, "GetType", [&](const Value& v) -> OSErr {
        if (!type) return paramErr;
        *type = v.type;
        return noErr;
    });
}

OSErr QZ_HOSTCALL LGetCount(PIActionList l, uint32* count) {
    return Guard([&]() -> OSErr {
        const ValueList* list = L(l, "GetCount");
        if (!list || !count) return paramErr;
        *count = uint32(list->Count());
        return noErr;
    });
}

OSErr QZ_HOSTCALL LPutInteger(PIActionList l, int32 value) {
    return ListPut(l, "PutInteger", [&](Value& v) {
        v = Value::Integer(value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL LPutFloat(PIActionList l, real64 value) {
    return ListPut(l, "PutFloat", [&](Value& v) {
        v = Value::Float(value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL LPutUnitFloat(PIActionList l, DescriptorUnitID unit, real64 value) {
    return ListPut(l, "PutUnitFloat", [&](Value& v) {
        v = Value::UnitFloat(unit, value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL LPutString(PIActionList l, const char* cstr) {
    return ListPut(l, "PutString", [&](Value& v) { return InString(cstr, v); });
}

OSErr QZ_HOSTCALL LPutBoolean(PIActionList l, Boolean value) {
    return ListPut(l, "PutBoolean", [&](Value& v) {
        v = Value::Bool(value != 0);
        return noErr;
    });
}

OSErr QZ_HOSTCALL LPutList(PIActionList l, PIActionList value) {
    return ListPut(l, "PutList", [&](Value& v) { return InList(value, "PutList", v); });
}

OSErr QZ_HOSTCALL LPutObject(PIActionList l, DescriptorClassID type, PIActionDescriptor value) {
    return ListPut(l, "PutObject", [&](Value& v) { return InObject(value, type, false, "PutObject", v); });
}

OSErr QZ_HOSTCALL LPutGlobalObject(PIActionList l, DescriptorClassID type, PIActionDescriptor value) {
    return ListPut(l, "PutGlobalObject", [&](Value& v) { return InObject(value, type, true, "PutGlobalObject", v); });
}

OSErr QZ_HOSTCALL LPutEnumerated(PIActionList l, DescriptorEnumTypeID type, DescriptorEnumID value) {
    return ListPut(l, "PutEnumerated", [&](Value& v) {
        v = Value::Enumerated(type, value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL LPutReference(PIActionList l, PIActionReference value) {
    return ListPut(l, "PutReference", [&](Value& v) { return InReference(value, "PutReference", v); });
}

OSErr QZ_HOSTCALL LPutClass(PIActionList l, DescriptorClassID value) {
    return ListPut(l, "PutClass", [&](Value& v) {
        v = Value::Class(value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL LPutGlobalClass(PIActionList l, DescriptorClassID value) {
    return ListPut(l, "PutGlobalClass", [&](Value& v) {
        v = Value::GlobalClass(value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL LPutAlias(PIActionList l, Handle value) {
    return ListPut(l, "PutAlias", [&](Value& v) { return InAlias(value, "PutAlias", v); });
}

OSErr QZ_HOSTCALL LGetInteger(PIActionList l, uint32 index, int32* value) {
    return ListGet(l, index, "GetInteger", [&](const Value& v) { return OutInteger(v, value); });
}

OSErr QZ_HOSTCALL LGetFloat(PIActionList l, uint32 index, real64* value) {
    return ListGet(l, index, "GetFloat", [&](const Value& v) { return OutFloat(v, value); });
}

OSErr QZ_HOSTCALL LGetUnitFloat(PIActionList l, uint32 index, DescriptorUnitID* unit, real64* value) {
    return ListGet(l, index, "GetUnitFloat", [&](const Value& v) { return OutUnitFloat(v, unit, value); });
}

OSErr QZ_HOSTCALL LGetStringLength(PIActionList l, uint32 index, uint32* length) {
    return ListGet(l, index, "GetStringLength", [&](const Value& v) { return OutStringLength(v, length); });
}

OSErr QZ_HOSTCALL LGetString(PIActionList l, uint32 index, char* cstr, uint32 maxLength) {
    return ListGet(l, index, "GetString", [&](const Value& v) { return OutString(v, cstr, maxLength); });
}

OSErr QZ_HOSTCALL LGetBoolean(PIActionList l, uint32 index, Boolean* value) {
    return ListGet(l, index, "GetBoolean", [&](const Value& v) { return OutBoolean(v, value); });
}

OSErr QZ_HOSTCALL LGetList(PIActionList l, uint32 index, PIActionList* value) {
    return ListGet(l, index, "GetList", [&](const Value& v) { return OutList(v, value); });
}

OSErr QZ_HOSTCALL LGetObject(PIActionList l, uint32 index, DescriptorClassID* type, PIActionDescriptor* value) {
    return ListGet(l, index, "GetObject", [&](const Value& v) { return OutObject(v, typeObject, type, value); });
}

OSErr QZ_HOSTCALL LGetGlobalObject(PIActionList l, uint32 index, DescriptorClassID* type, PIActionDescriptor* value) {
    return ListGet(l, index, "GetGlobalObject",
                   [&](const Value& v) { return OutObject(v, typeGlobalObject, type, value); });
}

OSErr QZ_HOSTCALL LGetEnumerated(PIActionList l, uint32 index, DescriptorEnumTypeID* type, DescriptorEnumID* value) {
    return ListGet(l, index, "GetEnumerated", [&](const Value& v) { return OutEnumerated(v, type, value); });
}

OSErr QZ_HOSTCALL LGetReference(PIActionList l, uint32 index, PIActionReference* value) {
    return ListGet(l, index, "GetReference", [&](const Value& v) { return OutReference(v, value); });
}

OSErr QZ_HOSTCALL LGetClass(PIActionList l, uint32 index, DescriptorClassID* value) {
    return ListGet(l, index, "GetClass", [&](const Value& v) { return OutClass(v, typeClass, value); });
}

OSErr QZ_HOSTCALL LGetGlobalClass(PIActionList l, uint32 index, DescriptorClassID* value) {
    return ListGet(l, index, "GetGlobalClass", [&](const Value& v) { return OutClass(v, typeGlobalClass, value); });
}

OSErr QZ_HOSTCALL LGetAlias(PIActionList l, uint32 index, Handle* value) {
    return ListGet(l, index, "GetAlias", [&](const Value& v) { return OutAlias(v, value); });
}

OSErr QZ_HOSTCALL LPutIntegers(PIActionList l, uint32 count, const int32* values) {
    return Guard([&]() -> OSErr {
        ValueList* list = L(l, "PutIntegers");
        if (!list || (!values && count > 0)) return paramErr;
        for (uint32 i = 0; i < count; ++i) list->Add(Value::Integer(values[i]));
        return noErr;
    });
}

OSErr QZ_HOSTCALL LGetIntegers(PIActionList l, uint32 count, int32* values) {
    return Guard([&]() -> OSErr {
        const ValueList* list = L(l, "GetIntegers");
        if (!list) return paramErr;
        return OutIntegers(*list, count, values);
    });
}

OSErr QZ_HOSTCALL LPutData(PIActionList l, int32 length, void* value) {
    return ListPut(l, "PutData", [&](Value& v) { return InData(length, value, v); });
}

OSErr QZ_HOSTCALL LGetDataLength(PIActionList l, uint32 index, int32* length) {
    return ListGet(l, index, "GetDataLength", [&](const Value& v) { return OutDataLength(v, length); });
}

OSErr QZ_HOSTCALL LGetData(PIActionList l, uint32 index, void* value) {
    return ListGet(l, index, "GetData", [&](const Value& v) { return OutData(v, value); });
}

OSErr QZ_HOSTCALL LPutZString(PIActionList, ASZString) { return kErrNoZStrings; }

OSErr QZ_HOSTCALL LGetZString(PIActionList, uint32, ASZString* zstring) {
    if (zstring) *zstring = nullptr;
    return kErrNoZStrings;
}

OSErr QZ_HOSTCALL LPutInteger64(PIActionList l, int64 value) {
    return ListPut(l, "PutInteger64", [&](Value& v) {
        v = Value::Int64(value);
        return noErr;
    });
}

OSErr QZ_HOSTCALL LGetInteger64(PIActionList l, uint32 index, int64* value) {
    return ListGet(l, index, "GetInteger64", [&](const Value& v) { return OutInteger64(v, value); });
}

// ---- Action reference suite ----

OSErr RefPut(PIActionReference r, const char* op, ReferencePart part) {
    return Guard([&]() -> OSErr {
        Reference* ref = R(r, op);
        if (!ref) return paramErr;
        return ref->Add(std::move(part)) ? noErr : paramErr;
    });
}

// Getters read the first part, and only in its own form.
template <class F> OSErr RefGet(PIActionReference r, const char* op, DescriptorFormID form, F&& read) {
    return Guard([&]() -> OSErr {
        const Reference* ref = R(r, op);
        if (!ref || ref->Count() == 0) return paramErr;
        const ReferencePart& p = ref->At(0);
        if (form != 0 && p.form != form) return paramErr;
        return read(p);
    });
}

OSErr QZ_HOSTCALL RMake(PIActionReference* out) {
    return Guard([&]() -> OSErr {
        State* s = Cur("Make");
        if (!s || !out) return paramErr;
        *out = NewReferenceObject(s, Reference());
        return noErr;
    });
}

OSErr QZ_HOSTCALL RFree(PIActionReference r) {
    return Guard([&] { return FreeObject(r, Kind::Reference); });
}

OSErr QZ_HOSTCALL RGetForm(PIActionReference r, DescriptorFormID* form) {
    return RefGet(r, "GetForm", 0, [&](const ReferencePart& p) -> OSErr {
        if (!form) return paramErr;
        *form = p.form;
        return noErr;
    });
}

OSErr QZ_HOSTCALL RGetDesiredClass(PIActionReference r, DescriptorClassID* desiredClass) {
    return RefGet(r, "GetDesiredClass", 0, [&](const ReferencePart& p) -> OSErr {
        if (!desiredClass) return paramErr;
        *desiredClass = p.desiredClass;
        return noErr;
    });
}

OSErr QZ_HOSTCALL RPutName(PIActionReference r, DescriptorClassID desiredClass, const char* cstr) {
    if (!cstr) return paramErr;
    return RefPut(r, "PutName", ReferencePart::Name(desiredClass, cstr));
}

OSErr QZ_HOSTCALL RPutIndex(PIActionReference r, DescriptorClassID desiredClass, uint32 value) {
    return RefPut(r, "PutIndex", ReferencePart::Index(desiredClass, value));
}

OSErr QZ_HOSTCALL RPutIdentifier(PIActionReference r, DescriptorClassID desiredClass, uint32 value) {
    return RefPut(r, "PutIdentifier", ReferencePart::Identifier(desiredClass, value));
}

OSErr QZ_HOSTCALL RPutOffset(PIActionReference r, DescriptorClassID desiredClass, int32 value) {
    return RefPut(r, "PutOffset", ReferencePart::Offset(desiredClass, value));
}

OSErr QZ_HOSTCALL RPutEnumerated(PIActionReference r, DescriptorClassID desiredClass, DescriptorEnumTypeID type,
                                 DescriptorEnumID value) {
    return RefPut(r, "PutEnumerated", ReferencePart::Enumerated(desiredClass, type, value));
}

OSErr QZ_HOSTCALL RPutProperty(PIActionReference r, DescriptorClassID desiredClass, DescriptorKeyID value) {
    return RefPut(r, "PutProperty", ReferencePart::Property(desiredClass, value));
}

OSErr QZ_HOSTCALL RPutClass(PIActionReference r, DescriptorClassID desiredClass) {
    return RefPut(r, "PutClass", ReferencePart::Class(desiredClass));
}

OSErr QZ_HOSTCALL RGetNameLength(PIActionReference r, uint32* length) {
    return RefGet(r, "GetNameLength", kFormName, [&](const ReferencePart& p) -> OSErr {
        if (!length) return paramErr;
        *length = uint32(p.name.size());
        return noErr;
    });
}

OSErr QZ_HOSTCALL RGetName(PIActionReference r, char* name, uint32 maxLength) {
    return RefGet(r, "GetName", kFormName,
                  [&](const ReferencePart& p) { return CopyCString(p.name, name, maxLength); });
}

OSErr QZ_HOSTCALL RGetIndex(PIActionReference r, uint32* value) {
    return RefGet(r, "GetIndex", kFormIndex, [&](const ReferencePart& p) -> OSErr {
        if (!value) return paramErr;
        *value = p.index;
        return noErr;
    });
}

OSErr QZ_HOSTCALL RGetIdentifier(PIActionReference r, uint32* value) {
    return RefGet(r, "GetIdentifier", kFormIdentifier, [&](const ReferencePart& p) -> OSErr {
        if (!value) return paramErr;
        *value = p.index;
        return noErr;
    });
}

OSErr QZ_HOSTCALL RGetOffset(PIActionReference r, int32* value) {
    return RefGet(r, "GetOffset", kFormOffset, [&](const ReferencePart& p) -> OSErr {
        if (!value) return paramErr;
        *value = p.offset;
        return noErr;
    });
}

OSErr QZ_HOSTCALL RGetEnumerated(PIActionReference r, DescriptorEnumTypeID* type, DescriptorEnumID* value) {
    return RefGet(r, "GetEnumerated", kFormEnumerated, [&](const ReferencePart& p) -> OSErr {
        if (!value) return paramErr;
        if (type) *type = p.enumType;
        *value = p.enumValue;
        return noErr;
    });
}

OSErr QZ_HOSTCALL RGetProperty(PIActionReference r, DescriptorKeyID* value) {
    return RefGet(r, "GetProperty", kFormProperty, [&](const ReferencePart& p) -> OSErr {
        if (!value) return paramErr;
        *value = p.property;
        return noErr;
    });
}

OSErr QZ_HOSTCALL RGetContainer(PIActionReference r, PIActionReference* value) {
    return Guard([&]() -> OSErr {
        const Reference* ref = R(r, "GetContainer");
        if (!ref || !value) return paramErr;
        *value = ref->Count() > 1 ? NewReferenceObject(gCurrentState, ref->Container()) : nullptr;
        return noErr;
    });
}

OSErr QZ_HOSTCALL RPutNameZString(PIActionReference, DescriptorClassID, ASZString) { return kErrNoZStrings; }

OSErr QZ_HOSTCALL RGetNameZString(PIActionReference, ASZString* zstring) {
    if (zstring) *zstring = nullptr;
    return kErrNoZStrings;
}

// ---- Basic action control suite ----

OSErr Resolve(const State& s, const Reference& ref, Descriptor& out) {
    size_t i = 0;
    DescriptorKeyID property = 0;
    if (ref.Count() > 0 && ref.At(0).form == kFormProperty) {
        if (ref.At(0).desiredClass != kClassProperty) return kErrNoSuchElement;
        property = ref.At(0).property;
        i = 1;
    }
    if (ref.Count() != i + 1) return kErrNoSuchElement;
    const ReferencePart& layer = ref.At(i);
    if (layer.desiredClass != kClassLayer) return kErrNoSuchElement;

    std::string name;
    if (layer.form == kFormEnumerated && (layer.enumType == kTypeOrdinal || layer.enumType == typeEnumerated) &&
        layer.enumValue == kEnumTarget) {
        name = s.view.targetLayerName ? s.view.targetLayerName() : std::string();
        if (name.empty()) return kErrNoSuchElement;
    } else if (layer.form == kFormName) {
        name = layer.name;
    } else {
        return kErrNoSuchElement;
    }
    bool visible = false;
    const bool known = s.view.layerVisible && s.view.layerVisible(name, visible);
    if (!known && layer.form == kFormName) return kErrNoSuchElement;

    if (property == kKeyName) {
        out.PutText(kKeyName, name);
    } else if (property == kKeyVisible) {
        if (!known) return kErrNoSuchElement;
        out.PutBoolean(kKeyVisible, visible);
    } else if (property == 0) {
        out.PutText(kKeyName, name);
        if (known) out.PutBoolean(kKeyVisible, visible);
    } else {
        return kErrNoSuchElement;
    }
    return noErr;
}

OSErr QZ_HOSTCALL BGet(PIActionDescriptor* result, PIActionReference reference) {
    return Guard([&]() -> OSErr {
        if (result) *result = nullptr;
        const Reference* ref = R(reference, "Get");
        if (!ref || !result) return paramErr;
        Descriptor answer;
        const OSErr e = Resolve(*gCurrentState, *ref, answer);
        if (e != noErr) return e;
        *result = NewDescriptorObject(gCurrentState, answer);
        return noErr;
    });
}

OSErr QZ_HOSTCALL BStringIDToTypeID(const char* stringID, DescriptorTypeID* typeID) {
    return Guard([&]() -> OSErr {
        State* s = Cur("StringIDToTypeID");
        if (!s || !stringID || !typeID) return paramErr;
        auto it = s->typeIds.find(stringID);
        if (it == s->typeIds.end()) {
            const uint32 id = s->nextRuntimeId++;
            it = s->typeIds.emplace(stringID, id).first;
            s->stringIds.emplace(id, stringID);
        }
        *typeID = it->second;
        return noErr;
    });
}

OSErr QZ_HOSTCALL BTypeIDToStringID(DescriptorTypeID typeID, char* stringID, uint32 bufferLength) {
    return Guard([&]() -> OSErr {
        State* s = Cur("TypeIDToStringID");
        if (!s || !stringID || bufferLength == 0) return paramErr;
        stringID[0] = '\0';
        auto it = s->stringIds.find(typeID);
        // A cut string id would name something else: refuse instead.
        if (it == s->stringIds.end() || it->second.size() >= bufferLength) return paramErr;
        return CopyCString(it->second, stringID, bufferLength);
    });
}

OSErr QZ_HOSTCALL BMakeStringAlias(const char* newStringID, const char* existingStringID) {
    return Guard([&]() -> OSErr {
        State* s = Cur("MakeStringAlias");
        if (!s || !newStringID || !existingStringID) return paramErr;
        auto existing = s->typeIds.find(existingStringID);
        if (existing == s->typeIds.end()) return paramErr;
        const uint32 id = existing->second;
        auto [it, added] = s->typeIds.emplace(newStringID, id);
        return added || it->second == id ? noErr : paramErr;
    });
}

// ---- Tables ----

const PSActionDescriptorProcs kDescriptorProcs3 = {
    .Make = DMake,
    .Free = DFree,
    .GetType = DGetType,
    .GetKey = DGetKey,
    .HasKey = DHasKey,
    .GetCount = DGetCount,
    .IsEqual = DIsEqual,
    .Erase = DErase,
    .Clear = DClear,
    .PutInteger = DPutInteger,
    .PutFloat = DPutFloat,
    .PutUnitFloat = DPutUnitFloat,
    .PutString = DPutString,
    .PutBoolean = DPutBoolean,
    .PutList = DPutList,
    .PutObject = DPutObject,
    .PutGlobalObject = DPutGlobalObject,
    .PutEnumerated = DPutEnumerated,
    .PutReference = DPutReference,
    .PutClass = DPutClass,
    .PutGlobalClass = DPutGlobalClass,
    .PutAlias = DPutAlias,
    .GetInteger = DGetInteger,
    .GetFloat = DGetFloat,
    .GetUnitFloat = DGetUnitFloat,
    .GetStringLength = DGetStringLength,
    .GetString = DGetString,
    .GetBoolean = DGetBoolean,
    .GetList = DGetList,
    .GetObject = DGetObject,
    .GetGlobalObject = DGetGlobalObject,
    .GetEnumerated = DGetEnumerated,
    .GetReference = DGetReference,
    .GetClass = DGetClass,
    .GetGlobalClass = DGetGlobalClass,
    .GetAlias = DGetAlias,
    .HasKeys = DHasKeys,
    .PutIntegers = DPutIntegers,
    .GetIntegers = DGetIntegers,
    .AsHandle = DAsHandle,
    .HandleToDescriptor = DHandleToDescriptor,
    .PutZString = DPutZString,
    .GetZString = DGetZString,
    .PutData = DPutData,
    .GetDataLength = DGetDataLength,
    .GetData = DGetData,
    .PutInteger64 = DPutInteger64,
    .GetInteger64 = DGetInteger64,
    // Version 5 slots stay null: this host does not have them.
    .MakeWithClass = nullptr,
    .GetDescriptorClass = nullptr,
    .Copy = nullptr,
    .PutBookmark = nullptr,
    .GetBookmark = nullptr,
};

// A version 2 table ends before the 64-bit integers.
PSActionDescriptorProcs MakeDescriptorProcs2() {
    PSActionDescriptorProcs t = kDescriptorProcs3;
    t.PutInteger64 = nullptr;
    t.GetInteger64 = nullptr;
    return t;
}
const PSActionDescriptorProcs kDescriptorProcs2 = MakeDescriptorProcs2();

const PSActionListProcs kListProcs2 = {
    .Make = LMake,
    .Free = LFree,
    .GetType = LGetType,
    .GetCount = LGetCount,
    .PutInteger = LPutInteger,
    .PutFloat = LPutFloat,
    .PutUnitFloat = LPutUnitFloat,
    .PutString = LPutString,
    .PutBoolean = LPutBoolean,
    .PutList = LPutList,
    .PutObject = LPutObject,
    .PutGlobalObject = LPutGlobalObject,
    .PutEnumerated = LPutEnumerated,
    .PutReference = LPutReference,
    .PutClass = LPutClass,
    .PutGlobalClass = LPutGlobalClass,
    .PutAlias = LPutAlias,
    .GetInteger = LGetInteger,
    .GetFloat = LGetFloat,
    .GetUnitFloat = LGetUnitFloat,
    .GetStringLength = LGetStringLength,
    .GetString = LGetString,
    .GetBoolean = LGetBoolean,
    .GetList = LGetList,
    .GetObject = LGetObject,
    .GetGlobalObject = LGetGlobalObject,
    .GetEnumerated = LGetEnumerated,
    .GetReference = LGetReference,
    .GetClass = LGetClass,
    .GetGlobalClass = LGetGlobalClass,
    .GetAlias = LGetAlias,
    .PutIntegers = LPutIntegers,
    .GetIntegers = LGetIntegers,
    .PutData = LPutData,
    .GetDataLength = LGetDataLength,
    .GetData = LGetData,
    .PutZString = LPutZString,
    .GetZString = LGetZString,
    .PutInteger64 = LPutInteger64,
    .GetInteger64 = LGetInteger64,
    .PutBookmark = nullptr,
    .GetBookmark = nullptr,
};

PSActionListProcs MakeListProcs1() {
    PSActionListProcs t = kListProcs2;
    t.PutInteger64 = nullptr;
    t.GetInteger64 = nullptr;
    return t;
}
const PSActionListProcs kListProcs1 = MakeListProcs1();

const PSActionReferenceProcs kReferenceProcs3 = {
    .Make = RMake,
    .Free = RFree,
    .GetForm = RGetForm,
    .GetDesiredClass = RGetDesiredClass,
    .PutName = RPutName,
    .PutIndex = RPutIndex,
    .PutIdentifier = RPutIdentifier,
    .PutOffset = RPutOffset,
    .PutEnumerated = RPutEnumerated,
    .PutProperty = RPutProperty,
    .PutClass = RPutClass,
    .GetNameLength = RGetNameLength,
    .GetName = RGetName,
    .GetIndex = RGetIndex,
    .GetIdentifier = RGetIdentifier,
    .GetOffset = RGetOffset,
    .GetEnumerated = RGetEnumerated,
    .GetProperty = RGetProperty,
    .GetContainer = RGetContainer,
    .PutNameZString = RPutNameZString,
    .GetNameZString = RGetNameZString,
};

PSActionReferenceProcs MakeReferenceProcs2() {
    PSActionReferenceProcs t = kReferenceProcs3;
    t.PutNameZString = nullptr;
    t.GetNameZString = nullptr;
    return t;
}
const PSActionReferenceProcs kReferenceProcs2 = MakeReferenceProcs2();

// Versions 1 and 2 have the same four slots; the Mac-only bookmark converters stay null.
const PSBasicActionControlProcs kBasicActionControlProcs = {
    .Get = BGet,
    .StringIDToTypeID = BStringIDToTypeID,
    .TypeIDToStringID = BTypeIDToStringID,
    .MakeStringAlias = BMakeStringAlias,
    .ConvertAliasHandleToBookmark = nullptr,
    .ConvertBookmarkToAliasHandle = nullptr,
};

} // namespace

ActionSuites::ActionSuites(DocumentView view) : state_(std::make_unique<State>()) {
    state_->view = std::move(view);
    for (const CommonId& id : kCommonIds) {
        state_->typeIds.emplace(id.stringId, id.typeId);
        state_->stringIds.emplace(id.typeId, id.stringId);
    }
}

ActionSuites::~ActionSuites() {
    if (gCurrent == this) SetCurrent(nullptr);
}

const void* ActionSuites::Table(const char* name, int32 version) {
    if (!name) return nullptr;
    const std::string n = name;
    if (n == kPSActionDescriptorSuite) {
        if (version == kPSActionDescriptorSuiteVersion2) return &kDescriptorProcs2;
        if (version == kPSActionDescriptorSuiteVersion3) return &kDescriptorProcs3;
    } else if (n == kPSActionListSuite) {
        if (version == kPSActionListSuiteVersion1) return &kListProcs1;
        if (version == kPSActionListSuiteVersion2) return &kListProcs2;
    } else if (n == kPSActionReferenceSuite) {
        if (version == kPSActionReferenceSuiteVersion2) return &kReferenceProcs2;
        if (version == kPSActionReferenceSuiteVersion3) return &kReferenceProcs3;
    } else if (n == kPSBasicActionControlSuite) {
        if (version == kPSBasicActionControlSuiteVersion1 || version == kPSBasicActionControlSuiteVersion2)
            return &kBasicActionControlProcs;
    }
    return nullptr;
}

PIActionDescriptor ActionSuites::NewDescriptor(const Descriptor& descriptor) {
    return NewDescriptorObject(state_.get(), descriptor);
}

const Descriptor* ActionSuites::FindDescriptor(PIActionDescriptor descriptor, const char* operation) {
    Object* o = Find(state_.get(), descriptor, Kind::Descriptor, operation);
    return o ? &o->descriptor : nullptr;
}

void ActionSuites::RecordMisuse(std::string what) { state_->misuse.push_back(std::move(what)); }

std::vector<std::string> ActionSuites::TakeMisuse() {
    State& s = *state_;
    int leaked[3] = {0, 0, 0};
    for (auto& [token, o] : s.objects) {
        if (!o->freed && !o->leakReported) {
            o->leakReported = true;
            ++leaked[int(o->kind)];
        }
    }
    for (Kind kind : {Kind::Descriptor, Kind::List, Kind::Reference}) {
        if (leaked[int(kind)] > 0)
            s.misuse.push_back("Free: " + std::to_string(leaked[int(kind)]) + " " + KindName(kind) + "(s) never freed");
    }
    std::vector<std::string> all = std::exchange(Stray(), {});
    all.insert(all.end(), s.misuse.begin(), s.misuse.end());
    s.misuse.clear();
    return all;
}

ActionSuites* ActionSuites::Current() { return gCurrent; }

void ActionSuites::SetCurrent(ActionSuites* suites) {
    gCurrent = suites;
    gCurrentState = suites ? suites->state_.get() : nullptr;
}

} // namespace hostsim
