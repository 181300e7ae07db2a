// Compile-time checks that every record and callback table has the host's Win64 layout.
// The declarations use fixed-width types only, so the native LP64 build must agree too.
#pragma once

#include "host/abi/Types.h"
#include "host/abi/FilterRecord.h"
#include "host/abi/Descriptors.h"
#include "host/abi/ChannelPorts.h"
#include "host/abi/Suites.h"

#define QZ_CHECK_FIELD(type, field, offset, size)                                                                      \
    static_assert(offsetof(type, field) == (offset) && sizeof(type::field) == (size), #type "::" #field)
#define QZ_CHECK_SLOT(type, slot, index) QZ_CHECK_FIELD(type, slot, 8 * (index), 8)
#define QZ_CHECK_SIZE(type, size) static_assert(sizeof(type) == (size), "sizeof " #type)

// Basic types.
QZ_CHECK_SIZE(OSErr, 2);
QZ_CHECK_SIZE(OSType, 4);
QZ_CHECK_SIZE(Boolean, 1);
QZ_CHECK_SIZE(SPErr, 4);
QZ_CHECK_SIZE(SPBoolean, 4);
QZ_CHECK_SIZE(Fixed, 4);
QZ_CHECK_SIZE(Ptr, 8);
QZ_CHECK_SIZE(Handle, 8);
QZ_CHECK_SIZE(intptr_t, 8);
QZ_CHECK_SIZE(size_t, 8);
QZ_CHECK_SIZE(FilterColor, 4);
QZ_CHECK_SIZE(Str255, 256);
QZ_CHECK_SIZE(LookUpTable, 256);
QZ_CHECK_SIZE(PIReadDescriptor, 8);
QZ_CHECK_SIZE(PIWriteDescriptor, 8);
QZ_CHECK_SIZE(PIActionDescriptor, 8);
QZ_CHECK_SIZE(PIActionList, 8);
QZ_CHECK_SIZE(PIActionReference, 8);
QZ_CHECK_SIZE(PIChannelPort, 8);
QZ_CHECK_SIZE(BufferID, 8);
QZ_CHECK_SIZE(ASZString, 8);
QZ_CHECK_SIZE(ColorID, 8);

QZ_CHECK_FIELD(Point, v, 0, 2);
QZ_CHECK_FIELD(Point, h, 2, 2);
QZ_CHECK_SIZE(Point, 4);
QZ_CHECK_FIELD(Rect, top, 0, 2);
QZ_CHECK_FIELD(Rect, left, 2, 2);
QZ_CHECK_FIELD(Rect, bottom, 4, 2);
QZ_CHECK_FIELD(Rect, right, 6, 2);
QZ_CHECK_SIZE(Rect, 8);
QZ_CHECK_FIELD(VPoint, v, 0, 4);
QZ_CHECK_FIELD(VPoint, h, 4, 4);
QZ_CHECK_SIZE(VPoint, 8);
QZ_CHECK_FIELD(VRect, top, 0, 4);
QZ_CHECK_FIELD(VRect, left, 4, 4);
QZ_CHECK_FIELD(VRect, bottom, 8, 4);
QZ_CHECK_FIELD(VRect, right, 12, 4);
QZ_CHECK_SIZE(VRect, 16);
QZ_CHECK_FIELD(PSRGBColor, red, 0, 2);
QZ_CHECK_FIELD(PSRGBColor, green, 2, 2);
QZ_CHECK_FIELD(PSRGBColor, blue, 4, 2);
QZ_CHECK_SIZE(PSRGBColor, 6);
static_assert(alignof(PSRGBColor) == 2);
QZ_CHECK_FIELD(PlugInMonitor, gamma, 0, 4);
QZ_CHECK_FIELD(PlugInMonitor, redX, 4, 4);
QZ_CHECK_FIELD(PlugInMonitor, redY, 8, 4);
QZ_CHECK_FIELD(PlugInMonitor, greenX, 12, 4);
QZ_CHECK_FIELD(PlugInMonitor, greenY, 16, 4);
QZ_CHECK_FIELD(PlugInMonitor, blueX, 20, 4);
QZ_CHECK_FIELD(PlugInMonitor, blueY, 24, 4);
QZ_CHECK_FIELD(PlugInMonitor, whiteX, 28, 4);
QZ_CHECK_FIELD(PlugInMonitor, whiteY, 32, 4);
QZ_CHECK_FIELD(PlugInMonitor, ambient, 36, 4);
QZ_CHECK_SIZE(PlugInMonitor, 40);
QZ_CHECK_FIELD(PlatformData, hwnd, 0, 8);
QZ_CHECK_SIZE(PlatformData, 8);

// FilterRecord (pack 4).
QZ_CHECK_FIELD(FilterRecord, serialNumber, 0, 4);
QZ_CHECK_FIELD(FilterRecord, abortProc, 4, 8);
QZ_CHECK_FIELD(FilterRecord, progressProc, 12, 8);
QZ_CHECK_FIELD(FilterRecord, parameters, 20, 8);
QZ_CHECK_FIELD(FilterRecord, imageSize, 28, 4);
QZ_CHECK_FIELD(FilterRecord, planes, 32, 2);
QZ_CHECK_FIELD(FilterRecord, filterRect, 34, 8);
QZ_CHECK_FIELD(FilterRecord, background, 42, 6);
QZ_CHECK_FIELD(FilterRecord, foreground, 48, 6);
QZ_CHECK_FIELD(FilterRecord, maxSpace, 56, 4);
QZ_CHECK_FIELD(FilterRecord, bufferSpace, 60, 4);
QZ_CHECK_FIELD(FilterRecord, inRect, 64, 8);
QZ_CHECK_FIELD(FilterRecord, inLoPlane, 72, 2);
QZ_CHECK_FIELD(FilterRecord, inHiPlane, 74, 2);
QZ_CHECK_FIELD(FilterRecord, outRect, 76, 8);
QZ_CHECK_FIELD(FilterRecord, outLoPlane, 84, 2);
QZ_CHECK_FIELD(FilterRecord, outHiPlane, 86, 2);
QZ_CHECK_FIELD(FilterRecord, inData, 88, 8);
QZ_CHECK_FIELD(FilterRecord, inRowBytes, 96, 4);
QZ_CHECK_FIELD(FilterRecord, outData, 100, 8);
QZ_CHECK_FIELD(FilterRecord, outRowBytes, 108, 4);
QZ_CHECK_FIELD(FilterRecord, isFloating, 112, 1);
QZ_CHECK_FIELD(FilterRecord, haveMask, 113, 1);
QZ_CHECK_FIELD(FilterRecord, autoMask, 114, 1);
QZ_CHECK_FIELD(FilterRecord, maskRect, 116, 8);
QZ_CHECK_FIELD(FilterRecord, maskData, 124, 8);
QZ_CHECK_FIELD(FilterRecord, maskRowBytes, 132, 4);
QZ_CHECK_FIELD(FilterRecord, backColor, 136, 4);
QZ_CHECK_FIELD(FilterRecord, foreColor, 140, 4);
QZ_CHECK_FIELD(FilterRecord, hostSig, 144, 4);
QZ_CHECK_FIELD(FilterRecord, hostProc, 148, 8);
QZ_CHECK_FIELD(FilterRecord, imageMode, 156, 2);
QZ_CHECK_FIELD(FilterRecord, imageHRes, 160, 4);
QZ_CHECK_FIELD(FilterRecord, imageVRes, 164, 4);
QZ_CHECK_FIELD(FilterRecord, floatCoord, 168, 4);
QZ_CHECK_FIELD(FilterRecord, wholeSize, 172, 4);
QZ_CHECK_FIELD(FilterRecord, monitor, 176, 40);
QZ_CHECK_FIELD(FilterRecord, platformData, 216, 8);
QZ_CHECK_FIELD(FilterRecord, bufferProcs, 224, 8);
QZ_CHECK_FIELD(FilterRecord, resourceProcs, 232, 8);
QZ_CHECK_FIELD(FilterRecord, processEvent, 240, 8);
QZ_CHECK_FIELD(FilterRecord, displayPixels, 248, 8);
QZ_CHECK_FIELD(FilterRecord, handleProcs, 256, 8);
QZ_CHECK_FIELD(FilterRecord, supportsDummyChannels, 264, 1);
QZ_CHECK_FIELD(FilterRecord, supportsAlternateLayouts, 265, 1);
QZ_CHECK_FIELD(FilterRecord, wantLayout, 266, 2);
QZ_CHECK_FIELD(FilterRecord, filterCase, 268, 2);
QZ_CHECK_FIELD(FilterRecord, dummyPlaneValue, 270, 2);
QZ_CHECK_FIELD(FilterRecord, premiereHook, 272, 8);
QZ_CHECK_FIELD(FilterRecord, advanceState, 280, 8);
QZ_CHECK_FIELD(FilterRecord, supportsAbsolute, 288, 1);
QZ_CHECK_FIELD(FilterRecord, wantsAbsolute, 289, 1);
QZ_CHECK_FIELD(FilterRecord, getPropertyObsolete, 292, 8);
QZ_CHECK_FIELD(FilterRecord, cannotUndo, 300, 1);
QZ_CHECK_FIELD(FilterRecord, supportsPadding, 301, 1);
QZ_CHECK_FIELD(FilterRecord, inputPadding, 302, 2);
QZ_CHECK_FIELD(FilterRecord, outputPadding, 304, 2);
QZ_CHECK_FIELD(FilterRecord, maskPadding, 306, 2);
QZ_CHECK_FIELD(FilterRecord, samplingSupport, 308, 1);
QZ_CHECK_FIELD(FilterRecord, reservedByte, 309, 1);
QZ_CHECK_FIELD(FilterRecord, inputRate, 312, 4);
QZ_CHECK_FIELD(FilterRecord, maskRate, 316, 4);
QZ_CHECK_FIELD(FilterRecord, colorServices, 320, 8);
QZ_CHECK_FIELD(FilterRecord, inLayerPlanes, 328, 2);
QZ_CHECK_FIELD(FilterRecord, inTransparencyMask, 330, 2);
QZ_CHECK_FIELD(FilterRecord, inLayerMasks, 332, 2);
QZ_CHECK_FIELD(FilterRecord, inInvertedLayerMasks, 334, 2);
QZ_CHECK_FIELD(FilterRecord, inNonLayerPlanes, 336, 2);
QZ_CHECK_FIELD(FilterRecord, outLayerPlanes, 338, 2);
QZ_CHECK_FIELD(FilterRecord, outTransparencyMask, 340, 2);
QZ_CHECK_FIELD(FilterRecord, outLayerMasks, 342, 2);
QZ_CHECK_FIELD(FilterRecord, outInvertedLayerMasks, 344, 2);
QZ_CHECK_FIELD(FilterRecord, outNonLayerPlanes, 346, 2);
QZ_CHECK_FIELD(FilterRecord, absLayerPlanes, 348, 2);
QZ_CHECK_FIELD(FilterRecord, absTransparencyMask, 350, 2);
QZ_CHECK_FIELD(FilterRecord, absLayerMasks, 352, 2);
QZ_CHECK_FIELD(FilterRecord, absInvertedLayerMasks, 354, 2);
QZ_CHECK_FIELD(FilterRecord, absNonLayerPlanes, 356, 2);
QZ_CHECK_FIELD(FilterRecord, inPreDummyPlanes, 358, 2);
QZ_CHECK_FIELD(FilterRecord, inPostDummyPlanes, 360, 2);
QZ_CHECK_FIELD(FilterRecord, outPreDummyPlanes, 362, 2);
QZ_CHECK_FIELD(FilterRecord, outPostDummyPlanes, 364, 2);
QZ_CHECK_FIELD(FilterRecord, inColumnBytes, 368, 4);
QZ_CHECK_FIELD(FilterRecord, inPlaneBytes, 372, 4);
QZ_CHECK_FIELD(FilterRecord, outColumnBytes, 376, 4);
QZ_CHECK_FIELD(FilterRecord, outPlaneBytes, 380, 4);
QZ_CHECK_FIELD(FilterRecord, imageServicesProcs, 384, 8);
QZ_CHECK_FIELD(FilterRecord, propertyProcs, 392, 8);
QZ_CHECK_FIELD(FilterRecord, inTileHeight, 400, 2);
QZ_CHECK_FIELD(FilterRecord, inTileWidth, 402, 2);
QZ_CHECK_FIELD(FilterRecord, inTileOrigin, 404, 4);
QZ_CHECK_FIELD(FilterRecord, absTileHeight, 408, 2);
QZ_CHECK_FIELD(FilterRecord, absTileWidth, 410, 2);
QZ_CHECK_FIELD(FilterRecord, absTileOrigin, 412, 4);
QZ_CHECK_FIELD(FilterRecord, outTileHeight, 416, 2);
QZ_CHECK_FIELD(FilterRecord, outTileWidth, 418, 2);
QZ_CHECK_FIELD(FilterRecord, outTileOrigin, 420, 4);
QZ_CHECK_FIELD(FilterRecord, maskTileHeight, 424, 2);
QZ_CHECK_FIELD(FilterRecord, maskTileWidth, 426, 2);
QZ_CHECK_FIELD(FilterRecord, maskTileOrigin, 428, 4);
QZ_CHECK_FIELD(FilterRecord, descriptorParameters, 432, 8);
QZ_CHECK_FIELD(FilterRecord, errorString, 440, 8);
QZ_CHECK_FIELD(FilterRecord, channelPortProcs, 448, 8);
QZ_CHECK_FIELD(FilterRecord, documentInfo, 456, 8);
QZ_CHECK_FIELD(FilterRecord, sSPBasic, 464, 8);
QZ_CHECK_FIELD(FilterRecord, plugInRef, 472, 8);
QZ_CHECK_FIELD(FilterRecord, depth, 480, 4);
QZ_CHECK_FIELD(FilterRecord, iCCprofileData, 484, 8);
QZ_CHECK_FIELD(FilterRecord, iCCprofileSize, 492, 4);
QZ_CHECK_FIELD(FilterRecord, canUseICCProfiles, 496, 4);
QZ_CHECK_FIELD(FilterRecord, hasImageScrap, 500, 4);
QZ_CHECK_FIELD(FilterRecord, bigDocumentData, 504, 8);
QZ_CHECK_FIELD(FilterRecord, input3DScene, 512, 8);
QZ_CHECK_FIELD(FilterRecord, output3DScene, 520, 8);
QZ_CHECK_FIELD(FilterRecord, createNewLayer, 528, 1);
QZ_CHECK_FIELD(FilterRecord, iCCWorkingProfileData, 532, 8);
QZ_CHECK_FIELD(FilterRecord, iCCWorkingProfileSize, 540, 4);
QZ_CHECK_FIELD(FilterRecord, bufferSpace64, 544, 8);
QZ_CHECK_FIELD(FilterRecord, maxSpace64, 552, 8);
QZ_CHECK_FIELD(FilterRecord, allowOverrangeColors, 560, 1);
QZ_CHECK_FIELD(FilterRecord, reserved, 561, 45);
QZ_CHECK_SIZE(FilterRecord, 608);

// BigDocumentStruct (pack 4).
QZ_CHECK_FIELD(BigDocumentStruct, PluginUsing32BitCoordinates, 0, 4);
QZ_CHECK_FIELD(BigDocumentStruct, imageSize32, 4, 8);
QZ_CHECK_FIELD(BigDocumentStruct, filterRect32, 12, 16);
QZ_CHECK_FIELD(BigDocumentStruct, inRect32, 28, 16);
QZ_CHECK_FIELD(BigDocumentStruct, outRect32, 44, 16);
QZ_CHECK_FIELD(BigDocumentStruct, maskRect32, 60, 16);
QZ_CHECK_FIELD(BigDocumentStruct, floatCoord32, 76, 8);
QZ_CHECK_FIELD(BigDocumentStruct, wholeSize32, 84, 8);
QZ_CHECK_SIZE(BigDocumentStruct, 92);

// AboutRecord.
QZ_CHECK_FIELD(AboutRecord, platformData, 0, 8);
QZ_CHECK_FIELD(AboutRecord, sSPBasic, 8, 8);
QZ_CHECK_FIELD(AboutRecord, plugInRef, 16, 8);
QZ_CHECK_FIELD(AboutRecord, reserved, 24, 244);
QZ_CHECK_SIZE(AboutRecord, 272);

// HandleProcs.
QZ_CHECK_FIELD(HandleProcs, handleProcsVersion, 0, 2);
QZ_CHECK_FIELD(HandleProcs, numHandleProcs, 2, 2);
QZ_CHECK_FIELD(HandleProcs, newProc, 8, 8);
QZ_CHECK_FIELD(HandleProcs, disposeProc, 16, 8);
QZ_CHECK_FIELD(HandleProcs, getSizeProc, 24, 8);
QZ_CHECK_FIELD(HandleProcs, setSizeProc, 32, 8);
QZ_CHECK_FIELD(HandleProcs, lockProc, 40, 8);
QZ_CHECK_FIELD(HandleProcs, unlockProc, 48, 8);
QZ_CHECK_FIELD(HandleProcs, recoverSpaceProc, 56, 8);
QZ_CHECK_FIELD(HandleProcs, disposeRegularHandleProc, 64, 8);
QZ_CHECK_SIZE(HandleProcs, 72);

// BufferProcs.
QZ_CHECK_FIELD(BufferProcs, bufferProcsVersion, 0, 2);
QZ_CHECK_FIELD(BufferProcs, numBufferProcs, 2, 2);
QZ_CHECK_FIELD(BufferProcs, allocateProc, 8, 8);
QZ_CHECK_FIELD(BufferProcs, lockProc, 16, 8);
QZ_CHECK_FIELD(BufferProcs, unlockProc, 24, 8);
QZ_CHECK_FIELD(BufferProcs, freeProc, 32, 8);
QZ_CHECK_FIELD(BufferProcs, spaceProc, 40, 8);
QZ_CHECK_FIELD(BufferProcs, reserveProc, 48, 8);
QZ_CHECK_FIELD(BufferProcs, allocateProc64, 56, 8);
QZ_CHECK_FIELD(BufferProcs, spaceProc64, 64, 8);
QZ_CHECK_SIZE(BufferProcs, 72);

// PropertyProcs.
QZ_CHECK_FIELD(PropertyProcs, propertyProcsVersion, 0, 2);
QZ_CHECK_FIELD(PropertyProcs, numPropertyProcs, 2, 2);
QZ_CHECK_FIELD(PropertyProcs, getPropertyProc, 8, 8);
QZ_CHECK_FIELD(PropertyProcs, setPropertyProc, 16, 8);
QZ_CHECK_SIZE(PropertyProcs, 24);

// ResourceProcs.
QZ_CHECK_FIELD(ResourceProcs, resourceProcsVersion, 0, 2);
QZ_CHECK_FIELD(ResourceProcs, numResourceProcs, 2, 2);
QZ_CHECK_FIELD(ResourceProcs, countProc, 8, 8);
QZ_CHECK_FIELD(ResourceProcs, getProc, 16, 8);
QZ_CHECK_FIELD(ResourceProcs, deleteProc, 24, 8);
QZ_CHECK_FIELD(ResourceProcs, addProc, 32, 8);
QZ_CHECK_SIZE(ResourceProcs, 40);

// ColorServicesInfo.
QZ_CHECK_FIELD(ColorServicesInfo, infoSize, 0, 4);
QZ_CHECK_FIELD(ColorServicesInfo, selector, 4, 2);
QZ_CHECK_FIELD(ColorServicesInfo, sourceSpace, 6, 2);
QZ_CHECK_FIELD(ColorServicesInfo, resultSpace, 8, 2);
QZ_CHECK_FIELD(ColorServicesInfo, resultGamutInfoValid, 10, 1);
QZ_CHECK_FIELD(ColorServicesInfo, resultInGamut, 11, 1);
QZ_CHECK_FIELD(ColorServicesInfo, reservedSourceSpaceInfo, 16, 8);
QZ_CHECK_FIELD(ColorServicesInfo, reservedResultSpaceInfo, 24, 8);
QZ_CHECK_FIELD(ColorServicesInfo, colorComponents, 32, 8);
QZ_CHECK_FIELD(ColorServicesInfo, reserved, 40, 8);
QZ_CHECK_FIELD(ColorServicesInfo, selectorParameter, 48, 8);
QZ_CHECK_SIZE(ColorServicesInfo, 56);
QZ_CHECK_FIELD(ColorServicesSelectorParameter, pickerPrompt, 0, 8);
QZ_CHECK_FIELD(ColorServicesSelectorParameter, globalSamplePoint, 0, 8);
QZ_CHECK_FIELD(ColorServicesSelectorParameter, specialColorID, 0, 4);
QZ_CHECK_SIZE(ColorServicesSelectorParameter, 8);

// PSPixelMap.
QZ_CHECK_FIELD(PSPixelMap, version, 0, 4);
QZ_CHECK_FIELD(PSPixelMap, bounds, 4, 16);
QZ_CHECK_FIELD(PSPixelMap, imageMode, 20, 4);
QZ_CHECK_FIELD(PSPixelMap, rowBytes, 24, 4);
QZ_CHECK_FIELD(PSPixelMap, colBytes, 28, 4);
QZ_CHECK_FIELD(PSPixelMap, planeBytes, 32, 4);
QZ_CHECK_FIELD(PSPixelMap, baseAddr, 40, 8);
QZ_CHECK_FIELD(PSPixelMap, mat, 48, 8);
QZ_CHECK_FIELD(PSPixelMap, masks, 56, 8);
QZ_CHECK_FIELD(PSPixelMap, maskPhaseRow, 64, 4);
QZ_CHECK_FIELD(PSPixelMap, maskPhaseCol, 68, 4);
QZ_CHECK_FIELD(PSPixelMap, pixelOverlays, 72, 8);
QZ_CHECK_FIELD(PSPixelMap, colorManagementOptions, 80, 4);
QZ_CHECK_FIELD(PSPixelMap, depth, 84, 2);
QZ_CHECK_SIZE(PSPixelMap, 88);

// PSPixelMask.
QZ_CHECK_FIELD(PSPixelMask, next, 0, 8);
QZ_CHECK_FIELD(PSPixelMask, maskData, 8, 8);
QZ_CHECK_FIELD(PSPixelMask, rowBytes, 16, 4);
QZ_CHECK_FIELD(PSPixelMask, colBytes, 20, 4);
QZ_CHECK_FIELD(PSPixelMask, maskDescription, 24, 4);
QZ_CHECK_SIZE(PSPixelMask, 32);

// PIDescriptorParameters.
QZ_CHECK_FIELD(PIDescriptorParameters, descriptorParametersVersion, 0, 2);
QZ_CHECK_FIELD(PIDescriptorParameters, playInfo, 2, 2);
QZ_CHECK_FIELD(PIDescriptorParameters, recordInfo, 4, 2);
QZ_CHECK_FIELD(PIDescriptorParameters, descriptor, 8, 8);
QZ_CHECK_FIELD(PIDescriptorParameters, writeDescriptorProcs, 16, 8);
QZ_CHECK_FIELD(PIDescriptorParameters, readDescriptorProcs, 24, 8);
QZ_CHECK_SIZE(PIDescriptorParameters, 32);

// ReadDescriptorProcs.
QZ_CHECK_FIELD(ReadDescriptorProcs, readDescriptorProcsVersion, 0, 2);
QZ_CHECK_FIELD(ReadDescriptorProcs, numReadDescriptorProcs, 2, 2);
QZ_CHECK_FIELD(ReadDescriptorProcs, openReadDescriptorProc, 8, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, closeReadDescriptorProc, 16, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getKeyProc, 24, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getIntegerProc, 32, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getFloatProc, 40, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getUnitFloatProc, 48, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getBooleanProc, 56, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getTextProc, 64, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getAliasProc, 72, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getEnumeratedProc, 80, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getClassProc, 88, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getSimpleReferenceProc, 96, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getObjectProc, 104, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getCountProc, 112, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getStringProc, 120, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getPinnedIntegerProc, 128, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getPinnedFloatProc, 136, 8);
QZ_CHECK_FIELD(ReadDescriptorProcs, getPinnedUnitFloatProc, 144, 8);
QZ_CHECK_SIZE(ReadDescriptorProcs, 152);

// WriteDescriptorProcs.
QZ_CHECK_FIELD(WriteDescriptorProcs, writeDescriptorProcsVersion, 0, 2);
QZ_CHECK_FIELD(WriteDescriptorProcs, numWriteDescriptorProcs, 2, 2);
QZ_CHECK_FIELD(WriteDescriptorProcs, openWriteDescriptorProc, 8, 8);
QZ_CHECK_FIELD(WriteDescriptorProcs, closeWriteDescriptorProc, 16, 8);
QZ_CHECK_FIELD(WriteDescriptorProcs, putIntegerProc, 24, 8);
QZ_CHECK_FIELD(WriteDescriptorProcs, putFloatProc, 32, 8);
QZ_CHECK_FIELD(WriteDescriptorProcs, putUnitFloatProc, 40, 8);
QZ_CHECK_FIELD(WriteDescriptorProcs, putBooleanProc, 48, 8);
QZ_CHECK_FIELD(WriteDescriptorProcs, putTextProc, 56, 8);
QZ_CHECK_FIELD(WriteDescriptorProcs, putAliasProc, 64, 8);
QZ_CHECK_FIELD(WriteDescriptorProcs, putEnumeratedProc, 72, 8);
QZ_CHECK_FIELD(WriteDescriptorProcs, putClassProc, 80, 8);
QZ_CHECK_FIELD(WriteDescriptorProcs, putSimpleReferenceProc, 88, 8);
QZ_CHECK_FIELD(WriteDescriptorProcs, putObjectProc, 96, 8);
QZ_CHECK_FIELD(WriteDescriptorProcs, putCountProc, 104, 8);
QZ_CHECK_FIELD(WriteDescriptorProcs, putStringProc, 112, 8);
QZ_CHECK_FIELD(WriteDescriptorProcs, putScopedClassProc, 120, 8);
QZ_CHECK_FIELD(WriteDescriptorProcs, putScopedObjectProc, 128, 8);
QZ_CHECK_SIZE(WriteDescriptorProcs, 136);

// PIDescriptorSimpleReference; keyData starts at 8, so its fields sit 8 further on.
QZ_CHECK_FIELD(PIDescriptorSimpleReference, desiredClass, 0, 4);
QZ_CHECK_FIELD(PIDescriptorSimpleReference, keyForm, 4, 4);
QZ_CHECK_FIELD(PIDescriptorSimpleReference, keyData, 8, 268);
QZ_CHECK_FIELD(PIDescriptorKeyData, name, 8 - 8, 256);
QZ_CHECK_FIELD(PIDescriptorKeyData, index, 264 - 8, 4);
QZ_CHECK_FIELD(PIDescriptorKeyData, type, 268 - 8, 4);
QZ_CHECK_FIELD(PIDescriptorKeyData, value, 272 - 8, 4);
QZ_CHECK_SIZE(PIDescriptorKeyData, 268);
QZ_CHECK_SIZE(PIDescriptorSimpleReference, 276);

// ChannelPortProcs.
QZ_CHECK_FIELD(ChannelPortProcs, channelPortProcsVersion, 0, 2);
QZ_CHECK_FIELD(ChannelPortProcs, numChannelPortProcs, 2, 2);
QZ_CHECK_FIELD(ChannelPortProcs, readPixelsProc, 8, 8);
QZ_CHECK_FIELD(ChannelPortProcs, writeBasePixelsProc, 16, 8);
QZ_CHECK_FIELD(ChannelPortProcs, readPortForWritePortProc, 24, 8);
QZ_CHECK_SIZE(ChannelPortProcs, 32);

// PixelMemoryDesc.
QZ_CHECK_FIELD(PixelMemoryDesc, data, 0, 8);
QZ_CHECK_FIELD(PixelMemoryDesc, rowBits, 8, 4);
QZ_CHECK_FIELD(PixelMemoryDesc, colBits, 12, 4);
QZ_CHECK_FIELD(PixelMemoryDesc, bitOffset, 16, 4);
QZ_CHECK_FIELD(PixelMemoryDesc, depth, 20, 4);
QZ_CHECK_SIZE(PixelMemoryDesc, 24);

// PSScaling.
QZ_CHECK_FIELD(PSScaling, sourceRect, 0, 16);
QZ_CHECK_FIELD(PSScaling, destinationRect, 16, 16);
QZ_CHECK_SIZE(PSScaling, 32);

// ReadImageDocumentDesc.
QZ_CHECK_FIELD(ReadImageDocumentDesc, minVersion, 0, 4);
QZ_CHECK_FIELD(ReadImageDocumentDesc, maxVersion, 4, 4);
QZ_CHECK_FIELD(ReadImageDocumentDesc, imageMode, 8, 4);
QZ_CHECK_FIELD(ReadImageDocumentDesc, depth, 12, 4);
QZ_CHECK_FIELD(ReadImageDocumentDesc, bounds, 16, 16);
QZ_CHECK_FIELD(ReadImageDocumentDesc, hResolution, 32, 4);
QZ_CHECK_FIELD(ReadImageDocumentDesc, vResolution, 36, 4);
QZ_CHECK_FIELD(ReadImageDocumentDesc, redLUT, 40, 256);
QZ_CHECK_FIELD(ReadImageDocumentDesc, greenLUT, 296, 256);
QZ_CHECK_FIELD(ReadImageDocumentDesc, blueLUT, 552, 256);
QZ_CHECK_FIELD(ReadImageDocumentDesc, targetCompositeChannels, 808, 8);
QZ_CHECK_FIELD(ReadImageDocumentDesc, targetTransparency, 816, 8);
QZ_CHECK_FIELD(ReadImageDocumentDesc, targetLayerMask, 824, 8);
QZ_CHECK_FIELD(ReadImageDocumentDesc, mergedCompositeChannels, 832, 8);
QZ_CHECK_FIELD(ReadImageDocumentDesc, mergedTransparency, 840, 8);
QZ_CHECK_FIELD(ReadImageDocumentDesc, alphaChannels, 848, 8);
QZ_CHECK_FIELD(ReadImageDocumentDesc, selection, 856, 8);
QZ_CHECK_FIELD(ReadImageDocumentDesc, fileSpec, 864, 8);
QZ_CHECK_FIELD(ReadImageDocumentDesc, layersDescriptor, 872, 8);
QZ_CHECK_FIELD(ReadImageDocumentDesc, documentType, 880, 4);
QZ_CHECK_FIELD(ReadImageDocumentDesc, next, 888, 8);
QZ_CHECK_FIELD(ReadImageDocumentDesc, iCCprofileData, 896, 8);
QZ_CHECK_FIELD(ReadImageDocumentDesc, iCCprofileSize, 904, 4);
QZ_CHECK_FIELD(ReadImageDocumentDesc, compositeChannelCount, 908, 4);
QZ_CHECK_FIELD(ReadImageDocumentDesc, layerCount, 912, 4);
QZ_CHECK_FIELD(ReadImageDocumentDesc, alphaChannelCount, 916, 4);
QZ_CHECK_FIELD(ReadImageDocumentDesc, targetSmartFilterMask, 920, 8);
QZ_CHECK_FIELD(ReadImageDocumentDesc, fileSpecW, 928, 8);
QZ_CHECK_FIELD(ReadImageDocumentDesc, fileSpecX, 936, 8);
QZ_CHECK_SIZE(ReadImageDocumentDesc, 944);

// ReadChannelDesc.
QZ_CHECK_FIELD(ReadChannelDesc, minVersion, 0, 4);
QZ_CHECK_FIELD(ReadChannelDesc, maxVersion, 4, 4);
QZ_CHECK_FIELD(ReadChannelDesc, next, 8, 8);
QZ_CHECK_FIELD(ReadChannelDesc, port, 16, 8);
QZ_CHECK_FIELD(ReadChannelDesc, bounds, 24, 16);
QZ_CHECK_FIELD(ReadChannelDesc, depth, 40, 4);
QZ_CHECK_FIELD(ReadChannelDesc, tileSize, 44, 8);
QZ_CHECK_FIELD(ReadChannelDesc, tileOrigin, 52, 8);
QZ_CHECK_FIELD(ReadChannelDesc, target, 60, 1);
QZ_CHECK_FIELD(ReadChannelDesc, shown, 61, 1);
QZ_CHECK_FIELD(ReadChannelDesc, channelType, 62, 2);
QZ_CHECK_FIELD(ReadChannelDesc, contextInfo, 64, 8);
QZ_CHECK_FIELD(ReadChannelDesc, name, 72, 8);
QZ_CHECK_FIELD(ReadChannelDesc, writePort, 80, 8);
QZ_CHECK_FIELD(ReadChannelDesc, alphaID, 88, 4);
QZ_CHECK_FIELD(ReadChannelDesc, unicodeName, 96, 8);
QZ_CHECK_FIELD(ReadChannelDesc, isEnabled, 104, 1);
QZ_CHECK_FIELD(ReadChannelDesc, limitBounds, 108, 16);
QZ_CHECK_SIZE(ReadChannelDesc, 128);

// ReadLayerDesc.
QZ_CHECK_FIELD(ReadLayerDesc, minVersion, 0, 4);
QZ_CHECK_FIELD(ReadLayerDesc, maxVersion, 4, 4);
QZ_CHECK_FIELD(ReadLayerDesc, next, 8, 8);
QZ_CHECK_FIELD(ReadLayerDesc, compositeChannelsList, 16, 8);
QZ_CHECK_FIELD(ReadLayerDesc, transparency, 24, 8);
QZ_CHECK_FIELD(ReadLayerDesc, layerMask, 32, 8);
QZ_CHECK_FIELD(ReadLayerDesc, sheetID, 40, 4);
QZ_CHECK_FIELD(ReadLayerDesc, name, 48, 8);
QZ_CHECK_FIELD(ReadLayerDesc, isPixelBased, 56, 1);
QZ_CHECK_FIELD(ReadLayerDesc, unicodeName, 64, 8);
QZ_CHECK_FIELD(ReadLayerDesc, isVisible, 72, 1);
QZ_CHECK_FIELD(ReadLayerDesc, isAdjustor, 73, 1);
QZ_CHECK_FIELD(ReadLayerDesc, isContentGenerator, 74, 1);
QZ_CHECK_FIELD(ReadLayerDesc, isRendered, 75, 1);
QZ_CHECK_FIELD(ReadLayerDesc, opacity, 76, 1);
QZ_CHECK_FIELD(ReadLayerDesc, fillOpacity, 77, 1);
QZ_CHECK_FIELD(ReadLayerDesc, blendMode, 80, 4);
QZ_CHECK_FIELD(ReadLayerDesc, vectorMask, 88, 8);
QZ_CHECK_FIELD(ReadLayerDesc, smartFilterMask, 96, 8);
QZ_CHECK_SIZE(ReadLayerDesc, 104);

// WriteChannelDesc.
QZ_CHECK_FIELD(WriteChannelDesc, minVersion, 0, 4);
QZ_CHECK_FIELD(WriteChannelDesc, maxVersion, 4, 4);
QZ_CHECK_FIELD(WriteChannelDesc, next, 8, 8);
QZ_CHECK_FIELD(WriteChannelDesc, port, 16, 8);
QZ_CHECK_FIELD(WriteChannelDesc, bounds, 24, 16);
QZ_CHECK_FIELD(WriteChannelDesc, depth, 40, 4);
QZ_CHECK_FIELD(WriteChannelDesc, tileSize, 44, 8);
QZ_CHECK_FIELD(WriteChannelDesc, tileOrigin, 52, 8);
QZ_CHECK_FIELD(WriteChannelDesc, channelType, 60, 2);
QZ_CHECK_FIELD(WriteChannelDesc, padding, 62, 2);
QZ_CHECK_FIELD(WriteChannelDesc, contextInfo, 64, 8);
QZ_CHECK_FIELD(WriteChannelDesc, name, 72, 8);
QZ_CHECK_FIELD(WriteChannelDesc, unicodeName, 80, 8);
QZ_CHECK_SIZE(WriteChannelDesc, 88);

// SPBasicSuite.
QZ_CHECK_FIELD(SPBasicSuite, AcquireSuite, 0, 8);
QZ_CHECK_FIELD(SPBasicSuite, ReleaseSuite, 8, 8);
QZ_CHECK_FIELD(SPBasicSuite, IsEqual, 16, 8);
QZ_CHECK_FIELD(SPBasicSuite, AllocateBlock, 24, 8);
QZ_CHECK_FIELD(SPBasicSuite, FreeBlock, 32, 8);
QZ_CHECK_FIELD(SPBasicSuite, ReallocateBlock, 40, 8);
QZ_CHECK_FIELD(SPBasicSuite, Undefined, 48, 8);
QZ_CHECK_SIZE(SPBasicSuite, 56);

// Action descriptor suite: v2 fills slots 0-45, v3 0-47, v5 0-52.
QZ_CHECK_SLOT(PSActionDescriptorProcs, Make, 0);
QZ_CHECK_SLOT(PSActionDescriptorProcs, Free, 1);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetType, 2);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetKey, 3);
QZ_CHECK_SLOT(PSActionDescriptorProcs, HasKey, 4);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetCount, 5);
QZ_CHECK_SLOT(PSActionDescriptorProcs, IsEqual, 6);
QZ_CHECK_SLOT(PSActionDescriptorProcs, Erase, 7);
QZ_CHECK_SLOT(PSActionDescriptorProcs, Clear, 8);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutInteger, 9);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutFloat, 10);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutUnitFloat, 11);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutString, 12);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutBoolean, 13);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutList, 14);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutObject, 15);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutGlobalObject, 16);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutEnumerated, 17);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutReference, 18);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutClass, 19);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutGlobalClass, 20);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutAlias, 21);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetInteger, 22);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetFloat, 23);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetUnitFloat, 24);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetStringLength, 25);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetString, 26);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetBoolean, 27);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetList, 28);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetObject, 29);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetGlobalObject, 30);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetEnumerated, 31);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetReference, 32);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetClass, 33);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetGlobalClass, 34);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetAlias, 35);
QZ_CHECK_SLOT(PSActionDescriptorProcs, HasKeys, 36);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutIntegers, 37);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetIntegers, 38);
QZ_CHECK_SLOT(PSActionDescriptorProcs, AsHandle, 39);
QZ_CHECK_SLOT(PSActionDescriptorProcs, HandleToDescriptor, 40);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutZString, 41);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetZString, 42);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutData, 43);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetDataLength, 44);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetData, 45);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutInteger64, 46);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetInteger64, 47);
QZ_CHECK_SLOT(PSActionDescriptorProcs, MakeWithClass, 48);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetDescriptorClass, 49);
QZ_CHECK_SLOT(PSActionDescriptorProcs, Copy, 50);
QZ_CHECK_SLOT(PSActionDescriptorProcs, PutBookmark, 51);
QZ_CHECK_SLOT(PSActionDescriptorProcs, GetBookmark, 52);
QZ_CHECK_SIZE(PSActionDescriptorProcs, 424);

