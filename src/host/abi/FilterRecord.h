// The filter's parameter blocks (FilterRecord, BigDocumentStruct, AboutRecord) and the
// callbacks and callback tables reachable from them.
#pragma once

#include "host/abi/Types.h"

struct PIDescriptorParameters;
struct ChannelPortProcs;
struct ReadImageDocumentDesc;
struct SPBasicSuite;
struct BigDocumentStruct;
struct ImageServicesProcs; // never used by us; kept opaque
struct PSPixelOverlay;     // likewise

// ---- Pixel maps for displayPixels (natural alignment) ----

struct PSPixelMask {
    PSPixelMask* next;
    void* maskData;
    int32 rowBytes;
    int32 colBytes;
    int32 maskDescription;
};

constexpr int32 kSimplePSMask = 0;
constexpr int32 kBlackMatPSMask = 1;
constexpr int32 kGrayMatPSMask = 2;
constexpr int32 kWhiteMatPSMask = 3;
constexpr int32 kInvertPSMask = 4;

struct PSPixelMap {
    int32 version; // 1, 2 or 3: later fields are valid only from their version
    VRect bounds;
    int32 imageMode;
    int32 rowBytes;
    int32 colBytes;
    int32 planeBytes;
    void* baseAddr;
    PSPixelMask* mat;              // v1
    PSPixelMask* masks;            // v1
    int32 maskPhaseRow;            // v1
    int32 maskPhaseCol;            // v1
    PSPixelOverlay* pixelOverlays; // v2
    uint32 colorManagementOptions; // v2, low 4 bits
    int16 depth;                   // v3
};

// colorManagementOptions
constexpr uint32 kViewAsStandardRGB = 0;
constexpr uint32 kViewAsMacRGB = 1;
constexpr uint32 kViewAsWindowsRGB = 2;
constexpr uint32 kViewAsUncompensatedRGB = 3;

// ---- Colour services (natural alignment) ----

union ColorServicesSelectorParameter {
    Str255* pickerPrompt;
    Point* globalSamplePoint;
    int32 specialColorID;
};

struct ColorServicesInfo {
    int32 infoSize; // sizeof(ColorServicesInfo), 56
    int16 selector;
    int16 sourceSpace;
    int16 resultSpace;
    Boolean resultGamutInfoValid;
    Boolean resultInGamut;
    void* reservedSourceSpaceInfo; // must be NULL, or the call fails with paramErr
    void* reservedResultSpaceInfo; // must be NULL
    int16 colorComponents[4];
    void* reserved; // must be NULL
    ColorServicesSelectorParameter selectorParameter;
};

// ---- Direct callbacks ----

typedef Boolean(QZ_HOSTCALL* TestAbortProc)(void);
typedef void(QZ_HOSTCALL* ProgressProc)(int32 done, int32 total);
typedef void(QZ_HOSTCALL* HostProc)(int16 selector, intptr_t* data);
typedef void(QZ_HOSTCALL* ProcessEventProc)(void* event);
// platformContext is the target HDC on Windows.
typedef OSErr(QZ_HOSTCALL* DisplayPixelsProc)(const PSPixelMap* source, const VRect* srcRect, int32 dstRow,
                                              int32 dstCol, void* platformContext);
typedef OSErr(QZ_HOSTCALL* AdvanceStateProc)(void);
typedef OSErr(QZ_HOSTCALL* ColorServicesProc)(ColorServicesInfo* info);
typedef OSErr(QZ_HOSTCALL* GetPropertyProc)(PIType signature, PIType key, int32 index, intptr_t* simpleProperty,
                                            Handle* complexProperty);
typedef OSErr(QZ_HOSTCALL* SetPropertyProc)(PIType signature, PIType key, int32 index, intptr_t simpleProperty,
                                            Handle complexProperty);

// ---- Callback tables (natural alignment; check the count before using a slot) ----

constexpr int16 kCurrentHandleProcsVersion = 1;
constexpr int16 kCurrentHandleProcsCount = 8;

