// The operating-system layer, on whichever system the test program runs.
#include "platform/Alert.h"
#include "platform/CRandom.h"
#include "platform/Clock.h"
#include "platform/FolderList.h"
#include "platform/ModulePath.h"
#include "platform/PageMemory.h"
#include "platform/UserStore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <random>
#include <string>

#ifdef _WIN32
#include <windows.h>
#endif

namespace fs = std::filesystem;

namespace {

// A fresh folder under the system's temporary folder, removed afterwards.
class TempFolder {
public:
    explicit TempFolder(const std::string& tag) {
        path_ = fs::temp_directory_path() / ("qz-platform-" + tag + "-" + std::to_string(CurrentTimeSeconds()) + "-" +
                                             std::to_string(std::random_device{}()));
        fs::create_directories(path_);
    }
    ~TempFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    const fs::path& Path() const { return path_; }

private:
    fs::path path_;
};

void WriteFile(const fs::path& path, const std::string& bytes) { std::ofstream(path, std::ios::binary) << bytes; }

const FolderEntry* Find(const std::vector<FolderEntry>& entries, const std::string& name) {
    auto it = std::find_if(entries.begin(), entries.end(), [&](const FolderEntry& e) { return e.name == name; });
    return it == entries.end() ? nullptr : &*it;
}

// A program's name without folder or extension; Windows names ignore case.
std::string ProgramName(const std::string& path) {
    std::string name = fs::path(path).stem().string();
#ifdef _WIN32
    for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
#endif
    return name;
}

} // namespace

// --- Page memory -------------------------------------------------------------

TEST(PlatformPages, ZeroFilledWritableAndRefusesNonsense) {
    const size_t bytes = 5 * 65536 + 123; // several pages, not a whole number of them
    auto* pages = static_cast<unsigned char*>(AllocatePages(bytes));
    ASSERT_NE(pages, nullptr);
    EXPECT_EQ(pages[0], 0);
    EXPECT_EQ(pages[bytes / 2], 0);
    EXPECT_EQ(pages[bytes - 1], 0);
    for (size_t i = 0; i < bytes; i += 4093) pages[i] = static_cast<unsigned char>(i * 7 + 1);
    pages[bytes - 1] = 0xA5;
    for (size_t i = 0; i < bytes; i += 4093) ASSERT_EQ(pages[i], static_cast<unsigned char>(i * 7 + 1));
    EXPECT_EQ(pages[bytes - 1], 0xA5);
    FreePages(pages, bytes);

    EXPECT_EQ(AllocatePages(0), nullptr);
    EXPECT_EQ(AllocatePages(SIZE_MAX / 2), nullptr);
    EXPECT_EQ(AllocatePages(SIZE_MAX), nullptr);
    FreePages(nullptr, 0);
    FreePages(nullptr, 4096);
}

// --- Module path -------------------------------------------------------------

TEST(PlatformModulePath, NamesThisProgramAndHonoursTheOverride) {
    const std::string path = ModuleFilePath();
    ASSERT_FALSE(path.empty());
    EXPECT_TRUE(fs::path(path).is_absolute()) << path;
    EXPECT_TRUE(fs::is_regular_file(path)) << path;

    // The test program is the module that holds the platform code here.
    const std::vector<std::string> argv = ::testing::internal::GetArgvs();
    ASSERT_FALSE(argv.empty());
    EXPECT_EQ(ProgramName(path), ProgramName(argv[0])) << path;

    std::string plugin = std::string("somewhere") + kPathSeparator + "Quenzit64.8bf";
    SetModuleFilePathOverride(plugin);
    EXPECT_EQ(ModuleFilePath(), plugin);
    SetModuleFilePathOverride("");
    EXPECT_EQ(ModuleFilePath(), path);
}

// --- Folder listing ----------------------------------------------------------

TEST(PlatformFolderList, ListsLikeFindFirstFile) {
    TempFolder temp("list");
    const fs::path& dir = temp.Path();
    WriteFile(dir / "A.QZT", "12345");
    WriteFile(dir / "b.qzt", "");
    WriteFile(dir / "c.txt", "abc");
    WriteFile(dir / ".hidden", "x");
    fs::create_directory(dir / "Sub");
#ifdef _WIN32
    // Windows hides by attribute, not by name.
    SetFileAttributesA((dir / ".hidden").string().c_str(), FILE_ATTRIBUTE_HIDDEN);
#endif

    std::vector<FolderEntry> entries{{"stale", false, false, false, 0}};
    ASSERT_TRUE(ListFolder(dir.string(), "*", entries));
    ASSERT_EQ(entries.size(), 7u);
    EXPECT_EQ(Find(entries, "stale"), nullptr);
    for (const char* name : {".", "..", "Sub"}) {
        const FolderEntry* entry = Find(entries, name);
        ASSERT_NE(entry, nullptr) << name;
        EXPECT_TRUE(entry->isDirectory) << name;
        EXPECT_FALSE(entry->isHidden) << name;
    }
    const FolderEntry* big = Find(entries, "A.QZT");
    ASSERT_NE(big, nullptr);
    EXPECT_FALSE(big->isDirectory);
    EXPECT_TRUE(big->isArchive);
    EXPECT_FALSE(big->isHidden);
    EXPECT_EQ(big->size, 5u);
    const FolderEntry* hidden = Find(entries, ".hidden");
    ASSERT_NE(hidden, nullptr);
    EXPECT_TRUE(hidden->isHidden);
#ifndef _WIN32
    // POSIX order is fixed: dots first, then case-insensitive.
    const char* order[] = {".", "..", ".hidden", "A.QZT", "b.qzt", "c.txt", "Sub"};
    for (size_t i = 0; i < entries.size(); ++i) EXPECT_EQ(entries[i].name, order[i]);
#endif

    // Patterns match case-insensitively; "*.*" also matches names without a dot.
    ASSERT_TRUE(ListFolder(dir.string(), "*.qzt", entries));
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_NE(Find(entries, "A.QZT"), nullptr);
    EXPECT_NE(Find(entries, "b.qzt"), nullptr);
    ASSERT_TRUE(ListFolder(dir.string() + kPathSeparator, "?.QZT", entries));
    EXPECT_EQ(entries.size(), 2u);
    ASSERT_TRUE(ListFolder(dir.string(), "*.*", entries));
    EXPECT_NE(Find(entries, "Sub"), nullptr);
    ASSERT_TRUE(ListFolder(dir.string(), "*.none", entries));
    EXPECT_TRUE(entries.empty());

    entries.push_back({"stale", false, false, false, 0});
    EXPECT_FALSE(ListFolder((dir / "missing").string(), "*", entries));
    EXPECT_TRUE(entries.empty());
}

