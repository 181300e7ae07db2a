#include "host/ChannelAccess.h"

#include "host/HostSuite.h"
#include "host/Rectangles.h"
#include "host/Session.h"

#include <cstring>

Raster* LayerRaster = nullptr;
Raster* MergedBelow = nullptr;

static_assert(sizeof(RasterMemoryDesc) == sizeof(PixelMemoryDesc), "a raster hands its own layout to the host");

namespace {

constexpr DescriptorKeyID kKeyName = FourCC("Nm  ");
constexpr DescriptorKeyID kKeyVisible = FourCC("Vsbl");
constexpr DescriptorClassID kClassProperty = FourCC("Prpr");
constexpr DescriptorClassID kClassLayer = FourCC("Lyr ");
constexpr DescriptorEnumTypeID kTypeEnum = FourCC("enum");
constexpr DescriptorEnumID kEnumTarget = FourCC("Trgt");

using DescriptorSuite = HostSuite<PSActionDescriptorProcs>;
// Put and Get on references are the reference suite's; its name ends in ...17.
using ReferenceSuite = HostSuite<PSActionReferenceProcs>;
using ActionControlSuite = HostSuite<PSBasicActionControlProcs>;
using ChannelPortsSuite = HostSuite<PSChannelPortsSuite>;

const ReadImageDocumentDesc* UsableDocument() {
    const ReadImageDocumentDesc* doc = gFilterRecord->documentInfo;
    return doc && doc->minVersion <= 2 && doc->maxVersion >= 2 ? doc : nullptr;
}

int32 CountLinks(const ReadChannelDesc* list) {
    int32 n = 0;
    for (; list; list = list->next) ++n;
    return n;
}

RasterRect FilterBounds() {
    const VRect f = GetFilterRect();
    return {f.top, f.left, f.bottom, f.right};
}

// A reference built by `build` is resolved with Get; the descriptor answer is handed to
// `read` with the descriptor suite. Any failure on the way answers false.
template <typename Build, typename Read> bool AskHost(Build build, Read read) {
    DescriptorSuite descriptors(kPSActionDescriptorSuite, kPSActionDescriptorSuiteVersion2);
    ReferenceSuite references(kPSActionReferenceSuite, kPSActionReferenceSuiteVersion2);
    ActionControlSuite control(kPSBasicActionControlSuite, kPSBasicActionControlSuiteVersion1);
    if (!descriptors || !references || !control) return false;
    PIActionReference reference = nullptr;
    if (references->Make(&reference) || !reference) return false;
    bool answer = false;
    PIActionDescriptor result = nullptr;
    if (build(*references, reference) && !control->Get(&result, reference) && result) {
        answer = read(*descriptors, result);
        descriptors->Free(result);
    }
    references->Free(reference);
    return answer;
}

} // namespace

int32 ChannelCount() {
    const ReadImageDocumentDesc* doc = gFilterRecord->documentInfo;
    if (!doc) return gFilterRecord->planes;
    const int32 composite = CountLinks(doc->targetCompositeChannels);
    return composite ? composite : CountLinks(doc->alphaChannels);
}

bool ReadChannelToRaster(const ReadChannelDesc* list, Raster* raster) {
    if (!list || !raster) return false;
    if (!raster->Pixels()) {
        SetResult(memFullErr);
        return false;
    }
    ChannelPortsSuite ports(kPSChannelPortsSuite, kPSChannelPortsSuiteVersion2);
    auto* desc = reinterpret_cast<PixelMemoryDesc*>(raster->DescForHost());
    for (const ReadChannelDesc* channel = list; channel && !ResultIsSet(); channel = channel->next) {
        if (ports) {
            Boolean canRead = 0;
            ports->CanRead(channel->port, &canRead);
            if (!canRead) {
                SetResult(errPlugInHostInsufficient);
                break;
            }
        }
        // The floating offset moves the top and left only.
        VRect rect = GetFilterRect();
        const VPoint offset = GetFloatCoord();
        rect.top += offset.v;
        rect.left += offset.h;
        OSErr answer;
        if (ports) {
            answer = OSErr(ports->ReadPixelsFromLevel(channel->port, 0, &rect, desc));
        } else if (gFilterRecord->channelPortProcs && gFilterRecord->channelPortProcs->readPixelsProc) {
            const PSScaling scaling = {rect, rect};
            answer = gFilterRecord->channelPortProcs->readPixelsProc(channel->port, &scaling, &rect, desc, &rect);
        } else {
            answer = errPlugInHostInsufficient;
        }
        SetResult(answer);
        desc->data = static_cast<uint8_t*>(desc->data) + raster->PlaneBytes();
    }
    return !ResultIsSet();
}

