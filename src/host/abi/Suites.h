// PICA: the basic suite and the tables of the suites we may acquire through it (action
// descriptor, list, reference, basic action control, descriptor registry, colour space,
// channel ports), with their names, versions and error codes.
//
// Versions are cumulative: a newer table starts with the older one's slots in the same order,
// so each struct below declares the newest table and a host of an older version fills a
// prefix. Acquire the lowest version that has what you need.
//
// Returns differ: the action suites return OSErr (2 bytes); the basic, colour-space and
// channel-ports suites return SPErr (4 bytes). PICA passes floats by value.
//
// wingdi.h and winspool.h define GetObject and GetForm as macros. Where windows.h is needed,
// include it before this header so that declarations and uses are renamed alike.
#pragma once

#include "host/abi/Types.h"
#include "host/abi/ChannelPorts.h"

struct PSPixelMap;

// ---- SPBasicSuite (natural alignment), reached through sSPBasic ----

struct SPBasicSuite {
    SPErr(QZ_HOSTCALL* AcquireSuite)(const char* name, int32 version, const void** suite);
    SPErr(QZ_HOSTCALL* ReleaseSuite)(const char* name, int32 version);
    SPBoolean(QZ_HOSTCALL* IsEqual)(const char* token1, const char* token2);
    // Some hosts use only the low 32 bits of the sizes.
    SPErr(QZ_HOSTCALL* AllocateBlock)(size_t size, void** block);
    SPErr(QZ_HOSTCALL* FreeBlock)(void* block);
    SPErr(QZ_HOSTCALL* ReallocateBlock)(void* block, size_t newSize, void** newBlock);
    SPErr(QZ_HOSTCALL* Undefined)(void);
};

// SPErr codes. Treat any non-zero value as failure.
constexpr SPErr kSPNoError = 0;
constexpr SPErr kSPSuiteNotFoundError = static_cast<SPErr>(FourCC("S!Fd"));
constexpr SPErr kSPBadParameterError = static_cast<SPErr>(FourCC("Parm"));
constexpr SPErr kSPUnimplementedError = static_cast<SPErr>(FourCC("!IMP"));
constexpr SPErr kSPUserCanceledError = static_cast<SPErr>(FourCC("stop"));
// The value hosts are told to use; some return -108 (memFullErr) instead.
constexpr SPErr kSPOutOfMemoryError = static_cast<SPErr>(0xFFFFFF6Cu);

// ---- Suite names and versions ----

inline constexpr char kPSActionDescriptorSuite[] = "df135115-c769-11d0-8079-00c04fd7ec47";
inline constexpr char kPSActionListSuite[] = "df135116-c769-11d0-8079-00c04fd7ec47";
inline constexpr char kPSActionReferenceSuite[] = "df135117-c769-11d0-8079-00c04fd7ec47";
inline constexpr char kPSBasicActionControlSuite[] = "3eb7c480-8797-11d1-8da7-00c04fd5f7ee";
inline constexpr char kPSDescriptorRegistrySuite[] = "61e608b0-40fd-11d1-8da3-00c04fd5f7ee";
inline constexpr char kPSColorSpaceSuite[] = "Photoshop ColorSpace Suite for Plug-ins";
inline constexpr char kPSChannelPortsSuite[] = "Photoshop ChannelPorts Suite for Plug-ins";

