#include "presets/PresetFormat.h"

#include "state/Parameters.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <vector>

int PresetVersion = 2;
uint32_t PresetColorHi = 0, PresetColorMid = 0, PresetColorShadow = 0;

namespace {

// One key line of a preset: a field of kParameterFields and its comment. The file key
// is the field's key reversed.
struct PresetLine {
    const char* field;
    const char* comment;
};

// Writer's order, section by section. Wash 2 and surface 2 start at the marked rows.
constexpr PresetLine kCommonLines[] = {{"EffectInNewLayer", "Effect in new layer"}};

constexpr PresetLine kWashLines[] = {
    {"UseWash", "Use Wash"},
    {"EffectOnMask", "Effect on Mask"},
    {"WashType1", "Type of Wash1"},
    {"WashStainColor1", "Stain Color of Wash1"},
    {"WashFileName1", "Name of Wash1"},
    {"WashScale1", "Scale of Wash1"},
    {"WashIntensity1", "Intensity of Wash1"},
    {"WashFlipHor1", "Flip Wash1 Hor."},
    {"WashFlipVer1", "Flip Wash1 Ver."},
    {"WashInvert1", "Invert Wash1"},
    {"WashInside1", "Wash1 Inside"},
    {"WashAngle1", "Wash1 Angle"},
    {"WashCoverage1", "Wash1 Coverage"},
    {"WashCoverageScale1", "Wash1 Coverage Scale"},
    {"WashEdgeDistance1", "Wash1 Edge Distance"},
    {"WashEdgeSoftness1", "Wash1 Edge Softness"},
    {"WashRandomize1", "Wash1 Ransomize"},
    {"SecondWashExists", "Second Wash Exist"},
    {"WashFileName2", "Name of Wash2"}, // wash 2 from here
    {"WashScale2", "Scale of Wash2"},
    {"WashIntensity2", "Intensity of Wash2"},
    {"WashType2", "Type of Wash2"},
    {"WashStainColor2", "Stain Color of Wash2"},
    {"WashFlipHor2", "Flip Wash2 Hor."},
    {"WashFlipVer2", "Flip Wash2 Ver."},
    {"WashInvert2", "Invert Wash2"},
    {"WashInside2", "Wash2 Inside"},
    {"WashAngle2", "Wash2 Angle"},
    {"WashCoverage2", "Wash2 Coverage"},
    {"WashCoverageScale2", "Wash2 Coverage Scale"},
    {"WashEdgeDistance2", "Wash2 Edge Distance"},
    {"WashEdgeSoftness2", "Wash2 Edge Softness"},
    {"WashRandomize2", "Wash2 Ransomize"},
};
constexpr size_t kWash2First = 18;

constexpr PresetLine kSurfaceLines[] = {
    {"UseSurface", "Surface Use"},
    {"SurfaceFlipVer1", "Flip Surf1 Ver."},
    {"SurfaceFlipHor1", "Flip Surf1 Hor."},
    {"SurfaceAngle1", "Surf1 Angle"},
    {"SurfaceFileName1", "Surface1 Name"},
    {"SurfaceEntire", "Surface Entire whole"},
    {"SurfaceIncludeWashArea", "Include Wash Area"},
    {"SurfaceDepth1", "Surface1 Depth"},
    {"SurfaceScale1", "Surface1 Scale"},
    {"SurfaceInvert1", "Surface1 Invert"},
    {"SurfacePerspectiveOn", "Surface Perspective On"},
    {"SurfaceType1", "Type of Surface1"},
    {"SurfaceBrightness", "Surface Brightness"},
    {"SurfaceContrast", "Surface Contrast"},
    {"SurfaceHue", "Surface Hue"},
    {"SurfaceIntensity", "Surface Intensity"},
    {"SurfaceMidtone", "Surface Midtone"},
    {"SurfaceHighlightColor", "Surface Hightlight Color"},
    {"SurfaceMidtoneColor", "Surface Midtone Color"},
    {"SurfaceShadowColor", "Surface Shadow Color"},
    {"SurfaceLightAlpha", "Surface Use"},
    {"SurfaceLightBeta", "Surface Use"},
    {"SecondSurfaceExists", "Surface2 Exists"},
    {"SurfaceType2", "Type of Surface2"}, // surface 2 from here
    {"SurfaceFlipVer2", "Flip Surf2 Ver."},
    {"SurfaceFlipHor2", "Flip Surf2 Ver."}, // the shipped text, same as the line above
    {"SurfaceAngle2", "Surf2 Angle"},
    {"SurfaceFileName2", "Surface2 Name"},
    {"SurfaceDepth2", "Surface2 Depth"},
    {"SurfaceScale2", "Surface2 Scale"},
    {"SurfaceInvert2", "Surface2 Invert"},
};
constexpr size_t kSurface2First = 23;

constexpr PresetLine kBackgroundLines[] = {
    {"UseBackground", "Use Background"},
    {"BackgroundFileName", "Name of Background"},
    {"SurfaceInNewLayer", "Surface in new layer"},
    {"BackgroundInNewLayer", "Background in new layer"},
    {"BackgroundEntire", "Background Entire whole"},
    {"BackgroundFlipHor", "Background Flip Hor."},
    {"BackgroundFlipVer", "Background Flip Ver."},
    {"BackgroundAngle", "Back Angle"},
    {"BackgroundInvert", "Background Invert"},
    {"BackgroundScale", "Background Scale"},
    {"BackgroundHighlight", "Background Highlight"},
    {"BackgroundMidtone", "Background Midtone"},
    {"BackgroundShadow", "Background Shadow"},
    {"BackgroundHue", "Background Hue"},
    {"BackgroundEnhanced", "Background Enhanced Mode"},
    {"BackgroundHighlightColor", "Background Highlight Color"},
    {"BackgroundMidtoneColor", "Background Midtone Color"},
    {"BackgroundShadowColor", "Background Shadow Color"},
    {"BackgroundFileName", "Background Shadow Color"}, // written twice; the second keeps this text
};

// Taken by the reader, never written.
constexpr PresetLine kReadOnlyLines[] = {{"SurfaceHighlight", ""}, {"SurfaceShadow", ""}};

// Flags read through the integer token (which skips blanks) rather than the flag token.
constexpr const char* kIntTokenFlags[] = {"EffectInNewLayer", "EffectOnMask", "BackgroundInNewLayer",
                                          "SurfaceInNewLayer"};

struct LinkLine {
    const char* key; // as in the file
    uint8_t* target;
    const char* comment;
};
const LinkLine kLinkLines[] = {{"WkLI", &LinkWash, "Is Wash Linked"},
                               {"SkLI", &LinkSurface, "Is Surface Linked"},
                               {"BkLI", &LinkBackground, "Is Background Linked"}};

struct ColorLine {
    const char* key;
    uint32_t* target;
    const char* comment;
};
const ColorLine kColorLines[] = {{"lCiH", &PresetColorHi, "Hightlight Color"},
                                 {"lCdM", &PresetColorMid, "Midtone Color"},
                                 {"lCdS", &PresetColorShadow, "Shadow Color"}};

void FileKey(const ParameterField& field, char (&out)[5]) {
    for (int i = 0; i < 4; ++i) out[i] = field.key[3 - i];
    out[4] = 0;
}

char* FieldAt(const ParameterField& field) { return reinterpret_cast<char*>(gParams) + field.offset; }

void SetName(char* field, const char* value) {
    std::memset(field, 0, kNameLength);
    const size_t n = std::strlen(value);
    std::memcpy(field, value, n < kNameLength - 1 ? n : kNameLength - 1);
}

// ---- writer

struct Writer {
    std::FILE* file;
    bool ok = true;