// Action list suite: v1 fills slots 0-37, v2 0-39, v3 0-41.
QZ_CHECK_SLOT(PSActionListProcs, Make, 0);
QZ_CHECK_SLOT(PSActionListProcs, Free, 1);
QZ_CHECK_SLOT(PSActionListProcs, GetType, 2);
QZ_CHECK_SLOT(PSActionListProcs, GetCount, 3);
QZ_CHECK_SLOT(PSActionListProcs, PutInteger, 4);
QZ_CHECK_SLOT(PSActionListProcs, PutFloat, 5);
QZ_CHECK_SLOT(PSActionListProcs, PutUnitFloat, 6);
QZ_CHECK_SLOT(PSActionListProcs, PutString, 7);
QZ_CHECK_SLOT(PSActionListProcs, PutBoolean, 8);
QZ_CHECK_SLOT(PSActionListProcs, PutList, 9);
QZ_CHECK_SLOT(PSActionListProcs, PutObject, 10);
QZ_CHECK_SLOT(PSActionListProcs, PutGlobalObject, 11);
QZ_CHECK_SLOT(PSActionListProcs, PutEnumerated, 12);
QZ_CHECK_SLOT(PSActionListProcs, PutReference, 13);
QZ_CHECK_SLOT(PSActionListProcs, PutClass, 14);
QZ_CHECK_SLOT(PSActionListProcs, PutGlobalClass, 15);
QZ_CHECK_SLOT(PSActionListProcs, PutAlias, 16);
QZ_CHECK_SLOT(PSActionListProcs, GetInteger, 17);
QZ_CHECK_SLOT(PSActionListProcs, GetFloat, 18);
QZ_CHECK_SLOT(PSActionListProcs, GetUnitFloat, 19);
QZ_CHECK_SLOT(PSActionListProcs, GetStringLength, 20);
QZ_CHECK_SLOT(PSActionListProcs, GetString, 21);
QZ_CHECK_SLOT(PSActionListProcs, GetBoolean, 22);
QZ_CHECK_SLOT(PSActionListProcs, GetList, 23);
QZ_CHECK_SLOT(PSActionListProcs, GetObject, 24);
QZ_CHECK_SLOT(PSActionListProcs, GetGlobalObject, 25);
QZ_CHECK_SLOT(PSActionListProcs, GetEnumerated, 26);
QZ_CHECK_SLOT(PSActionListProcs, GetReference, 27);
QZ_CHECK_SLOT(PSActionListProcs, GetClass, 28);
QZ_CHECK_SLOT(PSActionListProcs, GetGlobalClass, 29);
QZ_CHECK_SLOT(PSActionListProcs, GetAlias, 30);
QZ_CHECK_SLOT(PSActionListProcs, PutIntegers, 31);
QZ_CHECK_SLOT(PSActionListProcs, GetIntegers, 32);
QZ_CHECK_SLOT(PSActionListProcs, PutData, 33);
QZ_CHECK_SLOT(PSActionListProcs, GetDataLength, 34);
QZ_CHECK_SLOT(PSActionListProcs, GetData, 35);
QZ_CHECK_SLOT(PSActionListProcs, PutZString, 36);
QZ_CHECK_SLOT(PSActionListProcs, GetZString, 37);
QZ_CHECK_SLOT(PSActionListProcs, PutInteger64, 38);
QZ_CHECK_SLOT(PSActionListProcs, GetInteger64, 39);
QZ_CHECK_SLOT(PSActionListProcs, PutBookmark, 40);
QZ_CHECK_SLOT(PSActionListProcs, GetBookmark, 41);
QZ_CHECK_SIZE(PSActionListProcs, 336);