// Action descriptor: v2 46 slots, v3 48, v5 53 (v4 is an intermediate not to be used).
constexpr int32 kPSActionDescriptorSuiteVersion2 = 2;
constexpr int32 kPSActionDescriptorSuiteVersion3 = 3;
constexpr int32 kPSActionDescriptorSuiteVersion5 = 5;
// Action list: v1 38 slots, v2 40, v3 42.
constexpr int32 kPSActionListSuiteVersion1 = 1;
constexpr int32 kPSActionListSuiteVersion2 = 2;
constexpr int32 kPSActionListSuiteVersion3 = 3;
// Action reference: v2 19 slots, v3 21.
constexpr int32 kPSActionReferenceSuiteVersion2 = 2;
constexpr int32 kPSActionReferenceSuiteVersion3 = 3;
// Basic action control: v1 and v2 4 slots, v3 6. Whether a v1 host fills slot 3
// (MakeStringAlias) is unknown: ask for v2 to use it.
constexpr int32 kPSBasicActionControlSuiteVersion1 = 1;
constexpr int32 kPSBasicActionControlSuiteVersion2 = 2;
constexpr int32 kPSBasicActionControlSuiteVersion3 = 3;
// Descriptor registry: v1 3 slots.
constexpr int32 kPSDescriptorRegistrySuiteVersion1 = 1;
// Colour space: v1 16 slots (some hosts give 15, without Convert32to8), v2 18.
constexpr int32 kPSColorSpaceSuiteVersion1 = 1;
constexpr int32 kPSColorSpaceSuiteVersion2 = 2;
// Channel ports: v2 15 slots, v3 22. There is no version 1.
constexpr int32 kPSChannelPortsSuiteVersion2 = 2;
constexpr int32 kPSChannelPortsSuiteVersion3 = 3;

// ---- Action descriptor suite ----

