#include "dialog/win32/LayerNavigator.h"

#include "effects/EffectLayer.h"
#include "state/Parameters.h"

// The row itself is being built; until then only what the pages and lists call works.
uint8_t SecondWashShown = 0, SecondSurfaceShown = 0;

void BuildNavigator(HWND) {
    SecondWashShown = gParams->SecondWashExists;
    SecondSurfaceShown = gParams->SecondSurfaceExists;
}
void ShowNavigatorFor(int32_t) {}
void NavigatorCommand(HWND, int32_t) {}
void EnableNavigator(bool) {}
void ReconcileNavigator() {
    SecondWashShown = gParams->SecondWashExists;
    SecondSurfaceShown = gParams->SecondSurfaceExists;
}
void RebuildLayers() { CreateEngine(); }
