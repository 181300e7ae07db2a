// The preset text format: exact text of the writer, round trips by kind, the
// reader's version 1 rewrites and its line rules.
#include "PresetFixture.h"

#include <cstring>
#include <functional>

namespace {

std::string WriteToString(int kind) {
    std::FILE* file = std::tmpfile();
    EXPECT_NE(file, nullptr);
    EXPECT_TRUE(WritePresetFile(file, kind));
    std::rewind(file);
    std::string text;
    for (int c; (c = std::fgetc(file)) != EOF;) text += char(c);
    std::fclose(file);
    return text;
}

bool PresetKeyed(const ParameterField& f) {
    return f.key[0] && f.kind != FieldKind::Int16 && f.kind != FieldKind::Buffer &&
           std::strncmp(f.name, "Pending", 7) != 0 && std::strstr(f.name, "Offset") == nullptr;
}

bool StartsWith(const char* s, const char* head) { return std::strncmp(s, head, std::strlen(head)) == 0; }

// Which fields a kind writes, told by their names.
bool WashField(const char* n) {
    return StartsWith(n, "Wash") || !std::strcmp(n, "UseWash") || !std::strcmp(n, "EffectOnMask") ||
           !std::strcmp(n, "SecondWashExists");
}
bool SurfaceField(const char* n) {
    return (StartsWith(n, "Surface") && std::strcmp(n, "SurfaceInNewLayer") && std::strcmp(n, "SurfaceHighlight") &&
            std::strcmp(n, "SurfaceShadow")) ||
           !std::strcmp(n, "UseSurface") || !std::strcmp(n, "SecondSurfaceExists");
}
bool BackgroundField(const char* n) {
    return StartsWith(n, "Background") || !std::strcmp(n, "UseBackground") || !std::strcmp(n, "SurfaceInNewLayer");
}

// Two records that differ in every field a preset can hold; the first has every
// section's switches on so that everything is written.
void FillPattern(FilterParameters& p, bool written) {
    for (size_t i = 0; i < kParameterFieldCount; ++i) {
        const ParameterField& f = kParameterFields[i];
        if (!PresetKeyed(f)) continue;
        char* at = reinterpret_cast<char*>(&p) + f.offset;
        const int n = int(i);
        switch (f.kind) {
        case FieldKind::Flag: *reinterpret_cast<uint8_t*>(at) = written ? 1 : 0; break;
        case FieldKind::Byte: *reinterpret_cast<uint8_t*>(at) = uint8_t(written ? n % 4 + 1 : 200); break;
        case FieldKind::Int32: *reinterpret_cast<int32_t*>(at) = written ? 1000 + n : -1 - n; break;
        case FieldKind::Color: *reinterpret_cast<uint32_t*>(at) = written ? 0x10000u + uint32_t(n) : 7u; break;
        case FieldKind::Float: *reinterpret_cast<float*>(at) = written ? float(n) + 0.25f : -7.5f; break;
        case FieldKind::Name: std::snprintf(at, kNameLength, "%s_%s.qzt", written ? "A" : "B", f.name); break;
        default: break;
        }
    }
    LinkWash = LinkSurface = LinkBackground = written ? 1 : 0;
}

bool SameField(const FilterParameters& a, const FilterParameters& b, const ParameterField& f) {
    const char* x = reinterpret_cast<const char*>(&a) + f.offset;
    const char* y = reinterpret_cast<const char*>(&b) + f.offset;
    switch (f.kind) {
    case FieldKind::Flag:
    case FieldKind::Byte: return *x == *y;
    case FieldKind::Name: return std::strcmp(x, y) == 0;
    default: return std::memcmp(x, y, 4) == 0;
    }
}

} // namespace

using PresetFormat = PresetFixture;

