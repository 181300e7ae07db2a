// The built module as a host sees it: its imports, its entry point and its resources.
#include "win64/ModuleBeside.h"
#include "common/PeImports.h"
#include "common/ResourceChecks.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>

namespace {

std::string Upper(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return char(std::toupper(c)); });
    return s;
}

struct LoadedModule {
    HMODULE handle = LoadLibraryA(ModulePath().c_str());
    ~LoadedModule() {
        if (handle) FreeLibrary(handle);
    }
};

void CheckResource(HMODULE module, const char* type, void (*check)(const uint8_t*, size_t)) {
    HRSRC found = FindResourceA(module, MAKEINTRESOURCEA(16000), type);
    ASSERT_NE(found, nullptr) << type << " 16000 is missing";
    HGLOBAL loaded = LoadResource(module, found);
    ASSERT_NE(loaded, nullptr);
    check(static_cast<const uint8_t*>(LockResource(loaded)), SizeofResource(module, found));
}

} // namespace

TEST(Module, ImportsOnlySystemLibraries) {
    std::vector<std::string> dlls;
    std::string error;
    ASSERT_TRUE(ReadImportedDlls(ModulePath(), dlls, error)) << error;
    const std::set<std::string> allowed = {"KERNEL32.DLL", "USER32.DLL",  "GDI32.DLL", "COMCTL32.DLL", "COMDLG32.DLL",
                                           "ADVAPI32.DLL", "SHELL32.DLL", "WINMM.DLL", "WS2_32.DLL",   "MSVCRT.DLL"};
    EXPECT_FALSE(dlls.empty());
    for (const std::string& dll : dlls) EXPECT_TRUE(allowed.count(Upper(dll))) << "imports " << dll;
    EXPECT_TRUE(std::any_of(dlls.begin(), dlls.end(), [](const std::string& d) { return Upper(d) == "KERNEL32.DLL"; }));
}

TEST(Module, ExportsPluginMainAndCarriesItsResources) {
    LoadedModule module;
    ASSERT_NE(module.handle, nullptr) << "cannot load " << ModulePath();
    EXPECT_NE(GetProcAddress(module.handle, "PluginMain"), nullptr);
    // Resource type names are matched without regard to case, as hosts look them up.
    CheckResource(module.handle, "PiPL", CheckPiplResource);
    CheckResource(module.handle, "aete", CheckTerminologyResource);
}
