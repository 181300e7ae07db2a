#include "host/RunFilter.h"

#include "effects/EffectLayer.h"
#include "host/Acquisition.h"
#include "host/ChannelAccess.h"
#include "host/HostSuite.h"
#include "state/Parameters.h"
#include "state/Progress.h"
#include "host/Rectangles.h"
#include "effects/RenderDriver.h"
#include "host/Selection.h"
#include "host/Session.h"
#include "state/ViewState.h"
#include "platform/Alert.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

int32_t DocumentDepth = 8;

namespace {

constexpr int16 kSpaceRGB = 0;
constexpr int16 kSpaceCMYK = 2;

// The halved row steps of a 16-bit document are used for this run's own copies only.
int32_t InRowStep() { return Depth16 ? gFilterRecord->inRowBytes / 2 : gFilterRecord->inRowBytes; }
int32_t OutRowStep() { return Depth16 ? gFilterRecord->outRowBytes / 2 : gFilterRecord->outRowBytes; }

bool ModeAccepted(int16 mode) { return mode >= 0 && mode <= 13 && (kAcceptedModes >> mode) & 1; }

bool HasMaskPlane() { return gFilterRecord->planes >= (ModeIsCMYK ? 6 : 5); }

void* OwnerWindow() {
    auto* platform = static_cast<PlatformData*>(gFilterRecord->platformData);
    return platform ? reinterpret_cast<void*>(platform->hwnd) : nullptr;
}

void EndWithProgress() {
    ReportProgress(float(ProgressPercent), 0);
    ProgressPercent = 0;
    SetResult(noErr);
}

// Every plane of every pixel from inData to outData, row by row.
void CopyInputToOutput(int32_t inStep, int32_t outStep) {
    const VRect out = GetOutRect();
    const size_t rowBytes = size_t(gFilterRecord->planes) * RectWidth(out);
    const auto* in = static_cast<const uint8_t*>(gFilterRecord->inData);
    auto* dst = static_cast<uint8_t*>(gFilterRecord->outData);
    for (int32_t y = 0; y < RectHeight(out); ++y)
        std::memcpy(dst + ptrdiff_t(y) * outStep, in + ptrdiff_t(y) * inStep, rowBytes);
}

// The proxy of a CMYK document is shown as RGB in the dialog.
void ShowCmykProxyAsRgb() {
    ColorSpaceSuite colors(kPSColorSpaceSuite, kPSColorSpaceSuiteVersion1);
    if (!colors) return;
    const VRect out = GetOutRect();
    const int32_t n = RectWidth(out);
    const int32_t planes = gFilterRecord->planes;
    std::vector<Color8> buffer(size_t(std::max(n, 1)));
    const auto* in = static_cast<const uint8_t*>(gFilterRecord->inData);
    auto* dst = static_cast<uint8_t*>(gFilterRecord->outData);
    for (int32_t y = 0; y < RectHeight(out); ++y) {
        const uint8_t* p = in + ptrdiff_t(y) * InRowStep();
        uint8_t* d = dst + ptrdiff_t(y) * OutRowStep();
        for (int32_t x = 0; x < n; ++x) {
            std::memcpy(buffer[x], p + size_t(x) * planes, 4);
            if (planes >= 5) d[size_t(x) * planes + 4] = p[size_t(x) * planes + 4];
        }
        ConvertColorRuns(colors, kSpaceCMYK, kSpaceRGB, buffer.data(), n);
        for (int32_t x = 0; x < n; ++x) std::memcpy(d + size_t(x) * planes, &buffer[x][1], 3);
    }
}

void PassThrough() {
    if (!ModeIsCMYK || !DialogOpen) CopyInputToOutput(InRowStep(), OutRowStep());
    else ShowCmykProxyAsRgb();
    EndWithProgress();
}

// WorkImage into outData. A flat picture has nowhere to put transparency, so it comes
// out darkened toward black by it.
void WriteBackRgb() {
    const int32_t planes = gFilterRecord->planes;
    auto* out = static_cast<uint8_t*>(gFilterRecord->outData);
    for (int32_t y = 0; y < ImageHeight; ++y) {
        const uint8_t* s = WorkImage + size_t(y) * WorkRowBytes;
        uint8_t* d = out + ptrdiff_t(y) * OutRowStep();
        for (int32_t x = 0; x < ImageWidth; ++x, s += 4, d += planes) {
            if (planes >= 4) {
                std::memcpy(d, s, 4);
            } else if (s[3] > 254) {
                std::memcpy(d, s, 3);
            } else {
                const float f = float(s[3]) / 255.0f;
                for (int k = 0; k < 3; ++k) d[k] = uint8_t(float(s[k]) * f);
            }
        }
    }
}

void WriteBackCmyk() {
    ColorSpaceSuite colors(kPSColorSpaceSuite, kPSColorSpaceSuiteVersion1);
    if (!colors) return;
    const int32_t planes = gFilterRecord->planes;
    const int32_t n = ImageWidth;
    std::vector<Color8> buffer(size_t(std::max(n, 1)));
    auto* out = static_cast<uint8_t*>(gFilterRecord->outData);
    for (int32_t y = 0; y < ImageHeight; ++y) {
        const uint8_t* s = WorkImage + size_t(y) * WorkRowBytes;
        uint8_t* d = out + ptrdiff_t(y) * OutRowStep();
        for (int32_t x = 0; x < n; ++x) {
            const uint8_t* px = s + size_t(x) * 4;
            buffer[x][0] = 255;
            if (planes < 5) {
                const float f = float(px[3]) / 255.0f;
                for (int k = 0; k < 3; ++k) buffer[x][k + 1] = uint8_t(float(px[k]) * f);
            } else {
                std::memcpy(&buffer[x][1], px, 3);
                d[size_t(x) * planes + 4] = px[3];
            }
        }
        // Rows wider than one call takes go in runs, so every ink plane is converted.
        ConvertColorRuns(colors, kSpaceRGB, kSpaceCMYK, buffer.data(), n);
        for (int32_t x = 0; x < n; ++x) std::memcpy(d + size_t(x) * planes, buffer[x], 4);
    }
}

// The wash masks kept by the run before are written into the layer's mask plane.
void MaskPass() {
    CopyInputToOutput(OutRowStep(), OutRowStep());
    FilterParameters& p = *gParams;
    WashLayers[0].EdgeMaskWork = reinterpret_cast<uint8_t*>(uintptr_t(p.WashMaskBuffer1));
    FreeWashAreaBuffer();
    KeepWashArea = false;
    if (p.UseWash && p.UseSurface && p.SurfaceEntire && p.SurfaceIncludeWashArea) {
        AdoptWashAreaBuffer(reinterpret_cast<uint8_t*>(uintptr_t(p.SurfaceWashAreaBuffer)));
        KeepWashArea = WashAreaBuffer != nullptr;
    }
    const VRect in = GetInRect();
    const HostPlanes out{static_cast<uint8_t*>(gFilterRecord->outData), gFilterRecord->outRowBytes,
                         gFilterRecord->planes, RectWidth(in), RectHeight(in)};
    RenderWashToMask(WashLayers[0], out);
    if (p.SecondWashExists) {
        WashLayers[1].EdgeMaskWork = reinterpret_cast<uint8_t*>(uintptr_t(p.WashMaskBuffer2));
        RenderWashToMask(WashLayers[1], out);
    }
    FreeWashAreaBuffer();
    // The buffers are ours now and gone with the engine: a host that played this step
    // again must find no address to take twice.
    p.WashMaskBuffer1 = p.WashMaskBuffer2 = p.SurfaceWashAreaBuffer = 0;
    p.PendingMaskPass = 0;
    DestroyEngine();
    SetResult(noErr);
}

void Render(int32_t view) {
    FilterParameters& p = *gParams;
    p.PendingNewLayerPass = 0;
    if (!DialogOpen) {
        PreviewScale = 1.0;
        PreviewOriginX = PreviewOriginY = 0.0;
        AcquireSource();
        CreateEngine();
    }

    BackgroundWithheld = false;
    if (p.UseBackground && HostActionSuites && !DialogOpen) {
        if (!p.PendingBackgroundPass && p.BackgroundInNewLayer) {
            BackgroundWithheld = true;
            p.UseBackground = 0;
        }
        if (p.PendingBackgroundPass && p.BackgroundInNewLayer) view = ViewCodeBackground;
    }
    if (p.UseWash && HostActionSuites && !DialogOpen) {
        if (!p.PendingMaskPass && p.EffectOnMask && SurfacePassCode != 1 && DocumentHasAlpha()) {
            WashToMaskRun = true;
            p.UseWash = 0;
        }
        if (p.PendingMaskPass && p.EffectOnMask && HasMaskPlane()) {
            MaskPass();
            return;
        }
    }

    RenderLayers(view);

    if (BackgroundWithheld) {
        p.UseBackground = 1;
        BackgroundWithheld = false;
    }
    if (WashToMaskRun) p.UseWash = 1;
    p.PendingBackgroundPass = 0;
    p.PendingSurfacePass = 0;

    WriteBack();
    // The first pass of a thumbnail batch leaves the drawer's bar standing for the second.
    if (ThumbnailBatch != 1) ReportProgress(float(ProgressPercent), 0);
    ProgressPercent = 0;

    if (KeepWashArea) {
        if (p.PendingMaskPass || !p.EffectOnMask || DialogOpen) FreeWashAreaBuffer();
        else p.SurfaceWashAreaBuffer = uint64_t(uintptr_t(ReleaseWashAreaBuffer()));
    }
    // The mask pass of a later run takes over these buffers: the layers let go of them.
    if (WashToMaskRun) {
        p.WashMaskBuffer1 = uint64_t(uintptr_t(std::exchange(WashLayers[0].EdgeMaskWork, nullptr)));
        if (p.SecondWashExists)
            p.WashMaskBuffer2 = uint64_t(uintptr_t(std::exchange(WashLayers[1].EdgeMaskWork, nullptr)));
    }
    if (!DialogOpen) {
        DestroyEngine();
        FreeWorkImages();
    }
    WashToMaskRun = false;
    SetResult(noErr);
}

} // namespace

