#include "Descriptor.h"

#include "Handles.h"

#include <cstdio>
#include <cstring>

namespace hostsim {
namespace {

constexpr char kMagic[4] = {'Q', 'Z', 'd', '1'};
// Deeper nesting than this is refused, so hostile bytes cannot exhaust the stack.
constexpr int kMaxDepth = 64;

const Descriptor& EmptyDescriptor() {
    static const Descriptor empty;
    return empty;
}

// ---- Writing the byte form ----

class Writer {
public:
    std::string out;

    void U8(uint8 v) { out.push_back(char(v)); }
    void U32(uint32 v) {
        for (int i = 0; i < 4; ++i) out.push_back(char((v >> (8 * i)) & 0xFF));
    }
    void U64(uint64 v) {
        for (int i = 0; i < 8; ++i) out.push_back(char((v >> (8 * i)) & 0xFF));
    }
    void F64(double v) {
        uint64 bits;
        std::memcpy(&bits, &v, sizeof bits);
        U64(bits);
    }
    void Bytes(const std::string& s) {
        U32(uint32(s.size()));
        out += s;
    }

    void Part(const ReferencePart& p) {
        U32(p.desiredClass);
        U32(p.form);
        if (p.form == kFormName) Bytes(p.name);
        else if (p.form == kFormIndex || p.form == kFormIdentifier) U32(p.index);
        else if (p.form == kFormOffset) U32(uint32(p.offset));
        else if (p.form == kFormEnumerated) {
            U32(p.enumType);
            U32(p.enumValue);
        } else if (p.form == kFormProperty) U32(p.property);
    }

    void Val(const Value& v) {
        U32(v.type);
        switch (v.type) {
        case typeInteger: U32(uint32(int32(v.integer))); break;
        case typeSInt64: U64(uint64(v.integer)); break;
        case typeFloat: F64(v.number); break;
        case typeUnitFloat:
            U32(v.code);
            F64(v.number);
            break;
        case typeBoolean: U8(v.integer ? 1 : 0); break;
        case typeChar:
        case typeAlias:
        case typeRawData: Bytes(v.bytes); break;
        case typeEnumerated:
            U32(v.code);
            U32(v.code2);
            break;
        case typeClass:
        case typeGlobalClass: U32(v.code); break;
        case typeObject:
        case typeGlobalObject:
            U32(v.code);
            Desc(v.ObjectValue());
            break;
        case typeValueList:
            U32(uint32(v.list.Count()));
            for (size_t i = 0; i < v.list.Count(); ++i) Val(v.list.At(i));
            break;
        case typeObjectReference:
            U32(uint32(v.reference.Count()));
            for (size_t i = 0; i < v.reference.Count(); ++i) Part(v.reference.At(i));
            break;
        default: break; // Put refuses every other type
        }
    }

    void Desc(const Descriptor& d) {
        U32(uint32(d.Count()));
        for (size_t i = 0; i < d.Count(); ++i) {
            U32(d.KeyAt(i));
            Val(d.ValueAt(i));
        }
    }
};

// ---- Reading it back: every read is bounds-checked, every count is checked against what
// is left, so no hostile length can make us allocate or read beyond the bytes given ----

class Reader {
public:
    Reader(const uint8* p, size_t n) : p_(p), left_(n) {}
    size_t Left() const { return left_; }

    bool U8(uint8& v) {
        if (left_ < 1) return false;
        v = *p_++;
        --left_;
        return true;
    }
    bool U32(uint32& v) {
        if (left_ < 4) return false;
        v = uint32(p_[0]) | uint32(p_[1]) << 8 | uint32(p_[2]) << 16 | uint32(p_[3]) << 24;
        p_ += 4;
        left_ -= 4;
        return true;
    }
    bool U64(uint64& v) {
        uint32 lo, hi;
        if (!U32(lo) || !U32(hi)) return false;
        v = uint64(lo) | uint64(hi) << 32;
        return true;
    }
    bool F64(double& v) {
        uint64 bits;
        if (!U64(bits)) return false;
        std::memcpy(&v, &bits, sizeof v);
        return true;
    }
    bool Bytes(std::string& s) {
        uint32 n;
        if (!U32(n) || n > left_) return false;
        s.assign(reinterpret_cast<const char*>(p_), n);
        p_ += n;
        left_ -= n;
        return true;
    }

