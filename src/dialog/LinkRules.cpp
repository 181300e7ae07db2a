#include "dialog/LinkRules.h"

#include "effects/EffectLayer.h"
#include "state/Parameters.h"

uint8_t SameWashPair = 0, SameSurfacePair = 0;
uint8_t SameWashSurface = 0, SameWashBackground = 0, SameSurfaceBackground = 0;
int16_t LinkDialogKind = LinkKindWash;

LinkFlags KeepMatchedLinks(const LinkMatches& m, LinkFlags links) {
    links.wash = links.wash && (m.washSurface || m.washBackground);
    links.surface = links.surface && (m.washSurface || m.surfaceBackground);
    links.background = links.background && (m.washBackground || m.surfaceBackground);
    return links;
}

void UpdateLinkMatches() {
    if (!gParams) return;
    ComputeUseFlags();
    const FilterParameters& p = *gParams;
    const LinkMatches m =
        MatchLinks(p.WashFileName1, p.WashFileName2, p.SecondWashExists, p.UseWash, p.SurfaceFileName1,
                   p.SurfaceFileName2, p.SecondSurfaceExists, p.UseSurface, p.BackgroundFileName, p.UseBackground);
    SameWashPair = m.washPair;
    SameSurfacePair = m.surfacePair;
    SameWashSurface = m.washSurface;
    SameWashBackground = m.washBackground;
    SameSurfaceBackground = m.surfaceBackground;
    const LinkFlags kept = KeepMatchedLinks(m, {LinkWash != 0, LinkSurface != 0, LinkBackground != 0});
    LinkWash = kept.wash;
    LinkSurface = kept.surface;
    LinkBackground = kept.background;
}

LinkMatches CurrentLinkMatches() {
    LinkMatches m;
    m.washPair = SameWashPair;
    m.surfacePair = SameSurfacePair;
    m.washSurface = SameWashSurface;
    m.washBackground = SameWashBackground;
    m.surfaceBackground = SameSurfaceBackground;
    return m;
}

bool KindsMatch(const LinkMatches& m, int32_t a, int32_t b) {
    const auto pair = [&](int32_t x, int32_t y) { return (a == x && b == y) || (a == y && b == x); };
    if (pair(LinkKindWash, LinkKindSurface)) return m.washSurface;
    if (pair(LinkKindWash, LinkKindBackground)) return m.washBackground;
    if (pair(LinkKindSurface, LinkKindBackground)) return m.surfaceBackground;
    return false;
}

bool KindHasMatch(const LinkMatches& m, int32_t kind) {
    for (int32_t other = LinkKindWash; other <= LinkKindBackground; ++other)
        if (other != kind && KindsMatch(m, kind, other)) return true;
    return false;
}

LinkRadios RadiosFor(int32_t kind, const LinkMatches& m) {
    LinkRadios r;
    if (kind < LinkKindWash || kind > LinkKindBackground) return r;
    r.shown[kind] = true;
    // The first partner in tab order is offered, else the last one (even if not shown).
    int32_t last = 0;
    for (int32_t other = LinkKindWash; other <= LinkKindBackground; ++other) {
        if (other == kind) continue;
        r.shown[other] = KindsMatch(m, kind, other);
        if (r.shown[other] && !r.checked) r.checked = other;
        last = other;
    }
    if (!r.checked) r.checked = last;
    return r;
}

LinkStart StartLinkPress(int32_t kind, bool linkOn, bool textureChosen, const LinkMatches& m) {
    if (!KindHasMatch(m, kind)) return LinkStart::Disable;
    if (linkOn && !textureChosen) return LinkStart::TurnOff;
    return LinkStart::Ask;
}

LinkPlan AnswerLinkPress(int32_t kind, int32_t answer, bool textureChosen, const LinkMatches& m) {
    LinkPlan plan;
    if (answer < LinkKindWash || answer > LinkKindBackground) return plan;
    plan.linkOn = true;
    plan.master = answer;
    plan.partners.wash = kind != LinkKindWash && KindsMatch(m, kind, LinkKindWash);
    plan.partners.surface = kind != LinkKindSurface && KindsMatch(m, kind, LinkKindSurface);
    plan.partners.background = kind != LinkKindBackground && KindsMatch(m, kind, LinkKindBackground);
    plan.refreshPage = answer != kind;
    plan.render = !textureChosen;
    return plan;
}
