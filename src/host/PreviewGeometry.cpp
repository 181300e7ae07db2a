#include "host/PreviewGeometry.h"
#include "host/Selection.h"

#include "effects/EffectLayer.h"
#include "effects/LayerTexture.h"
#include "host/Acquisition.h"
#include "host/Rectangles.h"
#include "host/Session.h"
#include "state/Parameters.h"
#include "state/ViewState.h"
#include "state/WorkImages.h"

#include <algorithm>
#include <cmath>
#include <utility>

float PreviewFitScale = 1.0f;
float ZoomStep = -1.0f;
int16 ProxyRect[4] = {0, 0, 0, 0};

namespace {

float FitRatio(const PreviewPan& control) {
    const VRect filter = GetFilterRect();
    const float rows = float(RectHeight(filter)) / float(std::max(control.height, 1));
    const float columns = float(RectWidth(filter)) / float(std::max(control.width, 1));
    return std::max(rows, columns);
}

int32_t DivideRounded(int32_t value, float scale) { return int32_t(float(value) / scale + 0.5f); }

} // namespace

OSErr SetPreviewGeometry(PreviewPan& control) {
    const VPoint image = GetImageSize();
    const float oldScale = float(PreviewScale);
    const int32_t oldWidth = int32_t(float(image.h) / oldScale);
    const int32_t oldHeight = int32_t(float(image.v) / oldScale);

    const VRect filter = GetFilterRect();
    PreviewFitScale = std::max(1.0f, std::ceil(FitRatio(control)));
    const int16 height = int16(ProxyRect[2] - ProxyRect[0]), width = int16(ProxyRect[3] - ProxyRect[1]);
    ProxyRect[0] = ProxyRect[1] = 0;
    ProxyRect[2] = height;
    ProxyRect[3] = width;
    SetInRect(filter);
    if (ZoomStep == -1.0f) ZoomStep = PreviewFitScale - 1.0f;
    const float scale = std::clamp(std::trunc(PreviewFitScale - ZoomStep), 1.0f, PreviewFitScale);
    PreviewScale = scale;

    const VRect in = GetInRect();
    const int32_t rows = std::min(control.height, DivideRounded(in.bottom, scale));
    const int32_t columns = std::min(control.width, DivideRounded(in.right, scale));

    const int32_t newWidth = int32_t(float(image.h) / scale);
    const int32_t newHeight = int32_t(float(image.v) / scale);
    control.originX = std::max(0, control.originX + (newWidth - oldWidth) / 2);
    control.originY = std::max(0, control.originY + (newHeight - oldHeight) / 2);
    if (ZoomStep != 0.0f) {
        control.originX =
            std::max(0, std::min(control.originX, int32_t(float(image.h) / scale - float(control.width))));
        control.originY =
            std::max(0, std::min(control.originY, int32_t(float(image.v) / scale - float(control.height))));
    } else {
        control.originX = control.originY = 0;
    }

    const VRect out{control.originY, control.originX, rows + control.originY, columns + control.originX};
    SetInRect(out);
    SetOutRect(out);
    SetMaskRect(out);
    gFilterRecord->inLoPlane = gFilterRecord->outLoPlane = 0;
    gFilterRecord->inHiPlane = gFilterRecord->outHiPlane = int16(gFilterRecord->planes - 1);
    gFilterRecord->inputRate = gFilterRecord->maskRate = Fixed(scale * 65536.0f);
    gFilterRecord->inputPadding = gFilterRecord->outputPadding = 255;
    gFilterRecord->maskPadding = gFilterRecord->inputPadding;
    const OSErr error = gFilterRecord->advanceState();
    SetResult(error);
    if (error == noErr) BuildPreviewSelection();
    return error;
}

bool SyncPreviewRect(const PreviewPan& control) {
    if (ProxyRect[2] - ProxyRect[0] == control.height && ProxyRect[3] - ProxyRect[1] == control.width) return false;
    ProxyRect[0] = ProxyRect[1] = 0;
    ProxyRect[2] = int16(control.height);
    ProxyRect[3] = int16(control.width);
    return true;
}

void PanToGlobals(const PreviewPan& control) {
    PreviewOriginX = control.originX;
    PreviewOriginY = control.originY;
}