struct PSActionDescriptorProcs {
    OSErr(QZ_HOSTCALL* Make)(PIActionDescriptor* descriptor);
    OSErr(QZ_HOSTCALL* Free)(PIActionDescriptor descriptor);
    OSErr(QZ_HOSTCALL* GetType)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorTypeID* type);
    OSErr(QZ_HOSTCALL* GetKey)(PIActionDescriptor descriptor, uint32 index, DescriptorKeyID* key);
    OSErr(QZ_HOSTCALL* HasKey)(PIActionDescriptor descriptor, DescriptorKeyID key, Boolean* hasKey);
    OSErr(QZ_HOSTCALL* GetCount)(PIActionDescriptor descriptor, uint32* count);
    OSErr(QZ_HOSTCALL* IsEqual)(PIActionDescriptor descriptor, PIActionDescriptor other, Boolean* isEqual);
    OSErr(QZ_HOSTCALL* Erase)(PIActionDescriptor descriptor, DescriptorKeyID key);
    OSErr(QZ_HOSTCALL* Clear)(PIActionDescriptor descriptor);
    OSErr(QZ_HOSTCALL* PutInteger)(PIActionDescriptor descriptor, DescriptorKeyID key, int32 value);
    OSErr(QZ_HOSTCALL* PutFloat)(PIActionDescriptor descriptor, DescriptorKeyID key, real64 value);
    OSErr(QZ_HOSTCALL* PutUnitFloat)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorUnitID unit,
                                     real64 value);
    OSErr(QZ_HOSTCALL* PutString)(PIActionDescriptor descriptor, DescriptorKeyID key, const char* cstr);
    OSErr(QZ_HOSTCALL* PutBoolean)(PIActionDescriptor descriptor, DescriptorKeyID key, Boolean value);
    OSErr(QZ_HOSTCALL* PutList)(PIActionDescriptor descriptor, DescriptorKeyID key, PIActionList value);
    OSErr(QZ_HOSTCALL* PutObject)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID type,
                                  PIActionDescriptor value);
    OSErr(QZ_HOSTCALL* PutGlobalObject)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID type,
                                        PIActionDescriptor value);
    OSErr(QZ_HOSTCALL* PutEnumerated)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorEnumTypeID type,
                                      DescriptorEnumID value);
    OSErr(QZ_HOSTCALL* PutReference)(PIActionDescriptor descriptor, DescriptorKeyID key, PIActionReference value);
    OSErr(QZ_HOSTCALL* PutClass)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID value);
    OSErr(QZ_HOSTCALL* PutGlobalClass)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID value);
    OSErr(QZ_HOSTCALL* PutAlias)(PIActionDescriptor descriptor, DescriptorKeyID key, Handle value);
    OSErr(QZ_HOSTCALL* GetInteger)(PIActionDescriptor descriptor, DescriptorKeyID key, int32* value);
    OSErr(QZ_HOSTCALL* GetFloat)(PIActionDescriptor descriptor, DescriptorKeyID key, real64* value);
    OSErr(QZ_HOSTCALL* GetUnitFloat)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorUnitID* unit,
                                     real64* value);
    OSErr(QZ_HOSTCALL* GetStringLength)(PIActionDescriptor descriptor, DescriptorKeyID key, uint32* stringLength);
    OSErr(QZ_HOSTCALL* GetString)(PIActionDescriptor descriptor, DescriptorKeyID key, char* cstr, uint32 maxLength);
    OSErr(QZ_HOSTCALL* GetBoolean)(PIActionDescriptor descriptor, DescriptorKeyID key, Boolean* value);
    OSErr(QZ_HOSTCALL* GetList)(PIActionDescriptor descriptor, DescriptorKeyID key, PIActionList* value);
    OSErr(QZ_HOSTCALL* GetObject)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID* type,
                                  PIActionDescriptor* value);
    OSErr(QZ_HOSTCALL* GetGlobalObject)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID* type,
                                        PIActionDescriptor* value);
    OSErr(QZ_HOSTCALL* GetEnumerated)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorEnumTypeID* type,
                                      DescriptorEnumID* value);
    OSErr(QZ_HOSTCALL* GetReference)(PIActionDescriptor descriptor, DescriptorKeyID key, PIActionReference* value);
    OSErr(QZ_HOSTCALL* GetClass)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID* value);
    OSErr(QZ_HOSTCALL* GetGlobalClass)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID* value);
    OSErr(QZ_HOSTCALL* GetAlias)(PIActionDescriptor descriptor, DescriptorKeyID key, Handle* value);
    // keyArray is 0-terminated.
    OSErr(QZ_HOSTCALL* HasKeys)(PIActionDescriptor descriptor, const DescriptorKeyID* keyArray, Boolean* hasKeys);
    OSErr(QZ_HOSTCALL* PutIntegers)(PIActionDescriptor descriptor, DescriptorKeyID key, uint32 count,
                                    const int32* values);
    OSErr(QZ_HOSTCALL* GetIntegers)(PIActionDescriptor descriptor, DescriptorKeyID key, uint32 count, int32* values);
    OSErr(QZ_HOSTCALL* AsHandle)(PIActionDescriptor descriptor, PIDescriptorHandle* value);
    OSErr(QZ_HOSTCALL* HandleToDescriptor)(PIDescriptorHandle value, PIActionDescriptor* descriptor);
    // Here ZString comes before Data; the list suite has them the other way round.
    OSErr(QZ_HOSTCALL* PutZString)(PIActionDescriptor descriptor, DescriptorKeyID key, ASZString zstring);
    OSErr(QZ_HOSTCALL* GetZString)(PIActionDescriptor descriptor, DescriptorKeyID key, ASZString* zstring);
    OSErr(QZ_HOSTCALL* PutData)(PIActionDescriptor descriptor, DescriptorKeyID key, int32 length, void* value);
    OSErr(QZ_HOSTCALL* GetDataLength)(PIActionDescriptor descriptor, DescriptorKeyID key, int32* length);
    OSErr(QZ_HOSTCALL* GetData)(PIActionDescriptor descriptor, DescriptorKeyID key, void* value);
    // v3
    OSErr(QZ_HOSTCALL* PutInteger64)(PIActionDescriptor descriptor, DescriptorKeyID key, int64 value);
    OSErr(QZ_HOSTCALL* GetInteger64)(PIActionDescriptor descriptor, DescriptorKeyID key, int64* value);
    // v5; the bookmark calls exist only on the Mac.
    OSErr(QZ_HOSTCALL* MakeWithClass)(DescriptorClassID type, PIActionDescriptor* descriptor);
    OSErr(QZ_HOSTCALL* GetDescriptorClass)(PIActionDescriptor descriptor, DescriptorClassID* type);
    OSErr(QZ_HOSTCALL* Copy)(PIActionDescriptor descriptor, PIActionDescriptor* copy);
    OSErr(QZ_HOSTCALL* PutBookmark)(PIActionDescriptor descriptor, DescriptorKeyID key, void* bookmark);
    OSErr(QZ_HOSTCALL* GetBookmark)(PIActionDescriptor descriptor, DescriptorKeyID key, void** bookmark);
};