    bool Part(ReferencePart& p) {
        if (!U32(p.desiredClass) || !U32(p.form)) return false;
        if (p.form == kFormName) return Bytes(p.name);
        if (p.form == kFormIndex || p.form == kFormIdentifier) return U32(p.index);
        if (p.form == kFormOffset) {
            uint32 v;
            if (!U32(v)) return false;
            p.offset = int32(v);
            return true;
        }
        if (p.form == kFormEnumerated) return U32(p.enumType) && U32(p.enumValue);
        if (p.form == kFormProperty) return U32(p.property);
        return p.form == kFormClass;
    }

    bool Val(Value& v, int depth) {
        if (depth > kMaxDepth || !U32(v.type)) return false;
        switch (v.type) {
        case typeInteger: {
            uint32 x;
            if (!U32(x)) return false;
            v.integer = int32(x);
            return true;
        }
        case typeSInt64: {
            uint64 x;
            if (!U64(x)) return false;
            v.integer = int64(x);
            return true;
        }
        case typeFloat: return F64(v.number);
        case typeUnitFloat: return U32(v.code) && F64(v.number);
        case typeBoolean: {
            uint8 b;
            if (!U8(b) || b > 1) return false;
            v.integer = b;
            return true;
        }
        case typeChar:
        case typeAlias:
        case typeRawData: return Bytes(v.bytes);
        case typeEnumerated: return U32(v.code) && U32(v.code2);
        case typeClass:
        case typeGlobalClass: return U32(v.code);
        case typeObject:
        case typeGlobalObject: {
            auto object = std::make_shared<Descriptor>();
            if (!U32(v.code) || !Desc(*object, depth + 1)) return false;
            v.object = std::move(object);
            return true;
        }
        case typeValueList: {
            uint32 n;
            // Every value takes at least its 4-byte type.
            if (!U32(n) || n > left_ / 4) return false;
            for (uint32 i = 0; i < n; ++i) {
                Value item;
                if (!Val(item, depth + 1) || !v.list.Add(std::move(item))) return false;
            }
            return true;
        }
        case typeObjectReference: {
            uint32 n;
            if (!U32(n) || n > left_ / 8) return false;
            for (uint32 i = 0; i < n; ++i) {
                ReferencePart part;
                if (!Part(part) || !v.reference.Add(std::move(part))) return false;
            }
            return true;
        }
        default: return false;
        }
    }

    bool Desc(Descriptor& d, int depth) {
        uint32 n;
        if (depth > kMaxDepth || !U32(n) || n > left_ / 8) return false;
        for (uint32 i = 0; i < n; ++i) {
            uint32 key;
            Value v;
            if (!U32(key) || !Val(v, depth)) return false;
            // A key twice would make the byte form mean two things.
            if (d.Has(key) || !d.Put(key, std::move(v))) return false;
        }
        return true;
    }

private:
    const uint8* p_;
    size_t left_;
};

} // namespace

bool IsKnownForm(DescriptorFormID form) {
    return form == kFormClass || form == kFormName || form == kFormIndex || form == kFormIdentifier ||
           form == kFormOffset || form == kFormEnumerated || form == kFormProperty;
}

bool IsCarriedType(DescType type) {
    switch (type) {
    case typeInteger:
    case typeSInt64:
    case typeFloat:
    case typeUnitFloat:
    case typeBoolean:
    case typeChar:
    case typeEnumerated:
    case typeClass:
    case typeGlobalClass:
    case typeObject:
    case typeGlobalObject:
    case typeValueList:
    case typeObjectReference:
    case typeAlias:
    case typeRawData: return true;
    default: return false;
    }
}

std::string CodeText(uint32 code) {
    char text[16];
    bool printable = true;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const unsigned c = (code >> shift) & 0xFF;
        printable = printable && c >= 0x20 && c < 0x7F;
    }
    if (printable)
        std::snprintf(text, sizeof text, "'%c%c%c%c'", char(code >> 24), char(code >> 16), char(code >> 8), char(code));
    else std::snprintf(text, sizeof text, "0x%08X", unsigned(code));
    return text;
}

// ---- ReferencePart, Reference, ValueList ----

ReferencePart ReferencePart::Class(DescriptorClassID desiredClass) {
    ReferencePart p;
    p.desiredClass = desiredClass;
    p.form = kFormClass;
    return p;
}

