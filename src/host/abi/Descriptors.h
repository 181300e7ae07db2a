// Classic scripting descriptors: the parameters record, the reader and writer tables, the
// simple reference, and the type, unit and flag codes they use.
#pragma once

#include "host/abi/Types.h"

// ---- Simple reference (natural alignment) ----

struct PIDescriptorKeyData {
    Str255 name;
    int32 index;
    DescriptorClassID type;
    DescriptorEnumID value;
};

struct PIDescriptorSimpleReference {
    DescriptorClassID desiredClass;
    DescriptorFormID keyForm;
    PIDescriptorKeyData keyData;
};

// ---- Reader and writer tables (natural alignment) ----

// Floats go in and out through pointers here; the PICA suites pass them by value.

constexpr int16 kCurrentReadDescriptorProcsVersion = 0;
constexpr int16 kCurrentReadDescriptorProcsCount = 18;

struct ReadDescriptorProcs {
    int16 readDescriptorProcsVersion;
    int16 numReadDescriptorProcs;
    // keyArray is 0-terminated; the host overwrites each entry as its key is read.
    PIReadDescriptor(QZ_HOSTCALL* openReadDescriptorProc)(PIDescriptorHandle descriptor, DescriptorKeyID* keyArray);
    // Returns the most serious error seen while reading.
    OSErr(QZ_HOSTCALL* closeReadDescriptorProc)(PIReadDescriptor reader);
    // True while keys remain.
    Boolean(QZ_HOSTCALL* getKeyProc)(PIReadDescriptor reader, DescriptorKeyID* key, DescType* type, int32* flags);
    OSErr(QZ_HOSTCALL* getIntegerProc)(PIReadDescriptor reader, int32* value);
    OSErr(QZ_HOSTCALL* getFloatProc)(PIReadDescriptor reader, real64* value);
    OSErr(QZ_HOSTCALL* getUnitFloatProc)(PIReadDescriptor reader, DescriptorUnitID* unit, real64* value);
    OSErr(QZ_HOSTCALL* getBooleanProc)(PIReadDescriptor reader, Boolean* value);
    OSErr(QZ_HOSTCALL* getTextProc)(PIReadDescriptor reader, Handle* value);
    OSErr(QZ_HOSTCALL* getAliasProc)(PIReadDescriptor reader, Handle* value);
    OSErr(QZ_HOSTCALL* getEnumeratedProc)(PIReadDescriptor reader, DescriptorEnumID* value);
    OSErr(QZ_HOSTCALL* getClassProc)(PIReadDescriptor reader, DescType* value);
    OSErr(QZ_HOSTCALL* getSimpleReferenceProc)(PIReadDescriptor reader, PIDescriptorSimpleReference* value);
    OSErr(QZ_HOSTCALL* getObjectProc)(PIReadDescriptor reader, DescType* type, PIDescriptorHandle* value);
    OSErr(QZ_HOSTCALL* getCountProc)(PIReadDescriptor reader, uint32* value);
    OSErr(QZ_HOSTCALL* getStringProc)(PIReadDescriptor reader, Str255* value);
    OSErr(QZ_HOSTCALL* getPinnedIntegerProc)(PIReadDescriptor reader, int32 min, int32 max, int32* value);
    OSErr(QZ_HOSTCALL* getPinnedFloatProc)(PIReadDescriptor reader, const real64* min, const real64* max,
                                           real64* value);
    OSErr(QZ_HOSTCALL* getPinnedUnitFloatProc)(PIReadDescriptor reader, const real64* min, const real64* max,
                                               DescriptorUnitID* unit, real64* value);
};

constexpr int16 kCurrentWriteDescriptorProcsVersion = 0;
constexpr int16 kCurrentWriteDescriptorProcsCount = 16;