// ---- Action list suite ----

struct PSActionListProcs {
    OSErr(QZ_HOSTCALL* Make)(PIActionList* list);
    OSErr(QZ_HOSTCALL* Free)(PIActionList list);
    OSErr(QZ_HOSTCALL* GetType)(PIActionList list, uint32 index, DescriptorTypeID* type);
    OSErr(QZ_HOSTCALL* GetCount)(PIActionList list, uint32* count);
    OSErr(QZ_HOSTCALL* PutInteger)(PIActionList list, int32 value);
    OSErr(QZ_HOSTCALL* PutFloat)(PIActionList list, real64 value);
    OSErr(QZ_HOSTCALL* PutUnitFloat)(PIActionList list, DescriptorUnitID unit, real64 value);
    OSErr(QZ_HOSTCALL* PutString)(PIActionList list, const char* cstr);
    OSErr(QZ_HOSTCALL* PutBoolean)(PIActionList list, Boolean value);
    OSErr(QZ_HOSTCALL* PutList)(PIActionList list, PIActionList value);
    OSErr(QZ_HOSTCALL* PutObject)(PIActionList list, DescriptorClassID type, PIActionDescriptor value);
    OSErr(QZ_HOSTCALL* PutGlobalObject)(PIActionList list, DescriptorClassID type, PIActionDescriptor value);
    OSErr(QZ_HOSTCALL* PutEnumerated)(PIActionList list, DescriptorEnumTypeID type, DescriptorEnumID value);
    OSErr(QZ_HOSTCALL* PutReference)(PIActionList list, PIActionReference value);
    OSErr(QZ_HOSTCALL* PutClass)(PIActionList list, DescriptorClassID value);
    OSErr(QZ_HOSTCALL* PutGlobalClass)(PIActionList list, DescriptorClassID value);
    OSErr(QZ_HOSTCALL* PutAlias)(PIActionList list, Handle value);
    OSErr(QZ_HOSTCALL* GetInteger)(PIActionList list, uint32 index, int32* value);
    OSErr(QZ_HOSTCALL* GetFloat)(PIActionList list, uint32 index, real64* value);
    OSErr(QZ_HOSTCALL* GetUnitFloat)(PIActionList list, uint32 index, DescriptorUnitID* unit, real64* value);
    OSErr(QZ_HOSTCALL* GetStringLength)(PIActionList list, uint32 index, uint32* stringLength);
    OSErr(QZ_HOSTCALL* GetString)(PIActionList list, uint32 index, char* cstr, uint32 maxLength);
    OSErr(QZ_HOSTCALL* GetBoolean)(PIActionList list, uint32 index, Boolean* value);
    OSErr(QZ_HOSTCALL* GetList)(PIActionList list, uint32 index, PIActionList* value);
    OSErr(QZ_HOSTCALL* GetObject)(PIActionList list, uint32 index, DescriptorClassID* type, PIActionDescriptor* value);
    OSErr(QZ_HOSTCALL* GetGlobalObject)(PIActionList list, uint32 index, DescriptorClassID* type,
                                        PIActionDescriptor* value);
    OSErr(QZ_HOSTCALL* GetEnumerated)(PIActionList list, uint32 index, DescriptorEnumTypeID* type,
                                      DescriptorEnumID* value);
    OSErr(QZ_HOSTCALL* GetReference)(PIActionList list, uint32 index, PIActionReference* value);
    OSErr(QZ_HOSTCALL* GetClass)(PIActionList list, uint32 index, DescriptorClassID* value);
    OSErr(QZ_HOSTCALL* GetGlobalClass)(PIActionList list, uint32 index, DescriptorClassID* value);
    OSErr(QZ_HOSTCALL* GetAlias)(PIActionList list, uint32 index, Handle* value);
    OSErr(QZ_HOSTCALL* PutIntegers)(PIActionList list, uint32 count, const int32* values);
    OSErr(QZ_HOSTCALL* GetIntegers)(PIActionList list, uint32 count, int32* values);
    OSErr(QZ_HOSTCALL* PutData)(PIActionList list, int32 length, void* value);
    OSErr(QZ_HOSTCALL* GetDataLength)(PIActionList list, uint32 index, int32* length);
    OSErr(QZ_HOSTCALL* GetData)(PIActionList list, uint32 index, void* value);
    OSErr(QZ_HOSTCALL* PutZString)(PIActionList list, ASZString zstring);
    OSErr(QZ_HOSTCALL* GetZString)(PIActionList list, uint32 index, ASZString* zstring);
    // v2
    OSErr(QZ_HOSTCALL* PutInteger64)(PIActionList list, int64 value);
    OSErr(QZ_HOSTCALL* GetInteger64)(PIActionList list, uint32 index, int64* value);
    // v3, Mac only
    OSErr(QZ_HOSTCALL* PutBookmark)(PIActionList list, void* bookmark);
    OSErr(QZ_HOSTCALL* GetBookmark)(PIActionList list, uint32 index, void** bookmark);
};

