#include "ChannelPorts.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <unordered_map>

namespace hostsim {
namespace {

using Port = ChannelPorts::Port;

// Every live port of every ChannelPorts under an id never used twice, so a stale or foreign
// port is told apart even when the memory of a dead one is reused.
std::mutex gPortsLock;
std::unordered_map<uintptr_t, const Port*> gPorts;
uintptr_t gNextPortId = 0x10000;

const Port* FindPort(PIChannelPort port) {
    std::lock_guard<std::mutex> lock(gPortsLock);
    const auto it = gPorts.find(reinterpret_cast<uintptr_t>(port));
    return it == gPorts.end() ? nullptr : it->second;
}

VRect BoundsOf(const Port& p) { return {0, 0, p.height, p.width}; }

OSErr CheckDestination(const Port& port, const PixelMemoryDesc* dest) {
    if (!dest || !dest->data) return paramErr;
    if (dest->depth != 8 && dest->depth != 16) return errUnsupportedDepth;
    if (dest->depth != port.depth) return errUnsupportedDepthConversion;
    if (dest->rowBits < 0 || dest->rowBits % 8) return errUnsupportedRowBits;
    if (dest->colBits < dest->depth || dest->colBits % 8) return errUnsupportedColBits;
    if (dest->bitOffset < 0 || dest->bitOffset % 8) return errUnsupportedBitOffset;
    return noErr;
}

// The destination rows [lo, hi) within [writeLo, writeHi) whose nearest source row lies in
// [0, size). The mapping never decreases, so two binary searches find the ends.
void ValidRange(int32 writeLo, int32 writeHi, int32 srcLo, int32 srcLen, int32 dstLo, int32 dstLen, int32 size,
                int32& lo, int32& hi) {
    const auto source = [=](int64 d) { return int64(srcLo) + ((d - dstLo) * srcLen) / dstLen; };
    // First d in [from, to) with source(d) >= bound, or `to`.
    const auto first = [&](int64 from, int64 to, int64 bound) {
        while (from < to) {
            const int64 mid = from + (to - from) / 2;
            if (source(mid) >= bound) to = mid;
            else from = mid + 1;
        }
        return from;
    };
    lo = int32(first(writeLo, writeHi, 0));
    hi = int32(first(lo, writeHi, size));
}

// Copies `write` (destination coordinates) from `source` mapped onto `destination`; reports
// the part written in `wrote`.
OSErr Read(const Port& port, const VRect& source, const VRect& destination, const VRect& write,
           const PixelMemoryDesc* dest, VRect& wrote) {
    if (OSErr err = CheckDestination(port, dest)) return err;
    const int64 sh64 = int64(source.bottom) - source.top, sw64 = int64(source.right) - source.left;
    const int64 dh64 = int64(destination.bottom) - destination.top, dw64 = int64(destination.right) - destination.left;
    if (sh64 <= 0 || sw64 <= 0 || dh64 <= 0 || dw64 <= 0 || sh64 > INT32_MAX || sw64 > INT32_MAX || dh64 > INT32_MAX ||
        dw64 > INT32_MAX)
        return paramErr;
    const int32 sh = int32(sh64), sw = int32(sw64), dh = int32(dh64), dw = int32(dw64);
    const VRect w = {std::max(write.top, destination.top), std::max(write.left, destination.left),
                     std::min(write.bottom, destination.bottom), std::min(write.right, destination.right)};
    int32 top, bottom, left, right;
    ValidRange(w.top, std::max(w.top, w.bottom), source.top, sh, destination.top, dh, port.height, top, bottom);
    ValidRange(w.left, std::max(w.left, w.right), source.left, sw, destination.left, dw, port.width, left, right);
    if (bottom <= top || right <= left) {
        wrote = {w.top, w.left, w.top, w.left};
        return noErr;
    }
    const size_t bytes = size_t(port.depth / 8);
    auto* out = static_cast<uint8*>(dest->data);
    // A picture read at its own size is most of a run's reading: no division a sample.
    const bool unscaled = sh == dh && sw == dw;
    const size_t columnBytes = size_t(dest->colBits / 8);
    for (int32 y = top; y < bottom; ++y) {
        const int64 sy = int64(source.top) + ((int64(y) - destination.top) * sh) / dh;
        uint8* row = out + ((int64(y) - write.top) * dest->rowBits) / 8 + dest->bitOffset / 8;
        const uint8* srcRow = port.base + size_t(sy) * port.rowStep;
        if (unscaled) {
            const uint8* from = srcRow + size_t(int64(source.left) + (int64(left) - destination.left)) * port.pixelStep;
            uint8* to = row + (int64(left) - write.left) * int64(columnBytes);
            const size_t count = size_t(right - left);
            if (bytes == 1)
                for (size_t i = 0; i < count; ++i) to[i * columnBytes] = from[i * port.pixelStep];
            else
                for (size_t i = 0; i < count; ++i) std::memcpy(to + i * columnBytes, from + i * port.pixelStep, bytes);
            continue;
        }
        for (int32 x = left; x < right; ++x) {
            const int64 sx = int64(source.left) + ((int64(x) - destination.left) * sw) / dw;
            std::memcpy(row + ((int64(x) - write.left) * dest->colBits) / 8, srcRow + size_t(sx) * port.pixelStep,
                        bytes);
        }
    }
    wrote = {top, left, bottom, right};
    return noErr;
}

// ---- Classic procs ----

OSErr QZ_HOSTCALL ReadPixelsProc(PIChannelPort port, const PSScaling* scaling, const VRect* writeRect,
                                 const PixelMemoryDesc* dest, VRect* wroteRect) {
    const Port* p = FindPort(port);
    if (!p) return errUnknownPort;
    if (!writeRect) return paramErr;
    VRect wrote{};
    const VRect& src = scaling ? scaling->sourceRect : *writeRect;
    const VRect& dst = scaling ? scaling->destinationRect : *writeRect;
    const OSErr err = Read(*p, src, dst, *writeRect, dest, wrote);
    if (!err && wroteRect) *wroteRect = wrote;
    return err;
}

OSErr QZ_HOSTCALL WriteBasePixelsProc(PIChannelPort port, VRect*, const PixelMemoryDesc*) {
    return FindPort(port) ? errPlugInHostInsufficient : errUnknownPort;
}

OSErr QZ_HOSTCALL ReadPortForWritePortProc(PIChannelPort* readPort, PIChannelPort) {
    if (readPort) *readPort = nullptr;
    return errUnknownPort;
}

// ---- Suite ----

SPErr QZ_HOSTCALL CountLevels(PIChannelPort port, int32* levels) {
    if (!levels) return kSPBadParameterError;
    *levels = FindPort(port) ? 1 : 0;
    return *levels ? kSPNoError : SPErr(errUnknownPort);
}

SPErr QZ_HOSTCALL GetDepth(PIChannelPort port, int32 level, int32* depth) {
    const Port* p = FindPort(port);
    if (!p) return errUnknownPort;
    if (level != 0 || !depth) return kSPBadParameterError;
    *depth = p->depth;
    return kSPNoError;
}

SPErr QZ_HOSTCALL GetDataBounds(PIChannelPort port, int32 level, VRect* bounds) {
    const Port* p = FindPort(port);
    if (!p) return errUnknownPort;
    if (level != 0 || !bounds) return kSPBadParameterError;
    *bounds = BoundsOf(*p);
    return kSPNoError;
}

SPErr QZ_HOSTCALL CanRead(PIChannelPort port, Boolean* canRead) {
    if (!canRead) return kSPBadParameterError;
    *canRead = FindPort(port) ? 1 : 0;
    return *canRead ? kSPNoError : SPErr(errUnknownPort);
}

SPErr QZ_HOSTCALL CanWrite(PIChannelPort port, Boolean* canWrite) {
    if (!canWrite) return kSPBadParameterError;
    *canWrite = 0;
    return FindPort(port) ? kSPNoError : SPErr(errUnknownPort);
}

SPErr QZ_HOSTCALL ReadPixelsFromLevel(PIChannelPort port, int32 level, VRect* bounds, const PixelMemoryDesc* dest) {
    const Port* p = FindPort(port);
    if (!p) return errUnknownPort;
    if (level != 0 || !bounds) return kSPBadParameterError;
    VRect wrote{};
    const OSErr err = Read(*p, *bounds, *bounds, *bounds, dest, wrote);
    if (!err) *bounds = wrote;
    return err;
}

SPErr QZ_HOSTCALL NoWriteLimit(PIChannelPort, int32, VRect*) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoTiling(PIChannelPort, int32, VPoint*, VPoint*) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoSupport(PIChannelPort, int32, const VRect*, int32*, VRect*) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoDependent(PIChannelPort, int32, const VRect*, int32, VRect*) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoWrite(PIChannelPort, VRect*, const PixelMemoryDesc*) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoScaled(PIChannelPort, VRect*, const PSScaling*, const PixelMemoryDesc*) {
    return kSPUnimplementedError;
}
SPErr QZ_HOSTCALL NoFind(PIChannelPort, const VRect*, const PSScaling*, int32, int32*, VRect*, VRect*) {
    return kSPUnimplementedError;
}
SPErr QZ_HOSTCALL NoNew(PIChannelPort*, const VRect*, int32, Boolean) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoDispose(PIChannelPort*) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoSupports(const char*, Boolean*) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoApply(const char*, PIChannelPort, PIChannelPort, PIChannelPort, void*, VRect*) {
    return kSPUnimplementedError;
}
SPErr QZ_HOSTCALL NoAdd(const char*, PSChannelPortOperation, void*) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoRemove(const char*, void**) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoCopyOnWrite(PIChannelPort*, PIChannelPort, VRect*, Boolean) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoFreeze(PIChannelPort) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoRestore(PIChannelPort, VRect*) { return kSPUnimplementedError; }

struct ChannelName {
    int16 type;
    const char* name;
};

ChannelName ColourChannel(int16 mode, int plane) {
    static const ChannelName rgb[] = {{ctRed, "Red"}, {ctGreen, "Green"}, {ctBlue, "Blue"}};
    static const ChannelName cmyk[] = {
        {ctCyan, "Cyan"}, {ctMagenta, "Magenta"}, {ctYellow, "Yellow"}, {ctBlack, "Black"}};
    static const ChannelName lab[] = {{ctL, "Lightness"}, {ctA, "a"}, {ctB, "b"}};
    switch (mode) {
    case plugInModeRGBColor:
    case plugInModeRGB48: return rgb[plane];
    case plugInModeCMYKColor:
    case plugInModeCMYK64: return cmyk[plane];
    case plugInModeLabColor:
    case plugInModeLab48: return lab[plane];
    case plugInModeGrayScale:
    case plugInModeGray16: return {ctBlack, "Gray"};
    default: return {ctUnspecified, "Channel"};
    }
}

} // namespace

ChannelPorts::~ChannelPorts() { Clear(); }

void ChannelPorts::Clear() {
    {
        std::lock_guard<std::mutex> lock(gPortsLock);
        for (const uintptr_t id : portIds_) gPorts.erase(id);
    }
    portIds_.clear();
    info_ = ReadImageDocumentDesc{};
    ports_.clear();
    channels_.clear();
    layers_.clear();
    names_.clear();
    unicodeNames_.clear();
}

ReadChannelDesc* ChannelPorts::AddChannel(const Port& port, int16 type, const std::string& name, bool target) {
    ports_.push_back(port);
    uintptr_t id = 0;
    {
        std::lock_guard<std::mutex> lock(gPortsLock);
        id = gNextPortId;
        gNextPortId += 16;
        gPorts[id] = &ports_.back();
    }
    portIds_.push_back(id);
    names_.push_back(name);
    unicodeNames_.emplace_back(name.begin(), name.end()); // our names are ASCII
    unicodeNames_.back().push_back(0);
    ReadChannelDesc d{};
    d.minVersion = 0;
    d.maxVersion = kCurrentReadChannelDescVersion;
    d.port = reinterpret_cast<PIChannelPort>(id);
    d.bounds = BoundsOf(port);
    d.depth = port.depth;
    d.tileSize = {port.height, port.width};
    d.target = target ? 1 : 0;
    d.shown = 1;
    d.channelType = type;
    d.name = names_.back().c_str();
    d.unicodeName = unicodeNames_.back().data();
    d.isEnabled = 1;
    d.limitBounds = d.bounds;
    channels_.push_back(d);
    return &channels_.back();
}

ReadChannelDesc* ChannelPorts::AddList(const Document& doc, const Layer& layer, bool target) {
    const PlaneLayout layout = doc.FullLayout(layer);
    ReadChannelDesc* first = nullptr;
    ReadChannelDesc* last = nullptr;
    for (int p = 0; p < layout.colour; ++p) {
        const PlaneRef ref = doc.Plane(layer, layout, p);
        const ChannelName n = ColourChannel(doc.imageMode, p);
        ReadChannelDesc* d = AddChannel({ref.base, ref.pixelStep, ref.rowStep, doc.width, doc.height, doc.depth},
                                        n.type, n.name, target);
        (last ? last->next : first) = d;
        last = d;
    }
    return first;
}

void ChannelPorts::Build(const Document& doc, const Layer& targetSource, int32 maxVersion) {
    Clear();
    maxVersion = std::min(std::max(maxVersion, 0), 3);
    const auto planeOf = [&doc](const std::vector<uint8>& samples) -> Port {
        const size_t bps = size_t(doc.BytesPerSample());
        return {samples.data(), bps, bps * size_t(doc.width), doc.width, doc.height, doc.depth};
    };
    ReadImageDocumentDesc& d = info_;
    d.minVersion = 0;
    d.maxVersion = maxVersion;
    d.imageMode = doc.imageMode;
    d.depth = doc.depth;
    d.bounds = {0, 0, doc.height, doc.width};
    d.hResolution = doc.hResolution;
    d.vResolution = doc.vResolution;
    for (int i = 0; i < 256; ++i) d.redLUT[i] = d.greenLUT[i] = d.blueLUT[i] = uint8(i);

    d.targetCompositeChannels = AddList(doc, targetSource, true);
    if (!targetSource.transparency.empty())
        d.targetTransparency = AddChannel(planeOf(targetSource.transparency), ctTransparency, "Transparency", true);
    if (!targetSource.layerMask.empty())
        d.targetLayerMask = AddChannel(planeOf(targetSource.layerMask), ctLayerMask, "Layer Mask", true);

    doc.Merge(mergedColour_, mergedTransparency_);
    Layer merged;
    merged.pixels.swap(mergedColour_);
    d.mergedCompositeChannels = AddList(doc, merged, false);
    merged.pixels.swap(mergedColour_); // the ports point into the buffer, which the swap keeps
    const bool anyTransparency = std::any_of(doc.layers.begin(), doc.layers.end(), [](const Layer& l) {
        return l.visible && (!l.transparency.empty() || !l.layerMask.empty());
    });
    if (anyTransparency)
        d.mergedTransparency = AddChannel(planeOf(mergedTransparency_), ctTransparency, "Transparency", false);
    if (!doc.selection.empty()) {
        const Port sel = {doc.selection.data(), 1, size_t(doc.width), doc.width, doc.height, 8};
        d.selection = AddChannel(sel, ctSelectionMask, "Selection", false);
    }
    d.alphaChannels = nullptr;
    d.documentType = kDocumentTypeImage;
    d.compositeChannelCount = doc.ColourPlanes();
    d.layerCount = int32(doc.layers.size());
    d.alphaChannelCount = 0;

    if (maxVersion >= 2) {
        ReadLayerDesc* last = nullptr;
        for (size_t i = 0; i < doc.layers.size(); ++i) {
            const bool isTarget = int(i) == doc.targetLayer;
            const Layer& layer = isTarget ? targetSource : doc.layers[i];
            ReadLayerDesc l{};
            l.minVersion = 0;
            l.maxVersion = kCurrentReadLayerDescVersion;
            l.compositeChannelsList = AddList(doc, layer, isTarget);
            if (!layer.transparency.empty())
                l.transparency = AddChannel(planeOf(layer.transparency), ctTransparency, "Transparency", isTarget);
            if (!layer.layerMask.empty())
                l.layerMask = AddChannel(planeOf(layer.layerMask), ctLayerMask, "Layer Mask", isTarget);
            l.sheetID = uint32(i + 1);
            names_.push_back(doc.layers[i].name);
            l.name = names_.back().c_str();
            unicodeNames_.emplace_back(names_.back().begin(), names_.back().end());
            for (uint16& c : unicodeNames_.back()) c = uint8(c); // Latin-1 to UTF-16
            unicodeNames_.back().push_back(0);
            l.unicodeName = unicodeNames_.back().data();
            l.isPixelBased = 1;
            l.isVisible = doc.layers[i].visible ? 1 : 0;
            l.isRendered = 1;
            l.opacity = 255;
            l.fillOpacity = 255;
            l.blendMode = FourCC("norm");
            layers_.push_back(l);
            (last ? last->next : d.layersDescriptor) = &layers_.back();
            last = &layers_.back();
        }
    }
    // Fields newer than the record's version stay empty, as an older host leaves them.
    if (maxVersion < 3) {
        d.iCCprofileData = nullptr;
        d.compositeChannelCount = d.layerCount = d.alphaChannelCount = 0;
    }
}

const ChannelPortProcs* ChannelPorts::Procs() {
    static const ChannelPortProcs procs = {kCurrentChannelPortProcsVersion, kCurrentChannelPortProcsCount,
                                           ReadPixelsProc, WriteBasePixelsProc, ReadPortForWritePortProc};
    return &procs;
}

const PSChannelPortsSuite* ChannelPorts::Suite(int32 version) {
    static const PSChannelPortsSuite suite = {
        CountLevels, GetDepth,    GetDataBounds, NoWriteLimit, NoTiling,
        NoSupport,   NoDependent, CanRead,       CanWrite,     ReadPixelsFromLevel,
        NoWrite,     NoScaled,    NoFind,        NoNew,        NoDispose,
        NoSupports,  NoApply,     NoAdd,         NoRemove,     NoCopyOnWrite,
        NoFreeze,    NoRestore};
    return version == kPSChannelPortsSuiteVersion2 || version == kPSChannelPortsSuiteVersion3 ? &suite : nullptr;
}

} // namespace hostsim