ReferencePart ReferencePart::Name(DescriptorClassID desiredClass, std::string name) {
    ReferencePart p;
    p.desiredClass = desiredClass;
    p.form = kFormName;
    p.name = std::move(name);
    return p;
}

ReferencePart ReferencePart::Index(DescriptorClassID desiredClass, uint32 index) {
    ReferencePart p;
    p.desiredClass = desiredClass;
    p.form = kFormIndex;
    p.index = index;
    return p;
}

ReferencePart ReferencePart::Identifier(DescriptorClassID desiredClass, uint32 id) {
    ReferencePart p;
    p.desiredClass = desiredClass;
    p.form = kFormIdentifier;
    p.index = id;
    return p;
}

ReferencePart ReferencePart::Offset(DescriptorClassID desiredClass, int32 offset) {
    ReferencePart p;
    p.desiredClass = desiredClass;
    p.form = kFormOffset;
    p.offset = offset;
    return p;
}

ReferencePart ReferencePart::Enumerated(DescriptorClassID desiredClass, DescriptorEnumTypeID type,
                                        DescriptorEnumID value) {
    ReferencePart p;
    p.desiredClass = desiredClass;
    p.form = kFormEnumerated;
    p.enumType = type;
    p.enumValue = value;
    return p;
}

ReferencePart ReferencePart::Property(DescriptorClassID desiredClass, DescriptorKeyID key) {
    ReferencePart p;
    p.desiredClass = desiredClass;
    p.form = kFormProperty;
    p.property = key;
    return p;
}

bool Reference::Add(ReferencePart part) {
    if (!IsKnownForm(part.form)) return false;
    parts_.push_back(std::move(part));
    return true;
}

Reference Reference::Container() const {
    Reference container;
    if (parts_.size() > 1) container.parts_.assign(parts_.begin() + 1, parts_.end());
    return container;
}

bool ValueList::Add(Value value) {
    if (!IsCarriedType(value.type)) return false;
    items_.push_back(std::move(value));
    return true;
}

size_t ValueList::Count() const { return items_.size(); }
const Value& ValueList::At(size_t i) const { return items_[i]; }
void ValueList::Clear() { items_.clear(); }
bool ValueList::operator==(const ValueList& other) const { return items_ == other.items_; }

// ---- Value ----

Value Value::Integer(int32 v) {
    Value x;
    x.type = typeInteger;
    x.integer = v;
    return x;
}

Value Value::Int64(int64 v) {
    Value x;
    x.type = typeSInt64;
    x.integer = v;
    return x;
}

Value Value::Float(double v) {
    Value x;
    x.type = typeFloat;
    x.number = v;
    return x;
}

Value Value::UnitFloat(DescriptorUnitID unit, double v) {
    Value x;
    x.type = typeUnitFloat;
    x.code = unit;
    x.number = v;
    return x;
}

Value Value::Bool(bool v) {
    Value x;
    x.type = typeBoolean;
    x.integer = v ? 1 : 0;
    return x;
}

Value Value::Text(std::string text) {
    Value x;
    x.type = typeChar;
    x.bytes = std::move(text);
    return x;
}

Value Value::Enumerated(DescriptorEnumTypeID type, DescriptorEnumID value) {
    Value x;
    x.type = typeEnumerated;
    x.code = type;
    x.code2 = value;
    return x;
}

Value Value::Class(DescriptorClassID cls) {
    Value x;
    x.type = typeClass;
    x.code = cls;
    return x;
}

Value Value::GlobalClass(DescriptorClassID cls) {
    Value x = Class(cls);
    x.type = typeGlobalClass;
    return x;
}

Value Value::Object(DescriptorClassID cls, const Descriptor& object) {
    Value x;
    x.type = typeObject;
    x.code = cls;
    x.object = std::make_shared<const Descriptor>(object);
    return x;
}

Value Value::GlobalObject(DescriptorClassID cls, const Descriptor& object) {
    Value x = Object(cls, object);
    x.type = typeGlobalObject;
    return x;
}

Value Value::List(ValueList list) {
    Value x;
    x.type = typeValueList;
    x.list = std::move(list);
    return x;
}

Value Value::Ref(Reference reference) {
    Value x;
    x.type = typeObjectReference;
    x.reference = std::move(reference);
    return x;
}

Value Value::Alias(std::string bytes) {
    Value x;
    x.type = typeAlias;
    x.bytes = std::move(bytes);
    return x;
}