struct WriteDescriptorProcs {
    int16 writeDescriptorProcsVersion;
    int16 numWriteDescriptorProcs;
    PIWriteDescriptor(QZ_HOSTCALL* openWriteDescriptorProc)(void);
    OSErr(QZ_HOSTCALL* closeWriteDescriptorProc)(PIWriteDescriptor writer, PIDescriptorHandle* descriptor);
    OSErr(QZ_HOSTCALL* putIntegerProc)(PIWriteDescriptor writer, DescriptorKeyID key, int32 value);
    OSErr(QZ_HOSTCALL* putFloatProc)(PIWriteDescriptor writer, DescriptorKeyID key, const real64* value);
    OSErr(QZ_HOSTCALL* putUnitFloatProc)(PIWriteDescriptor writer, DescriptorKeyID key, DescriptorUnitID unit,
                                         const real64* value);
    OSErr(QZ_HOSTCALL* putBooleanProc)(PIWriteDescriptor writer, DescriptorKeyID key, Boolean value);
    OSErr(QZ_HOSTCALL* putTextProc)(PIWriteDescriptor writer, DescriptorKeyID key, Handle value);
    OSErr(QZ_HOSTCALL* putAliasProc)(PIWriteDescriptor writer, DescriptorKeyID key, Handle value);
    OSErr(QZ_HOSTCALL* putEnumeratedProc)(PIWriteDescriptor writer, DescriptorKeyID key, DescType type,
                                          DescriptorEnumID value);
    OSErr(QZ_HOSTCALL* putClassProc)(PIWriteDescriptor writer, DescriptorKeyID key, DescType value);
    OSErr(QZ_HOSTCALL* putSimpleReferenceProc)(PIWriteDescriptor writer, DescriptorKeyID key,
                                               const PIDescriptorSimpleReference* value);
    OSErr(QZ_HOSTCALL* putObjectProc)(PIWriteDescriptor writer, DescriptorKeyID key, DescType type,
                                      PIDescriptorHandle value);
    OSErr(QZ_HOSTCALL* putCountProc)(PIWriteDescriptor writer, DescriptorKeyID key, uint32 value);
    // A length byte followed by up to 255 single-byte characters.
    OSErr(QZ_HOSTCALL* putStringProc)(PIWriteDescriptor writer, DescriptorKeyID key, const unsigned char* value);
    // The two scoped puts are not meant for plug-ins.
    OSErr(QZ_HOSTCALL* putScopedClassProc)(PIWriteDescriptor writer, DescriptorKeyID key, DescType value);
    OSErr(QZ_HOSTCALL* putScopedObjectProc)(PIWriteDescriptor writer, DescriptorKeyID key, DescType type,
                                            PIDescriptorHandle value);
};

// ---- Parameters record (natural alignment), reached through descriptorParameters ----

constexpr int16 kCurrentDescriptorParametersVersion = 0;

struct PIDescriptorParameters {
    int16 descriptorParametersVersion;
    int16 playInfo;
    int16 recordInfo;
    PIDescriptorHandle descriptor; // NULL when there is nothing to play
    WriteDescriptorProcs* writeDescriptorProcs;
    ReadDescriptorProcs* readDescriptorProcs;
};

// playInfo
constexpr int16 plugInDialogDontDisplay = 0; // show only if the parameters are missing or bad
constexpr int16 plugInDialogDisplay = 1;
constexpr int16 plugInDialogSilent = 2; // never show; fail instead

// recordInfo
constexpr int16 plugInDialogOptional = 0;
constexpr int16 plugInDialogRequired = 1;
constexpr int16 plugInDialogNone = 2;

// getKey flags; the low word matches the terminology parameter flags.
constexpr int32 actionSimpleParameter = 0;
constexpr int32 actionEnumeratedParameter = 0x2000;
constexpr int32 actionListParameter = 0x4000;
constexpr int32 actionOptionalParameter = 0x8000;
constexpr int32 actionStringIDParameter = 0x20000000;
constexpr int32 actionScopedParameter = 0x40000000;
constexpr int32 actionObjectParameter = static_cast<int32>(0x80000000u);

// ---- Type codes ----

constexpr DescType typeInteger = FourCC("long");
constexpr DescType typeFloat = FourCC("doub");
constexpr DescType typeUnitFloat = FourCC("UntF");
constexpr DescType typeBoolean = FourCC("bool");
constexpr DescType typeChar = FourCC("TEXT");
constexpr DescType typeText = typeChar;
constexpr DescType typeEnumerated = FourCC("enum");
constexpr DescType typeClass = FourCC("type");
constexpr DescType typeType = typeClass;
constexpr DescType typeAlias = FourCC("alis");
// Some hosts use 'Pat ' for the Windows file path instead.
constexpr DescType typePath = FourCC("Pth ");
constexpr DescType typeObject = FourCC("Objc");
constexpr DescType typeObjectReference = FourCC("obj ");
constexpr DescType typeGlobalObject = FourCC("GlbO");
constexpr DescType typeGlobalClass = FourCC("GlbC");
constexpr DescType typeValueList = FourCC("VlLs");
constexpr DescType typeRawData = FourCC("tdta");
constexpr DescType typeNull = FourCC("null");
constexpr DescType noReply = typeNull;
constexpr DescType typeImageReference = FourCC("#ImR");
constexpr DescType typeSInt64 = FourCC("comp");

// ---- Unit codes ----

constexpr DescriptorUnitID unitPercent = FourCC("#Prc");
constexpr DescriptorUnitID unitPixels = FourCC("#Pxl");
constexpr DescriptorUnitID unitAngle = FourCC("#Ang");    // degrees
constexpr DescriptorUnitID unitDensity = FourCC("#Rsl");  // per inch
constexpr DescriptorUnitID unitDistance = FourCC("#Rlt"); // 72 ppi based
constexpr DescriptorUnitID unitNone = FourCC("#Nne");
constexpr DescriptorUnitID unitMillimeters = FourCC("#Mlm"); // text only
constexpr DescriptorUnitID unitPoints = FourCC("#Pnt");      // text only