// Action reference suite: v2 fills slots 0-18, v3 0-20.
QZ_CHECK_SLOT(PSActionReferenceProcs, Make, 0);
QZ_CHECK_SLOT(PSActionReferenceProcs, Free, 1);
QZ_CHECK_SLOT(PSActionReferenceProcs, GetForm, 2);
QZ_CHECK_SLOT(PSActionReferenceProcs, GetDesiredClass, 3);
QZ_CHECK_SLOT(PSActionReferenceProcs, PutName, 4);
QZ_CHECK_SLOT(PSActionReferenceProcs, PutIndex, 5);
QZ_CHECK_SLOT(PSActionReferenceProcs, PutIdentifier, 6);
QZ_CHECK_SLOT(PSActionReferenceProcs, PutOffset, 7);
QZ_CHECK_SLOT(PSActionReferenceProcs, PutEnumerated, 8);
QZ_CHECK_SLOT(PSActionReferenceProcs, PutProperty, 9);
QZ_CHECK_SLOT(PSActionReferenceProcs, PutClass, 10);
QZ_CHECK_SLOT(PSActionReferenceProcs, GetNameLength, 11);
QZ_CHECK_SLOT(PSActionReferenceProcs, GetName, 12);
QZ_CHECK_SLOT(PSActionReferenceProcs, GetIndex, 13);
QZ_CHECK_SLOT(PSActionReferenceProcs, GetIdentifier, 14);
QZ_CHECK_SLOT(PSActionReferenceProcs, GetOffset, 15);
QZ_CHECK_SLOT(PSActionReferenceProcs, GetEnumerated, 16);
QZ_CHECK_SLOT(PSActionReferenceProcs, GetProperty, 17);
QZ_CHECK_SLOT(PSActionReferenceProcs, GetContainer, 18);
QZ_CHECK_SLOT(PSActionReferenceProcs, PutNameZString, 19);
QZ_CHECK_SLOT(PSActionReferenceProcs, GetNameZString, 20);
QZ_CHECK_SIZE(PSActionReferenceProcs, 168);