// ---- Action reference suite ----

struct PSActionReferenceProcs {
    OSErr(QZ_HOSTCALL* Make)(PIActionReference* reference);
    OSErr(QZ_HOSTCALL* Free)(PIActionReference reference);
    OSErr(QZ_HOSTCALL* GetForm)(PIActionReference reference, DescriptorFormID* form);
    OSErr(QZ_HOSTCALL* GetDesiredClass)(PIActionReference reference, DescriptorClassID* desiredClass);
    OSErr(QZ_HOSTCALL* PutName)(PIActionReference reference, DescriptorClassID desiredClass, const char* cstr);
    OSErr(QZ_HOSTCALL* PutIndex)(PIActionReference reference, DescriptorClassID desiredClass, uint32 value);
    OSErr(QZ_HOSTCALL* PutIdentifier)(PIActionReference reference, DescriptorClassID desiredClass, uint32 value);
    OSErr(QZ_HOSTCALL* PutOffset)(PIActionReference reference, DescriptorClassID desiredClass, int32 value);
    OSErr(QZ_HOSTCALL* PutEnumerated)(PIActionReference reference, DescriptorClassID desiredClass,
                                      DescriptorEnumTypeID type, DescriptorEnumID value);
    OSErr(QZ_HOSTCALL* PutProperty)(PIActionReference reference, DescriptorClassID desiredClass, DescriptorKeyID value);
    OSErr(QZ_HOSTCALL* PutClass)(PIActionReference reference, DescriptorClassID desiredClass);
    OSErr(QZ_HOSTCALL* GetNameLength)(PIActionReference reference, uint32* stringLength);
    OSErr(QZ_HOSTCALL* GetName)(PIActionReference reference, char* name, uint32 maxLength);
    OSErr(QZ_HOSTCALL* GetIndex)(PIActionReference reference, uint32* value);
    OSErr(QZ_HOSTCALL* GetIdentifier)(PIActionReference reference, uint32* value);
    OSErr(QZ_HOSTCALL* GetOffset)(PIActionReference reference, int32* value);
    OSErr(QZ_HOSTCALL* GetEnumerated)(PIActionReference reference, DescriptorEnumTypeID* type, DescriptorEnumID* value);
    OSErr(QZ_HOSTCALL* GetProperty)(PIActionReference reference, DescriptorKeyID* value);
    // NULL when there is no container.
    OSErr(QZ_HOSTCALL* GetContainer)(PIActionReference reference, PIActionReference* value);
    // v3
    OSErr(QZ_HOSTCALL* PutNameZString)(PIActionReference reference, DescriptorClassID desiredClass, ASZString zstring);
    OSErr(QZ_HOSTCALL* GetNameZString)(PIActionReference reference, ASZString* zstring);
};

// ---- Basic action control suite ----

