// Channel ports and the document description: ChannelPortProcs, pixel memory and scaling
// descriptions, and the read/write channel, layer and document records.
#pragma once

#include "host/abi/Types.h"

// All strides are in bits: 8-bit interleaved RGB has colBits 24, rowBits 8 * rowBytes and
// bitOffset 0, 8 or 16 for the plane.
struct PixelMemoryDesc {
    void* data;
    int32 rowBits;
    int32 colBits;
    int32 bitOffset;
    int32 depth;
};

// Equal rectangles read 1:1; unequal ones resample.
struct PSScaling {
    VRect sourceRect;
    VRect destinationRect;
};

constexpr int16 kCurrentChannelPortProcsVersion = 1;
constexpr int16 kCurrentChannelPortProcsCount = 3;

struct ChannelPortProcs {
    int16 channelPortProcsVersion;
    int16 numChannelPortProcs;
    OSErr(QZ_HOSTCALL* readPixelsProc)(PIChannelPort port, const PSScaling* scaling, const VRect* writeRect,
                                       const PixelMemoryDesc* destination, VRect* wroteRect);
    OSErr(QZ_HOSTCALL* writeBasePixelsProc)(PIChannelPort port, VRect* writeRect, const PixelMemoryDesc* source);
    OSErr(QZ_HOSTCALL* readPortForWritePortProc)(PIChannelPort* readPort, PIChannelPort writePort);
};

// In all four records below, a field is valid only when maxVersion is at least the version
// noted beside it (unnoted fields are version 0).

struct ReadLayerDesc;

struct ReadChannelDesc {
    int32 minVersion;
    int32 maxVersion;
    ReadChannelDesc* next;
    PIChannelPort port;
    VRect bounds;
    int32 depth;
    VPoint tileSize;
    VPoint tileOrigin;
    Boolean target;
    Boolean shown;
    int16 channelType;
    void* contextInfo;
    const char* name;
    PIChannelPort writePort;   // 1
    uint32 alphaID;            // 2
    const uint16* unicodeName; // 3, UTF-16, NUL-terminated
    Boolean isEnabled;         // 4
    VRect limitBounds;         // 5
};

constexpr int32 kCurrentReadChannelDescVersion = 5;

// The names are pointers to NUL-terminated strings, not inline Pascal strings.
struct ReadLayerDesc {
    int32 minVersion;
    int32 maxVersion;
    ReadLayerDesc* next;
    ReadChannelDesc* compositeChannelsList;
    ReadChannelDesc* transparency;
    ReadChannelDesc* layerMask;
    uint32 sheetID;
    const char* name;
    Boolean isPixelBased;
    const uint16* unicodeName;        // 1, UTF-16
    Boolean isVisible;                // 2
    Boolean isAdjustor;               // 2
    Boolean isContentGenerator;       // 2
    Boolean isRendered;               // 2
    uint8 opacity;                    // 2, 0-255
    uint8 fillOpacity;                // 2
    uint32 blendMode;                 // 2, a 4-character code such as 'norm'
    ReadChannelDesc* vectorMask;      // 2
    ReadChannelDesc* smartFilterMask; // 3
};

constexpr int32 kCurrentReadLayerDescVersion = 3;

struct ReadImageDocumentDesc {
    int32 minVersion;
    int32 maxVersion;
    int32 imageMode;
    int32 depth;
    VRect bounds;
    Fixed hResolution;
    Fixed vResolution;
    LookUpTable redLUT;
    LookUpTable greenLUT;
    LookUpTable blueLUT;
    ReadChannelDesc* targetCompositeChannels;
    ReadChannelDesc* targetTransparency;
    ReadChannelDesc* targetLayerMask;
    ReadChannelDesc* mergedCompositeChannels;
    ReadChannelDesc* mergedTransparency;
    ReadChannelDesc* alphaChannels;
    ReadChannelDesc* selection;
    void* fileSpec;                         // 1
    ReadLayerDesc* layersDescriptor;        // 2
    int32 documentType;                     // 2
    ReadImageDocumentDesc* next;            // 2
    void* iCCprofileData;                   // 3
    int32 iCCprofileSize;                   // 3
    int32 compositeChannelCount;            // 3
    int32 layerCount;                       // 3
    int32 alphaChannelCount;                // 3
    ReadChannelDesc* targetSmartFilterMask; // 4
    void* fileSpecW;                        // 5
    void* fileSpecX;                        // 6
};

constexpr int32 kCurrentReadImageDocumentDescVersion = 6;

struct WriteChannelDesc {
    int32 minVersion;
    int32 maxVersion;
    WriteChannelDesc* next;
    PIChannelPort port;
    VRect bounds;
    int32 depth;
    VPoint tileSize;
    VPoint tileOrigin;
    int16 channelType;
    int16 padding;
    void* contextInfo;
    const char* name;
    const uint16* unicodeName; // 1
};

constexpr int32 kCurrentWriteChannelDescVersion = 1;

// channelType
constexpr int16 ctUnspecified = 0;
constexpr int16 ctRed = 1;
constexpr int16 ctGreen = 2;
constexpr int16 ctBlue = 3;
constexpr int16 ctCyan = 4;
constexpr int16 ctMagenta = 5;
constexpr int16 ctYellow = 6;
constexpr int16 ctBlack = 7;
constexpr int16 ctL = 8;
constexpr int16 ctA = 9;
constexpr int16 ctB = 10;
constexpr int16 ctDuotone = 11;
constexpr int16 ctIndex = 12;
constexpr int16 ctBitmap = 13;
constexpr int16 ctColorSelected = 14;
constexpr int16 ctColorProtected = 15;
constexpr int16 ctTransparency = 16;
constexpr int16 ctLayerMask = 17;
constexpr int16 ctInvertedLayerMask = 18;
constexpr int16 ctSelectionMask = 19;
constexpr int16 ctSpotColor = 20;
constexpr int16 ctVectorMask = 21;
constexpr int16 ctSmartFilterMask = 22;

// documentType
constexpr int32 kDocumentTypeImage = 0;
constexpr int32 kDocumentTypeScrap = 1;