// Basic action control suite: v1 and v2 fill slots 0-3, v3 0-5.
QZ_CHECK_SLOT(PSBasicActionControlProcs, Get, 0);
QZ_CHECK_SLOT(PSBasicActionControlProcs, StringIDToTypeID, 1);
QZ_CHECK_SLOT(PSBasicActionControlProcs, TypeIDToStringID, 2);
QZ_CHECK_SLOT(PSBasicActionControlProcs, MakeStringAlias, 3);
QZ_CHECK_SLOT(PSBasicActionControlProcs, ConvertAliasHandleToBookmark, 4);
QZ_CHECK_SLOT(PSBasicActionControlProcs, ConvertBookmarkToAliasHandle, 5);
QZ_CHECK_SIZE(PSBasicActionControlProcs, 48);

// Descriptor registry suite: v1 fills slots 0-2.
QZ_CHECK_SLOT(PSDescriptorRegistryProcs, Register, 0);
QZ_CHECK_SLOT(PSDescriptorRegistryProcs, Erase, 1);
QZ_CHECK_SLOT(PSDescriptorRegistryProcs, Get, 2);
QZ_CHECK_SIZE(PSDescriptorRegistryProcs, 24);

// Colour space suite values.
QZ_CHECK_FIELD(XYZColor, x, 0, 2);
QZ_CHECK_FIELD(XYZColor, y, 2, 2);
QZ_CHECK_FIELD(XYZColor, z, 4, 2);
QZ_CHECK_SIZE(XYZColor, 6);
QZ_CHECK_SIZE(Color8, 4);
QZ_CHECK_SIZE(Color16, 8);

