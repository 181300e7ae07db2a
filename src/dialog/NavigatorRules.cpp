#include "dialog/NavigatorRules.h"

#include "state/ViewState.h"

#include <cstring>
#include <utility>

const std::array<NavigatorLabel, 13> kNavigatorLabels = {{
    {NavComposite, "Composite", 66, "View all combined image effects"},
    {NavWashOne, "Wash One", 60, "View and edit wash effect"},
    {NavWashTwo, "Wash Two", 60, "View and edit wash effect"},
    {NavAddWash, "Add Wash", 60, "Apply an additional wash effect"},
    // Reset All carries the wash tip, as users have always seen it.
    {NavResetAll, "Reset All", 50, "Reset all wash settings"},
    {NavResetWash, "Reset Wash", 70, "Reset all wash settings"},
    {NavResetSurface, "Reset Surface", 87, "Reset all surface settings"},
    {NavResetBackground, "Reset Background", 110, "Reset all background settings"},
    {NavOriginal, "Original", 55, "View the original image"},
    {NavBackground, "Background", 70, "View and edit background effect"},
    {NavSurfaceOne, "Surface One", 70, "View and edit surface effect"},
    {NavSurfaceTwo, "Surface Two", 70, "View and edit surface effect"},
    {NavAddSurface, "Add Surface", 70, "Apply an additional surface effect"},
}};

const std::array<NavigatorDelete, 4> kNavigatorDeletes = {{
    {NavDeleteWashOne, "Delete wash effect"},
    {NavDeleteWashTwo, "Delete wash effect"},
    {NavDeleteSurfaceOne, "Delete surface effect"},
    {NavDeleteSurfaceTwo, "Delete surface effect"},
}};

int32_t NavigatorLabelWidth(int32_t width, float dpiScale) { return int32_t(float(width) * dpiScale); }

int32_t ResetButtonOfTab(int32_t tab) {
    switch (tab) {
    case TabWash: return NavResetWash;
    case TabSurface: return NavResetSurface;
    case TabBackground: return NavResetBackground;
    default: return NavResetAll;
    }
}

int32_t ViewOfButton(int32_t id) {
    switch (id) {
    case NavComposite: return ViewCodeComposite;
    case NavWashOne: return ViewCodeWashOne;
    case NavWashTwo: return ViewCodeWashTwo;
    case NavOriginal: return ViewCodeOriginal;
    case NavBackground: return ViewCodeBackground;
    case NavSurfaceOne: return ViewCodeSurfaceOne;
    case NavSurfaceTwo: return ViewCodeSurfaceTwo;
    default: return -1;
    }
}

NavigatorOrigin NavigatorRowOrigin(const LayoutRect& groupBox, int32_t dpi) {
    int32_t x = groupBox.left, y = groupBox.top;
    if (dpi > 96) {
        if (dpi >= 216) y -= 30;
        else if (dpi >= 144) y += 20;
        else if (dpi >= 120) x -= 70, y += 10;
        else x -= 15, y += 20;
    }
    return {x + 29, y + 16};
}

namespace {

// Positions are worked out in f32 from the row's start and truncated one by one.
struct RowBuilder {
    NavigatorRow row;
    NavigatorOrigin origin;
    float s;

    void Label(int32_t id, float x, int32_t width) {
        Put(id, {int32_t(x), origin.y, NavigatorLabelWidth(width, s), kNavigatorHeight});
    }
    void Separator(int32_t id, float x, int32_t width) { Put(id, {int32_t(x), origin.y, width, kNavigatorHeight}); }
    void Delete(int32_t id, float x) { Put(id, {int32_t(x), origin.y + 2, kDeleteButtonSize, kDeleteButtonSize}); }
    void Put(int32_t id, LayoutBox box) {
        if (row.count < row.items.size()) row.items[row.count++] = {id, box};
    }
};

} // namespace

