// The window of class "Preview Contaner CPP": shows the preview's picture, pans it by a
// plain drag (no render until release) and slides the active tab's texture by Ctrl + drag.
#pragma once

#include "dialog/PreviewPicture.h"
#include "host/PreviewGeometry.h"

#include <windows.h>

inline constexpr const char* kPreviewClass = "Preview Contaner CPP";

struct PreviewControl {
    HWND window = nullptr;
    int32_t id = 0;
    uint8_t mode = 0;
    PreviewPan pan;
    int32_t dragStartX = 0, dragStartY = 0;
    bool dragging = false;
    PreviewPicture picture;
};

bool RegisterPreviewClass(HINSTANCE module);
void UnregisterPreviewClass(HINSTANCE module);
PreviewControl* PreviewRecord(HWND window);

// The cursors over the preview and while dragging it; the dialog loads them.
extern HCURSOR PreviewHoverCursor, PreviewDragCursor;
// The brush behind a picture that is being dragged.
extern HBRUSH PreviewBackBrush;
