// filterhost: runs a filter plug-in over a PAM picture with hostsim, as an action step with
// the descriptor given on the command line. The Windows build loads any .8bf by path; the
// native build runs the plug-in linked into it.
#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include "DialogDriver.h"
#include "RenderTimings.h"
#else
#include "state/PathTable.h"
#include "host/PluginMain.h"

#include <filesystem>
#endif

#include "ParameterArgs.h"
#include "hostsim/Host.h"
#include "hostsim/Pam.h"
#include "hostsim/Registry.h"
#include "platform/ModulePath.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace hostsim;

constexpr int kExitOk = 0;
constexpr int kExitUsage = 1;
constexpr int kExitInput = 2;
constexpr int kExitPlugin = 3;

const char kHelp[] = "Usage: filterhost [--plugin PATH.8bf] --in IN.pam --out OUT.pam [--selection MASK.pam]\n"
                     "                  [--dialog] [--cmyk] [--registry FILE] [--no-suite NAME]... [KEY=VALUE]...\n"
                     "\n"
                     "Runs a filter plug-in over a picture as a host plays an action step: Parameters, Prepare,\n"
                     "Start, Continue while the plug-in asks for data, Finish; then writes the result.\n"
                     "\n"
                     "  --plugin PATH.8bf   the module to load (Windows build only; default: Quenzit64.8bf beside\n"
                     "                      this program). The native build runs the plug-in linked into it.\n"
                     "  --in IN.pam         the picture: a PAM (P7) file, MAXVAL 255, TUPLTYPE RGB, RGB_ALPHA,\n"
                     "                      CMYK, CMYK_ALPHA or GRAYSCALE. An alpha plane becomes the layer's\n"
                     "                      transparency. CMYK samples are ink amounts (0 = no ink).\n"
                     "  --out OUT.pam       where the result goes, in the picture's own tuple type.\n"
                     "  --selection MASK.pam  a GRAYSCALE PAM of the same size: the selection (255 = selected).\n"
                     "  --dialog            play the step with its dialog (playInfo 1) under a top-level window of\n"
                     "                      this program; default: dialog off (0).\n"
                     "  --drive SCRIPT      with --dialog (Windows build only): play the dialog from SCRIPT, one\n"
                     "                      command a line: tab N, click ID, command ID [CODE], drag X0 Y0 X1 Y1\n"
                     "                      [ctrl], expect-enabled ID 0|1, expect-text ID TEXT, wait-render,\n"
                     "                      shot FILE.png, ok, cancel. A failed line is named and cancels.\n"
                     "                      Also click-at ID X Y (a point of the control), type ID TEXT, key KEYS,\n"
                     "                      answer yes|no|cancel|ok, expect KEY=VALUE, expect-tip ID TEXT,\n"
                     "                      press/move/release X Y, preview FILE.png, expect-preview same|changed\n"
                     "                      (see DialogDriver.h).\n"
                     "  --about             play the host's About command instead of a run (Windows build only):\n"
                     "                      the plug-in's About box over a window of this program; --drive\n"
                     "                      plays it. --in and --out are then not needed.\n"
                     "  --opened FILE       nothing the plug-in opens (manual pages, web addresses) reaches a\n"
                     "                      browser: each is logged in FILE as \"open TARGET\" instead.\n"
                     "  --hold MS           with --opened: each open then waits MS milliseconds and logs\n"
                     "                      \"held TARGET\"; this program waits as long again before it ends, so\n"
                     "                      an opener the plug-in did not end has the time to log it.\n"
                     "  --timings           with --dialog (Windows build only): log on stderr how long the opening,\n"
                     "                      each render and each paint of the preview take.\n"
                     "  --record FILE       after the run, the descriptor the plug-in recorded as KEY=VALUE lines.\n"
                     "  --save-block FILE   after the run, the blocks the host keeps (parameters, data slot).\n"
                     "  --load-block FILE   repeat a filter as a host does: the kept blocks handed to Prepare, no\n"
                     "                      Parameters, nothing played.\n"
                     "  --advance-error N   play a host whose advanceState always answers N (e.g. -108).\n"
                     "  --pick-colour R,G,B the host's colour picker answers OK with this colour (0-255 each).\n"
                     "  --cmyk              make an RGB picture a CMYK document first (the host's own naive\n"
                     "                      conversion); the result is then written as CMYK.\n"
                     "  --data DIR          the plug-in's data folder (textures, presets), of any name, for the\n"
                     "                      native build. The Windows module always reads the Quenzit folder\n"
                     "                      beside itself, so there DIR must be that folder and the option\n"
                     "                      changes nothing.\n"
                     "  --random=SEED       play the Auto look (random effects) of SEED, worked out by this\n"
                     "                      program's copy of the filter's code over the data folder the module\n"
                     "                      reads; KEY=VALUE arguments then change it.\n"
                     "  --registry FILE     the descriptor registry: read before the run when FILE exists, and its\n"
                     "                      persistent entries written back after it.\n"
                     "  --no-suite NAME     play a host without NAME (may be repeated). NAME is a suite's full\n"
                     "                      name or one of: descriptor, list, reference, control, registry,\n"
                     "                      colorspace, channelports (suites); basic (no basic suite at all),\n"
                     "                      bigdocument, descriptorparameters, channelportprocs, documentinfo,\n"
                     "                      colorservices (record fields left empty).\n"
                     "  KEY=VALUE           one key of the played descriptor. KEY is a four-character code; the\n"
                     "                      value's type follows its form: true or false is a boolean, a whole\n"
                     "                      number an integer, a number with a dot or exponent a float, \"quoted\"\n"
                     "                      or anything else text. KEY:long=, KEY:doub=, KEY:bool=, KEY:TEXT= and\n"
                     "                      KEY:UntFxxxx= (a unit float, xxxx the unit, e.g. KEY:UntF#Prc=50) give\n"
                     "                      the type. Without any, an empty descriptor is played.\n"
                     "  --help              this text.\n"
                     "\n"
                     "Exit status: 0 done; 1 usage error; 2 an input could not be read, the plug-in could not be\n"
                     "loaded or the output could not be written; 3 the plug-in returned an error (printed).\n";

