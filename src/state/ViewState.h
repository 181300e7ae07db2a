// What the dialog's navigator last chose to show, by tab. The final run reads it too:
// the Use flags follow a single wash or surface that was being viewed.
#pragma once

#include <cstdint>

// What the preview shows: the whole look, one layer alone, or the picture as it was.
enum ViewCode : int32_t {
    ViewCodeComposite = 0,
    ViewCodeWashOne = 1,
    ViewCodeWashTwo = 2,
    ViewCodeBackground = 3,
    ViewCodeSurfaceOne = 4,
    ViewCodeSurfaceTwo = 5,
    ViewCodeOriginal = 6,
};

enum TabCode : int32_t { TabBasic = 0, TabWash = 1, TabSurface = 2, TabBackground = 3 };

extern int32_t ActiveTab;
extern int32_t ViewBasic, ViewWash, ViewSurface, ViewBackground;

// The view code of the active tab.
int32_t CurrentViewCode();