    void Text(const char* text) {
        if (std::fputs(text, file) < 0) ok = false;
    }
    void Check(int printed) {
        if (printed < 0) ok = false;
    }

    void Line(const PresetLine& line) {
        const ParameterField& field = *FindParameterField(line.field);
        char key[5];
        FileKey(field, key);
        char comment[96];
        std::snprintf(comment, sizeof comment, "\t\t\t\t;%s", line.comment);
        const char* at = FieldAt(field);
        switch (field.kind) {
        case FieldKind::Flag:
            Check(std::fprintf(file, "%s %d %s \n", key, int(*reinterpret_cast<const uint8_t*>(at)), comment));
            break;
        case FieldKind::Byte:
            Check(std::fprintf(file, "%s %d %s\n", key, int(*reinterpret_cast<const uint8_t*>(at)), comment));
            break;
        case FieldKind::Int32:
            Check(std::fprintf(file, "%s %d %s\n", key, int(*reinterpret_cast<const int32_t*>(at)), comment));
            break;
        case FieldKind::Color:
            Check(std::fprintf(file, "%s %d %s\n", key, int(*reinterpret_cast<const uint32_t*>(at)), comment));
            break;
        case FieldKind::Float:
            Check(std::fprintf(file, "%s %.2f %s \n", key, double(*reinterpret_cast<const float*>(at)), comment));
            break;
        case FieldKind::Name: {
            char name[kNameLength];
            std::memcpy(name, at, kNameLength);
            name[kNameLength - 1] = 0;
            Check(std::fprintf(file, "%s %s %s \n", key, name, comment));
            break;
        }
        case FieldKind::Int16:
        case FieldKind::Buffer: break; // never in a preset
        }
    }