void OpenPreviewGeometry(PreviewPan& control, ZoomButtons& buttons) {
    ZoomStep = -1.0f;
    PreviewScale = 1.0;
    SyncPreviewRect(control);
    SetPreviewGeometry(control);
    PanToGlobals(control);
    buttons.up = false;
    buttons.down = PreviewFitScale != 1.0f;
}

void ZoomUp(PreviewPan& control, ZoomButtons& buttons) {
    SyncPreviewRect(control);
    ZoomStep += 1.0f;
    buttons.down = true;
    if (ZoomStep >= PreviewFitScale - 1.0f) {
        ZoomStep = PreviewFitScale - 1.0f;
        buttons.up = false;
    }
    SetPreviewGeometry(control);
    PanToGlobals(control);
}

void ZoomDown(PreviewPan& control, ZoomButtons& buttons) {
    SyncPreviewRect(control);
    ZoomStep -= 1.0f;
    buttons.up = true;
    if (ZoomStep <= 0.0f) {
        ZoomStep = 0.0f;
        buttons.down = false;
    }
    SetPreviewGeometry(control);
    PanToGlobals(control);
}

void ZoomToFit(PreviewPan& control, ZoomButtons& buttons) {
    SyncPreviewRect(control);
    PreviewFitScale = std::trunc(FitRatio(control));
    ZoomStep = 0.0f;
    SetPreviewGeometry(control);
    PreviewOriginX = PreviewOriginY = 0.0;
    buttons.down = false;
    buttons.up = PreviewScale != 1.0;
}

void ZoomToActual(PreviewPan& control, ZoomButtons& buttons) {
    SyncPreviewRect(control);
    ZoomStep = -1.0f;
    PreviewScale = 1.0;
    // The globals keep their origin here.
    SetPreviewGeometry(control);
    buttons.up = false;
    buttons.down = PreviewFitScale != 1.0f;
}

bool ResizePreview(PreviewPan& control, ZoomButtons& buttons) {
    if (!SyncPreviewRect(control)) return false;
    SetPreviewGeometry(control);
    buttons.up = PreviewScale != 1.0;
    buttons.down = ZoomStep > 0.0f;
    PanToGlobals(control);
    return true;
}

bool ReleasePan(PreviewPan& control) {
    control.originX -= control.dragMovedX;
    control.originY -= control.dragMovedY;
    control.dragMovedX = control.dragMovedY = 0;
    return !std::exchange(control.ctrlDrag, false);
}

void ApplyPan(PreviewPan& control) {
    SetPreviewGeometry(control);
    PanToGlobals(control);
}

int32_t PreviewPercent() { return PreviewScale > 0 ? int32_t(100.0 / PreviewScale) : 0; }

void AcquirePreviewSource() {
    AcquireSource();
    MarkAllLayersDirty();
    MarkWashesCoverageDirty();
}

bool MoveActiveLayer(int32_t dx, int32_t dy) {
    if (ActiveTab == TabBasic || CurrentViewCode() == ViewCodeOriginal) return false;
    FilterParameters& p = *gParams;
    const int32_t ox = int32_t(double(dx) * PreviewScale), oy = int32_t(double(dy) * PreviewScale);
    EffectLayer* layer = nullptr;
    int32_t *x = nullptr, *y = nullptr;
    switch (ActiveTab) {
    case TabWash: {
        const bool second = ViewWash == ViewCodeWashTwo && p.SecondWashExists;
        layer = &WashLayers[second ? 1 : 0];
        x = second ? &p.WashOffsetX2 : &p.WashOffsetX1;
        y = second ? &p.WashOffsetY2 : &p.WashOffsetY1;
        break;
    }
    case TabSurface: {
        const bool second = ViewSurface == ViewCodeSurfaceTwo && p.SecondSurfaceExists;
        layer = &SurfaceLayers[second ? 1 : 0];
        x = second ? &p.SurfaceOffsetX2 : &p.SurfaceOffsetX1;
        y = second ? &p.SurfaceOffsetY2 : &p.SurfaceOffsetY1;
        break;
    }
    case TabBackground:
        layer = &BackgroundLayer;
        x = &p.BackgroundOffsetX;
        y = &p.BackgroundOffsetY;
        break;
    default: return false;
    }
    MoveLayer(*layer, ox, oy);
    *x = layer->OffsetX;
    *y = layer->OffsetY;
    return true;
}