struct HandleProcs {
    int16 handleProcsVersion;
    int16 numHandleProcs;
    Handle(QZ_HOSTCALL* newProc)(int32 size);
    void(QZ_HOSTCALL* disposeProc)(Handle h);
    int32(QZ_HOSTCALL* getSizeProc)(Handle h);
    OSErr(QZ_HOSTCALL* setSizeProc)(Handle h, int32 newSize);
    Ptr(QZ_HOSTCALL* lockProc)(Handle h, Boolean moveHigh);
    void(QZ_HOSTCALL* unlockProc)(Handle h);
    void(QZ_HOSTCALL* recoverSpaceProc)(int32 size);
    void(QZ_HOSTCALL* disposeRegularHandleProc)(Handle h);
};

constexpr int16 kCurrentBufferProcsVersion = 2;
constexpr int16 kCurrentBufferProcsCount = 8;

struct BufferProcs {
    int16 bufferProcsVersion;
    int16 numBufferProcs;
    OSErr(QZ_HOSTCALL* allocateProc)(int32 size, BufferID* bufferID);
    Ptr(QZ_HOSTCALL* lockProc)(BufferID bufferID, Boolean moveHigh);
    void(QZ_HOSTCALL* unlockProc)(BufferID bufferID);
    void(QZ_HOSTCALL* freeProc)(BufferID bufferID);
    int32(QZ_HOSTCALL* spaceProc)(void);
    OSErr(QZ_HOSTCALL* reserveProc)(int32 size);
    OSErr(QZ_HOSTCALL* allocateProc64)(int64 size, BufferID* bufferID);
    int64(QZ_HOSTCALL* spaceProc64)(void);
};

constexpr int16 kCurrentPropertyProcsVersion = 1;
constexpr int16 kCurrentPropertyProcsCount = 2;

struct PropertyProcs {
    int16 propertyProcsVersion;
    int16 numPropertyProcs;
    GetPropertyProc getPropertyProc;
    SetPropertyProc setPropertyProc;
};

constexpr int16 kCurrentResourceProcsVersion = 3;
constexpr int16 kCurrentResourceProcsCount = 4;

struct ResourceProcs {
    int16 resourceProcsVersion;
    int16 numResourceProcs;
    int16(QZ_HOSTCALL* countProc)(ResType type);
    Handle(QZ_HOSTCALL* getProc)(ResType type, int16 index);
    void(QZ_HOSTCALL* deleteProc)(ResType type, int16 index);
    OSErr(QZ_HOSTCALL* addProc)(ResType type, Handle data);
};

// ---- Parameter blocks ----

// Only these two records are packed to 4 bytes on Windows: pointers and int64s in them sit
// on 4-byte boundaries (abortProc at 4, not 8). Access them through the fields and let the
// compiler emit the unaligned loads; never copy them into a naturally aligned twin, and copy
// such a field into a local before binding a reference to it (std::min, test assertions).
#pragma pack(push, 4)

struct FilterRecord {
    int32 serialNumber; // obsolete, 0
    TestAbortProc abortProc;
    ProgressProc progressProc;
    Handle parameters;
    Point imageSize;
    int16 planes;
    Rect filterRect;
    PSRGBColor background;
    PSRGBColor foreground;
    int32 maxSpace;
    int32 bufferSpace;
    Rect inRect;
    int16 inLoPlane;
    int16 inHiPlane;
    Rect outRect;
    int16 outLoPlane;
    int16 outHiPlane;
    void* inData;
    int32 inRowBytes;
    void* outData;
    int32 outRowBytes;
    Boolean isFloating;
    Boolean haveMask;
    Boolean autoMask;
    Rect maskRect;
    void* maskData;
    int32 maskRowBytes;
    FilterColor backColor;
    FilterColor foreColor;
    OSType hostSig;
    HostProc hostProc;
    int16 imageMode;
    Fixed imageHRes;
    Fixed imageVRes;
    Point floatCoord;
    Point wholeSize;
    PlugInMonitor monitor;
    void* platformData; // PlatformData*
    BufferProcs* bufferProcs;
    ResourceProcs* resourceProcs;
    ProcessEventProc processEvent;
    DisplayPixelsProc displayPixels;
    HandleProcs* handleProcs;