    template <size_t N> void Lines(const PresetLine (&lines)[N], size_t from, size_t to) {
        for (size_t i = from; i < to && i < N; ++i) Line(lines[i]);
    }

    void Common() {
        Text(";------Common parameters------\n");
        Lines(kCommonLines, 0, 1);
    }
    void Wash() {
        Text(";------Wash parameters------\n");
        Line(kWashLines[0]);
        if (!gParams->UseWash) return;
        Lines(kWashLines, 1, kWash2First);
        if (gParams->SecondWashExists) Lines(kWashLines, kWash2First, SIZE_MAX);
    }
    void Surface() {
        Text(";------Surface parameters------\n");
        Line(kSurfaceLines[0]);
        if (!gParams->UseSurface) return;
        Lines(kSurfaceLines, 1, kSurface2First);
        if (gParams->SecondSurfaceExists) Lines(kSurfaceLines, kSurface2First, SIZE_MAX);
    }
    void Background() {
        Text(";------Background parameters------\n");
        Line(kBackgroundLines[0]);
        if (gParams->UseBackground) {
            Lines(kBackgroundLines, 1, SIZE_MAX);
        } else {
            char key[5];
            FileKey(*FindParameterField("BackgroundFileName"), key);
            Check(std::fprintf(file, "%s %s %s \n", key, kNoTextureName, "\t\t\t\t;Name of Background"));
        }
    }
    void Links() {
        for (const LinkLine& link : kLinkLines)
            Check(std::fprintf(file, "%s %d \t\t\t\t;%s\n", link.key, int(*link.target), link.comment));
    }
    void Colors(uint32_t hi, uint32_t mid, uint32_t shadow) {
        Text(";------Color Preset------\n");
        Check(std::fprintf(file, "%s %s %s \n", "rgtC", "Empty", "\t\t\t\t;Preset Category"));
        const uint32_t values[3] = {hi, mid, shadow};
        for (int i = 0; i < 3; ++i)
            Check(
                std::fprintf(file, "%s %d \t\t\t\t;%s\n", kColorLines[i].key, int(values[i]), kColorLines[i].comment));
    }
};

// ---- reader

bool IsBlank(char c) { return c == ' '; }

void SkipBlanks(const char*& text) {
    while (IsBlank(*text)) ++text;
}

// At most 64 bytes of number text, from the set the reader accepts.
size_t NumberText(const char*& text, char (&out)[65]) {
    size_t n = 0;
    while (n < 64 && *text && std::strchr(",-.0123456789Ee", *text)) out[n++] = *text++;
    out[n] = 0;
    return n;
}

int32_t DecimalToInt(const char* digits) {
    // As atoi does, but held to the 32-bit range so an overlong number is defined.
    errno = 0;
    const long long v = std::strtoll(digits, nullptr, 10);
    if (v > INT32_MAX) return INT32_MAX;
    if (v < INT32_MIN) return INT32_MIN;
    return int32_t(v);
}

int32_t ReadFlagToken(const char*& text) {
    char digits[65];
    NumberText(text, digits);
    return DecimalToInt(digits);
}

struct KeyedField {
    char fileKey[5];
    const ParameterField* field;
    bool intToken;
};

// Every key the reader takes, looked up once from the lines above.
const std::vector<KeyedField>& ReaderKeys() {
    static const std::vector<KeyedField> keys = [] {
        std::vector<KeyedField> all;
        auto add = [&](const PresetLine* lines, size_t count) {
            for (size_t i = 0; i < count; ++i) {
                KeyedField k{};
                k.field = FindParameterField(lines[i].field);
                FileKey(*k.field, k.fileKey);
                for (const char* name : kIntTokenFlags)
                    if (std::strcmp(name, k.field->name) == 0) k.intToken = true;
                all.push_back(k);
            }
        };
        add(kCommonLines, std::size(kCommonLines));
        add(kWashLines, std::size(kWashLines));
        add(kSurfaceLines, std::size(kSurfaceLines));
        add(kBackgroundLines, std::size(kBackgroundLines));
        add(kReadOnlyLines, std::size(kReadOnlyLines));
        return all;
    }();
    return keys;
}

// The field a file key names, and whether it is one of the flags that take the integer token.
const ParameterField* FindPresetField(const char* key, bool& intToken) {
    for (const KeyedField& k : ReaderKeys())
        if (std::memcmp(k.fileKey, key, 4) == 0) {
            intToken = k.intToken;
            return k.field;
        }
    return nullptr;
}

bool KeyIs(const char* key, const char* fileKey) { return std::memcmp(key, fileKey, 4) == 0; }

void ReadVersionLine(const char* line) {
    if (line[0] != 'V' || std::strlen(line) < 9) return;
    const char* word = std::strstr(line, "Version");
    if (!word) return;
    const char* at = word + 7;
    SkipBlanks(at);
    // A whole integer behind the blanks: "Version 10;" is 10 and changes nothing.
    const long version = std::strtol(at, nullptr, 10);
    if (version == 1 || version == 2) PresetVersion = int(version);
}

// What a key does beyond storing its value.
void AfterKey(const char* key, int32_t value) {
    FilterParameters& p = *gParams;
    const bool v1 = PresetVersion == 1;
    if (KeyIs(key, "nOSW")) {
        if (value == 0) {
            SetName(p.WashFileName1, kNoTextureName);
            if (p.SecondWashExists) SetName(p.WashFileName2, kNoTextureName);
            p.SecondWashExists = 0;
        }
        if (v1) p.WashType1 = 0;
    } else if (KeyIs(key, "xE2W")) {
        if (v1 && p.SecondWashExists) p.WashType2 = 0;
    } else if (KeyIs(key, "1voC")) {
        if (v1) p.WashCoverage1 = 100 - p.WashCoverage1;
    } else if (KeyIs(key, "2voC")) {
        if (v1) p.WashCoverage2 = 100 - p.WashCoverage2;
    } else if (KeyIs(key, "nOfS")) {
        if (value == 0) {
            SetName(p.SurfaceFileName1, kNoTextureName);
            if (p.SecondSurfaceExists) SetName(p.SurfaceFileName2, kNoTextureName);
            p.SecondSurfaceExists = 0;
        }
    } else if (KeyIs(key, "E2fS")) {
        if (v1 && p.SecondSurfaceExists) p.SurfaceType2 = 0;
    } else if (KeyIs(key, "1NFS") || KeyIs(key, "2NFS")) {
        if (!v1) return;
        const bool first = key[0] == '1';
        p.SurfaceType1 = 0; // both names reset the first surface's type in old files
        char* name = first ? p.SurfaceFileName1 : p.SurfaceFileName2;
        if (std::strcmp(name, kNoTextureName) == 0 && p.UseSurface) {
            SetName(name, "General_Store.qzt");
            (first ? p.SurfaceDepth1 : p.SurfaceDepth2) = 0;
        }
    } else if (KeyIs(key, "1CMS")) {
        if (!v1) return;
        p.SurfaceShadow = 100;
        p.SurfaceHighlight = 100;
        p.SurfaceHighlightColor = 0x00FFFFFF;
        p.SurfaceShadowColor = 12950;
        p.SurfaceBrightness = 100;
        p.SurfaceContrast = 100;
        p.SurfaceHue = 0;
        p.SurfaceType1 = 0;
    } else if (KeyIs(key, "NFkB")) {
        if (!v1 && std::strcmp(p.BackgroundFileName, kNoTextureName) == 0) p.UseBackground = 0;
    } else if (KeyIs(key, "nOkB")) {
        if (value == 0) SetName(p.BackgroundFileName, kNoTextureName);
        // Old files had no hue or enhanced mode: cleared whatever the value, as nOfS clears
        // the surface's newer fields.
        if (v1) {
            p.BackgroundHue = 0;
            p.BackgroundEnhanced = 0;
        }
    }
}

void TakeLine(const char* line) {
    ReadVersionLine(line);
    const char* at = line;
    SkipBlanks(at);
    if (std::strlen(at) < 4 || at[0] == ';') return;
    char key[4];
    std::memcpy(key, at, 4);
    at += 4;
    SkipBlanks(at);

    for (const LinkLine& link : kLinkLines)
        if (KeyIs(key, link.key)) {
            *link.target = uint8_t(ReadIntToken(at));
            return;
        }
    for (const ColorLine& color : kColorLines)
        if (KeyIs(key, color.key)) {
            *color.target = uint32_t(ReadIntToken(at));
            return;
        }

    bool intToken = false;
    const ParameterField* field = FindPresetField(key, intToken);
    if (!field) return; // section lines, "Version 2;", rgtC and unknown keys

    // Old files: these reset the surface before their own value is stored.
    if (PresetVersion == 1 && KeyIs(key, "nOfS")) {
        gParams->SurfaceHue = 0;
        gParams->SurfaceBrightness = 100;
        gParams->SurfaceContrast = 100;
        gParams->SurfaceType1 = 0;
    }

    char* target = FieldAt(*field);
    int32_t value = 0;
    switch (field->kind) {
    case FieldKind::Flag:
        value = intToken ? ReadIntToken(at) : ReadFlagToken(at);
        *reinterpret_cast<uint8_t*>(target) = uint8_t(value);
        break;
    case FieldKind::Byte:
        value = ReadIntToken(at);
        *reinterpret_cast<uint8_t*>(target) = uint8_t(value);
        break;
    case FieldKind::Int32:
        value = ReadIntToken(at);
        *reinterpret_cast<int32_t*>(target) = value;
        break;
    case FieldKind::Color:
        value = ReadIntToken(at);
        *reinterpret_cast<uint32_t*>(target) = uint32_t(value);
        break;
    case FieldKind::Float: *reinterpret_cast<float*>(target) = float(ReadFloatToken(at)); break;
    case FieldKind::Name: {
        char name[kNameLength];
        ReadNameToken(at, name, sizeof name); // a name past 127 characters is cut on reading
        SetName(target, name);
        break;
    }
    case FieldKind::Int16:
    case FieldKind::Buffer: return;
    }
    AfterKey(key, value);
}

} // namespace