struct PSBasicActionControlProcs {
    // The caller frees the result.
    OSErr(QZ_HOSTCALL* Get)(PIActionDescriptor* result, PIActionReference reference);
    OSErr(QZ_HOSTCALL* StringIDToTypeID)(const char* stringID, DescriptorTypeID* typeID);
    OSErr(QZ_HOSTCALL* TypeIDToStringID)(DescriptorTypeID typeID, char* stringID, uint32 bufferLength);
    OSErr(QZ_HOSTCALL* MakeStringAlias)(const char* newStringID, const char* existingStringID);
    // v3, Mac only
    OSErr(QZ_HOSTCALL* ConvertAliasHandleToBookmark)(Handle alias, void** bookmark);
    OSErr(QZ_HOSTCALL* ConvertBookmarkToAliasHandle)(void* bookmark, Handle* alias);
};

// ---- Descriptor registry suite ----

struct PSDescriptorRegistryProcs {
    // key should be unique (a UUID); a persistent entry survives a restart of the host.
    OSErr(QZ_HOSTCALL* Register)(const char* key, PIActionDescriptor descriptor, Boolean isPersistent);
    OSErr(QZ_HOSTCALL* Erase)(const char* key);
    // Returns a copy; free it with the descriptor suite.
    OSErr(QZ_HOSTCALL* Get)(const char* key, PIActionDescriptor* descriptor);
};

// ---- Colour space suite ----

// 6 bytes: passed by value, it travels on Win64 as a pointer to a caller-made copy.
struct XYZColor {
    uint16 x;
    uint16 y;
    uint16 z;
};

// Four bytes per colour, converted in place. Byte 0 is unused except in CMYK:
//   RGB 0 R G B, HSB/HSL 0 H S B|L, Lab/XYZ 0 L|X a|Y b|Z, CMYK C M Y K, Gray 0 0 0 gray.
typedef uint8 Color8[4];
typedef uint16 Color16[4];

// Space ids are the plugIncolorServices*Space values.
struct PSColorSpaceSuite {
    SPErr(QZ_HOSTCALL* Make)(ColorID* colorID);
    SPErr(QZ_HOSTCALL* Delete)(ColorID* colorID);
    SPErr(QZ_HOSTCALL* StuffComponents)(ColorID colorID, int16 colorSpace, uint8 c0, uint8 c1, uint8 c2, uint8 c3);
    SPErr(QZ_HOSTCALL* ExtractComponents)(ColorID colorID, int16 colorSpace, uint8* c0, uint8* c1, uint8* c2, uint8* c3,
                                          Boolean* inGamut);
    SPErr(QZ_HOSTCALL* StuffXYZ)(ColorID colorID, XYZColor xyz);
    SPErr(QZ_HOSTCALL* ExtractXYZ)(ColorID colorID, XYZColor* xyz);
    // count is at most 32767.
    SPErr(QZ_HOSTCALL* Convert8)(int16 inputSpace, int16 outputSpace, Color8* colors, int16 count);
    SPErr(QZ_HOSTCALL* Convert16)(int16 inputSpace, int16 outputSpace, Color16* colors, int16 count);
    SPErr(QZ_HOSTCALL* GetNativeSpace)(ColorID colorID, int16* nativeSpace);
    SPErr(QZ_HOSTCALL* IsBookColor)(ColorID colorID, Boolean* isBookColor);
    SPErr(QZ_HOSTCALL* ExtractColorName)(ColorID colorID, ASZString* colorName);
    SPErr(QZ_HOSTCALL* PickColor)(ColorID* colorID, ASZString prompt);
    // 16-bit values use the host's range, 0-32768.
    SPErr(QZ_HOSTCALL* Convert8to16)(const uint8* input, uint16* output, int16 count);
    SPErr(QZ_HOSTCALL* Convert16to8)(const uint16* input, uint8* output, int16 count);
    SPErr(QZ_HOSTCALL* ConvertToMonitorRGB)(int16 inputSpace, Color8* input, Color8* output, int16 count);
    SPErr(QZ_HOSTCALL* Convert32to8)(const real32* input, uint8* output, int16 count);
    // v2
    SPErr(QZ_HOSTCALL* ConvertForDisplay)(PSPixelMap* source, Color8* output, int32 outputRowBytes,
                                          const VRect* displayArea);
    // The caller disposes the ICC profile handle.
    SPErr(QZ_HOSTCALL* GetDisplayProfile)(const VRect* area, Handle* profile);
};