Value Value::Data(std::string bytes) {
    Value x;
    x.type = typeRawData;
    x.bytes = std::move(bytes);
    return x;
}

const Descriptor& Value::ObjectValue() const { return object ? *object : EmptyDescriptor(); }

bool Value::operator==(const Value& o) const {
    if (type != o.type) return false;
    switch (type) {
    case typeInteger:
    case typeSInt64:
    case typeBoolean: return integer == o.integer;
    // Bit patterns, so that a NaN equals itself as it does in the byte form.
    case typeFloat: return std::memcmp(&number, &o.number, sizeof number) == 0;
    case typeUnitFloat: return code == o.code && std::memcmp(&number, &o.number, sizeof number) == 0;
    case typeChar:
    case typeAlias:
    case typeRawData: return bytes == o.bytes;
    case typeEnumerated: return code == o.code && code2 == o.code2;
    case typeClass:
    case typeGlobalClass: return code == o.code;
    case typeObject:
    case typeGlobalObject: return code == o.code && ObjectValue() == o.ObjectValue();
    case typeValueList: return list == o.list;
    case typeObjectReference: return reference == o.reference;
    default: return true;
    }
}

// ---- Descriptor ----

bool Descriptor::Put(DescriptorKeyID key, Value value) {
    if (!IsCarriedType(value.type)) return false;
    if (Value* existing = FindMutable(key)) *existing = std::move(value);
    else items_.push_back(Item{key, std::move(value)});
    return true;
}

void Descriptor::PutInteger(DescriptorKeyID key, int32 v) { Put(key, Value::Integer(v)); }
void Descriptor::PutFloat(DescriptorKeyID key, double v) { Put(key, Value::Float(v)); }
void Descriptor::PutUnitFloat(DescriptorKeyID key, DescriptorUnitID unit, double v) {
    Put(key, Value::UnitFloat(unit, v));
}
void Descriptor::PutBoolean(DescriptorKeyID key, bool v) { Put(key, Value::Bool(v)); }
void Descriptor::PutText(DescriptorKeyID key, std::string text) { Put(key, Value::Text(std::move(text))); }
void Descriptor::PutEnumerated(DescriptorKeyID key, DescriptorEnumTypeID type, DescriptorEnumID value) {
    Put(key, Value::Enumerated(type, value));
}
void Descriptor::PutClass(DescriptorKeyID key, DescriptorClassID cls) { Put(key, Value::Class(cls)); }
void Descriptor::PutObject(DescriptorKeyID key, DescriptorClassID cls, const Descriptor& object) {
    Put(key, Value::Object(cls, object));
}
void Descriptor::PutList(DescriptorKeyID key, ValueList list) { Put(key, Value::List(std::move(list))); }
void Descriptor::PutReference(DescriptorKeyID key, Reference reference) { Put(key, Value::Ref(std::move(reference))); }
void Descriptor::PutInt64(DescriptorKeyID key, int64 v) { Put(key, Value::Int64(v)); }
void Descriptor::PutData(DescriptorKeyID key, std::string bytes) { Put(key, Value::Data(std::move(bytes))); }
void Descriptor::PutAlias(DescriptorKeyID key, std::string bytes) { Put(key, Value::Alias(std::move(bytes))); }

namespace {
const Value* Typed(const Descriptor& d, DescriptorKeyID key, DescType type) {
    const Value* v = d.Find(key);
    return v && v->type == type ? v : nullptr;
}
} // namespace

bool Descriptor::GetInteger(DescriptorKeyID key, int32& v) const {
    const Value* x = Typed(*this, key, typeInteger);
    if (x) v = int32(x->integer);
    return x != nullptr;
}

bool Descriptor::GetFloat(DescriptorKeyID key, double& v) const {
    const Value* x = Typed(*this, key, typeFloat);
    if (x) v = x->number;
    return x != nullptr;
}

bool Descriptor::GetUnitFloat(DescriptorKeyID key, DescriptorUnitID& unit, double& v) const {
    const Value* x = Typed(*this, key, typeUnitFloat);
    if (x) {
        unit = x->code;
        v = x->number;
    }
    return x != nullptr;
}

bool Descriptor::GetBoolean(DescriptorKeyID key, bool& v) const {
    const Value* x = Typed(*this, key, typeBoolean);
    if (x) v = x->integer != 0;
    return x != nullptr;
}

