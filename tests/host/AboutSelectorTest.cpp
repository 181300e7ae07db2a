// The host's About selector: the box gets the host's window, reads the sound switch from
// the ini file, and a switch made there is written back with the file's other values.
#include "common/TempPaths.h"
#include "host/Dialog.h"
#include "host/PluginMain.h"
#include "host/abi/HostInterface.h"
#include "platform/ModulePath.h"
#include "presets/UiSettings.h"
#include "state/PathTable.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace {

void* SeenWindow = nullptr;
int32_t SeenSound = -1;
bool Toggle = false;

void StandIn(void* hostWindow) {
    SeenWindow = hostWindow;
    SeenSound = UseSoundForAuto;
    if (Toggle) UseSoundForAuto = !UseSoundForAuto;
}

std::string ReadText(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

} // namespace

TEST(AboutSelector, SoundSwitchKeptWithTheOtherValuesAsRead) {
    const std::filesystem::path dir = ProcessTempDir() / "about";
    std::filesystem::create_directories(dir);
    const std::filesystem::path ini = dir / kIniFileName;
    const std::string before = ";x\ntfeL 40\n poT 7\nhtdW 1000\nthgH 800\ntlsR 512\nnSsU 1\nQQQQ 9\n";
    std::ofstream(ini, std::ios::binary) << before;
    SetModuleFilePathOverride((dir / "Quenzit64.8bf").string());
    AboutStandIn = StandIn;
    const int32_t savedSound = UseSoundForAuto;
    UseSoundForAuto = 0;

    PlatformData platform{0x1234};
    AboutRecord about{};
    about.platformData = &platform;
    intptr_t slot = 0;
    int16_t result = -1;
    PluginMain(filterSelectorAbout, &about, &slot, &result);
    EXPECT_EQ(result, noErr);
    EXPECT_EQ(SeenWindow, reinterpret_cast<void*>(intptr_t(0x1234)));
    EXPECT_EQ(SeenSound, 1) << "the box shows the switch as the file holds it";
    EXPECT_EQ(ReadText(ini), before) << "nothing changed, nothing written";

    Toggle = true;
    PluginMain(filterSelectorAbout, &about, &slot, &result);
    EXPECT_EQ(UseSoundForAuto, 0);
    // The top position reads back as no key, so it returns to its default.
    EXPECT_EQ(ReadText(ini), ";Parameters for Quenzit plug-in UI\n"
                             "tfeL 40 \t\t\t\t;Left of window\n"
                             " poT 100 \t\t\t\t;Top of window\n"
                             "htdW 1000 \t\t\t\t;Width of window\n"
                             "thgH 800 \t\t\t\t;Height of window\n"
                             "tlsR 512 \t\t\t\t;Resolution of sharing\n"
                             "nSsU 0 \t\t\t\t;Use sound for Auto\n");

    Toggle = false;
    AboutStandIn = nullptr;
    UseSoundForAuto = savedSound;
    SetModuleFilePathOverride("");
    ComputePaths();
}
