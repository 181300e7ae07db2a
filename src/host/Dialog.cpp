#include "host/Dialog.h"

#include "presets/UiSettings.h"

bool (*DialogStandIn)() = nullptr;
void (*AboutStandIn)(void* hostWindow) = nullptr;

void RunAboutSelector(void* hostWindow) {
    UiSettingsRecord kept;
    kept.UseSoundForAuto = UseSoundForAuto;
    const std::string ini = UiSettingsPath();
    ReadUiSettingsRecord(ini, kept);
    UseSoundForAuto = kept.UseSoundForAuto;
    ShowAboutBox(hostWindow);
    if (UseSoundForAuto == kept.UseSoundForAuto) return;
    kept.UseSoundForAuto = UseSoundForAuto;
    WriteUiSettingsRecord(ini, kept);
}