TEST_F(PresetFormat, WriterKeepsTheTextOfTheFormat) {
    gParams->SecondSurfaceExists = 1;
    const std::string surface = WriteToString(PresetSurface);
    EXPECT_EQ(surface.rfind("Quenzit Press Preset;\nVersion 2;\n;------Surface parameters------\n"
                            "nOfS 1 \t\t\t\t;Surface Use \n1VFS 0 \t\t\t\t;Flip Surf1 Ver. \n",
                            0),
              0u);
    EXPECT_NE(surface.find("1NFS Battleship.qzt \t\t\t\t;Surface1 Name \n"), std::string::npos);
    EXPECT_NE(surface.find("1hDS 50 \t\t\t\t;Surface1 Depth\n"), std::string::npos);
    EXPECT_NE(surface.find("1pAS 58.00 \t\t\t\t;Surface Use \n1tBS 35.00 \t\t\t\t;Surface Use \n"), std::string::npos);
    EXPECT_NE(surface.find("2HFS 0 \t\t\t\t;Flip Surf2 Ver. \n"), std::string::npos);
    const std::string last = "BkLI 0 \t\t\t\t;Is Background Linked\n";
    EXPECT_EQ(surface.substr(surface.size() - last.size()), last);
    EXPECT_NE(surface.find("WkLI 0 \t\t\t\t;Is Wash Linked\nSkLI 0 "), std::string::npos);

    // Switched-off sections shrink to their first line; the background names no texture.
    gParams->UseWash = 0;
    gParams->UseBackground = 0;
    const std::string user = WriteToString(PresetUser);
    EXPECT_NE(user.find(";------Common parameters------\nsBLN 0 \t\t\t\t;Effect in new layer \n"
                        ";------Wash parameters------\nnOSW 0 \t\t\t\t;Use Wash \n;------Surface"),
              std::string::npos);
    EXPECT_NE(user.find(";------Background parameters------\nnOkB 0 \t\t\t\t;Use Background \n"
                        "NFkB No_Texture.qzt \t\t\t\t;Name of Background \nWkLI"),
              std::string::npos);

    gParams->SurfaceShadowColor = 0x123456;
    EXPECT_EQ(WriteToString(PresetSurfaceColors),
              "Quenzit Press Preset;\nVersion 2;\n;------Color Preset------\n"
              "rgtC Empty \t\t\t\t;Preset Category \nlCiH 16777215 \t\t\t\t;Hightlight Color\n"
              "lCdM 51400 \t\t\t\t;Midtone Color\nlCdS 1193046 \t\t\t\t;Shadow Color\n");

    // A name that fills its field to the last byte is written only up to the field.
    std::memset(gParams->SurfaceFileName1, 'x', kNameLength);
    const std::string full = WriteToString(PresetSurface);
    EXPECT_NE(full.find("1NFS " + std::string(kNameLength - 1, 'x') + " \t"), std::string::npos);
}

TEST_F(PresetFormat, EachKindBringsBackWhatItWritesAndLeavesTheRest) {
    const struct {
        int kind;
        std::function<bool(const char*)> writes;
    } kinds[] = {
        {PresetWash, WashField},
        {PresetSurface, SurfaceField},
        {PresetBackground, BackgroundField},
        {PresetUser,
         [](const char* n) {
             return WashField(n) || SurfaceField(n) || BackgroundField(n) || !std::strcmp(n, "EffectInNewLayer");
         }},
    };
    for (const auto& k : kinds) {
        SCOPED_TRACE(k.kind);
        FilterParameters written{}, untouched{};
        gParams = &written;
        FillPattern(written, true);
        const std::filesystem::path path = root_ / "kind.qztpst";
        std::FILE* file = std::fopen(path.string().c_str(), "wb");
        ASSERT_TRUE(WritePresetFile(file, k.kind));
        std::fclose(file);

        gParams = &untouched;
        FillPattern(untouched, false);
        FilterParameters read = untouched;
        gParams = &read;
        ASSERT_TRUE(LoadPresetPath(path.string().c_str()));
        for (size_t i = 0; i < kParameterFieldCount; ++i) {
            const ParameterField& f = kParameterFields[i];
            if (!PresetKeyed(f)) continue;
            const bool back = k.writes(f.name);
            EXPECT_TRUE(SameField(read, back ? written : untouched, f)) << f.name << (back ? " written" : " untouched");
        }
        EXPECT_EQ(LinkWash + LinkSurface + LinkBackground, 3);
        gParams = &record_;
    }
}