int32_t ReadIntToken(const char*& text) {
    SkipBlanks(text);
    char digits[65];
    NumberText(text, digits);
    return DecimalToInt(digits);
}

double ReadFloatToken(const char*& text) {
    SkipBlanks(text);
    char digits[65];
    NumberText(text, digits);
    return std::strtod(digits, nullptr);
}

size_t ReadNameToken(const char*& text, char* out, size_t outSize) {
    SkipBlanks(text);
    const char* start = text;
    while (*text && *text != ';' && *text != '\t' && *text != '\n') ++text; // a CR is copied
    size_t length = size_t(text - start);
    while (length > 0 && IsBlank(start[length - 1])) --length;
    const size_t kept = length < outSize ? length : outSize - 1;
    std::memcpy(out, start, kept);
    out[kept] = 0;
    return length;
}

bool ReadPresetLine(std::FILE* file, char (&line)[kPresetLineSize]) {
    size_t n = 0;
    for (;;) {
        const int c = std::fgetc(file);
        if (c == EOF) {
            line[0] = 0;
            return false;
        }
        char byte = char(c);
        if (byte == '\t') byte = ' '; // made a blank before the test, so a tab never ends a line
        if (static_cast<signed char>(byte) <= 13) {
            line[n++] = byte;
            break;
        }
        if (n < kPresetLineSize - 2) line[n++] = byte; // an overlong line is cut, never overrun
    }
    line[n] = 0;
    // One blank just before the end byte is cut, and the end byte with it: that is why
    // a CR LF file keeps its CR in a name only when no blank stood before it.
    if (n >= 2 && line[n - 2] == ' ') line[n - 2] = 0;
    return true;
}

