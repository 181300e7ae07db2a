// The layer navigator without windows: its buttons and their captions, where the row
// stands and how each tab lays it out, what each command does to the views, the shown
// flags and gParams, and what a reset by tab writes. The win32 half moves the windows and
// runs the engine work these answers name.
#pragma once

#include "dialog/DialogLayout.h"
#include "state/Parameters.h"

#include <array>
#include <cstddef>
#include <cstdint>

// ---- Ids ----

enum NavigatorId : int32_t {
    NavComposite = 500,
    NavWashOne = 501,
    NavWashTwo = 502,
    NavAddWash = 503,
    NavOriginal = 504,
    NavBackground = 505,
    NavSurfaceOne = 506,
    NavSurfaceTwo = 507,
    NavAddSurface = 508,
    NavDeleteSurfaceTwo = 509,
    NavDeleteSurfaceOne = 510,
    NavDeleteWashTwo = 511,
    NavDeleteWashOne = 512,
    NavResetAll = 513,
    NavResetWash = 514,
    NavResetSurface = 515,
    NavResetBackground = 516,
    NavSeparatorFirst = 604, // then 608, 612, 616
};

inline constexpr int32_t kNavigatorSeparators[4] = {604, 608, 612, 616};
inline constexpr int32_t kNavigatorHeight = 16;
inline constexpr int32_t kDeleteButtonSize = 13;

// A text button of the row; `width` is at 96 dpi and grows by DpiScale.
struct NavigatorLabel {
    int32_t id;
    const char* caption;
    int32_t width;
    const char* tip;
};
// In the order they are made.
extern const std::array<NavigatorLabel, 13> kNavigatorLabels;

struct NavigatorDelete {
    int32_t id;
    const char* tip;
};
extern const std::array<NavigatorDelete, 4> kNavigatorDeletes;

// The label's width at `dpiScale`, truncated.
int32_t NavigatorLabelWidth(int32_t width, float dpiScale);

// The reset button each tab shows: Basic 513, Wash 514, Surface 515, Background 516.
int32_t ResetButtonOfTab(int32_t tab);
// The view a view button stands for, or -1 for the others.
int32_t ViewOfButton(int32_t id);

// ---- The row ----

// Where the row starts, from the client rectangle of the hidden group box 1010.
struct NavigatorOrigin {
    int32_t x = 0, y = 0;
    bool operator==(const NavigatorOrigin&) const = default;
};
NavigatorOrigin NavigatorRowOrigin(const LayoutRect& groupBox, int32_t dpi);

struct NavigatorItem {
    int32_t id = 0;
    LayoutBox box;
    bool operator==(const NavigatorItem&) const = default;
};
// What a tab shows, left to right; every other button and separator is hidden.
struct NavigatorRow {
    std::array<NavigatorItem, 9> items{};
    size_t count = 0;
};
NavigatorRow LayOutNavigator(int32_t tab, bool secondWash, bool secondSurface, NavigatorOrigin origin, float dpiScale);

// ---- Commands ----

// Engine work a command leaves to the caller, after the flags and gParams are set; the
// view is stored after that work, which still sees the view the command came from.
struct NavigatorWork {
    bool known = false; // one of 500 to 512
    int32_t view = 0;   // now the active tab's
    bool prepareSecondWash = false, syncWash = false;
    bool prepareSecondSurface = false, syncSurface = false;
    bool remakeWashes = false, remakeSurfaces = false;
    bool surfacesChanged = false; // the relief must be worked out again
};
// Command `id` of 500 to 512 on the active tab: its new view; adding and deleting set the
// shown flags and the Exists flags in `p`; the deletes behind the first layer swap the
// pair first.
NavigatorWork ApplyNavigatorCommand(int32_t id, FilterParameters& p, uint8_t& secondWashShown,
                                    uint8_t& secondSurfaceShown);
// The command's view into the active tab's own view field.
void CommitNavigatorView(const NavigatorWork& work);

// Wash 1 and wash 2 trade their texture and its look; edge distance, randomize, angle and
// offsets stay where they are.
void SwapWashes(FilterParameters& p);
// Surface 1 and surface 2 trade type, scale, depth, flips, invert and name.
void SwapSurfaces(FilterParameters& p);

// What the page does after a command: shown anew from gParams when the view is one of
// its layers, else only enabled again.
enum class PageAfterCommand { Refresh, EnableOnly };
PageAfterCommand PageActionAfter(int32_t tab, int32_t view);

// The view field of a tab (Basic, Wash, Surface, Background).
int32_t& ViewOfTab(int32_t tab);

// ---- Following a wholesale change of gParams ----

struct ReconcileWork {
    bool changed = false;
    bool prepareSecondWash = false, syncWash = false;
    bool prepareSecondSurface = false, syncSurface = false;
};
// Brings the shown flags in line with SecondWashExists and SecondSurfaceExists; a pair
// that changed shows its composite again. A second layer that had its button already
// keeps its view.
ReconcileWork ReconcileShown(const FilterParameters& p, uint8_t& secondWashShown, uint8_t& secondSurfaceShown);

// ---- Resets ----

inline constexpr const char* kResetQuestion =
    "Are you sure you want to delete all the current settings? Once deleted, they cannot be restored";
inline constexpr const char* kResetTitle = "Quenzit";

struct ResetPlan {
    bool ask = false; // only Basic asks
    bool keepWash = false, keepSurface = false, keepBackground = false;
};
// Any of 513 to 516 acts by the active tab, not by its own id.
ResetPlan ResetPlanFor(int32_t tab);
// Writes the tab's defaults into `p`, its first texture names "No_Texture.qzt".
void ApplyTabReset(FilterParameters& p, int32_t tab);