NavigatorRow LayOutNavigator(int32_t tab, bool secondWash, bool secondSurface, NavigatorOrigin origin, float dpiScale) {
    const float s = dpiScale;
    RowBuilder b{{}, origin, s};
    const float x0 = float(origin.x);
    const float bar = x0 + 66.0f * s; // the first separator
    b.Label(NavComposite, x0, 66);
    // The first separator is 8 wide, but only 7 before the surfaces.
    const bool surfaces = tab == TabSurface;
    b.Separator(604, bar, surfaces ? 7 : 8);

    if (tab == TabWash && !secondWash) {
        const float one = bar + 8.0f, end = one + 60.0f * s;
        b.Label(NavWashOne, one, 60);
        b.Separator(608, end, 7);
        b.Label(NavAddWash, end + 7.0f, 60);
        const float add = end + 7.0f + 60.0f * s;
        b.Separator(612, add, 7);
        b.Label(NavOriginal, add + 7.0f, 55);
    } else if (tab == TabWash) {
        // Everything behind Wash One counts from its end; each separator follows its
        // delete button by 17.
        const float one = bar + 8.0f, end = one + 60.0f * s;
        b.Label(NavWashOne, one, 60);
        b.Delete(NavDeleteWashOne, end + 3.0f);
        b.Separator(608, end + 20.0f, 7);
        b.Label(NavWashTwo, end + 27.0f, 60);
        const float two = end + 27.0f + 60.0f * s;
        b.Delete(NavDeleteWashTwo, two + 3.0f);
        b.Separator(616, two + 20.0f, 7);
        b.Label(NavOriginal, two + 27.0f, 55);
    } else if (tab == TabSurface && !secondSurface) {
        const float one = bar + 7.0f, end = one + 70.0f * s;
        b.Label(NavSurfaceOne, one, 70);
        b.Separator(608, end + 2.0f, 7);
        b.Label(NavAddSurface, end + 9.0f, 70);
        const float add = end + 9.0f + 70.0f * s;
        b.Separator(612, add, 7);
        b.Label(NavOriginal, add + 7.0f, 55);
    } else if (tab == TabSurface) {
        // As the washes, with the delete button 4 behind and the separator 18 behind it.
        const float one = bar + 7.0f, end = one + 70.0f * s;
        b.Label(NavSurfaceOne, one, 70);
        b.Delete(NavDeleteSurfaceOne, end + 4.0f);
        b.Separator(608, end + 22.0f, 7);
        b.Label(NavSurfaceTwo, end + 29.0f, 70);
        const float two = end + 29.0f + 70.0f * s;
        b.Delete(NavDeleteSurfaceTwo, two + 4.0f);
        b.Separator(616, two + 22.0f, 7);
        b.Label(NavOriginal, two + 29.0f, 55);
    } else if (tab == TabBackground) {
        const float one = bar + 8.0f, end = one + 70.0f * s;
        b.Label(NavBackground, one, 70);
        b.Separator(608, end, 7);
        b.Label(NavOriginal, end + 7.0f, 55);
    } else {
        b.Label(NavOriginal, bar + 8.0f, 55);
    }
    return b.row;
}

int32_t& ViewOfTab(int32_t tab) {
    switch (tab) {
    case TabWash: return ViewWash;
    case TabSurface: return ViewSurface;
    case TabBackground: return ViewBackground;
    default: return ViewBasic;
    }
}

void SwapWashes(FilterParameters& p) {
    std::swap(p.WashType1, p.WashType2);
    std::swap(p.WashStainColor1, p.WashStainColor2);
    std::swap(p.WashScale1, p.WashScale2);
    std::swap(p.WashIntensity1, p.WashIntensity2);
    std::swap(p.WashCoverage1, p.WashCoverage2);
    std::swap(p.WashCoverageScale1, p.WashCoverageScale2);
    std::swap(p.WashEdgeSoftness1, p.WashEdgeSoftness2);
    std::swap(p.WashInside1, p.WashInside2);
    std::swap(p.WashFlipHor1, p.WashFlipHor2);
    std::swap(p.WashFlipVer1, p.WashFlipVer2);
    std::swap(p.WashInvert1, p.WashInvert2);
    std::swap(p.WashFileName1, p.WashFileName2);
}

void SwapSurfaces(FilterParameters& p) {
    std::swap(p.SurfaceType1, p.SurfaceType2);
    std::swap(p.SurfaceScale1, p.SurfaceScale2);
    std::swap(p.SurfaceDepth1, p.SurfaceDepth2);
    std::swap(p.SurfaceFlipHor1, p.SurfaceFlipHor2);
    std::swap(p.SurfaceFlipVer1, p.SurfaceFlipVer2);
    std::swap(p.SurfaceInvert1, p.SurfaceInvert2);
    std::swap(p.SurfaceFileName1, p.SurfaceFileName2);
}

