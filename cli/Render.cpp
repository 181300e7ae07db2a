#include "Render.h"

#include "host/PluginMain.h"
#include "hostsim/ColorSpace.h"
#include "hostsim/Handles.h"
#include "hostsim/Host.h"
#include "hostsim/Registry.h"

#include <algorithm>
#include <cstdio>
#include <memory>

using namespace hostsim;

namespace {

const char* ErrorName(int16 err) {
    switch (err) {
    case userCanceledErr: return "cancelled";
    case memFullErr: return "out of memory";
    case paramErr: return "bad parameter";
    case filterBadParameters: return "bad filter parameters";
    case filterBadMode: return "image mode not supported";
    case errPlugInHostInsufficient: return "host insufficient";
    default: return err > 0 ? "the plug-in reported it" : "error";
    }
}

// Colours between RGB(A) and the host's CMYK(A) through the colour services, in place of
// the colour planes; `planes` counts the alpha when there is one.
std::vector<uint8> ConvertColours(const std::vector<uint8>& in, int inPlanes, int outPlanes, bool toCmyk) {
    const int inColour = toCmyk ? 3 : 4, outColour = toCmyk ? 4 : 3;
    const size_t pixels = in.size() / size_t(inPlanes);
    std::vector<uint8> out(pixels * size_t(outPlanes));
    std::vector<uint8> bytes;
    for (size_t start = 0; start < pixels; start += 32767) {
        const size_t n = std::min<size_t>(32767, pixels - start);
        bytes.assign(n * 4, 0);
        // RGB sits in bytes 1-3 of a colour, CMYK in all four.
        for (size_t i = 0; i < n; ++i)
            for (int c = 0; c < inColour; ++c)
                bytes[i * 4 + size_t(c + 4 - inColour)] = in[(start + i) * size_t(inPlanes) + size_t(c)];
        Convert8(toCmyk ? plugIncolorServicesRGBSpace : plugIncolorServicesCMYKSpace,
                 toCmyk ? plugIncolorServicesCMYKSpace : plugIncolorServicesRGBSpace,
                 reinterpret_cast<Color8*>(bytes.data()), int16(n));
        for (size_t i = 0; i < n; ++i) {
            uint8* o = &out[(start + i) * size_t(outPlanes)];
            for (int c = 0; c < outColour; ++c) o[c] = bytes[i * 4 + size_t(c + 4 - outColour)];
            if (outPlanes > outColour) o[outColour] = in[(start + i) * size_t(inPlanes) + size_t(inColour)];
        }
    }
    return out;
}

} // namespace

Document DocumentOf(const Picture& picture, bool flat) {
    const int in = picture.channels;
    const int colours = picture.cmyk ? 4 : 3;
    const bool alpha = (picture.cmyk ? in == 5 : in == 2 || in == 4) && !flat;
    const int planes = colours + (alpha ? 1 : 0);
    // Grey pictures run as RGB, as a user would switch the mode first.
    const bool grey = !picture.cmyk && in <= 2;
    std::vector<uint8> samples(size_t(picture.width) * picture.height * size_t(planes));
    for (size_t i = 0, o = 0; i < picture.samples.size(); i += size_t(in), o += size_t(planes)) {
        for (int c = 0; c < colours; ++c) samples[o + size_t(c)] = picture.samples[i + size_t(grey ? 0 : c)];
        if (alpha) samples[o + size_t(colours)] = picture.samples[i + size_t(in - 1)];
    }
    return MakeDocument(int32(picture.width), int32(picture.height),
                        picture.cmyk ? plugInModeCMYKColor : plugInModeRGBColor, 8, samples, planes);
}

Picture RgbOf(const Picture& picture) {
    if (!picture.cmyk) return picture;
    Picture rgb = picture;
    rgb.cmyk = false;
    rgb.channels = picture.channels - 1;
    rgb.samples = ConvertColours(picture.samples, picture.channels, rgb.channels, false);
    return rgb;
}

RenderResult RenderPicture(const Picture& input, const RenderOptions& options, const Descriptor& played) {
    RenderResult result;
    Document doc = DocumentOf(input, options.flat);
    if (options.cmyk && !input.cmyk) {
        const int planes = doc.Target().transparency.empty() ? 3 : 4;
        doc = MakeDocument(doc.width, doc.height, plugInModeCMYKColor, 8,
                           ConvertColours(doc.TargetInterleaved(true), planes, planes + 1, true), planes + 1);
    }
    if (!options.selection.empty()) {
        Picture mask;
        std::string error;
        if (!ReadPicture(options.selection, mask, error)) {
            result.status = RenderStatus::BadInput;
            result.message = options.selection + ": " + error;
            return result;
        }
        if (mask.channels != 1 || mask.width != input.width || mask.height != input.height) {
            result.status = RenderStatus::BadInput;
            result.message = options.selection + ": the selection must be an 8-bit grey picture of " +
                             std::to_string(input.width) + "x" + std::to_string(input.height) + " (it is " +
                             std::to_string(mask.width) + "x" + std::to_string(mask.height) + ", " +
                             std::to_string(mask.channels) + " channels)";
            return result;
        }
        doc.selection = std::move(mask.samples);
    }
    if (const std::string wrong = doc.Validate(); !wrong.empty()) {
        result.status = RenderStatus::BadInput;
        result.message = wrong;
        return result;
    }

    HostOptions hostOptions;
    // The plug-in says it writes outside the selection: the host leaves autoMask off.
    hostOptions.writesOutsideSelection = true;
    // Every picture starts from a fresh host session.
    hostOptions.registry = std::make_shared<Registry>();
    Host host(std::move(doc), hostOptions, &PluginMain);
    if (options.progress) host.SetProgressObserver(options.progress);
    if (!host.DocumentError().empty()) {
        result.status = RenderStatus::BadInput;
        result.message = host.DocumentError();
        return result;
    }
    const int16 err = host.PlayAction(played, plugInDialogDontDisplay);
    for (const std::string& m : host.TakeMisuse()) std::fprintf(stderr, "quenzit: host noticed: %s\n", m.c_str());
    if (err != noErr) {
        result.status = RenderStatus::Failed;
        result.message = "the plug-in returned " + std::to_string(err) + " (" + ErrorName(err) + ")";
        if (!host.ErrorString().empty()) result.message += ": " + host.ErrorString();
        return result;
    }
    if (const Handle block = host.Parameters(); block && *block) {
        const auto* bytes = reinterpret_cast<const uint8_t*>(*block);
        result.parameters.assign(bytes, bytes + HandleSize(block));
    }
    const Document& out = host.Doc();
    result.picture.width = uint32_t(out.width);
    result.picture.height = uint32_t(out.height);
    result.picture.samples = out.TargetInterleaved(true);
    result.picture.channels = out.ColourPlanes() + (out.Target().transparency.empty() ? 0 : 1);
    result.picture.cmyk = out.imageMode == plugInModeCMYKColor;
    return result;
}