void LoadPresetFile(std::FILE* file) {
    char line[kPresetLineSize];
    while (ReadPresetLine(file, line)) TakeLine(line);
}

bool LoadPresetPath(const char* path) {
    std::FILE* file = std::fopen(path, "rb");
    if (!file) return false;
    char line[kPresetLineSize];
    const bool ok = ReadPresetLine(file, line) && std::strncmp(line, kPresetHeader, std::strlen(kPresetHeader)) == 0;
    if (ok) LoadPresetFile(file);
    std::fclose(file);
    return ok;
}

bool WritePresetFile(std::FILE* file, int kind) {
    Writer w{file};
    w.Text(kPresetHeader);
    w.Text("\n");
    w.Text("Version 2;\n");
    switch (kind) {
    case PresetWash: w.Wash(); break;
    case PresetSurface: w.Surface(); break;
    case PresetBackground: w.Background(); break;
    case PresetBasic:
    case PresetUser:
        w.Common();
        w.Wash();
        w.Surface();
        w.Background();
        break;
    case PresetSurfaceColors:
        w.Colors(gParams->SurfaceHighlightColor, gParams->SurfaceMidtoneColor, gParams->SurfaceShadowColor);
        return w.ok;
    case PresetBackgroundColors:
    case PresetPalette:
        w.Colors(gParams->BackgroundHighlightColor, gParams->BackgroundMidtoneColor, gParams->BackgroundShadowColor);
        return w.ok;
    default: return false;
    }
    w.Links();
    return w.ok;
}
