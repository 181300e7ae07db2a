#include "state/ViewState.h"

int32_t ActiveTab = TabBasic;
int32_t ViewBasic = ViewCodeComposite;
int32_t ViewWash = ViewCodeComposite;
int32_t ViewSurface = ViewCodeComposite;
int32_t ViewBackground = ViewCodeComposite;

int32_t CurrentViewCode() {
    switch (ActiveTab) {
    case TabWash: return ViewWash;
    case TabSurface: return ViewSurface;
    case TabBackground: return ViewBackground;
    default: return ViewBasic;
    }
}