// Colour space suite: v1 fills slots 0-15, v2 0-17.
QZ_CHECK_SLOT(PSColorSpaceSuite, Make, 0);
QZ_CHECK_SLOT(PSColorSpaceSuite, Delete, 1);
QZ_CHECK_SLOT(PSColorSpaceSuite, StuffComponents, 2);
QZ_CHECK_SLOT(PSColorSpaceSuite, ExtractComponents, 3);
QZ_CHECK_SLOT(PSColorSpaceSuite, StuffXYZ, 4);
QZ_CHECK_SLOT(PSColorSpaceSuite, ExtractXYZ, 5);
QZ_CHECK_SLOT(PSColorSpaceSuite, Convert8, 6);
QZ_CHECK_SLOT(PSColorSpaceSuite, Convert16, 7);
QZ_CHECK_SLOT(PSColorSpaceSuite, GetNativeSpace, 8);
QZ_CHECK_SLOT(PSColorSpaceSuite, IsBookColor, 9);
QZ_CHECK_SLOT(PSColorSpaceSuite, ExtractColorName, 10);
QZ_CHECK_SLOT(PSColorSpaceSuite, PickColor, 11);
QZ_CHECK_SLOT(PSColorSpaceSuite, Convert8to16, 12);
QZ_CHECK_SLOT(PSColorSpaceSuite, Convert16to8, 13);
QZ_CHECK_SLOT(PSColorSpaceSuite, ConvertToMonitorRGB, 14);
QZ_CHECK_SLOT(PSColorSpaceSuite, Convert32to8, 15);
QZ_CHECK_SLOT(PSColorSpaceSuite, ConvertForDisplay, 16);
QZ_CHECK_SLOT(PSColorSpaceSuite, GetDisplayProfile, 17);
QZ_CHECK_SIZE(PSColorSpaceSuite, 144);

