#include "ParameterArgs.h"

#include "state/Parameters.h"
#include "state/PathTable.h"
#include "presets/PresetFormat.h"
#include "presets/RandomEffects.h"

#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>

namespace fs = std::filesystem;

namespace {

using hostsim::Descriptor;

// The link flags travel with the parameters but live outside the record.
struct LinkKey {
    const char* key;
    uint8_t* flag;
};
const LinkKey kLinkKeys[] = {{"ILkW", &LinkWash}, {"ILkS", &LinkSurface}, {"ILkB", &LinkBackground}};

constexpr DescriptorEnumTypeID kDispositionType = FourCC("mooD");

using Wire = ValueWire;

const char* WireName(Wire w) {
    switch (w) {
    case Wire::Bool: return "boolean";
    case Wire::Integer: return "integer";
    case Wire::Float: return "float";
    case Wire::Text: return "name";
    case Wire::Percent: return "percent";
    case Wire::Disposition: return "disposition";
    }
    return "";
}

void PutValue(Descriptor& d, const char* key, Wire wire, double number, const std::string& text) {
    const DescriptorKeyID k = FourCC(key);
    switch (wire) {
    case Wire::Bool: d.PutBoolean(k, number != 0); break;
    case Wire::Integer: d.PutInteger(k, int32(number)); break;
    case Wire::Float: d.PutFloat(k, number); break;
    case Wire::Text: d.PutText(k, text); break;
    case Wire::Percent: d.PutUnitFloat(k, unitPercent, number); break;
    case Wire::Disposition: {
        const int n = number >= 0 && number <= 3 ? int(number) : 1;
        d.PutEnumerated(k, kDispositionType, FourCC("moD0") + DescriptorEnumID(n));
        break;
    }
    }
}

double FieldNumber(const FilterParameters& record, const ParameterField& f) {
    const char* at = reinterpret_cast<const char*>(&record) + f.offset;
    switch (f.kind) {
    case FieldKind::Flag:
    case FieldKind::Byte: return *reinterpret_cast<const uint8_t*>(at);
    case FieldKind::Int16: return *reinterpret_cast<const int16_t*>(at);
    case FieldKind::Int32: return *reinterpret_cast<const int32_t*>(at);
    // Colours go as the integer the plug-in stores back bit for bit.
    case FieldKind::Color: return int32_t(*reinterpret_cast<const uint32_t*>(at));
    case FieldKind::Float: return *reinterpret_cast<const float*>(at);
    default: return 0;
    }
}

bool ParseInteger(const std::string& s, int64_t& out) {
    if (s.empty()) return false;
    errno = 0;
    char* end = nullptr;
    const bool hex = s.size() > 2 && s[0] == '0' && (s[1] == 'x' || s[1] == 'X');
    const long long v = std::strtoll(s.c_str(), &end, hex ? 16 : 10);
    if (errno || *end) return false;
    out = v;
    return true;
}

bool ParseNumber(const std::string& s, double& out) {
    if (s.empty()) return false;
    errno = 0;
    char* end = nullptr;
    out = std::strtod(s.c_str(), &end);
    return !errno && !*end && std::isfinite(out);
}

} // namespace

bool PutRecord(const std::vector<std::string>& presets, const std::optional<int64_t>& randomSeed, Descriptor& played,
               std::string& error) {
    FilterParameters record{};
    FilterParameters* const saved = gParams;
    gParams = &record;
    InitParameters();
    if (randomSeed) {
        // The drawers list the data folder the module path leads to.
        ComputePaths();
        RandomizeEffects(ListRandomSources(), *randomSeed);
    }
    for (const std::string& path : presets) {
        // A colour preset leaves its three colours aside (24-bit, so never this mark).
        constexpr uint32_t kUnset = 0xFFFFFFFFu;
        PresetColorHi = PresetColorMid = PresetColorShadow = kUnset;
        if (!LoadPresetPath(path.c_str())) {
            gParams = saved;
            std::FILE* f = std::fopen(path.c_str(), "rb");
            error =
                path + ": " + (f ? std::string("not a preset file (its first line is wrong)") : std::strerror(errno));
            if (f) std::fclose(f);
            return false;
        }
        if (PresetColorHi != kUnset || PresetColorMid != kUnset || PresetColorShadow != kUnset) {
            // As the pages' tone drawers place them: the background's palettes live in
            // BackPalette, every other colour preset is the surface's.
            const bool background = fs::path(path).parent_path().filename() == "BackPalette";
            uint32_t* to[3] = {&record.SurfaceHighlightColor, &record.SurfaceMidtoneColor, &record.SurfaceShadowColor};
            if (background) {
                to[0] = &record.BackgroundHighlightColor;
                to[1] = &record.BackgroundMidtoneColor;
                to[2] = &record.BackgroundShadowColor;
            }
            const uint32_t from[3] = {PresetColorHi, PresetColorMid, PresetColorShadow};
            for (int i = 0; i < 3; ++i)
                if (from[i] != kUnset) *to[i] = from[i];
        }
    }
    gParams = saved;
    PutBlock(record, played);
    for (const LinkKey& link : kLinkKeys) PutValue(played, link.key, Wire::Integer, *link.flag, "");
    return true;
}