void WriteBack() {
    if (!ModeIsCMYK || DialogOpen) WriteBackRgb();
    else WriteBackCmyk();
}

namespace {

// Which pass this run is, for the options that deliver an effect into another layer;
// false means the picture passes through unchanged.
bool ChooseRender() {
    SurfacePassCode = 0;
    if (!HostActionSuites || DialogOpen) return true;
    FilterParameters& p = *gParams;
    if (p.UseSurface && p.PendingSurfacePass != 0 && p.SurfaceInNewLayer) SurfacePassCode = p.PendingSurfacePass;
    if (p.UseSurface && p.SurfaceInNewLayer && p.PendingSurfacePass == 0) return false;
    if (SurfacePassCode == 1) return true;
    if (p.EffectInNewLayer) {
        if (p.PendingNewLayerPass) return true;
        if (!p.PendingMaskPass) {
            p.PendingNewLayerPass = 1;
            return false;
        }
        return true;
    }
    if (p.PendingBackgroundPass || !p.BackgroundInNewLayer || !p.UseBackground || p.PendingNewLayerPass ||
        p.PendingMaskPass)
        return true;
    p.PendingNewLayerPass = 1;
    return false;
}

} // namespace

void RunFilter() {
    // The host turned the preview's request down: no buffers to render into, and the
    // preview shows no picture.
    if (DialogOpen && (!gFilterRecord->inData || !gFilterRecord->outData)) return;
    DocumentDepth = gFilterRecord->depth ? gFilterRecord->depth : 8;
    Depth16 = DocumentDepth == 16;
    HaveMask = gFilterRecord->haveMask != 0;
    HostMaskRowBytes = gFilterRecord->maskRowBytes;
    HostMaskData = static_cast<const uint8_t*>(gFilterRecord->maskData);
    if (!HostMaskData) HaveMask = false;

    FilterParameters& p = *gParams;
    if (DialogOpen) {
        p.PendingBackgroundPass = 0;
        p.PendingSurfacePass = 0;
        p.PendingNewLayerPass = 0;
        p.PendingMaskPass = 0;
    } else if (HaveMask || gFilterRecord->planes >= 4) {
        BuildSelectionMask();
    }

    if (!ModeAccepted(gFilterRecord->imageMode)) {
        ShowAlert("This Mode is Not Supported by the Plug-in", "", AlertIcon::Warning, AlertButtons::Ok, OwnerWindow());
        SetResult(userCanceledErr);
        return;
    }
    ModeIsCMYK = gFilterRecord->imageMode == plugInModeCMYKColor;

    int32_t view = DialogOpen ? CurrentViewCode() : ViewCodeComposite;
    if (view == ViewCodeOriginal) {
        if (LayerRaster) {
            CopyOriginalToOutput(true);
            EndWithProgress();
        } else {
            PassThrough();
        }
        return;
    }
    if (ChooseRender()) Render(view);
    else PassThrough();
}