// Channel ports suite: v2 fills slots 0-14, v3 0-21.
QZ_CHECK_SLOT(PSChannelPortsSuite, CountLevels, 0);
QZ_CHECK_SLOT(PSChannelPortsSuite, GetDepth, 1);
QZ_CHECK_SLOT(PSChannelPortsSuite, GetDataBounds, 2);
QZ_CHECK_SLOT(PSChannelPortsSuite, GetWriteLimit, 3);
QZ_CHECK_SLOT(PSChannelPortsSuite, GetTilingGrid, 4);
QZ_CHECK_SLOT(PSChannelPortsSuite, GetSupportRect, 5);
QZ_CHECK_SLOT(PSChannelPortsSuite, GetDependentRect, 6);
QZ_CHECK_SLOT(PSChannelPortsSuite, CanRead, 7);
QZ_CHECK_SLOT(PSChannelPortsSuite, CanWrite, 8);
QZ_CHECK_SLOT(PSChannelPortsSuite, ReadPixelsFromLevel, 9);
QZ_CHECK_SLOT(PSChannelPortsSuite, WritePixelsToBaseLevel, 10);
QZ_CHECK_SLOT(PSChannelPortsSuite, ReadScaledPixels, 11);
QZ_CHECK_SLOT(PSChannelPortsSuite, FindSourceForScaledRead, 12);
QZ_CHECK_SLOT(PSChannelPortsSuite, New, 13);
QZ_CHECK_SLOT(PSChannelPortsSuite, Dispose, 14);
QZ_CHECK_SLOT(PSChannelPortsSuite, SupportsOperation, 15);
QZ_CHECK_SLOT(PSChannelPortsSuite, ApplyOperation, 16);
QZ_CHECK_SLOT(PSChannelPortsSuite, AddOperation, 17);
QZ_CHECK_SLOT(PSChannelPortsSuite, RemoveOperation, 18);
QZ_CHECK_SLOT(PSChannelPortsSuite, NewCopyOnWrite, 19);
QZ_CHECK_SLOT(PSChannelPortsSuite, Freeze, 20);
QZ_CHECK_SLOT(PSChannelPortsSuite, Restore, 21);
QZ_CHECK_SIZE(PSChannelPortsSuite, 176);

#undef QZ_CHECK_FIELD
#undef QZ_CHECK_SLOT
#undef QZ_CHECK_SIZE