    // 3.0
    Boolean supportsDummyChannels;
    Boolean supportsAlternateLayouts;
    int16 wantLayout;
    int16 filterCase;
    int16 dummyPlaneValue;
    void* premiereHook;
    AdvanceStateProc advanceState;
    Boolean supportsAbsolute;
    Boolean wantsAbsolute;
    GetPropertyProc getPropertyObsolete;
    Boolean cannotUndo;
    Boolean supportsPadding;
    int16 inputPadding;
    int16 outputPadding;
    int16 maskPadding;
    char samplingSupport;
    char reservedByte;
    Fixed inputRate;
    Fixed maskRate;
    ColorServicesProc colorServices;
    int16 inLayerPlanes;
    int16 inTransparencyMask;
    int16 inLayerMasks;
    int16 inInvertedLayerMasks;
    int16 inNonLayerPlanes;
    int16 outLayerPlanes;
    int16 outTransparencyMask;
    int16 outLayerMasks;
    int16 outInvertedLayerMasks;
    int16 outNonLayerPlanes;
    int16 absLayerPlanes;
    int16 absTransparencyMask;
    int16 absLayerMasks;
    int16 absInvertedLayerMasks;
    int16 absNonLayerPlanes;
    int16 inPreDummyPlanes;
    int16 inPostDummyPlanes;
    int16 outPreDummyPlanes;
    int16 outPostDummyPlanes;
    int32 inColumnBytes;
    int32 inPlaneBytes;
    int32 outColumnBytes;
    int32 outPlaneBytes;

    // 3.0.4
    ImageServicesProcs* imageServicesProcs;
    PropertyProcs* propertyProcs;
    int16 inTileHeight;
    int16 inTileWidth;
    Point inTileOrigin;
    int16 absTileHeight;
    int16 absTileWidth;
    Point absTileOrigin;
    int16 outTileHeight;
    int16 outTileWidth;
    Point outTileOrigin;
    int16 maskTileHeight;
    int16 maskTileWidth;
    Point maskTileOrigin;

    // 4.0
    PIDescriptorParameters* descriptorParameters;
    Str255* errorString;
    ChannelPortProcs* channelPortProcs;
    ReadImageDocumentDesc* documentInfo;

    // 5.0
    SPBasicSuite* sSPBasic;
    void* plugInRef;
    int32 depth;

    // 6.0 and later. There is no version field: older hosts end the record earlier and leave
    // these zero, and one such host allocates only 556 bytes, so maxSpace64 may be garbage.
    Handle iCCprofileData;
    int32 iCCprofileSize;
    int32 canUseICCProfiles;
    int32 hasImageScrap;
    BigDocumentStruct* bigDocumentData; // NULL without big-document support
    PIDescriptorParameters* input3DScene;
    PIDescriptorParameters* output3DScene;
    Boolean createNewLayer;
    Handle iCCWorkingProfileData;
    int32 iCCWorkingProfileSize;
    int64 bufferSpace64;
    int64 maxSpace64;

    // Older headers have a plain char[46] here.
    Boolean allowOverrangeColors;
    char reserved[45]; // 0
};

// The plug-in sets PluginUsing32BitCoordinates to make the host use the 32-bit rectangles.
struct BigDocumentStruct {
    int32 PluginUsing32BitCoordinates;
    VPoint imageSize32;
    VRect filterRect32;
    VRect inRect32;
    VRect outRect32;
    VRect maskRect32;
    VPoint floatCoord32;
    VPoint wholeSize32;
};

#pragma pack(pop)

// The parameter block of the about selector (natural alignment).
struct AboutRecord {
    void* platformData; // PlatformData*
    SPBasicSuite* sSPBasic;
    void* plugInRef;
    char reserved[244]; // 0
};
