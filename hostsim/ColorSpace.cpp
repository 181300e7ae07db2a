#include "ColorSpace.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <mutex>
#include <unordered_set>

namespace hostsim {
namespace {

struct Rgb {
    int r, g, b;
};

int Clamp(int v, int lo, int hi) { return std::min(std::max(v, lo), hi); }

int RoundClamp(double v, int lo, int hi) { return Clamp(int(std::floor(v + 0.5)), lo, hi); }

// ---- CMYK, exact (see the header) ----

Rgb FromCmyk(int c, int m, int y, int k) { return {(c * k + 127) / 255, (m * k + 127) / 255, (y * k + 127) / 255}; }

void ToCmyk(const Rgb& rgb, int out[4]) {
    const int k = std::max({rgb.r, rgb.g, rgb.b});
    if (k == 0) {
        out[0] = out[1] = out[2] = 255;
    } else {
        out[0] = (rgb.r * 255 + k / 2) / k;
        out[1] = (rgb.g * 255 + k / 2) / k;
        out[2] = (rgb.b * 255 + k / 2) / k;
    }
    out[3] = k;
}

// ---- Hexcone models: hue in degrees [0, 360), the other two in [0, 1] ----

void ToHsx(const Rgb& rgb, bool lightness, double& h, double& s, double& x) {
    const double r = rgb.r / 255.0, g = rgb.g / 255.0, b = rgb.b / 255.0;
    const double hi = std::max({r, g, b}), lo = std::min({r, g, b}), d = hi - lo;
    h = 0;
    if (d > 0) {
        if (hi == r) h = 60.0 * ((g - b) / d);
        else if (hi == g) h = 60.0 * ((b - r) / d + 2.0);
        else h = 60.0 * ((r - g) / d + 4.0);
        if (h < 0) h += 360.0;
    }
    if (lightness) {
        x = (hi + lo) / 2.0;
        const double span = 1.0 - std::fabs(2.0 * x - 1.0);
        s = d > 0 && span > 0 ? d / span : 0;
    } else {
        x = hi;
        s = hi > 0 ? d / hi : 0;
    }
}

Rgb FromHsx(double h, double s, double x, bool lightness) {
    const double c = lightness ? (1.0 - std::fabs(2.0 * x - 1.0)) * s : x * s;
    double hp = h / 60.0;
    while (hp >= 6.0) hp -= 6.0;
    while (hp < 0) hp += 6.0;
    const double mod2 = hp - 2.0 * std::floor(hp / 2.0);
    const double second = c * (1.0 - std::fabs(mod2 - 1.0));
    double r = 0, g = 0, b = 0;
    switch (int(hp)) {
    case 0: r = c, g = second; break;
    case 1: r = second, g = c; break;
    case 2: g = c, b = second; break;
    case 3: g = second, b = c; break;
    case 4: r = second, b = c; break;
    default: r = c, b = second; break;
    }
    const double m = lightness ? x - c / 2.0 : x - c;
    return {RoundClamp((r + m) * 255.0, 0, 255), RoundClamp((g + m) * 255.0, 0, 255),
            RoundClamp((b + m) * 255.0, 0, 255)};
}

// ---- Lab, approximate ----

constexpr double kWhiteX = 0.95047, kWhiteY = 1.0, kWhiteZ = 1.08883;
constexpr double kEpsilon = 6.0 / 29.0;

double CubeRoot(double t) {
    if (t <= 0) return 0;
    double y = 1.0;
    for (int i = 0; i < 40; ++i) y = y - (y * y * y - t) / (3.0 * y * y);
    return y;
}

double LabF(double t) {
    return t > kEpsilon * kEpsilon * kEpsilon ? CubeRoot(t) : t / (3.0 * kEpsilon * kEpsilon) + 4.0 / 29.0;
}

double LabFInverse(double u) { return u > kEpsilon ? u * u * u : 3.0 * kEpsilon * kEpsilon * (u - 4.0 / 29.0); }

// L 0-100, a and b about -128..127.
void ToLab(const Rgb& rgb, double& L, double& a, double& b) {
    const double r = (rgb.r / 255.0) * (rgb.r / 255.0), g = (rgb.g / 255.0) * (rgb.g / 255.0),
                 bl = (rgb.b / 255.0) * (rgb.b / 255.0);
    const double x = 0.4124 * r + 0.3576 * g + 0.1805 * bl;
    const double y = 0.2126 * r + 0.7152 * g + 0.0722 * bl;
    const double z = 0.0193 * r + 0.1192 * g + 0.9505 * bl;
    const double fx = LabF(x / kWhiteX), fy = LabF(y / kWhiteY), fz = LabF(z / kWhiteZ);
    L = 116.0 * fy - 16.0;
    a = 500.0 * (fx - fy);
    b = 200.0 * (fy - fz);
}

Rgb FromLab(double L, double a, double b) {
    const double fy = (L + 16.0) / 116.0, fx = fy + a / 500.0, fz = fy - b / 200.0;
    const double x = kWhiteX * LabFInverse(fx), y = kWhiteY * LabFInverse(fy), z = kWhiteZ * LabFInverse(fz);
    const double lin[3] = {3.2406 * x - 1.5372 * y - 0.4986 * z, -0.9689 * x + 1.8758 * y + 0.0415 * z,
                           0.0557 * x - 0.2040 * y + 1.0570 * z};
    int out[3];
    for (int i = 0; i < 3; ++i) out[i] = RoundClamp(std::sqrt(std::min(std::max(lin[i], 0.0), 1.0)) * 255.0, 0, 255);
    return {out[0], out[1], out[2]};
}

int Grey(const Rgb& rgb) { return (299 * rgb.r + 587 * rgb.g + 114 * rgb.b + 500) / 1000; }

// ---- Convert8's byte layouts ----

bool KnownSpace(int16 space) { return space >= plugIncolorServicesRGBSpace && space <= plugIncolorServicesHSLSpace; }

Rgb BytesToRgb(int16 space, const uint8* c) {
    switch (space) {
    case plugIncolorServicesCMYKSpace: return FromCmyk(c[0], c[1], c[2], c[3]);
    case plugIncolorServicesGraySpace: return {c[3], c[3], c[3]};
    case plugIncolorServicesHSBSpace:
    case plugIncolorServicesHSLSpace:
        return FromHsx(c[1] * 360.0 / 256.0, c[2] / 255.0, c[3] / 255.0, space == plugIncolorServicesHSLSpace);
    case plugIncolorServicesLabSpace: return FromLab(c[1] * 100.0 / 255.0, c[2] - 128.0, c[3] - 128.0);
    default: return {c[1], c[2], c[3]};
    }
}

void RgbToBytes(int16 space, const Rgb& rgb, uint8* c) {
    int v[4] = {0, rgb.r, rgb.g, rgb.b};
    switch (space) {
    case plugIncolorServicesCMYKSpace: ToCmyk(rgb, v); break;
    case plugIncolorServicesGraySpace: v[1] = v[2] = 0, v[3] = Grey(rgb); break;
    case plugIncolorServicesHSBSpace:
    case plugIncolorServicesHSLSpace: {
        double h, s, x;
        ToHsx(rgb, space == plugIncolorServicesHSLSpace, h, s, x);
        v[1] = RoundClamp(h * 256.0 / 360.0, 0, 256) & 255;
        v[2] = RoundClamp(s * 255.0, 0, 255);
        v[3] = RoundClamp(x * 255.0, 0, 255);
        break;
    }
    case plugIncolorServicesLabSpace: {
        double L, a, b;
        ToLab(rgb, L, a, b);
        v[1] = RoundClamp(L * 255.0 / 100.0, 0, 255);
        v[2] = RoundClamp(a + 128.0, 0, 255);
        v[3] = RoundClamp(b + 128.0, 0, 255);
        break;
    }
    default: break;
    }
    for (int i = 0; i < 4; ++i) c[i] = uint8(v[i]);
}

// ---- colorServices' int16 components ----

bool ComponentsToRgb(int16 space, const int16* c, Rgb& rgb) {
    switch (space) {
    case plugIncolorServicesRGBSpace:
        rgb = {Clamp(c[0], 0, 255), Clamp(c[1], 0, 255), Clamp(c[2], 0, 255)};
        return true;
    case plugIncolorServicesCMYKSpace:
        rgb = FromCmyk(Clamp(c[0], 0, 255), Clamp(c[1], 0, 255), Clamp(c[2], 0, 255), Clamp(c[3], 0, 255));
        return true;
    case plugIncolorServicesGraySpace: {
        const int g = Clamp(c[0], 0, 255);
        rgb = {g, g, g};
        return true;
    }
    case plugIncolorServicesHSBSpace:
    case plugIncolorServicesHSLSpace:
        rgb = FromHsx(Clamp(c[0], 0, 359), Clamp(c[1], 0, 100) / 100.0, Clamp(c[2], 0, 100) / 100.0,
                      space == plugIncolorServicesHSLSpace);
        return true;
    case plugIncolorServicesLabSpace:
        rgb = FromLab(Clamp(c[0], 0, 255) * 100.0 / 255.0, Clamp(c[1], 0, 255) - 128.0, Clamp(c[2], 0, 255) - 128.0);
        return true;
    default: return false;
    }
}

bool RgbToComponents(int16 space, const Rgb& rgb, int16* c) {
    int v[4] = {rgb.r, rgb.g, rgb.b, 0};
    switch (space) {
    case plugIncolorServicesRGBSpace: break;
    case plugIncolorServicesCMYKSpace: ToCmyk(rgb, v); break;
    case plugIncolorServicesGraySpace: v[0] = Grey(rgb), v[1] = v[2] = 0; break;
    case plugIncolorServicesHSBSpace:
    case plugIncolorServicesHSLSpace: {
        double h, s, x;
        ToHsx(rgb, space == plugIncolorServicesHSLSpace, h, s, x);
        v[0] = RoundClamp(h, 0, 360) % 360;
        v[1] = RoundClamp(s * 100.0, 0, 100);
        v[2] = RoundClamp(x * 100.0, 0, 100);
        break;
    }
    case plugIncolorServicesLabSpace: {
        double L, a, b;
        ToLab(rgb, L, a, b);
        v[0] = RoundClamp(L * 255.0 / 100.0, 0, 255);
        v[1] = RoundClamp(a + 128.0, 0, 255);
        v[2] = RoundClamp(b + 128.0, 0, 255);
        break;
    }
    default: return false;
    }
    for (int i = 0; i < 4; ++i) c[i] = int16(v[i]);
    return true;
}

// ---- The suite ----

struct HostColour {
    Rgb rgb{0, 0, 0};
};

std::mutex gColoursLock;
std::unordered_set<HostColour*> gColours;

SPErr QZ_HOSTCALL Make(ColorID* id) {
    if (!id) return kSPBadParameterError;
    auto* colour = new (std::nothrow) HostColour;
    if (!colour) return kSPOutOfMemoryError;
    std::lock_guard<std::mutex> lock(gColoursLock);
    gColours.insert(colour);
    *id = reinterpret_cast<ColorID>(colour);
    return kSPNoError;
}

SPErr QZ_HOSTCALL Delete(ColorID* id) {
    if (!id) return kSPBadParameterError;
    auto* colour = reinterpret_cast<HostColour*>(*id);
    std::lock_guard<std::mutex> lock(gColoursLock);
    if (!gColours.erase(colour)) return kSPBadParameterError;
    delete colour;
    *id = nullptr;
    return kSPNoError;
}

SPErr QZ_HOSTCALL Convert8Slot(int16 in, int16 out, Color8* colours, int16 count) {
    return Convert8(in, out, colours, count);
}

// One unimplemented function per signature.
SPErr QZ_HOSTCALL NoStuff(ColorID, int16, uint8, uint8, uint8, uint8) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoExtract(ColorID, int16, uint8*, uint8*, uint8*, uint8*, Boolean*) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoStuffXYZ(ColorID, XYZColor) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoExtractXYZ(ColorID, XYZColor*) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoConvert16(int16, int16, Color16*, int16) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoNativeSpace(ColorID, int16*) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoIsBook(ColorID, Boolean*) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoName(ColorID, ASZString*) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoPick(ColorID*, ASZString) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL No8to16(const uint8*, uint16*, int16) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL No16to8(const uint16*, uint8*, int16) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL NoMonitor(int16, Color8*, Color8*, int16) { return kSPUnimplementedError; }
SPErr QZ_HOSTCALL No32to8(const real32*, uint8*, int16) { return kSPUnimplementedError; }

std::string PascalString(const Str255* s) {
    if (!s) return "";
    const unsigned char* p = *s;
    return std::string(reinterpret_cast<const char*>(p + 1), p[0]);
}

} // namespace

SPErr Convert8(int16 inputSpace, int16 outputSpace, Color8* colours, int16 count) {
    if (inputSpace == plugIncolorServicesXYZSpace || outputSpace == plugIncolorServicesXYZSpace)
        return kSPUnimplementedError;
    if (!KnownSpace(inputSpace) || !KnownSpace(outputSpace) || count < 0 || (count > 0 && !colours))
        return kSPBadParameterError;
    if (inputSpace == outputSpace) return kSPNoError;
    for (int16 i = 0; i < count; ++i) RgbToBytes(outputSpace, BytesToRgb(inputSpace, colours[i]), colours[i]);
    return kSPNoError;
}

const PSColorSpaceSuite* ColorSpaceSuite() {
    static const PSColorSpaceSuite suite = {
        Make,     Delete, NoStuff, NoExtract, NoStuffXYZ, NoExtractXYZ, Convert8Slot, NoConvert16, NoNativeSpace,
        NoIsBook, NoName, NoPick,  No8to16,   No16to8,    NoMonitor,    No32to8,      nullptr,     nullptr};
    return &suite;
}

OSErr ServeColorServices(ColorServicesInfo* info, const ColorServicesSetup& setup, std::vector<std::string>& prompts) {
    if (!info || info->infoSize < int32(sizeof(ColorServicesInfo))) return paramErr;
    if (info->reservedSourceSpaceInfo || info->reservedResultSpaceInfo || info->reserved) return paramErr;
    Rgb rgb{0, 0, 0};
    switch (info->selector) {
    case plugIncolorServicesChooseColor:
        prompts.push_back(PascalString(info->selectorParameter.pickerPrompt));
        if (setup.pickerAnswer != noErr) return setup.pickerAnswer;
        if (setup.pickedColour) {
            const auto& c = *setup.pickedColour;
            rgb = {c[0], c[1], c[2]};
        } else if (!ComponentsToRgb(info->sourceSpace, info->colorComponents, rgb)) {
            return paramErr;
        }
        break;
    case plugIncolorServicesConvertColor:
        if (info->resultSpace == plugIncolorServicesChosenSpace) info->resultSpace = info->sourceSpace;
        if (!ComponentsToRgb(info->sourceSpace, info->colorComponents, rgb)) return paramErr;
        break;
    case plugIncolorServicesGetSpecialColor: {
        const int32 which = info->selectorParameter.specialColorID;
        if (which != plugIncolorServicesForegroundColor && which != plugIncolorServicesBackgroundColor) return paramErr;
        const auto& c = which == plugIncolorServicesForegroundColor ? setup.foreground : setup.background;
        rgb = {c[0], c[1], c[2]};
        break;
    }
    default: return paramErr;
    }
    // The picker keeps the user's space (RGB here) when asked to.
    if (info->resultSpace == plugIncolorServicesChosenSpace) info->resultSpace = plugIncolorServicesRGBSpace;
    int16 out[4];
    if (!RgbToComponents(info->resultSpace, rgb, out)) return paramErr;
    std::memcpy(info->colorComponents, out, sizeof out);
    info->resultGamutInfoValid = info->resultSpace == plugIncolorServicesCMYKSpace;
    info->resultInGamut = 1;
    return noErr;
}

} // namespace hostsim
