// Values of the filter interface: selectors, filter cases, image modes, padding, sampling,
// layouts, host signatures, property keys, error codes and colour services.
#pragma once

#include "host/abi/Types.h"

// ---- Interface version ----

constexpr int16 latestFilterVersion = 4;
constexpr int16 latestFilterSubVersion = 0;

// ---- Selectors (PluginMain's first argument); only these six exist for filters ----

constexpr int16 filterSelectorAbout = 0; // paramBlock is an AboutRecord
constexpr int16 filterSelectorParameters = 1;
constexpr int16 filterSelectorPrepare = 2;
constexpr int16 filterSelectorStart = 3;
constexpr int16 filterSelectorContinue = 4;
constexpr int16 filterSelectorFinish = 5;

// ---- filterCase ----

constexpr int16 filterCaseUnsupported = -1;
constexpr int16 filterCaseNotSet = 0; // fall back on haveMask and isFloating
constexpr int16 filterCaseFlatImageNoSelection = 1;
constexpr int16 filterCaseFlatImageWithSelection = 2;
constexpr int16 filterCaseFloatingSelection = 3;
constexpr int16 filterCaseEditableTransparencyNoSelection = 4;
constexpr int16 filterCaseEditableTransparencyWithSelection = 5;
constexpr int16 filterCaseProtectedTransparencyNoSelection = 6;
constexpr int16 filterCaseProtectedTransparencyWithSelection = 7;

// ---- imageMode ----

constexpr int16 plugInModeBitmap = 0;
constexpr int16 plugInModeGrayScale = 1;
constexpr int16 plugInModeIndexedColor = 2;
constexpr int16 plugInModeRGBColor = 3;
constexpr int16 plugInModeCMYKColor = 4;
constexpr int16 plugInModeHSLColor = 5;
constexpr int16 plugInModeHSBColor = 6;
constexpr int16 plugInModeMultichannel = 7;
constexpr int16 plugInModeDuotone = 8;
constexpr int16 plugInModeLabColor = 9;
constexpr int16 plugInModeGray16 = 10;
constexpr int16 plugInModeRGB48 = 11;
constexpr int16 plugInModeLab48 = 12;
constexpr int16 plugInModeCMYK64 = 13;
constexpr int16 plugInModeDeepMultichannel = 14;
constexpr int16 plugInModeDuotone16 = 15;
constexpr int16 plugInModeRGB96 = 16;
constexpr int16 plugInModeGray32 = 17;

// ---- inputPadding, outputPadding, maskPadding (0-255 is a fill value) ----

constexpr int16 plugInWantsEdgeReplication = -1;
constexpr int16 plugInDoesNotWantPadding = -2;
constexpr int16 plugInWantsErrorOnBoundsException = -3; // the default

// ---- samplingSupport ----

constexpr char hostDoesNotSupportSampling = 0;
constexpr char hostSupportsIntegralSampling = 1;
constexpr char hostSupportsFractionalSampling = 2;

// ---- wantLayout ----

constexpr int16 piLayoutTraditional = 0; // rows, columns, planes interleaved
constexpr int16 piLayoutRowsColumnsPlanes = 1;
constexpr int16 piLayoutRowsPlanesColumns = 2;
constexpr int16 piLayoutColumnsRowsPlanes = 3;
constexpr int16 piLayoutColumnsPlanesRows = 4;
constexpr int16 piLayoutPlanesRowsColumns = 5;
constexpr int16 piLayoutPlanesColumnsRows = 6;

// ---- Host signatures (hostSig) ----

constexpr OSType kPhotoshopSignature = FourCC("8BIM");
constexpr OSType kAnyHostSignature = FourCC("    "); // PiPL 'host' value only
constexpr OSType kPSFilterPdnSignature = FourCC("NDP.");

// ---- Property keys (signature kPhotoshopSignature) ----

constexpr PIType propNumberOfChannels = FourCC("nuch");
constexpr PIType propChannelName = FourCC("nmch"); // complex, indexed
constexpr PIType propImageMode = FourCC("mode");
constexpr PIType propInterpolationMethod = FourCC("intp");
constexpr PIType propWatchSuspension = FourCC("wtch"); // settable
constexpr PIType propDocumentWidth = FourCC("docW");
constexpr PIType propDocumentHeight = FourCC("docH");
constexpr PIType propTitle = FourCC("titl"); // complex
constexpr PIType propUnicodeName = FourCC("unnm");
constexpr PIType propSerialString = FourCC("sstR");
constexpr PIType propHostDPIAware = FourCC("HDPI");
constexpr PIType propVersion = FourCC("vers");
constexpr PIType propTileSize = FourCC("TSiz");

// ---- Errors (negative OSErr values) ----

constexpr OSErr filterBadParameters = -30100;
constexpr OSErr filterBadMode = -30101;

constexpr OSErr errPlugInHostInsufficient = -30900;
constexpr OSErr errPlugInPropertyUndefined = -30901;
constexpr OSErr errHostDoesNotSupportColStep = -30902;
constexpr OSErr errInvalidSamplePoint = -30903;
constexpr OSErr errReportString = -30904; // the host reports *errorString
constexpr OSErr errHostVersionIncompatible = -30905;
constexpr OSErr errUnknownPort = -30910;
constexpr OSErr errUnsupportedRowBits = -30911;
constexpr OSErr errUnsupportedColBits = -30912;
constexpr OSErr errUnsupportedBitOffset = -30913;
constexpr OSErr errUnsupportedDepth = -30914;
constexpr OSErr errUnsupportedDepthConversion = -30915;
constexpr OSErr errWrongPlatformFilePath = -30916;
constexpr OSErr errIllegalCharInID = -30917;
constexpr OSErr errMissingParameter = -1715;

// Operating-system style codes, with their Windows values.
constexpr OSErr noErr = 0;
constexpr OSErr coercedParamErr = 2; // a descriptor value was coerced or pinned
constexpr OSErr readErr = -19;
constexpr OSErr writErr = -20;
constexpr OSErr openErr = -23;
constexpr OSErr dskFulErr = -34;
constexpr OSErr ioErr = -36;
constexpr OSErr eofErr = -39; // also the end of a descriptor
constexpr OSErr fnfErr = -43;
constexpr OSErr fLckdErr = -45;
constexpr OSErr vLckdErr = -46;
constexpr OSErr paramErr = -50;
constexpr OSErr memFullErr = -108;
constexpr OSErr nilHandleErr = -109;
constexpr OSErr memWZErr = -111;
constexpr OSErr userCanceledErr = -128;

// ---- Colour services (ColorServicesInfo) ----

constexpr int16 plugIncolorServicesChooseColor = 0;
constexpr int16 plugIncolorServicesConvertColor = 1;
constexpr int16 plugIncolorServicesSamplePoint = 2;
constexpr int16 plugIncolorServicesGetSpecialColor = 3;

// Colour spaces, also the space ids of the colour space suite.
constexpr int16 plugIncolorServicesChosenSpace = -1; // result only: keep the user's choice
constexpr int16 plugIncolorServicesRGBSpace = 0;
constexpr int16 plugIncolorServicesHSBSpace = 1;
constexpr int16 plugIncolorServicesCMYKSpace = 2; // components inverted: 0 is full ink
constexpr int16 plugIncolorServicesLabSpace = 3;
constexpr int16 plugIncolorServicesGraySpace = 4;
constexpr int16 plugIncolorServicesHSLSpace = 5;
constexpr int16 plugIncolorServicesXYZSpace = 6;

// specialColorID
constexpr int32 plugIncolorServicesForegroundColor = 0;
constexpr int32 plugIncolorServicesBackgroundColor = 1;
