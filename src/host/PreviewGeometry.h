// Zoom and pan of the dialog's preview: the scale, the pan and the rectangles asked of
// the host, and the Ctrl + drag that slides a layer's texture. No window here: the
// dialog's preview control keeps a PreviewPan and calls these, and so do the tests.
#pragma once

#include "host/abi/HostInterface.h"

#include <cstdint>

// PreviewScale (source pixels per preview pixel, whole) and PreviewOriginX/Y live with
// the work images; these are the dialog's own.
extern float PreviewFitScale; // the scale at which the filter rectangle fits, at least 1
extern float ZoomStep;        // scale = PreviewFitScale - ZoomStep; -1: not set, 100 %
extern int16 ProxyRect[4];    // top, left, bottom, right: the preview's size as told to the host

// What the preview control keeps of the pan.
struct PreviewPan {
    int32_t width = 0, height = 0;    // the control's client size
    int32_t originX = 0, originY = 0; // pan in preview pixels
    int32_t dragMovedX = 0, dragMovedY = 0;
    bool ctrlDrag = false;
};

// Whether the zoom buttons are enabled: 1000 grows the picture, 1001 shrinks it.
struct ZoomButtons {
    bool up = false, down = false;
};

// Scale, pan and the host's rectangles for the control, then advanceState asking for the
// scaled picture; its result becomes the host result.
OSErr SetPreviewGeometry(PreviewPan& control);
// When the control's size differs from ProxyRect's, stores it and answers true.
bool SyncPreviewRect(const PreviewPan& control);
// The control's pan becomes PreviewOriginX and PreviewOriginY.
void PanToGlobals(const PreviewPan& control);

// The dialog's first setup: 100 %, in the top left corner.
void OpenPreviewGeometry(PreviewPan& control, ZoomButtons& buttons);
// The zoom commands: 1000, 1001, 9001 (fit) and 9002 (100 %). Each leaves the host's
// rectangles set; the caller acquires and renders.
void ZoomUp(PreviewPan& control, ZoomButtons& buttons);
void ZoomDown(PreviewPan& control, ZoomButtons& buttons);
void ZoomToFit(PreviewPan& control, ZoomButtons& buttons);
void ZoomToActual(PreviewPan& control, ZoomButtons& buttons);
// After a change of the control's size; false when there was none.
bool ResizePreview(PreviewPan& control, ZoomButtons& buttons);
// Left button up: the dragged distance goes into the origin, after a Ctrl drag too (a
// drift the next zoom or pan starts from). True after a plain drag: the dialog is told.
bool ReleasePan(PreviewPan& control);
// The dialog told of a plain drag's end: the new pan, clamped, asked of the host.
void ApplyPan(PreviewPan& control);
// The label's text: 100 / scale, truncated, and a percent sign.
int32_t PreviewPercent();

// The source acquired anew at the preview's rectangles, every layer's geometry and the
// washes' coverage marked for a render.
void AcquirePreviewSource();

// Ctrl + drag: slides the texture of the layer the active tab shows by (dx, dy) preview
// pixels, that is dx * scale source pixels, into gParams. False (and nothing moved) on
// the Basic tab and in the Original view.
bool MoveActiveLayer(int32_t dx, int32_t dy);