void PutBlock(const FilterParameters& record, Descriptor& out) {
    for (size_t i = 0; i < kParameterFieldCount; ++i) {
        const ParameterField& f = kParameterFields[i];
        if (!f.key[0]) continue;
        const char* name = reinterpret_cast<const char*>(&record) + f.offset;
        PutValue(out, f.key, WireOf(f), FieldNumber(record, f),
                 f.kind == FieldKind::Name ? std::string(name, strnlen(name, kNameLength)) : std::string());
    }
}

std::string PutSetting(const std::string& setting, Descriptor& played, std::vector<std::string>& warnings) {
    const size_t eq = setting.find('=');
    if (eq == std::string::npos) return "\"" + setting + "\" is not KEY=VALUE";
    const std::string key = setting.substr(0, eq), value = setting.substr(eq + 1);
    if (key.size() != 4) return "\"" + key + "\" is not a four-character key (quenzit params lists them)";

    for (const LinkKey& link : kLinkKeys)
        if (key == link.key) {
            if (value != "0" && value != "1") return key + ": \"" + value + "\" is not 0 or 1";
            PutValue(played, link.key, Wire::Integer, value == "1", "");
            return "";
        }
    const ParameterField* f = FindParameterByKey(key.c_str());
    if (!f) return "unknown key \"" + key + "\" (quenzit params lists them)";
    const Wire wire = WireOf(*f);
    double number = 0;
    switch (wire) {
    case Wire::Bool:
        if (value == "true" || value == "1") number = 1;
        else if (value != "false" && value != "0") return key + ": \"" + value + "\" is not true, false, 1 or 0";
        break;
    case Wire::Text:
        if (value.empty()) return key + ": a texture name cannot be empty";
        if (value.size() > size_t(kNameLength - 1))
            return key + ": the name is longer than " + std::to_string(kNameLength - 1) + " bytes";
        break;
    case Wire::Float:
    case Wire::Percent:
        if (!ParseNumber(value, number)) return key + ": \"" + value + "\" is not a number";
        break;
    case Wire::Integer:
    case Wire::Disposition: {
        int64_t v = 0;
        if (!ParseInteger(value, v)) return key + ": \"" + value + "\" is not an integer";
        // Colours may be written as unsigned hexadecimal; they travel as the same 32 bits.
        if (f->kind == FieldKind::Color && v > INT32_MAX && v <= int64_t(UINT32_MAX)) v = int32_t(uint32_t(v));
        if (v < INT32_MIN || v > INT32_MAX) return key + ": " + value + " does not fit in 32 bits";
        number = double(v);
        break;
    }
    }
    if (f->minimum != f->maximum && wire != Wire::Bool && (number < f->minimum || number > f->maximum))
        warnings.push_back(key + "=" + value + " is outside " + std::to_string(f->minimum) + ".." +
                           std::to_string(f->maximum) + "; taken as it is, as from a script");
    else if ((f->kind == FieldKind::Byte && (number < 0 || number > 255)) ||
             (f->kind == FieldKind::Int16 && (number < INT16_MIN || number > INT16_MAX)))
        warnings.push_back(key + "=" + value + " does not fit the field and will be cut");
    PutValue(played, f->key, wire, number, value);
    return "";
}

void PrintParameterTable(std::FILE* out) {
    std::fprintf(out, "%-4s  %-26s  %-11s  %-18s  %s\n", "KEY", "FIELD", "TYPE", "DEFAULT", "RANGE");
    for (size_t i = 0; i < kParameterFieldCount; ++i) {
        const ParameterField& f = kParameterFields[i];
        if (!f.key[0]) continue;
        std::string def;
        if (f.kind == FieldKind::Name) {
            def = f.defaultName;
        } else if (f.kind == FieldKind::Color) {
            char hex[16];
            std::snprintf(hex, sizeof hex, "0x%08X", unsigned(f.defaultValue));
            def = hex;
        } else if (f.kind == FieldKind::Float) {
            char number[32];
            std::snprintf(number, sizeof number, "%g", f.defaultValue);
            def = number;
        } else if (WireOf(f) == Wire::Bool) {
            def = f.defaultValue != 0 ? "true" : "false";
        } else {
            def = std::to_string(int64_t(f.defaultValue));
        }
        const std::string range = f.minimum != f.maximum && WireOf(f) != Wire::Bool
                                      ? std::to_string(f.minimum) + ".." + std::to_string(f.maximum)
                                      : "-";
        std::fprintf(out, "%-4s  %-26s  %-11s  %-18s  %s\n", f.key, f.name,
                     f.kind == FieldKind::Color ? "colour" : WireName(WireOf(f)), def.c_str(), range.c_str());
    }
    for (const LinkKey& link : kLinkKeys)
        std::fprintf(out, "%-4s  %-26s  %-11s  %-18s  %s\n", link.key, "(link flag)", "integer", "0", "0..1");
}

