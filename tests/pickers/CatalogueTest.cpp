// The drawers' lists: what a folder gives, what each filter lets through, paging and picks.
#include "pickers/Catalogue.h"

#include "common/TempPaths.h"
#include "online/TextureSets.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;

void Put32(std::string& bytes, size_t at, uint32_t v) {
    for (int i = 0; i < 4; ++i) bytes[at + size_t(i)] = char(v >> (8 * i) & 0xFF);
}

// A current-form header and nothing behind it: the listing reads no further.
std::string Header(uint32_t setId, uint32_t extra, uint32_t mask) {
    std::string h(52, '\0');
    Put32(h, 0, 0x717A7431u);
    Put32(h, 4, 64), Put32(h, 8, 64), Put32(h, 12, 1);
    Put32(h, 20, setId), Put32(h, 24, extra), Put32(h, 28, mask);
    return h;
}

class Folder {
public:
    explicit Folder(const char* name) : path_(ProcessTempDir() / name) {
        fs::remove_all(path_);
        fs::create_directories(path_);
    }
    ~Folder() { fs::remove_all(path_); }
    void File(const std::string& name, const std::string& bytes) const {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
    }
    std::string Path() const { return path_.string(); }

private:
    fs::path path_;
};

std::string Preset(const char* line4, const char* line5) {
    return std::string("Quenzit Press Preset;\nVersion 2;\n;------Color Preset------\n") + line4 + "\n" + line5 +
           "\nlCiH 16118015 \t\t\t\t;Hightlight Color\n";
}

// Filters are shared globals: every test starts from the open filter.
struct CatalogueTest : ::testing::Test {
    void SetUp() override { SetFilterIndex = EffectFilterIndex = 0, RowsPerPage = 3, TextureSetCount = 0; }
    void TearDown() override { SetUp(); }
};

std::vector<std::string> Names(const std::vector<TextureEntry>& rows) {
    std::vector<std::string> names;
    for (const TextureEntry& e : rows) names.emplace_back(e.Name);
    return names;
}

TEST_F(CatalogueTest, ListsTexturesWithTheirHeadersAndNoTextureInFront) {
    Folder f("textures");
    f.File("Alpha.qzt", Header(7, 9, 0x6));
    f.File("Beta.qzt", std::string("wash\0\0\0\x40\0\0\0\x40\0\0\0\x01", 16) + Header(7, 9, 0x6));
    f.File("Cut.qzt", Header(1, 2, 3).substr(0, 30));
    f.File("nO_tExTuRe.qzt", Header(0, 0, 0));
    const std::string longName = std::string(29, 'L') + ".qzt"; // 33 characters
    f.File(longName, Header(5, 0, 1));
    f.File("Alpha.qzt.bmp", "not a texture");
    fs::create_directories(fs::path(f.Path()) / "Folder.qzt");

    Catalogue list;
    ASSERT_TRUE(ListFolder(list, (f.Path() + "/").c_str()));
    EXPECT_EQ(std::string(list.Folder), f.Path());
    ASSERT_EQ(list.FileCount, 5);
    EXPECT_EQ(Names(list.AllEntries),
              (std::vector<std::string>{"nO_tExTuRe.qzt", "Alpha.qzt", "Beta.qzt", "Cut.qzt", longName.substr(0, 32)}));
    const TextureEntry& alpha = list.AllEntries[1];
    EXPECT_EQ(alpha.SetId, 7u);
    EXPECT_EQ(alpha.Extra, 9u);
    EXPECT_EQ(alpha.EffectMask, 0x6u);
    EXPECT_EQ(alpha.ThumbScale, 4.0f);
    EXPECT_EQ(alpha.ThumbResolution, 2048);
    for (int row : {2, 3}) // the older form, and a header cut short
        EXPECT_EQ(list.AllEntries[size_t(row)].SetId | list.AllEntries[size_t(row)].EffectMask |
                      list.AllEntries[size_t(row)].Extra,
                  0u)
            << row;

    Catalogue empty;
    Folder none("empty");
    EXPECT_FALSE(ListFolder(empty, none.Path().c_str()));
    ApplyFilter(empty);
    EXPECT_EQ(empty.ShownCount, 1); // the one blank tile
    EXPECT_EQ(empty.PageCount, 1);
    EXPECT_STREQ(empty.ShownEntries[0].Name, "");
}