int Usage(const std::string& message) {
    std::fprintf(stderr, "filterhost: %s\n(filterhost --help tells the options)\n", message.c_str());
    return kExitUsage;
}

uint32 Code(const std::string& s) {
    return (uint32(uint8(s[0])) << 24) | (uint32(uint8(s[1])) << 16) | (uint32(uint8(s[2])) << 8) | uint8(s[3]);
}

bool ParseInt(const std::string& s, int32& out) {
    if (s.empty()) return false;
    errno = 0;
    char* end = nullptr;
    const long long v = std::strtoll(s.c_str(), &end, 10);
    if (errno || *end || v < INT32_MIN || v > INT32_MAX) return false;
    out = int32(v);
    return true;
}

bool ParseDouble(const std::string& s, double& out) {
    if (s.empty()) return false;
    errno = 0;
    char* end = nullptr;
    out = std::strtod(s.c_str(), &end);
    return !errno && !*end;
}

bool IsInteger(const std::string& s) {
    size_t i = (s[0] == '+' || s[0] == '-') ? 1 : 0;
    if (i >= s.size()) return false;
    for (; i < s.size(); ++i)
        if (s[i] < '0' || s[i] > '9') return false;
    return true;
}

// KEY=VALUE or KEY:TYPE=VALUE into the descriptor; "" or what is wrong.
std::string AddKey(const std::string& arg, Descriptor& d) {
    const size_t eq = arg.find('=', 4);
    if (arg.size() < 5 || eq == std::string::npos || (eq != 4 && arg[4] != ':'))
        return "\"" + arg + "\" is not KEY=VALUE with a four-character key";
    const uint32 key = Code(arg);
    const std::string type = eq == 4 ? "" : arg.substr(5, eq - 5);
    const std::string value = arg.substr(eq + 1);
    int32 i = 0;
    double f = 0;
    if (type.empty()) {
        if (value == "true" || value == "false") d.PutBoolean(key, value == "true");
        else if (IsInteger(value) && ParseInt(value, i)) d.PutInteger(key, i);
        else if (value.find_first_of(".eE") != std::string::npos && ParseDouble(value, f)) d.PutFloat(key, f);
        else if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
            d.PutText(key, value.substr(1, value.size() - 2));
        else d.PutText(key, value);
    } else if (type == "long") {
        if (!ParseInt(value, i)) return "\"" + value + "\" is not an integer";
        d.PutInteger(key, i);
    } else if (type == "doub") {
        if (!ParseDouble(value, f)) return "\"" + value + "\" is not a number";
        d.PutFloat(key, f);
    } else if (type == "bool") {
        if (value != "true" && value != "false" && value != "1" && value != "0")
            return "\"" + value + "\" is not true, false, 1 or 0";
        d.PutBoolean(key, value == "true" || value == "1");
    } else if (type == "TEXT") {
        d.PutText(key, value);
    } else if (type.size() == 8 && type.compare(0, 4, "UntF") == 0) {
        if (!ParseDouble(value, f)) return "\"" + value + "\" is not a number";
        d.PutUnitFloat(key, Code(type.substr(4)), f);
    } else {
        return "unknown type \"" + type + "\" (long, doub, bool, TEXT or UntF followed by a unit)";
    }
    return "";
}

