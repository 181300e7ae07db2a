// Basic types shared by the host and the plug-in: integer widths, 4-character codes,
// handles, geometry, colours and the opaque references the host hands out.
#pragma once

#include "state/FourCC.h"

#include <cstddef>
#include <cstdint>

// Win64 has a single calling convention, and the native build puts our own code on both
// sides, so callbacks need no annotation. Kept as a marker on every function pointer.
#define QZ_HOSTCALL

typedef int8_t int8;
typedef int16_t int16;
typedef int32_t int32;
typedef int64_t int64;
typedef uint8_t uint8;
typedef uint16_t uint16;
typedef uint32_t uint32;
typedef uint64_t uint64;
typedef float real32;
typedef double real64;

typedef int16 OSErr;
typedef uint32 OSType;
typedef uint32 ResType;
typedef uint32 DescType;
typedef uint32 PIType;
typedef uint32 DescriptorKeyID;
typedef uint32 DescriptorTypeID;
typedef uint32 DescriptorUnitID;
typedef uint32 DescriptorEnumID;
typedef uint32 DescriptorClassID;
typedef uint32 DescriptorEnumTypeID;
typedef uint32 DescriptorEventID;
typedef uint32 DescriptorFormID;

// Hosts store any non-zero byte for true, so this is not bool: test it with != 0.
typedef unsigned char Boolean;

// PICA types. SPBoolean is 4 bytes (a Windows BOOL), unlike Boolean.
typedef int32 SPErr;
typedef int32 SPBoolean;

typedef int32 Fixed; // 16.16

typedef char* Ptr;
// A master pointer: *h is the block. Plug-ins dereference it, so hosts keep it valid.
typedef char** Handle;
typedef Handle PIDescriptorHandle;

// Vertical first, in both the 16-bit and the 32-bit forms.
struct Point {
    int16 v;
    int16 h;
};

struct Rect {
    int16 top;
    int16 left;
    int16 bottom;
    int16 right;
};

struct VPoint {
    int32 v;
    int32 h;
};

struct VRect {
    int32 top;
    int32 left;
    int32 bottom;
    int32 right;
};

struct PSRGBColor {
    uint16 red;
    uint16 green;
    uint16 blue;
};

// One colour in the document's own mode, one byte per channel.
typedef uint8 FilterColor[4];

// gamma == 0 means the host filled in nothing.
struct PlugInMonitor {
    Fixed gamma;
    Fixed redX;
    Fixed redY;
    Fixed greenX;
    Fixed greenY;
    Fixed blueX;
    Fixed blueY;
    Fixed whiteX;
    Fixed whiteY;
    Fixed ambient;
};

// The parent window for dialogs (an HWND on Windows).
struct PlatformData {
    intptr_t hwnd;
};

// Byte 0 is the length; the characters follow with no terminator.
typedef unsigned char Str255[256];

typedef uint8 LookUpTable[256];

// Opaque references: only the host knows what they point at.
typedef struct OpaqueReadDescriptor* PIReadDescriptor;
typedef struct OpaqueWriteDescriptor* PIWriteDescriptor;
typedef struct OpaqueActionDescriptor* PIActionDescriptor;
typedef struct OpaqueActionList* PIActionList;
typedef struct OpaqueActionReference* PIActionReference;
typedef struct OpaqueChannelPort* PIChannelPort;
typedef struct OpaqueBuffer* BufferID;
typedef struct OpaqueZString* ASZString;
typedef struct OpaqueColorID* ColorID;