// --- Alerts ------------------------------------------------------------------

TEST(PlatformAlert, CaptureRecordsAndAnswers) {
    AlertCapture outer(AlertAnswer::Cancel);
    EXPECT_EQ(ShowAlert("Texture file is damaged."), AlertAnswer::Cancel);
    {
        AlertCapture inner(AlertAnswer::No);
        EXPECT_EQ(ShowAlert("Replace the preset?", kAlertTitle, AlertIcon::Question, AlertButtons::YesNo),
                  AlertAnswer::No);
        ASSERT_EQ(inner.Alerts().size(), 1u);
        const AlertRecord& alert = inner.Alerts()[0];
        EXPECT_EQ(alert.text, "Replace the preset?");
        EXPECT_EQ(alert.title, "Plugins Alert");
        EXPECT_EQ(alert.icon, AlertIcon::Question);
        EXPECT_EQ(alert.buttons, AlertButtons::YesNo);
    }
    ShowAlert("Out of memory.", "Quenzit", AlertIcon::Error, AlertButtons::OkCancel);

    ASSERT_EQ(outer.Alerts().size(), 2u);
    EXPECT_EQ(outer.Alerts()[0].text, "Texture file is damaged.");
    EXPECT_EQ(outer.Alerts()[0].title, "Plugins Alert");
    EXPECT_EQ(outer.Alerts()[0].icon, AlertIcon::Warning);
    EXPECT_EQ(outer.Alerts()[0].buttons, AlertButtons::Ok);
    EXPECT_EQ(outer.Alerts()[1].title, "Quenzit");
    EXPECT_EQ(outer.Alerts()[1].icon, AlertIcon::Error);
}

// --- User store --------------------------------------------------------------

TEST(PlatformUserStore, RoundTripsValues) {
#ifndef _WIN32
    TempFolder temp("store");
    const char* previous = std::getenv("XDG_CONFIG_HOME");
    std::optional<std::string> saved;
    if (previous) saved = previous;
    setenv("XDG_CONFIG_HOME", temp.Path().c_str(), 1);
#endif

    EXPECT_EQ(ReadUserValue("Never written by anyone"), 0u);
    EXPECT_TRUE(WriteUserValue("New version on server", 20240131u));
    EXPECT_TRUE(WriteUserValue("Last check", 0xFFFFFFFFu));
    EXPECT_TRUE(WriteUserValue("New version on server", 7u)); // replaces, keeps the other
    EXPECT_EQ(ReadUserValue("New version on server"), 7u);
    EXPECT_EQ(ReadUserValue("Last check"), 0xFFFFFFFFu);
    EXPECT_EQ(ReadUserValue("New version"), 0u);
    EXPECT_EQ(ReadUserValue("Never written by anyone"), 0u);

#ifndef _WIN32
    EXPECT_TRUE(fs::is_regular_file(temp.Path() / "Quenzit" / "Environment"));
    if (saved) setenv("XDG_CONFIG_HOME", saved->c_str(), 1);
    else unsetenv("XDG_CONFIG_HOME");
#endif
}

// --- Clock and CRandom -------------------------------------------------------

TEST(PlatformClock, CountsSecondsSince1970) {
    // 2023-01-01 and 2100-01-01: catches a wrong epoch or a tick unit.
    EXPECT_GT(CurrentTimeSeconds(), 1672531200);
    EXPECT_LT(CurrentTimeSeconds(), 4102444800);
}

TEST(PlatformCRandom, MatchesTheWindowsRuntime) {
    CSeedRandom(1);
    for (int expected : {41, 18467, 6334, 26500, 19169}) EXPECT_EQ(CRandom(), expected);

    // By hand: 4000000000 * 214013 + 2531011 = 856052002531011, which wraps to
    // 595928771; 595928771 >> 16 = 9093.
    CSeedRandom(4000000000u);
    EXPECT_EQ(CRandom(), 9093);
    // The state is the process's own: the C library's rand() does not touch it.
    CSeedRandom(1);
    std::srand(99);
    (void)std::rand();
    EXPECT_EQ(CRandom(), 41);
}