std::unique_ptr<char[]> TargetLayerName() {
    std::unique_ptr<char[]> name;
    AskHost(
        [](const PSActionReferenceProcs& r, PIActionReference ref) {
            return !r.PutProperty(ref, kClassProperty, kKeyName) &&
                   !r.PutEnumerated(ref, kClassLayer, kTypeEnum, kEnumTarget);
        },
        [&](const PSActionDescriptorProcs& d, PIActionDescriptor result) {
            Boolean has = 0;
            uint32 length = 0;
            if (d.HasKey(result, kKeyName, &has) || !has || d.GetStringLength(result, kKeyName, &length)) return false;
            name.reset(new char[size_t(length) + 1]());
            return d.GetString(result, kKeyName, name.get(), length + 1) == noErr;
        });
    return name;
}

bool LayerVisible(const char* layerName) {
    bool visible = false;
    AskHost(
        [&](const PSActionReferenceProcs& r, PIActionReference ref) {
            return !r.PutProperty(ref, kClassProperty, kKeyVisible) && !r.PutName(ref, kClassLayer, layerName);
        },
        [&](const PSActionDescriptorProcs& d, PIActionDescriptor result) {
            Boolean has = 0, value = 0;
            if (d.HasKey(result, kKeyVisible, &has) || !has || d.GetBoolean(result, kKeyVisible, &value)) return false;
            visible = value != 0;
            return true;
        });
    return visible;
}

void FreeDocumentLayers() {
    FreeRaster(LayerRaster);
    FreeRaster(MergedBelow);
}

void ReadDocumentLayers() {
    const RasterRect bounds = FilterBounds();
    int32 n = ChannelCount();
    if (gFilterRecord->planes >= 4 && n <= 4) n = 4;
    const ReadImageDocumentDesc* info = gFilterRecord->documentInfo;
    const ReadChannelDesc* first =
        info ? (info->targetCompositeChannels ? info->targetCompositeChannels : info->alphaChannels) : nullptr;
    const int32 depth = first ? first->depth : 8;
    const uint16_t mode = uint16_t(gFilterRecord->imageMode);
    const uint8_t planes = uint8_t(n);

    FreeRaster(MergedBelow);
    MergedBelow = NewRaster(mode, bounds, planes, depth, 0, 1);
    if (!MergedBelow || !MergedBelow->FillBlack()) {
        FreeRaster(MergedBelow);
        SetResult(memFullErr);
        return;
    }
    Raster* colours = NewRaster(mode, bounds, planes, depth, 0, 1);
    Raster* transparency = NewRaster(1, bounds, 1, 8, 0, 1);

    bool answer = true; // an image without layers keeps MergedBelow black
    const std::unique_ptr<char[]> name = TargetLayerName();
    const ReadImageDocumentDesc* doc = UsableDocument();
    if (!name || !doc) {
        MergedBelow->FillBlack();
    } else {
        for (const ReadLayerDesc* layer = doc->layersDescriptor; layer; layer = layer->next) {
            if (layer->name && std::strcmp(layer->name, name.get()) == 0) {
                FreeRaster(LayerRaster);
                LayerRaster = NewRaster(mode, bounds, planes, depth, 0, 1);
                answer = LayerRaster && LayerRaster->FillBlack() &&
                         ReadChannelToRaster(layer->compositeChannelsList, LayerRaster);
                if (answer && layer->transparency) {
                    answer = ReadChannelToRaster(layer->transparency, transparency);
                    if (answer && MergedBelow->Planes >= 4) LayerRaster->MaxAlpha(*transparency);
                } else if (answer && LayerRaster->Planes >= 4) {
                    LayerRaster->ForceAlpha(255);
                }
                break;
            }
            if (!layer->name || !LayerVisible(layer->name)) continue;
            answer = ReadChannelToRaster(layer->compositeChannelsList, colours);
            if (!answer) continue;
            if (layer->transparency) {
                answer = ReadChannelToRaster(layer->transparency, transparency);
                if (answer) {
                    BlendRaster(*MergedBelow, *colours, *transparency, bounds);
                    if (MergedBelow->Planes >= 4) MergedBelow->MaxAlpha(*transparency);
                }
            } else {
                CopyRaster(*MergedBelow, *colours);
                if (MergedBelow->Planes >= 4) MergedBelow->ForceAlpha(255);
            }
        }
    }
    FreeRaster(colours);
    FreeRaster(transparency);
    if (!answer) FreeRaster(MergedBelow);
}
