// hostsim's scripting values. A Descriptor is an ordered list of (key, typed value), the way
// the host keeps what a plug-in records or plays; lists and references are small types of
// their own. A descriptor also has a byte form, which is what a descriptor handle holds.
//
// Types carried (the value fields each one uses):
//   typeInteger 'long'  integer (int32 range)      typeSInt64 'comp'      integer
//   typeFloat 'doub'    number                      typeUnitFloat 'UntF'   code (unit), number
//   typeBoolean 'bool'  integer (0 or 1)            typeChar 'TEXT'        bytes
//   typeEnumerated      code (enum type), code2     typeClass, typeGlobalClass   code
//   typeObject, typeGlobalObject  code (class), object
//   typeValueList       list                        typeObjectReference    reference
//   typeAlias 'alis', typeRawData 'tdta'  bytes
#pragma once

#include "host/abi/HostInterface.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace hostsim {

class Descriptor;
struct Value;

// How one part of a reference picks its element.
constexpr DescriptorFormID kFormClass = FourCC("Clss");
constexpr DescriptorFormID kFormName = FourCC("name");
constexpr DescriptorFormID kFormIndex = FourCC("indx");
constexpr DescriptorFormID kFormIdentifier = FourCC("Idnt");
constexpr DescriptorFormID kFormOffset = FourCC("rele");
constexpr DescriptorFormID kFormEnumerated = FourCC("Enmr");
constexpr DescriptorFormID kFormProperty = FourCC("prop");

bool IsKnownForm(DescriptorFormID form);
// Whether a descriptor, list or handle can carry a value of this type.
bool IsCarriedType(DescType type);

// "'Nm  '" for printable codes, "0x00001000" otherwise; for messages.
std::string CodeText(uint32 code);

// One part of a reference; only the fields of its form are meaningful.
struct ReferencePart {
    DescriptorClassID desiredClass = 0;
    DescriptorFormID form = kFormClass;
    std::string name;                  // kFormName
    uint32 index = 0;                  // kFormIndex, kFormIdentifier
    int32 offset = 0;                  // kFormOffset
    DescriptorEnumTypeID enumType = 0; // kFormEnumerated
    DescriptorEnumID enumValue = 0;    // kFormEnumerated
    DescriptorKeyID property = 0;      // kFormProperty

    static ReferencePart Class(DescriptorClassID desiredClass);
    static ReferencePart Name(DescriptorClassID desiredClass, std::string name);
    static ReferencePart Index(DescriptorClassID desiredClass, uint32 index);
    static ReferencePart Identifier(DescriptorClassID desiredClass, uint32 id);
    static ReferencePart Offset(DescriptorClassID desiredClass, int32 offset);
    static ReferencePart Enumerated(DescriptorClassID desiredClass, DescriptorEnumTypeID type, DescriptorEnumID value);
    static ReferencePart Property(DescriptorClassID desiredClass, DescriptorKeyID key);

    bool operator==(const ReferencePart& other) const = default;
};

// The first part is what is referenced; each later part is the container of the one before,
// in the order the parts were put.
class Reference {
public:
    // False (and nothing added) for an unknown form.
    bool Add(ReferencePart part);
    size_t Count() const { return parts_.size(); }
    const ReferencePart& At(size_t i) const { return parts_[i]; }
    // The reference without its first part: what contains the referenced element.
    Reference Container() const;
    bool operator==(const Reference& other) const { return parts_ == other.parts_; }

private:
    std::vector<ReferencePart> parts_;
};

// A list of values of any carried types.
class ValueList {
public:
    // False (and nothing added) for a type not carried.
    bool Add(Value value);
    size_t Count() const;
    const Value& At(size_t i) const;
    void Clear();
    bool operator==(const ValueList& other) const;

private:
    std::vector<Value> items_;
};

struct Value {
    DescType type = typeNull;
    int64 integer = 0;
    double number = 0;
    uint32 code = 0;
    uint32 code2 = 0;
    std::string bytes;
    ValueList list;
    Reference reference;
    std::shared_ptr<const Descriptor> object; // shared and never changed: copies stay cheap

