// Hooks the effect engine and the dialog fill in for the preset code: the preset
// library and the random effects need a few things (layers, the navigator, the
// current page) that live above the portable core. Unset hooks do nothing.
#pragma once

struct PresetEngineHooks {
    void (*ReconcileNavigator)() = nullptr; // after a load that changes second layers
    void (*RebuildAllLayers)() = nullptr;   // keep flags off, free and remake all layers
    void (*RefreshCurrentPage)() = nullptr; // the current tab page shows gParams again
};

extern PresetEngineHooks PresetHooks;