TEST_F(CatalogueTest, TextureFiltersWithBothOverrides) {
    TextureSets[0] = {11, "Set Eleven"};
    TextureSets[1] = {22, "Set Twenty-Two"};
    TextureSetCount = 2;
    Catalogue list;
    auto row = [&](const char* name, uint32_t set, uint32_t mask) {
        TextureEntry e;
        std::strcpy(e.Name, name);
        e.SetId = set;
        e.EffectMask = mask;
        return e;
    };
    const TextureEntry plain = row("Plain.qzt", 22, 1u << 3), solid = row("Solid.qzt", 99, 0),
                       solidCase = row("SOLID.qzt", 99, 0), none = row("No_Texture.qzt", 0, 0);
    struct Case {
        int32_t set, effect;
        bool plain, solid, solidCase, none;
    };
    const Case cases[] = {
        {0, 0, true, true, true, true},     {-1, 0, true, true, true, true},
        {1, 4, false, true, false, true},   // set row "No Texture/Solid": the effect is not looked at
        {3, 0, true, false, false, false},  // set row S - 2 = TextureSets[1]
        {2, 0, false, false, false, false}, //
        {2, 1, false, true, false, true},   // effect row "No Texture/Solid" overrides the set
        {3, 4, true, false, false, false},  // row 4 is bit 3
        {3, 5, false, false, false, false}, //
        {0, 4, true, false, false, false},  //
        {9, 0, false, false, false, false}, // a set row past the table
    };
    for (const Case& c : cases) {
        SetFilterIndex = c.set, EffectFilterIndex = c.effect;
        EXPECT_EQ(PassesFilter(list, plain), c.plain) << c.set << "/" << c.effect;
        EXPECT_EQ(PassesFilter(list, solid), c.solid) << c.set << "/" << c.effect;
        EXPECT_EQ(PassesFilter(list, solidCase), c.solidCase) << c.set << "/" << c.effect;
        EXPECT_EQ(PassesFilter(list, none), c.none) << c.set << "/" << c.effect;
    }

    // One effect index for both drawers: a category picked in the colour drawer filters
    // the texture drawer's next rebuild by the same row number.
    list.AllEntries = {none, plain, solid, row("Other.qzt", 22, 1u << 4)};
    SetFilterIndex = 0, EffectFilterIndex = 4;
    ApplyFilter(list);
    EXPECT_EQ(Names(list.ShownEntries), (std::vector<std::string>{"No_Texture.qzt", "Plain.qzt"}));
    EXPECT_EQ(list.ShownEntries[1].SourceIndex, 1);
    EXPECT_EQ(TextureSetRows(),
              (std::vector<std::string>{"All Textures Sets", "No Texture/Solid", "Set Eleven", "Set Twenty-Two"}));
}

TEST_F(CatalogueTest, ColourPresetsListedUnderEachOfTheirCategories) {
    Folder f("colours");
    f.File("Both.qztpst", Preset("rgtC Red Tones|Warm Tones \t\t\t\t;Preset Category ", "lCdS 1"));
    f.File("Fifth.qztpst", Preset("lCdS 1", "rgtC  Blue Tones  \t;Preset Category\r"));
    f.File("Neither.qztpst", Preset("lCdS 1", "lCdM 2"));
    f.File("Empty.qztpst", Preset("rgtC \t;Preset Category", "lCdS 1"));
    Catalogue list;
    list.DrawerMode = kColourDrawer;
    ASSERT_TRUE(ListFolder(list, f.Path().c_str()));
    ASSERT_EQ(Names(list.AllEntries), (std::vector<std::string>{"Reset Colors", "Both.qztpst", "Empty.qztpst",
                                                                "Fifth.qztpst", "Neither.qztpst"}));
    EXPECT_EQ(list.AllEntries[1].Categories, (std::vector<std::string>{"Red Tones", "Warm Tones"}));
    EXPECT_EQ(list.AllEntries[2].Categories, (std::vector<std::string>{""}));
    EXPECT_EQ(list.AllEntries[3].Categories, (std::vector<std::string>{"Blue Tones"}));
    EXPECT_EQ(list.AllEntries[4].CategoryCount, 0);

    const auto shown = [&](const char* category) {
        ApplyFilter(list, category);
        return Names(list.ShownEntries);
    };
    EXPECT_EQ(shown("Red Tones"), (std::vector<std::string>{"Reset Colors", "Both.qztpst"}));
    EXPECT_EQ(shown("Warm Tones"), (std::vector<std::string>{"Reset Colors", "Both.qztpst"}));
    EXPECT_EQ(shown("warm tones"), (std::vector<std::string>{"Reset Colors"}));
    EXPECT_EQ(shown(nullptr).size(), 5u);
}

TEST_F(CatalogueTest, PagesAndSelection) {
    Catalogue list;
    list.AllEntries.resize(9);
    for (int i = 0; i < 9; ++i) std::snprintf(list.AllEntries[size_t(i)].Name, 33, "T%d.qzt", i);
    ApplyFilter(list);
    EXPECT_EQ(list.ShownCount, 9); // exactly one page of 3 x 3
    EXPECT_EQ(list.PageCount, 1);
    list.AllEntries.emplace_back();
    std::strcpy(list.AllEntries.back().Name, "Last.qzt");
    ApplyFilter(list);
    EXPECT_EQ(list.PageCount, 2);

    SelectByName(list, "last.QZT");
    EXPECT_EQ(list.SelectedIndex, 9);
    EXPECT_EQ(list.CurrentPage, 1);
    EXPECT_STREQ(list.CurrentName, "last.QZT");
    SelectByName(list, "Missing.qzt");
    EXPECT_EQ(list.SelectedIndex, -1);
    EXPECT_EQ(list.CurrentPage, 1); // the page stays where it was
}

} // namespace