// Applies one --no-suite name to the options.
void OmitSuite(const std::string& name, HostOptions& options) {
    if (name == "basic") options.basicSuite = false;
    else if (name == "bigdocument") options.bigDocumentData = false;
    else if (name == "descriptorparameters") options.descriptorParameters = false;
    else if (name == "channelportprocs") options.channelPortProcs = false;
    else if (name == "documentinfo") options.documentInfo = false;
    else if (name == "colorservices") options.colorServices = false;
    else if (name == "descriptor") options.omitSuites.push_back(kPSActionDescriptorSuite);
    else if (name == "list") options.omitSuites.push_back(kPSActionListSuite);
    else if (name == "reference") options.omitSuites.push_back(kPSActionReferenceSuite);
    else if (name == "control") options.omitSuites.push_back(kPSBasicActionControlSuite);
    else if (name == "registry") options.omitSuites.push_back(kPSDescriptorRegistrySuite);
    else if (name == "colorspace") options.omitSuites.push_back(kPSColorSpaceSuite);
    else if (name == "channelports") options.omitSuites.push_back(kPSChannelPortsSuite);
    else options.omitSuites.push_back(name);
}

// Flips CMYK colour samples between ink amounts (files) and the host's inverted bytes.
void InvertInk(std::vector<uint8>& data, int planes) {
    for (size_t i = 0; i < data.size(); ++i)
        if (i % size_t(planes) < 4) data[i] = uint8(255 - data[i]);
}

// RGB(A) samples to the host's CMYK(A), through the colour space suite's conversion.
std::vector<uint8> RgbToCmyk(const std::vector<uint8>& rgb, int planes) {
    const size_t pixels = rgb.size() / size_t(planes);
    std::vector<uint8> out(pixels * size_t(planes + 1));
    std::vector<uint8> bytes;
    for (size_t start = 0; start < pixels; start += 32767) {
        const size_t n = std::min<size_t>(32767, pixels - start);
        bytes.assign(n * 4, 0);
        for (size_t i = 0; i < n; ++i)
            for (size_t c = 0; c < 3; ++c) bytes[i * 4 + c + 1] = rgb[(start + i) * size_t(planes) + c];
        Convert8(plugIncolorServicesRGBSpace, plugIncolorServicesCMYKSpace, reinterpret_cast<Color8*>(bytes.data()),
                 int16(n));
        for (size_t i = 0; i < n; ++i) {
            uint8* o = &out[(start + i) * size_t(planes + 1)];
            std::memcpy(o, &bytes[i * 4], 4);
            if (planes == 4) o[4] = rgb[(start + i) * 4 + 3];
        }
    }
    return out;
}

