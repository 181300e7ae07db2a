// The listing order every build returns: the one random picks and preset lists rely on.
#include "common/TempPaths.h"
#include "platform/FolderList.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

TEST(FolderOrder, UpperCaseOrdinalOnEverySystem) {
    const fs::path dir = ProcessTempDir() / "order";
    fs::remove_all(dir);
    fs::create_directories(dir);
    // Created out of order; '-' and '.' sort below the letters, '[' and '_' above them once
    // the names are upper case (a lower-case order would put "Ink_Spill" before "Inka").
    const std::vector<std::string> names = {"_lead.qzt", "Zulu.qzt", "Ink_Spill.qzt", "[x].qzt",
                                            "Inka.qzt",  "INK.qzt",  "ink-2.qzt"};
    for (const std::string& name : names) std::ofstream(dir / name) << "x";
    fs::create_directory(dir / "inK_dir");

    std::vector<FolderEntry> entries;
    ASSERT_TRUE(ListFolder(dir.string(), "*", entries));
    std::vector<std::string> listed;
    for (const FolderEntry& e : entries) listed.push_back(e.name);
    const std::vector<std::string> expected = {
        ".", "..", "ink-2.qzt", "INK.qzt", "Inka.qzt", "inK_dir", "Ink_Spill.qzt", "Zulu.qzt", "[x].qzt", "_lead.qzt"};
    EXPECT_EQ(listed, expected);

    // A pattern keeps the same order among what it matches.
    ASSERT_TRUE(ListFolder(dir.string(), "ink*.qzt", entries));
    listed.clear();
    for (const FolderEntry& e : entries) listed.push_back(e.name);
    EXPECT_EQ(listed, (std::vector<std::string>{"ink-2.qzt", "INK.qzt", "Inka.qzt", "Ink_Spill.qzt"}));

    // Names equal but for case (possible off Windows) still come in one fixed order.
    std::vector<FolderEntry> twins = {
        {"ab", false, true, false, 0}, {"AB", false, true, false, 0}, {"Ab", false, true, false, 0}};
    SortListing(twins);
    EXPECT_EQ(twins[0].name, "AB");
    EXPECT_EQ(twins[1].name, "Ab");
    EXPECT_EQ(twins[2].name, "ab");
    fs::remove_all(dir);
}
