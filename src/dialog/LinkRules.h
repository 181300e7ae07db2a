// Which tabs may link their placement, and what a press on a link button does, without a
// window. The link flags themselves (LinkWash, LinkSurface, LinkBackground) travel with
// the parameters; the matches and the asking tab live here.
#pragma once

#include "dialog/PageRules.h"

#include <cstdint>

// Tabs that ask, as the link dialog numbers them; also its results.
enum LinkKind : int32_t { LinkKindWash = 1, LinkKindSurface = 2, LinkKindBackground = 3 };

extern uint8_t SameWashPair, SameSurfacePair;
extern uint8_t SameWashSurface, SameWashBackground, SameSurfaceBackground;
// The tab whose link button asked; the link dialog's answer when no radio is set.
extern int16_t LinkDialogKind;

struct LinkFlags {
    bool wash = false, surface = false, background = false;
    bool operator==(const LinkFlags&) const = default;
};

// The links that survive the matches: a tab's link stays only while it has a partner.
LinkFlags KeepMatchedLinks(const LinkMatches& m, LinkFlags links);
// The matches from gParams (Use flags worked out first) into the globals above, and the
// link flags that lost their partner cleared.
void UpdateLinkMatches();
// The matches as the globals hold them.
LinkMatches CurrentLinkMatches();

// Whether tab `a` can link with tab `b` (two different kinds).
bool KindsMatch(const LinkMatches& m, int32_t a, int32_t b);
// Whether `kind` can link with any other tab.
bool KindHasMatch(const LinkMatches& m, int32_t kind);

// The link dialog's radios (1 Wash, 2 Surface, 3 Background) at opening.
struct LinkRadios {
    bool shown[4] = {};
    int32_t checked = 0; // 0 for none
};
LinkRadios RadiosFor(int32_t kind, const LinkMatches& m);

// A link button's press, or the same run after a texture was chosen on the tab.
enum class LinkStart {
    Disable, // no partner: link off, unchecked; the button disabled (enabled after a choice)
    TurnOff, // the link was on: off, unchecked, nothing else
    Ask,     // the link dialog decides
};
LinkStart StartLinkPress(int32_t kind, bool linkOn, bool textureChosen, const LinkMatches& m);

// What follows the dialog's answer (-1 for No, else the master tab).
struct LinkPlan {
    bool linkOn = false;      // the asking tab's link, and its button's check
    int32_t master = 0;       // the tab whose sync runs; 0 for none
    LinkFlags partners;       // links turned on besides the asking tab's
    bool refreshPage = false; // the master is another tab: the asking page shows its placement
    bool render = false;
    bool operator==(const LinkPlan&) const = default;
};
LinkPlan AnswerLinkPress(int32_t kind, int32_t answer, bool textureChosen, const LinkMatches& m);