const char* ErrorName(int16 err) {
    switch (err) {
    case userCanceledErr: return "user cancelled";
    case memFullErr: return "out of memory";
    case paramErr: return "bad parameter";
    case filterBadParameters: return "bad filter parameters";
    case filterBadMode: return "image mode not supported";
    case errPlugInHostInsufficient: return "host insufficient";
    case errReportString: return "reported";
    default: return err > 0 ? "the plug-in has told the user" : "error";
    }
}

#ifdef _WIN32
std::string DefaultPlugin() {
    char exe[MAX_PATH];
    const DWORD n = GetModuleFileNameA(nullptr, exe, MAX_PATH);
    std::string path(exe, n);
    return path.substr(0, path.find_last_of("\\/") + 1) + "Quenzit64.8bf";
}
#endif

// One key of a descriptor as KEY=VALUE; "" for kinds without a plain text form.
std::string KeyValue(const Descriptor& d, size_t i) {
    const uint32 k = d.KeyAt(i);
    const std::string key{char(k >> 24), char(k >> 16), char(k >> 8), char(k)};
    const Value& v = d.ValueAt(i);
    char number[64];
    switch (v.type) {
    case typeInteger:
    case typeSInt64: return key + "=" + std::to_string(static_cast<long long>(v.integer));
    case typeFloat:
        // A whole float keeps a dot, or played back it would be read as an integer.
        std::snprintf(number, sizeof number, "%.17g", v.number);
        if (!std::strpbrk(number, ".eEn")) std::strcat(number, ".0");
        return key + "=" + number;
    case typeUnitFloat: std::snprintf(number, sizeof number, "%.17g", v.number); return key + "=" + number;
    case typeBoolean: return key + "=" + (v.integer ? "true" : "false");
    case typeChar: return key + "=" + v.bytes;
    default: return "";
    }
}

// The recorded descriptor, one KEY=VALUE a line in the order recorded; kinds without a
// plain text form are left out.
bool WriteRecorded(const Host& host, const std::string& path) {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (!f) return false;
    const Descriptor& d = host.Recorded();
    for (size_t i = 0; host.HasRecorded() && i < d.Count(); ++i) {
        const std::string line = KeyValue(d, i);
        if (!line.empty()) std::fprintf(f, "%s\n", line.c_str());
    }
    return std::fclose(f) == 0;
}

// The blocks a host keeps between runs: the parameter block, then the data slot's block,
// each after its size (4 bytes, little-endian).
bool WriteBlocks(const Host& host, const std::string& path) {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (!f) return false;
    bool written = true;
    for (const std::vector<uint8>& block : {host.ParameterBytes(), host.DataBytes()}) {
        const uint32 n = uint32(block.size());
        const uint8 size[4] = {uint8(n), uint8(n >> 8), uint8(n >> 16), uint8(n >> 24)};
        written = written && std::fwrite(size, 1, 4, f) == 4 && std::fwrite(block.data(), 1, n, f) == n;
    }
    return std::fclose(f) == 0 && written;
}

bool ReadBlocks(const std::string& path, std::vector<uint8>& parameters, std::vector<uint8>& data) {
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f) return false;
    bool read = true;
    for (std::vector<uint8>* block : {&parameters, &data}) {
        uint8 size[4] = {};
        read = read && std::fread(size, 1, 4, f) == 4;
        const uint32 n = read ? uint32(size[0] | size[1] << 8 | size[2] << 16 | uint32(size[3]) << 24) : 0;
        read = read && n <= (1u << 20);
        block->assign(read ? n : 0, 0);
        read = read && std::fread(block->data(), 1, block->size(), f) == block->size();
    }
    std::fclose(f);
    return read && !parameters.empty();
}