NavigatorWork ApplyNavigatorCommand(int32_t id, FilterParameters& p, uint8_t& secondWashShown,
                                    uint8_t& secondSurfaceShown) {
    NavigatorWork w;
    if (id < NavComposite || id > NavDeleteWashOne) return w;
    w.known = true;
    switch (id) {
    case NavAddWash:
        w.view = ViewCodeWashTwo;
        secondWashShown = p.SecondWashExists = 1;
        w.prepareSecondWash = w.syncWash = true;
        break;
    case NavAddSurface:
        w.view = ViewCodeSurfaceTwo;
        secondSurfaceShown = p.SecondSurfaceExists = 1;
        w.prepareSecondSurface = w.syncSurface = true;
        w.surfacesChanged = true;
        break;
    case NavDeleteSurfaceOne:
    case NavDeleteSurfaceTwo:
        w.view = ViewCodeSurfaceOne;
        if (id == NavDeleteSurfaceOne) SwapSurfaces(p), w.remakeSurfaces = true;
        secondSurfaceShown = p.SecondSurfaceExists = 0;
        w.surfacesChanged = true;
        break;
    case NavDeleteWashOne:
    case NavDeleteWashTwo:
        w.view = ViewCodeWashOne;
        if (id == NavDeleteWashOne) SwapWashes(p), w.remakeWashes = true;
        secondWashShown = p.SecondWashExists = 0;
        break;
    default: w.view = ViewOfButton(id); break;
    }
    return w;
}

void CommitNavigatorView(const NavigatorWork& work) {
    if (work.known) ViewOfTab(ActiveTab) = work.view;
}

PageAfterCommand PageActionAfter(int32_t tab, int32_t view) {
    if (tab == TabWash && (view == ViewCodeWashOne || view == ViewCodeWashTwo)) return PageAfterCommand::Refresh;
    if (tab == TabSurface && (view == ViewCodeSurfaceOne || view == ViewCodeSurfaceTwo))
        return PageAfterCommand::Refresh;
    return PageAfterCommand::EnableOnly;
}

ReconcileWork ReconcileShown(const FilterParameters& p, uint8_t& secondWashShown, uint8_t& secondSurfaceShown) {
    ReconcileWork w;
    if (secondWashShown != 0 && !p.SecondWashExists) {
        secondWashShown = 0;
        ViewWash = ViewCodeComposite;
        w.changed = true;
    } else if (secondWashShown == 0 && p.SecondWashExists) {
        secondWashShown = 1;
        ViewWash = ViewCodeComposite;
        w.prepareSecondWash = w.syncWash = w.changed = true;
    }
    if (secondSurfaceShown != 0 && !p.SecondSurfaceExists) {
        secondSurfaceShown = 0;
        ViewSurface = ViewCodeComposite;
        w.changed = true;
    } else if (secondSurfaceShown == 0 && p.SecondSurfaceExists) {
        secondSurfaceShown = 1;
        ViewSurface = ViewCodeComposite;
        w.prepareSecondSurface = w.syncSurface = w.changed = true;
    }
    return w;
}

ResetPlan ResetPlanFor(int32_t tab) {
    switch (tab) {
    case TabWash: return {false, false, true, true};
    case TabSurface: return {false, true, false, true};
    case TabBackground: return {false, true, true, false};
    default: return {true, false, false, false};
    }
}

namespace {

// The reset operations write through gParams: aim it at the record for their while.
class ParamsAimedAt {
public:
    explicit ParamsAimedAt(FilterParameters& p) : saved_(gParams) { gParams = &p; }
    ~ParamsAimedAt() { gParams = saved_; }
    ParamsAimedAt(const ParamsAimedAt&) = delete;
    ParamsAimedAt& operator=(const ParamsAimedAt&) = delete;

private:
    FilterParameters* saved_;
};

void NoTexture(char (&name)[kNameLength]) {
    std::memset(name, 0, kNameLength);
    std::strncpy(name, kNoTextureName, kNameLength - 1);
}

} // namespace

void ApplyTabReset(FilterParameters& p, int32_t tab) {
    const ParamsAimedAt aim(p);
    switch (tab) {
    case TabWash:
        p.SecondWashExists = 0;
        ResetWash1();
        ResetWash2();
        NoTexture(p.WashFileName1);
        break;
    case TabSurface:
        p.SecondSurfaceExists = 0;
        ResetSurface1();
        ResetSurface2();
        ResetSurfaceCommon();
        NoTexture(p.SurfaceFileName1);
        break;
    case TabBackground:
        ResetBackground();
        NoTexture(p.BackgroundFileName);
        break;
    default:
        ResetAllParameters();
        NoTexture(p.WashFileName1);
        NoTexture(p.SurfaceFileName1);
        NoTexture(p.BackgroundFileName);
        break;
    }
}
