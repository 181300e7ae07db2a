// The module's resources as readable tables: the PiPL that tells a host what the
// filter is and can do, and the terminology that names its scriptable parameters.
// tools/resgen turns these tables into the binary resources of Quenzit64.8bf.
#pragma once

#include "state/FourCC.h"

#include <cstdint>

namespace resources {

inline constexpr int kPiplId = 16000;
inline constexpr int kTerminologyId = 16000;

inline constexpr uint32_t kVendor = FourCC("8BIM");
inline constexpr uint32_t kFilterKind = FourCC("8BFM");
inline constexpr const char* kMenuName = "Quenzit...";
inline constexpr const char* kCategory = "Quenzit Works";
inline constexpr int32_t kInterfaceVersion = 0x00040000; // major 4, minor 0
inline constexpr int32_t kComponentVersion = 0;
inline constexpr const char* kComponentName = "Quenzit";
inline constexpr const char* kEntryPoint = "PluginMain";
inline constexpr int kSupportedModes[] = {3, 4, 9}; // RGB, CMYK, Lab
inline constexpr const char* kEnableExpression = "in (PSHOP_ImageMode, RGBMode,CMYKMode ) ||PSHOP_ImageDepth == 8 ";
inline constexpr int32_t kMaxHeight = 2000000;
inline constexpr int32_t kMaxWidth = 2000000;
inline constexpr uint32_t kEventCode = FourCC("QZTD"); // class, event and suite alike
inline constexpr const char* kScope = "d9543b0c-3c91-11d4-98bc-00b008042009";

// One entry per filter case, in the host's order of cases.
struct FilterCase {
    uint8_t inputHandling;  // 1: straight data
    uint8_t outputHandling; // 1: straight data
    bool writesOutsideSelection;
};
inline constexpr uint8_t kCaseWorksWithBlankData = 0x02;
inline constexpr uint8_t kCaseFiltersLayerMasks = 0x04;
inline constexpr uint8_t kCaseWritesOutsideSelection = 0x08;

inline constexpr FilterCase kFilterCases[7] = {
    {1, 1, false}, // flat image, no selection
    {1, 1, true},  // flat image, with selection
    {1, 1, true},  // floating selection
    {1, 1, false}, // editable transparency, no selection
    {1, 1, true},  // editable transparency, with selection
    {1, 1, false}, // protected transparency, no selection
    {1, 1, true},  // protected transparency, with selection
};

// Terminology: one suite with one event, whose parameters are listed below.
inline constexpr const char* kSuiteName = "Quenzit Works";
inline constexpr const char* kSuiteDescription = "Adobe example plug-ins";
inline constexpr const char* kEventName = "Quenzit";
inline constexpr const char* kEventDescription = "dissolve example filter plug-in";
inline constexpr uint32_t kReplyType = FourCC("null");
inline constexpr uint32_t kDirectParameterType = FourCC("#ImR");
inline constexpr uint16_t kDirectParameterFlags = 0xB000;
inline constexpr const char* kParameterDescription = " ";

struct TerminologyParameter {
    uint32_t key;
    const char* name;
    uint32_t type;
};

inline constexpr int kTerminologyParameterCount = 68;
extern const TerminologyParameter kTerminologyParameters[kTerminologyParameterCount];

} // namespace resources