#ifdef _WIN32
// One key of the live parameter block, typed as a played step carries it.
std::string LiveValue(const Host& host, const std::string& key) {
    const std::vector<uint8> bytes = host.ParameterBytes();
    if (bytes.size() < sizeof(FilterParameters)) return "";
    FilterParameters block;
    std::memcpy(&block, bytes.data(), sizeof block);
    Descriptor d;
    PutBlock(block, d);
    for (size_t i = 0; i < d.Count(); ++i)
        if (d.KeyAt(i) == Code(key)) return KeyValue(d, i);
    return "";
}

// The host's output buffer as the dialog's last render left it, as RGB: the first three
// planes (one plane as grey), 16-bit samples scaled down.
bool ProxyPicture(const Host& host, PamImage& picture) {
    const FilterRecord& r = host.Record();
    if (!r.outData || host.Requests().empty()) return false;
    const VRect out = host.Requests().back().outRect;
    const int planes = r.outHiPlane - r.outLoPlane + 1;
    const int bytes = host.Doc().BytesPerSample();
    picture.width = out.right - out.left;
    picture.height = out.bottom - out.top;
    if (picture.width <= 0 || picture.height <= 0 || planes < 1) return false;
    picture.depth = 3;
    picture.tupleType = "RGB";
    picture.data.assign(size_t(picture.width) * picture.height * 3, 0);
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            for (int c = 0; c < 3; ++c) {
                const size_t at =
                    size_t(y) * size_t(r.outRowBytes) + (size_t(x) * planes + (planes >= 3 ? c : 0)) * bytes;
                const uint8* sample = static_cast<const uint8*>(r.outData) + at;
                const int v = bytes == 2 ? std::min(255, (sample[0] | sample[1] << 8) >> 7) : sample[0];
                picture.data[(size_t(y) * picture.width + x) * 3 + c] = uint8(v);
            }
    return true;
}
#endif

} // namespace

void SetVariable(const char* name, const std::string& value) {
#ifdef _WIN32
    SetEnvironmentVariableA(name, value.c_str());
    _putenv_s(name, value.c_str());
#else
    setenv(name, value.c_str(), 1);
#endif
}

#ifdef _WIN32
// The host's About command: no document is read, the box comes up over a window of ours.
int PlayAbout(HostOptions options, PluginEntry entry, const std::string& drivePath, const std::string& holdMs) {
    HWND frame = CreateWindowExA(0, "STATIC", "filterhost", WS_OVERLAPPEDWINDOW, 0, 0, 320, 200, nullptr, nullptr,
                                 GetModuleHandleA(nullptr), nullptr);
    options.windowsParent = intptr_t(frame);
    Host host(MakeDocument(8, 8, plugInModeRGBColor, 8, std::vector<uint8>(8 * 8 * 3, 128), 3), options, entry);
    if (!drivePath.empty()) StartDialogDriver(drivePath, {});
    const int16 result = host.Call(filterSelectorAbout);
    const bool driven = FinishDialogDriver();
    if (frame) DestroyWindow(frame);
    if (!holdMs.empty()) Sleep(DWORD(std::stol(holdMs)));
    if (!driven) return kExitPlugin;
    if (result != noErr) {
        std::fprintf(stderr, "filterhost: the About command returned %d (%s)\n", int(result), ErrorName(result));
        return kExitPlugin;
    }
    return kExitOk;
}
#endif