bool Descriptor::GetText(DescriptorKeyID key, std::string& text) const {
    const Value* x = Typed(*this, key, typeChar);
    if (x) text = x->bytes;
    return x != nullptr;
}

bool Descriptor::GetEnumerated(DescriptorKeyID key, DescriptorEnumTypeID& type, DescriptorEnumID& value) const {
    const Value* x = Typed(*this, key, typeEnumerated);
    if (x) {
        type = x->code;
        value = x->code2;
    }
    return x != nullptr;
}

bool Descriptor::GetClass(DescriptorKeyID key, DescriptorClassID& cls) const {
    const Value* x = Typed(*this, key, typeClass);
    if (x) cls = x->code;
    return x != nullptr;
}

bool Descriptor::GetObjectValue(DescriptorKeyID key, DescriptorClassID& cls, Descriptor& object) const {
    const Value* x = Typed(*this, key, typeObject);
    if (x) {
        cls = x->code;
        object = x->ObjectValue();
    }
    return x != nullptr;
}

bool Descriptor::GetList(DescriptorKeyID key, ValueList& list) const {
    const Value* x = Typed(*this, key, typeValueList);
    if (x) list = x->list;
    return x != nullptr;
}

bool Descriptor::GetReference(DescriptorKeyID key, Reference& reference) const {
    const Value* x = Typed(*this, key, typeObjectReference);
    if (x) reference = x->reference;
    return x != nullptr;
}

bool Descriptor::GetInt64(DescriptorKeyID key, int64& v) const {
    const Value* x = Typed(*this, key, typeSInt64);
    if (x) v = x->integer;
    return x != nullptr;
}

bool Descriptor::GetData(DescriptorKeyID key, std::string& bytes) const {
    const Value* x = Typed(*this, key, typeRawData);
    if (x) bytes = x->bytes;
    return x != nullptr;
}

bool Descriptor::GetAlias(DescriptorKeyID key, std::string& bytes) const {
    const Value* x = Typed(*this, key, typeAlias);
    if (x) bytes = x->bytes;
    return x != nullptr;
}

bool Descriptor::Erase(DescriptorKeyID key) {
    for (auto it = items_.begin(); it != items_.end(); ++it) {
        if (it->key == key) {
            items_.erase(it);
            return true;
        }
    }
    return false;
}

DescType Descriptor::TypeOf(DescriptorKeyID key) const {
    const Value* v = Find(key);
    return v ? v->type : 0;
}

const Value* Descriptor::Find(DescriptorKeyID key) const {
    for (const Item& item : items_)
        if (item.key == key) return &item.value;
    return nullptr;
}

Value* Descriptor::FindMutable(DescriptorKeyID key) {
    for (Item& item : items_)
        if (item.key == key) return &item.value;
    return nullptr;
}

bool Descriptor::operator==(const Descriptor& other) const {
    if (items_.size() != other.items_.size()) return false;
    for (size_t i = 0; i < items_.size(); ++i)
        if (items_[i].key != other.items_[i].key || !(items_[i].value == other.items_[i].value)) return false;
    return true;
}

std::string Descriptor::Serialize() const {
    Writer w;
    w.out.append(kMagic, sizeof kMagic);
    w.Desc(*this);
    return std::move(w.out);
}

bool Descriptor::Deserialize(const void* data, size_t size, Descriptor& out) {
    out.Clear();
    if (!data || size < sizeof kMagic || std::memcmp(data, kMagic, sizeof kMagic) != 0) return false;
    Reader r(static_cast<const uint8*>(data) + sizeof kMagic, size - sizeof kMagic);
    Descriptor d;
    if (!r.Desc(d, 0) || r.Left() != 0) return false;
    out = std::move(d);
    return true;
}

Handle NewDescriptorHandle(const Descriptor& descriptor) {
    const std::string bytes = descriptor.Serialize();
    if (bytes.size() > 0x7FFFFFFF) return nullptr;
    Handle h = NewHandle(int32(bytes.size()));
    if (h) std::memcpy(*h, bytes.data(), bytes.size());
    return h;
}

bool ReadDescriptorHandle(Handle handle, Descriptor& out) {
    out.Clear();
    if (!handle || !IsLiveHandle(handle)) return false;
    return Descriptor::Deserialize(*handle, size_t(HandleSize(handle)), out);
}

} // namespace hostsim
