// hostsim's colour conversions: the colour space suite ("Photoshop ColorSpace Suite for
// Plug-ins", version 1) and the record's colorServices entry.
//
// RGB <-> CMYK is a naive device conversion on the bytes as the document stores them, where a
// CMYK byte of 255 means no ink and 0 full ink (c, m, y, k below are such bytes; R, G, B are
// 0-255; "/" rounds to nearest, halves up):
//     CMYK -> RGB:  R = c * k / 255,  G = m * k / 255,  B = y * k / 255
//     RGB -> CMYK:  k = max(R, G, B);  c = R * 255 / k,  m = G * 255 / k,  y = B * 255 / k
//                   (all 255 when k is 0)
// Integer arithmetic only, so every build gives the same bytes. RGB -> CMYK -> RGB gives the
// colour back exactly; CMYK -> RGB -> CMYK puts all the darkness into k.
//
// The other spaces go through RGB and are approximate (doubles with + - * / and sqrt only, so
// still the same on every build): grey = (299 R + 587 G + 114 B) / 1000; HSB and HSL as the
// usual hexcone models; Lab from RGB with a gamma of 2 (not the sRGB curve), the sRGB primaries
// and a D65 white. XYZ is not offered.
//
// Component encodings. Convert8 works on 4 bytes a colour in place:
//     RGB 0 R G B | HSB 0 H S B | HSL 0 H S L | Lab 0 L a b | CMYK C M Y K | grey 0 0 0 g
// with H 0-255 for 0-360 degrees, S, B, L 0-255, Lab L 0-255 for 0-100 and a, b offset by 128.
// colorServices uses int16 components: RGB 0-255; HSB and HSL hue 0-359 degrees, the other two
// 0-100 percent; CMYK 0-255 as above; Lab as Convert8's; grey in component 0.
#pragma once

#include "host/abi/HostInterface.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace hostsim {

// The suite's Convert8, also for the host's own use.
SPErr Convert8(int16 inputSpace, int16 outputSpace, Color8* colours, int16 count);

// Version 1 of the suite (16 slots). Only Convert8 works; Make and Delete hand out and take
// back colour ids; every other slot answers kSPUnimplementedError.
const PSColorSpaceSuite* ColorSpaceSuite();

// What the colour services answer with.
struct ColorServicesSetup {
    std::array<uint8, 3> foreground = {0, 0, 0}; // RGB
    std::array<uint8, 3> background = {255, 255, 255};
    // The picker's answer: noErr is OK (on pickedColour, or on the colour given without one),
    // userCanceledErr the user's cancel, any other a host that could not show its picker.
    OSErr pickerAnswer = noErr;
    std::optional<std::array<uint8, 3>> pickedColour;
};

// Serves one colorServices request: choose colour (0), convert (1) and special colour (3);
// a sample point (2) answers paramErr. Every picker prompt is appended to `prompts`.
OSErr ServeColorServices(ColorServicesInfo* info, const ColorServicesSetup& setup, std::vector<std::string>& prompts);

} // namespace hostsim