int main(int argc, char** argv) {
    std::string plugin, inPath, outPath, selectionPath, registryPath, dataPath, drivePath, recordPath;
    std::string saveBlockPath, loadBlockPath, advanceError;
    std::string openedPath, holdMs;
    bool dialog = false, cmyk = false, timings = false, about = false;
    HostOptions options;
    Descriptor played;
    std::vector<std::string> keys;
    std::optional<int64_t> randomSeed;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg.compare(0, 9, "--random=") == 0) {
            errno = 0;
            char* end = nullptr;
            randomSeed = std::strtoll(arg.c_str() + 9, &end, 10);
            if (arg.size() == 9 || *end || errno) return Usage("--random=SEED needs a whole number");
            continue;
        }
        const auto value = [&](std::string& into) {
            if (i + 1 >= argc) return false;
            into = argv[++i];
            return true;
        };
        std::string name;
        if (arg == "--help" || arg == "-h") {
            std::fputs(kHelp, stdout);
            return kExitOk;
        } else if (arg == "--plugin") {
            if (!value(plugin)) return Usage("--plugin needs a path");
        } else if (arg == "--in") {
            if (!value(inPath)) return Usage("--in needs a path");
        } else if (arg == "--out") {
            if (!value(outPath)) return Usage("--out needs a path");
        } else if (arg == "--selection") {
            if (!value(selectionPath)) return Usage("--selection needs a path");
        } else if (arg == "--data") {
            if (!value(dataPath)) return Usage("--data needs a folder");
        } else if (arg == "--registry") {
            if (!value(registryPath)) return Usage("--registry needs a path");
        } else if (arg == "--no-suite") {
            if (!value(name)) return Usage("--no-suite needs a name");
            OmitSuite(name, options);
        } else if (arg == "--dialog") {
            dialog = true;
        } else if (arg == "--record") {
            if (!value(recordPath)) return Usage("--record needs a path");
        } else if (arg == "--drive") {
            if (!value(drivePath)) return Usage("--drive needs a script");
        } else if (arg == "--about") {
            about = true;
        } else if (arg == "--opened") {
            if (!value(openedPath)) return Usage("--opened needs a path");
        } else if (arg == "--hold") {
            int32 ms = 0;
            if (!value(holdMs) || !ParseInt(holdMs, ms) || ms <= 0) return Usage("--hold needs a positive number");
        } else if (arg == "--cmyk") {
            cmyk = true;
        } else if (arg == "--timings") {
            timings = true;
        } else if (arg == "--save-block") {
            if (!value(saveBlockPath)) return Usage("--save-block needs a path");
        } else if (arg == "--load-block") {
            if (!value(loadBlockPath)) return Usage("--load-block needs a path");
        } else if (arg == "--advance-error") {
            int32 error = 0;
            if (!value(advanceError) || !ParseInt(advanceError, error) || error == 0)
                return Usage("--advance-error needs a non-zero error number");
            options.advanceStateError = int16(error);
        } else if (arg == "--pick-colour") {
            std::string text;
            int r = -1, g = -1, b = -1;
            char tail = 0;
            if (!value(text) || std::sscanf(text.c_str(), "%d,%d,%d%c", &r, &g, &b, &tail) != 3 || r < 0 || r > 255 ||
                g < 0 || g > 255 || b < 0 || b > 255)
                return Usage("--pick-colour needs R,G,B, each 0 to 255");
            options.colours.pickedColour = std::array<uint8, 3>{uint8(r), uint8(g), uint8(b)};
        } else if (arg.compare(0, 2, "--") == 0) {
            return Usage("unknown option " + arg);
        } else {
            Descriptor scratch;
            const std::string err = AddKey(arg, scratch);
            if (!err.empty()) return Usage(err);
            keys.push_back(arg);
        }
    }
    if (!about && (inPath.empty() || outPath.empty())) return Usage("--in and --out are required");
    if (!holdMs.empty() && openedPath.empty()) return Usage("--hold needs --opened");
    // Read by the plug-in's platform layer, which is linked into the module as well.
    if (!openedPath.empty()) SetVariable("QZ_OPEN_LOG", openedPath);
    if (!holdMs.empty()) SetVariable("QZ_OPEN_HOLD_MS", holdMs);

    PluginEntry entry = nullptr;