// ---- Channel ports suite ----

typedef SPErr(QZ_HOSTCALL* PSChannelPortOperation)(PIChannelPort source, PIChannelPort destination, PIChannelPort mask,
                                                   void* parameters, VRect* area, void* refCon);

struct PSChannelPortsSuite {
    // 0 levels means the port is invalid.
    SPErr(QZ_HOSTCALL* CountLevels)(PIChannelPort port, int32* levels);
    SPErr(QZ_HOSTCALL* GetDepth)(PIChannelPort port, int32 level, int32* depth);
    SPErr(QZ_HOSTCALL* GetDataBounds)(PIChannelPort port, int32 level, VRect* bounds);
    SPErr(QZ_HOSTCALL* GetWriteLimit)(PIChannelPort port, int32 level, VRect* writeBounds);
    SPErr(QZ_HOSTCALL* GetTilingGrid)(PIChannelPort port, int32 level, VPoint* tileOrigin, VPoint* tileSize);
    // supportLevel is -1 when nothing supports the rectangle.
    SPErr(QZ_HOSTCALL* GetSupportRect)(PIChannelPort port, int32 level, const VRect* bounds, int32* supportLevel,
                                       VRect* supportBounds);
    SPErr(QZ_HOSTCALL* GetDependentRect)(PIChannelPort port, int32 sourceLevel, const VRect* sourceBounds,
                                         int32 dependentLevel, VRect* dependentBounds);
    SPErr(QZ_HOSTCALL* CanRead)(PIChannelPort port, Boolean* canRead);
    SPErr(QZ_HOSTCALL* CanWrite)(PIChannelPort port, Boolean* canWrite);
    SPErr(QZ_HOSTCALL* ReadPixelsFromLevel)(PIChannelPort port, int32 level, VRect* bounds,
                                            const PixelMemoryDesc* destination);
    SPErr(QZ_HOSTCALL* WritePixelsToBaseLevel)(PIChannelPort port, VRect* bounds, const PixelMemoryDesc* source);
    SPErr(QZ_HOSTCALL* ReadScaledPixels)(PIChannelPort port, VRect* readRect, const PSScaling* scaling,
                                         const PixelMemoryDesc* destination);
    SPErr(QZ_HOSTCALL* FindSourceForScaledRead)(PIChannelPort port, const VRect* destBounds, const PSScaling* scaling,
                                                int32 destDepth, int32* sourceLevel, VRect* sourceBounds,
                                                VRect* sourceScalingBounds);
    SPErr(QZ_HOSTCALL* New)(PIChannelPort* port, const VRect* bounds, int32 depth, Boolean globalScope);
    // Sets *port to NULL.
    SPErr(QZ_HOSTCALL* Dispose)(PIChannelPort* port);
    // v3
    SPErr(QZ_HOSTCALL* SupportsOperation)(const char* operation, Boolean* supported);
    SPErr(QZ_HOSTCALL* ApplyOperation)(const char* operation, PIChannelPort source, PIChannelPort destination,
                                       PIChannelPort mask, void* parameters, VRect* area);
    SPErr(QZ_HOSTCALL* AddOperation)(const char* operation, PSChannelPortOperation proc, void* refCon);
    SPErr(QZ_HOSTCALL* RemoveOperation)(const char* operation, void** refCon);
    // writeLimit NULL means all of base.
    SPErr(QZ_HOSTCALL* NewCopyOnWrite)(PIChannelPort* port, PIChannelPort base, VRect* writeLimit, Boolean globalScope);
    SPErr(QZ_HOSTCALL* Freeze)(PIChannelPort port);
    // area NULL means the whole port.
    SPErr(QZ_HOSTCALL* Restore)(PIChannelPort port, VRect* area);
};