    static Value Integer(int32 v);
    static Value Int64(int64 v);
    static Value Float(double v);
    static Value UnitFloat(DescriptorUnitID unit, double v);
    static Value Bool(bool v);
    static Value Text(std::string text);
    static Value Enumerated(DescriptorEnumTypeID type, DescriptorEnumID value);
    static Value Class(DescriptorClassID cls);
    static Value GlobalClass(DescriptorClassID cls);
    static Value Object(DescriptorClassID cls, const Descriptor& object);
    static Value GlobalObject(DescriptorClassID cls, const Descriptor& object);
    static Value List(ValueList list);
    static Value Ref(Reference reference);
    static Value Alias(std::string bytes);
    static Value Data(std::string bytes);

    // The sub-descriptor of an object value (an empty one when there is none).
    const Descriptor& ObjectValue() const;
    bool operator==(const Value& other) const;
};

class Descriptor {
public:
    struct Item {
        DescriptorKeyID key;
        Value value;
    };

    // Putting a key that is already there replaces its value where it stands.
    // False (and nothing changed) for a type not carried.
    bool Put(DescriptorKeyID key, Value value);

    void PutInteger(DescriptorKeyID key, int32 v);
    void PutFloat(DescriptorKeyID key, double v);
    void PutUnitFloat(DescriptorKeyID key, DescriptorUnitID unit, double v);
    void PutBoolean(DescriptorKeyID key, bool v);
    void PutText(DescriptorKeyID key, std::string text);
    void PutEnumerated(DescriptorKeyID key, DescriptorEnumTypeID type, DescriptorEnumID value);
    void PutClass(DescriptorKeyID key, DescriptorClassID cls);
    void PutObject(DescriptorKeyID key, DescriptorClassID cls, const Descriptor& object);
    void PutList(DescriptorKeyID key, ValueList list);
    void PutReference(DescriptorKeyID key, Reference reference);
    void PutInt64(DescriptorKeyID key, int64 v);
    void PutData(DescriptorKeyID key, std::string bytes);
    void PutAlias(DescriptorKeyID key, std::string bytes);

    // False when the key is absent or holds another type; the outputs are then untouched.
    bool GetInteger(DescriptorKeyID key, int32& v) const;
    bool GetFloat(DescriptorKeyID key, double& v) const;
    bool GetUnitFloat(DescriptorKeyID key, DescriptorUnitID& unit, double& v) const;
    bool GetBoolean(DescriptorKeyID key, bool& v) const;
    bool GetText(DescriptorKeyID key, std::string& text) const;
    bool GetEnumerated(DescriptorKeyID key, DescriptorEnumTypeID& type, DescriptorEnumID& value) const;
    bool GetClass(DescriptorKeyID key, DescriptorClassID& cls) const;
    // Not "GetObject": windows.h turns that name into a macro.
    bool GetObjectValue(DescriptorKeyID key, DescriptorClassID& cls, Descriptor& object) const;
    bool GetList(DescriptorKeyID key, ValueList& list) const;
    bool GetReference(DescriptorKeyID key, Reference& reference) const;
    bool GetInt64(DescriptorKeyID key, int64& v) const;
    bool GetData(DescriptorKeyID key, std::string& bytes) const;
    bool GetAlias(DescriptorKeyID key, std::string& bytes) const;

    bool Has(DescriptorKeyID key) const { return Find(key) != nullptr; }
    bool Erase(DescriptorKeyID key); // false when absent
    void Clear() { items_.clear(); }
    size_t Count() const { return items_.size(); }
    DescriptorKeyID KeyAt(size_t i) const { return items_[i].key; }
    const Value& ValueAt(size_t i) const { return items_[i].value; }
    DescType TypeOf(DescriptorKeyID key) const; // 0 when absent
    const Value* Find(DescriptorKeyID key) const;

    bool operator==(const Descriptor& other) const;

    // The byte form (little-endian, self-checking). Deserialize accepts any bytes: anything
    // that is not exactly one well-formed descriptor answers false and leaves `out` empty.
    std::string Serialize() const;
    static bool Deserialize(const void* data, size_t size, Descriptor& out);

private:
    Value* FindMutable(DescriptorKeyID key);
    std::vector<Item> items_;
};

// A new host handle (hostsim::NewHandle) holding the byte form; null if out of memory.
Handle NewDescriptorHandle(const Descriptor& descriptor);
// False for a null handle, one that is not a live host handle, or one that does not hold a
// descriptor. Records no misuse: callers know what the failure means in their context.
bool ReadDescriptorHandle(Handle handle, Descriptor& out);

} // namespace hostsim