#ifdef _WIN32
    if (plugin.empty()) plugin = DefaultPlugin();
    HMODULE module = LoadLibraryA(plugin.c_str());
    FARPROC proc = module ? GetProcAddress(module, "PluginMain") : nullptr;
    if (!proc) {
        std::fprintf(stderr, "filterhost: cannot load PluginMain from %s\n", plugin.c_str());
        return kExitInput;
    }
    static_assert(sizeof entry == sizeof proc);
    std::memcpy(&entry, &proc, sizeof entry);
    // The Auto look reads the data folder the module reads: the one beside it.
    char full[MAX_PATH];
    const DWORD length = GetFullPathNameA(plugin.c_str(), MAX_PATH, full, nullptr);
    if (length > 0 && length < MAX_PATH) {
        const std::string path(full, length);
        SetModuleFilePathOverride(path.substr(0, path.find_last_of("\\/") + 1) + "Quenzit64.8bf");
    }
#else
    if (!plugin.empty()) return Usage("--plugin needs the Windows build; this one runs the plug-in linked into it");
    entry = &PluginMain;
    if (!dataPath.empty()) {
        std::filesystem::path data(dataPath);
        if (!data.has_filename()) data = data.parent_path();
        // Any folder: the plug-in is told where it is, its module taken to stand beside it.
        SetModuleFilePathOverride((data.parent_path() / "Quenzit64.8bf").string());
        SetDataFolderOverride(data.string());
    }
#endif

#ifdef _WIN32
    if (about) return PlayAbout(options, entry, drivePath, holdMs);
#else
    if (about) return Usage("--about needs the Windows build");
#endif

    std::string error;
    if (randomSeed && !PutRecord({}, randomSeed, played, error)) {
        std::fprintf(stderr, "filterhost: %s\n", error.c_str());
        return kExitInput;
    }
    for (const std::string& key : keys) AddKey(key, played);

    PamImage image;
    if (!ReadPam(inPath, image, error)) {
        std::fprintf(stderr, "filterhost: %s\n", error.c_str());
        return kExitInput;
    }
    int16 mode = image.tupleType == "GRAYSCALE"               ? plugInModeGrayScale
                 : image.tupleType.compare(0, 4, "CMYK") == 0 ? plugInModeCMYKColor
                                                              : plugInModeRGBColor;
    std::vector<uint8> samples = std::move(image.data);
    int planes = image.depth;
    if (mode == plugInModeCMYKColor) {
        InvertInk(samples, planes);
    } else if (cmyk && mode == plugInModeRGBColor) {
        samples = RgbToCmyk(samples, planes);
        mode = plugInModeCMYKColor;
        ++planes;
    }
    Document doc = MakeDocument(image.width, image.height, mode, 8, samples, planes);
    if (!selectionPath.empty()) {
        PamImage mask;
        if (!ReadPam(selectionPath, mask, error)) {
            std::fprintf(stderr, "filterhost: %s\n", error.c_str());
            return kExitInput;
        }
        if (mask.tupleType != "GRAYSCALE" || mask.width != image.width || mask.height != image.height) {
            std::fprintf(stderr, "filterhost: %s: the selection must be a GRAYSCALE PAM of the picture's size\n",
                         selectionPath.c_str());
            return kExitInput;
        }
        doc.selection = std::move(mask.data);
    }
    const std::string docError = doc.Validate();
    if (!docError.empty()) {
        std::fprintf(stderr, "filterhost: %s: %s\n", inPath.c_str(), docError.c_str());
        return kExitInput;
    }

    auto registry = std::make_shared<Registry>();
    if (!registryPath.empty()) {
        if (std::FILE* f = std::fopen(registryPath.c_str(), "rb")) {
            std::fclose(f);
            if (!registry->Load(registryPath)) {
                std::fprintf(stderr, "filterhost: %s is not a registry file\n", registryPath.c_str());
                return kExitInput;
            }
        }
    }
    options.registry = registry;