TEST_F(PresetFormat, VersionOneFilesAreRewrittenAndTheVersionCarriesOver) {
    gParams->SecondWashExists = 1;
    gParams->WashType1 = 3;
    gParams->BackgroundHue = 40;
    gParams->BackgroundEnhanced = 1;
    ASSERT_TRUE(LoadText("Quenzit Press Preset;\nVersion 1;\n"
                         "nOSW 1 \n1pTW 2\n1voC 30\nxE2W 1 \n2pTW 3\n"
                         "nOfS 1 \nSHue 9\nHRBS 5\n1NFS No_Texture.qzt \n1hDS 70\nE2fS 1 \n2pTS 3\n"
                         "1CMS 77\n1pTS 4\nNFkB No_Texture.qzt \n"));
    EXPECT_EQ(PresetVersion, 1);
    EXPECT_EQ(gParams->WashType1, 2); // cleared by nOSW, then read
    EXPECT_EQ(gParams->WashCoverage1, 70);
    EXPECT_EQ(gParams->WashType2, 3); // cleared by xE2W, then read
    EXPECT_EQ(gParams->SurfaceBrightness, 100);
    EXPECT_EQ(std::string(gParams->SurfaceFileName1), "General_Store.qzt");
    EXPECT_EQ(gParams->SurfaceDepth1, 70);
    EXPECT_EQ(gParams->SurfaceMidtoneColor, 77u);
    EXPECT_EQ(gParams->SurfaceShadowColor, 12950u);
    EXPECT_EQ(gParams->SurfaceType1, 4);
    EXPECT_EQ(gParams->UseBackground, 1); // old files have no test of the name

    // No version line: read as the file before; "Version 3;" changes nothing.
    ASSERT_TRUE(LoadText("Quenzit Press Preset;\n2voC 10\nnOkB 0 \n"));
    EXPECT_EQ(gParams->WashCoverage2, 90);
    EXPECT_EQ(std::string(gParams->BackgroundFileName), "No_Texture.qzt");
    EXPECT_EQ(gParams->BackgroundHue, 0);
    EXPECT_EQ(gParams->BackgroundEnhanced, 0);
    ASSERT_TRUE(LoadText("Quenzit Press Preset;\nVersion 3;\nQqQq 5\n2voC 10\n"));
    EXPECT_EQ(PresetVersion, 1);
    EXPECT_EQ(gParams->WashCoverage2, 90);

    // Version 2 again: values as they stand, and the background's name switches it off.
    ASSERT_TRUE(LoadText("Quenzit Press Preset;\nVersion 2;\n1voC 30\nnOkB 1 \nNFkB No_Texture.qzt \n"));
    EXPECT_EQ(gParams->WashCoverage1, 30);
    EXPECT_EQ(gParams->UseBackground, 0);
}

TEST_F(PresetFormat, ReaderLineRules) {
    // Wash preset switching the wash off: both textures become none and wash 2 goes.
    gParams->SecondWashExists = 1;
    ASSERT_TRUE(LoadText("Quenzit Press Preset;\nVersion 2;\nnOSW 0 \t\t\t\t;Use Wash \n"));
    EXPECT_EQ(std::string(gParams->WashFileName1), "No_Texture.qzt");
    EXPECT_EQ(std::string(gParams->WashFileName2), "No_Texture.qzt");
    EXPECT_EQ(gParams->SecondWashExists, 0);
    EXPECT_EQ(gParams->UseWash, 0);

    // CR LF: the CR stays in a name only where no blank stood before it.
    ASSERT_TRUE(LoadText("Quenzit Press Preset;\r\nVersion 2;\r\n1NFW Plain.qzt\r\n2NFW Spaced.qzt \r\n"
                         "1cSW 42\r\n1NFS Commented.qzt\t\t\t\t;Surface1 Name\r\n"));
    EXPECT_EQ(std::string(gParams->WashFileName1), "Plain.qzt\r");
    EXPECT_EQ(std::string(gParams->WashFileName2), "Spaced.qzt");
    EXPECT_EQ(std::string(gParams->SurfaceFileName1), "Commented.qzt");
    EXPECT_EQ(gParams->WashScale1, 42);

    // A byte above 0x7F ends the line, and is kept as its last byte; the rest is a
    // line of its own with no key we know. The last line, without its LF, is lost.
    ASSERT_TRUE(LoadText("Quenzit Press Preset;\nBkFN x\n1NFW Caf\xE9.qzt \n2tIW 1.5e3\n1tIW 77"));
    EXPECT_EQ(std::string(gParams->WashFileName1), "Caf\xE9");
    EXPECT_EQ(gParams->WashIntensity2, 1);
    EXPECT_EQ(gParams->WashIntensity1, 100);

    // A name longer than the field is cut to it, and the next field is left alone.
    const std::string longName(400, 'n');
    ASSERT_TRUE(LoadText("Quenzit Press Preset;\n1NFW " + longName + "\n"));
    EXPECT_EQ(std::string(gParams->WashFileName1), longName.substr(0, kNameLength - 1));
    EXPECT_EQ(std::string(gParams->WashFileName2), "Spaced.qzt");

    // A wrong first line reads nothing.
    const FilterParameters before = *gParams;
    EXPECT_FALSE(LoadText("Quenzit Press Preset\n1cSW 9\n"));
    EXPECT_FALSE(LoadText(""));
    EXPECT_EQ(std::memcmp(&before, gParams, sizeof before), 0);

    // Layer flags, links and colours.
    ASSERT_TRUE(LoadText("Quenzit Press Preset;\nsBLN    1\nWkLI   1\nlCdS 66\n"));
    EXPECT_EQ(gParams->EffectInNewLayer, 1);
    EXPECT_EQ(LinkWash, 1);
    EXPECT_EQ(PresetColorShadow, 66u);
}