namespace {

// What one load of `path` leaves in a record filled with `fill`, link flags and preset
// colours included. A field the preset sets ends the same whatever the fill was.
struct Overlay {
    FilterParameters record;
    uint8_t links[3];
    uint32_t colours[3];
};

bool LoadOver(const std::string& path, uint8_t fill, Overlay& o) {
    std::memset(&o, fill, sizeof o);
    uint8_t savedLinks[3];
    for (int i = 0; i < 3; ++i) {
        savedLinks[i] = *kLinkKeys[i].flag;
        *kLinkKeys[i].flag = fill;
    }
    uint32_t* const colours[3] = {&PresetColorHi, &PresetColorMid, &PresetColorShadow};
    for (uint32_t* c : colours) std::memset(c, fill, sizeof *c);
    FilterParameters* const saved = gParams;
    gParams = &o.record;
    PresetVersion = 2;
    const bool ok = LoadPresetPath(path.c_str());
    gParams = saved;
    for (int i = 0; i < 3; ++i) {
        o.links[i] = *kLinkKeys[i].flag;
        *kLinkKeys[i].flag = savedLinks[i];
        o.colours[i] = *colours[i];
        *colours[i] = 0;
    }
    return ok;
}

} // namespace

bool ShowPreset(const std::string& path, std::FILE* out, std::string& error) {
    // Large: two records on the heap rather than the stack.
    auto a = std::make_unique<Overlay>(), b = std::make_unique<Overlay>();
    const bool okA = LoadOver(path, 0x5A, *a);
    const bool okB = LoadOver(path, 0xA5, *b);
    if (!okA || !okB) {
        std::FILE* f = std::fopen(path.c_str(), "rb");
        error = f ? "not a preset file (its first line is wrong)" : std::strerror(errno);
        if (f) std::fclose(f);
        return false;
    }
    for (size_t i = 0; i < kParameterFieldCount; ++i) {
        const ParameterField& f = kParameterFields[i];
        const size_t size = f.kind == FieldKind::Name                                ? size_t(kNameLength)
                            : f.kind == FieldKind::Flag || f.kind == FieldKind::Byte ? 1
                            : f.kind == FieldKind::Int16                             ? 2
                            : f.kind == FieldKind::Buffer                            ? 8
                                                                                     : 4;
        const char* at = reinterpret_cast<const char*>(&a->record) + f.offset;
        if (std::memcmp(at, reinterpret_cast<const char*>(&b->record) + f.offset, size) != 0) continue;
        std::string value;
        char text[32];
        switch (f.kind) {
        case FieldKind::Name: value = std::string(at, strnlen(at, kNameLength)); break;
        case FieldKind::Color:
            std::snprintf(text, sizeof text, "0x%08X", unsigned(FieldNumber(a->record, f)));
            value = text;
            break;
        case FieldKind::Float:
            std::snprintf(text, sizeof text, "%g", FieldNumber(a->record, f));
            value = text;
            break;
        case FieldKind::Buffer: value = "(buffer)"; break;
        default: value = std::to_string(int64_t(FieldNumber(a->record, f))); break;
        }
        std::fprintf(out, "%-4s  %-26s  %s\n", f.key[0] ? f.key : "-", f.name, value.c_str());
    }
    for (int i = 0; i < 3; ++i)
        if (a->links[i] == b->links[i])
            std::fprintf(out, "%-4s  %-26s  %d\n", kLinkKeys[i].key, "(link flag)", int(a->links[i]));
    static const char* const kColourNames[3] = {"(colour preset highlight)", "(colour preset midtone)",
                                                "(colour preset shadow)"};
    for (int i = 0; i < 3; ++i)
        if (a->colours[i] == b->colours[i])
            std::fprintf(out, "%-4s  %-26s  0x%08X\n", "-", kColourNames[i], unsigned(a->colours[i]));
    return true;
}