#ifdef _WIN32
    // The dialog's parent: a real top-level window, as a host has.
    HWND frame = nullptr;
    if (dialog) {
        frame = CreateWindowExA(0, "STATIC", "filterhost", WS_OVERLAPPEDWINDOW, 0, 0, 320, 200, nullptr, nullptr,
                                GetModuleHandleA(nullptr), nullptr);
        options.windowsParent = intptr_t(frame);
    }
#else
    if (!drivePath.empty() || timings) return Usage("--drive and --timings need the Windows build");
#endif
    std::vector<uint8> keptParameters, keptData;
    if (!loadBlockPath.empty() && !ReadBlocks(loadBlockPath, keptParameters, keptData)) {
        std::fprintf(stderr, "filterhost: %s holds no kept blocks\n", loadBlockPath.c_str());
        return kExitInput;
    }
    Host host(std::move(doc), options, entry);
    if (!host.DocumentError().empty()) {
        std::fprintf(stderr, "filterhost: %s\n", host.DocumentError().c_str());
        return kExitInput;
    }
#ifdef _WIN32
    if (!drivePath.empty())
        StartDialogDriver(drivePath, {[&host](const std::string& key) { return LiveValue(host, key); },
                                      [&host](PamImage& picture) { return ProxyPicture(host, picture); }});
    if (timings) StartRenderTimings();
#endif
    int16 result = noErr;
    if (!keptParameters.empty()) {
        host.KeepBlocks(keptParameters, keptData);
        result = host.RepeatFilter();
    } else {
        result = host.PlayAction(played, dialog ? plugInDialogDisplay : plugInDialogDontDisplay);
    }
#ifdef _WIN32
    if (timings) StopRenderTimings();
    const bool driven = FinishDialogDriver();
    if (frame) DestroyWindow(frame);
    if (!holdMs.empty()) Sleep(DWORD(std::stol(holdMs)));
    if (!driven) return kExitPlugin;
#endif
    if (!saveBlockPath.empty() && !WriteBlocks(host, saveBlockPath)) {
        std::fprintf(stderr, "filterhost: cannot write %s\n", saveBlockPath.c_str());
        return kExitInput;
    }
    for (const std::string& m : host.TakeMisuse()) std::fprintf(stderr, "filterhost: host noticed: %s\n", m.c_str());

    if (!recordPath.empty() && !WriteRecorded(host, recordPath)) {
        std::fprintf(stderr, "filterhost: cannot write %s\n", recordPath.c_str());
        return kExitInput;
    }
    if (!registryPath.empty() && !registry->Save(registryPath)) {
        std::fprintf(stderr, "filterhost: cannot write %s\n", registryPath.c_str());
        return kExitInput;
    }
    if (result != noErr) {
        std::fprintf(stderr, "filterhost: the plug-in returned %d (%s)%s%s\n", int(result), ErrorName(result),
                     host.ErrorString().empty() ? "" : ": ", host.ErrorString().c_str());
        return kExitPlugin;
    }

    PamImage out;
    out.width = host.Doc().width;
    out.height = host.Doc().height;
    out.data = host.Doc().TargetInterleaved(true);
    out.depth = host.Doc().ColourPlanes() + (host.Doc().Target().transparency.empty() ? 0 : 1);
    const bool outCmyk = host.Doc().imageMode == plugInModeCMYKColor;
    if (outCmyk) InvertInk(out.data, out.depth);
    const bool outAlpha = out.depth != host.Doc().ColourPlanes();
    out.tupleType =
        mode == plugInModeGrayScale ? "GRAYSCALE" : std::string(outCmyk ? "CMYK" : "RGB") + (outAlpha ? "_ALPHA" : "");
    if (!WritePam(outPath, out, error)) {
        std::fprintf(stderr, "filterhost: %s\n", error.c_str());
        return kExitInput;
    }
    return kExitOk;
}
