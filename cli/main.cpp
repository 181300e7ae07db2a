// quenzit: the filter from the command line. Each picture becomes a one-layer document of
// hostsim, and the plug-in linked in here plays it as an action step with its dialog off.
#include "ImageFiles.h"
#include "ParameterArgs.h"
#include "PresetNames.h"
#include "Render.h"

#include "state/Parameters.h"
#include "state/PathTable.h"
#include "platform/ModulePath.h"
#include "presets/PresetFormat.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr int kExitOk = 0;
constexpr int kExitUsage = 1;
constexpr int kExitInput = 2;
constexpr int kExitRender = 3;

const char kToolHelp[] = "Usage: quenzit COMMAND [options]\n"
                         "\n"
                         "Runs the Quenzit filter without a host, for batch work.\n"
                         "\n"
                         "Commands:\n"
                         "  render [options] INPUT...   distress pictures (quenzit render --help)\n"
                         "  params                      every parameter key with its field, type, default and range\n"
                         "  preset show FILE            the parameters a preset file sets\n"
                         "  preset list [KIND]          the looks the data folder ships, by kind\n"
                         "  texture pack|info ...       texture files (.qzt): quenzit texture --help\n"
                         "\n"
                         "quenzit COMMAND --help tells more about a command.\n"
                         "\n"
                         "Exit status: 0 done; 1 usage error; 2 a file could not be read or written;\n"
                         "3 the filter failed on a picture.\n";

const char kRenderHelp[] =
    "Usage: quenzit render [options] INPUT...\n"
    "\n"
    "Runs the filter over each picture as a host plays an action step with its dialog off.\n"
    "Inputs: PNG (8-bit grey, grey with alpha, RGB, RGBA), JPEG, and TIFF (8-bit grey, RGB or\n"
    "CMYK, with or without alpha); grey pictures run as RGB, CMYK ones as CMYK documents.\n"
    "Output by the name's extension: .png, .tif (keeps CMYK) or .jpg (pictures without alpha).\n"
    "\n"
    "  -o, --output PATH      output file for one input, or a folder for several (created if\n"
    "                         missing). Default: INPUT's name with -quenzit.png (.tif for a\n"
    "                         TIFF), beside it; in a folder, the input's name so.\n"
    "  -p, --preset FILE|NAME apply a preset file (.qztpst) of any kind, or a shipped look by\n"
    "                         its name (\"Coffee Table on Bark\"; quenzit preset list shows them);\n"
    "                         may repeat, applied in order over the defaults. A colour preset\n"
    "                         sets the surface's three colours, or the background's when it lies\n"
    "                         in a BackPalette folder\n"
    "  -s, --set KEY=VALUE    set one parameter by its four-character key (WTp1=2,\n"
    "                         WFN1=Rusted.qzt, SAp1=45.5, Cov1=-40); may repeat; applied last.\n"
    "                         Values outside a field's range are taken with a warning.\n"
    "      --data DIR         the data folder (textures, presets), of any name. Default:\n"
    "                         $QUENZIT_DATA, else ../data/Quenzit from this program's folder\n"
    "      --selection MASK   8-bit grey picture of the input's size: the selection (255 = in)\n"
    "      --cmyk             run an RGB picture as a CMYK document (converted by the host's\n"
    "                         colour services); the result stays CMYK in a TIFF, and comes\n"
    "                         back to RGB for PNG and JPEG\n"
    "      --flat             ignore the picture's alpha and run a flat document\n"
    "      --random[=SEED]    the Auto look (random effects) instead of the defaults; without a\n"
    "                         SEED the clock chooses one, and it is printed\n"
    "      --save-preset FILE write the look the first picture was rendered with (defaults,\n"
    "                         presets, settings or an Auto look) as a preset file that -p and\n"
    "                         the dialog read back; an Auto look depends on the library it drew\n"
    "                         from, so keep the preset, not only the seed\n"
    "      --quiet            no progress bar (otherwise shown on stderr when it is a terminal)\n"
    "  -h, --help             this text\n"
    "\n"
    "Several inputs run one after the other; a failure on one is reported and the others\n"
    "still run. Processes write nothing they share (no settings file, cache or registry), so\n"
    "a batch may be split over as many processes as you like, on one data folder.\n"
    "Exit status: 0 all done; 1 usage error (nothing is rendered); 2 a file could not be read\n"
    "or written; 3 the filter failed on a picture.\n";

const char kParamsHelp[] = "Usage: quenzit params\n"
                           "\n"
                           "Lists every key that --set and presets take: the record's field, the type the key\n"
                           "travels as, its default and the range the dialog keeps to (- when there is none).\n"
                           "Booleans take true, false, 1 or 0; colours an integer, 0x hexadecimal allowed.\n";

const char kPresetHelp[] = "Usage: quenzit preset show FILE|NAME [--data DIR]\n"
                           "       quenzit preset list [KIND] [--data DIR]\n"
                           "\n"
                           "show lists the fields a preset file (.qztpst) sets, with the values it gives them: key\n"
                           "(- for fields without one), field and value. Link flags and the colours of colour\n"
                           "presets are listed too. list names the looks the data folder ships, kind first (Basic,\n"
                           "Wash, Surface, Background, User, Colors, BackPalette); a name works with -p as a file.\n";

int Usage(const std::string& message, const char* command = nullptr) {
    std::fprintf(stderr, "quenzit: %s\n(quenzit %s--help tells the options)\n", message.c_str(),
                 command ? (std::string(command) + " ").c_str() : "");
    return kExitUsage;
}

// The data folder next to the build's programs: bin/../data/Quenzit.
fs::path DefaultData() {
    if (const char* env = std::getenv("QUENZIT_DATA"); env && *env) return env;
    std::error_code ec;
    const fs::path self = fs::read_symlink("/proc/self/exe", ec);
    if (ec) return {};
    return self.parent_path().parent_path() / "data" / "Quenzit";
}

// The plug-in reads its textures and presets from `dir`, whatever its name; its module
// stands beside it.
void UseDataFolder(const fs::path& dir) {
    std::error_code ec;
    fs::path data = fs::weakly_canonical(dir, ec);
    if (ec || data.empty()) data = fs::absolute(dir, ec);
    if (!data.has_filename()) data = data.parent_path();
    SetModuleFilePathOverride((data.parent_path() / "Quenzit64.8bf").string());
    SetDataFolderOverride(data.string());
}

// The look of a run, its parameter block as the plug-in left it, as a preset of every
// effect; written aside and renamed, as pictures are.
bool SaveLook(const std::string& path, const std::vector<uint8_t>& block, std::string& error) {
    if (block.size() < sizeof(FilterParameters)) {
        error = "the run left no parameters";
        return false;
    }
    FilterParameters record;
    std::memcpy(&record, block.data(), sizeof record);
    FilterParameters* const saved = gParams;
    gParams = &record;
    const std::string part = path + ".part";
    std::FILE* file = std::fopen(part.c_str(), "wb");
    bool ok = file && WritePresetFile(file, PresetUser);
    if (file && std::fclose(file) != 0) ok = false;
    gParams = saved;
    std::error_code ec;
    if (ok) fs::rename(part, path, ec);
    if (!ok || ec) {
        error = ec ? ec.message() : std::strerror(errno);
        fs::remove(part, ec);
        return false;
    }
    return true;
}

// The bar of one picture, redrawn in place as the plug-in reports.
class ProgressBar {
public:
    explicit ProgressBar(std::string name) : name_(std::move(name)) { Draw(0, 1); }
    ~ProgressBar() { std::fputc('\n', stderr); }
    void Report(int done, int total) {
        // The run's last report (total 0) only tells the bar to empty: it stays full.
        if (total <= 0) return;
        Draw(done, total);
    }

private:
    void Draw(int done, int total) {
        constexpr int kWidth = 30;
        const int filled = int(int64_t(std::clamp(done, 0, total)) * kWidth / total);
        if (filled == filled_) return;
        filled_ = filled;
        std::fprintf(stderr, "\r[%s%s] %s", std::string(size_t(filled), '#').c_str(),
                     std::string(size_t(kWidth - filled), ' ').c_str(), name_.c_str());
        std::fflush(stderr);
    }
    std::string name_;
    int filled_ = -1;
};

// Where a picture's result goes by default: TIFF stays TIFF (it may be CMYK), the rest PNG.
const char* OutputExtensionFor(const std::string& input) {
    return ExtensionOf(FormatOf(input) == PictureFormat::Tiff ? PictureFormat::Tiff : PictureFormat::Png);
}

int Render(int argc, char** argv) {
    std::vector<std::string> inputs, presets, settings;
    std::string output, data, selection, savePreset;
    bool flat = false, quiet = false, cmyk = false, optionsDone = false;
    std::optional<int64_t> randomSeed;
    for (int i = 0; i < argc; ++i) {
        std::string arg = argv[i];
        std::string inlineValue;
        bool hasInline = false;
        if (!optionsDone && arg.compare(0, 2, "--") == 0 && arg.find('=') != std::string::npos) {
            inlineValue = arg.substr(arg.find('=') + 1);
            arg = arg.substr(0, arg.find('='));
            hasInline = true;
        }
        const auto value = [&](std::string& into) {
            if (hasInline) {
                into = inlineValue;
                return true;
            }
            if (i + 1 >= argc) return false;
            into = argv[++i];
            return true;
        };
        std::string v;
        if (optionsDone || arg.empty() || arg[0] != '-' || arg == "-") {
            inputs.push_back(arg);
        } else if (arg == "--") {
            optionsDone = true;
        } else if (arg == "-h" || arg == "--help") {
            std::fputs(kRenderHelp, stdout);
            return kExitOk;
        } else if (arg == "-o" || arg == "--output") {
            if (!value(output)) return Usage(arg + " needs a path", "render");
        } else if (arg == "-p" || arg == "--preset") {
            if (!value(v)) return Usage(arg + " needs a file", "render");
            presets.push_back(v);
        } else if (arg == "-s" || arg == "--set") {
            if (!value(v)) return Usage(arg + " needs KEY=VALUE", "render");
            settings.push_back(v);
        } else if (arg == "--data") {
            if (!value(data)) return Usage("--data needs a folder", "render");
        } else if (arg == "--save-preset") {
            if (!value(savePreset)) return Usage("--save-preset needs a file", "render");
        } else if (arg == "--selection") {
            if (!value(selection)) return Usage("--selection needs a file", "render");
        } else if (arg == "--flat") {
            flat = true;
        } else if (arg == "--quiet") {
            quiet = true;
        } else if (arg == "--random") {
            if (!hasInline) {
                randomSeed = int64_t(std::time(nullptr));
            } else {
                char* end = nullptr;
                errno = 0;
                randomSeed = std::strtoll(inlineValue.c_str(), &end, 10);
                if (inlineValue.empty() || *end || errno) return Usage("--random=SEED needs a whole number", "render");
            }
        } else if (arg == "--cmyk") {
            cmyk = true;
        } else {
            return Usage("unknown option " + arg, "render");
        }
    }
    if (inputs.empty()) return Usage("render needs at least one input picture", "render");

    // Everything the command line says is checked before any picture is touched.
    hostsim::Descriptor played;
    std::vector<std::string> warnings;
    for (const std::string& s : settings) {
        hostsim::Descriptor scratch;
        if (const std::string wrong = PutSetting(s, scratch, warnings); !wrong.empty())
            return Usage("--set " + wrong, "render");
    }

    std::vector<fs::path> outputs;
    std::error_code ec;
    const bool intoFolder =
        inputs.size() > 1 || (!output.empty() && (output.back() == '/' || fs::is_directory(output, ec)));
    if (!output.empty() && intoFolder) {
        if (fs::exists(output, ec) && !fs::is_directory(output, ec))
            return Usage(output + " is a file; several inputs need an output folder", "render");
        std::set<fs::path> seen;
        for (const std::string& in : inputs) {
            const fs::path out = fs::path(output) / fs::path(in).filename().replace_extension(OutputExtensionFor(in));
            if (!seen.insert(out).second) return Usage("two inputs would both be written to " + out.string(), "render");
            outputs.push_back(out);
        }
    } else if (!output.empty()) {
        if (FormatOf(output) == PictureFormat::Unknown)
            return Usage(output + ": the output is written as PNG, TIFF or JPEG: end its name in .png, .tif or .jpg",
                         "render");
        outputs.push_back(output);
    } else {
        for (const std::string& in : inputs) {
            fs::path out = in;
            out.replace_filename(out.stem().string() + "-quenzit" + OutputExtensionFor(in));
            outputs.push_back(out);
        }
    }

    const fs::path dataDir = data.empty() ? DefaultData() : fs::path(data);
    if (dataDir.empty() || !fs::is_directory(dataDir, ec)) {
        std::fprintf(stderr, "quenzit: %s: the data folder is missing (give --data or set QUENZIT_DATA)\n",
                     dataDir.string().c_str());
        return kExitInput;
    }
    UseDataFolder(dataDir);

    if (randomSeed)
        std::fprintf(stderr, "quenzit: the Auto look of seed %lld (--random=%lld makes it again)\n",
                     static_cast<long long>(*randomSeed), static_cast<long long>(*randomSeed));
    for (std::string& p : presets) {
        std::string path, error;
        if (!FindPresetFile(p, dataDir, path, error)) {
            std::fprintf(stderr, "quenzit: %s\n", error.c_str());
            return kExitInput;
        }
        p = path;
    }
    if (!presets.empty() || randomSeed) {
        std::string error;
        if (!PutRecord(presets, randomSeed, played, error)) {
            std::fprintf(stderr, "quenzit: %s\n", error.c_str());
            return kExitInput;
        }
    }
    // Checked above; the warnings were collected then.
    std::vector<std::string> again;
    for (const std::string& s : settings) PutSetting(s, played, again);
    for (const std::string& w : warnings) std::fprintf(stderr, "quenzit: warning: %s\n", w.c_str());

    const fs::path outFolder = intoFolder ? fs::path(output) : fs::path(output).parent_path();
    if (!outFolder.empty()) {
        fs::create_directories(outFolder, ec);
        if (ec) {
            std::fprintf(stderr, "quenzit: %s: cannot create the folder: %s\n", outFolder.string().c_str(),
                         ec.message().c_str());
            return kExitInput;
        }
    }

    const bool bar = !quiet && isatty(STDERR_FILENO);
    RenderOptions options;
    options.flat = flat;
    options.cmyk = cmyk;
    options.selection = selection;
    int exitCode = kExitOk;
    for (size_t n = 0; n < inputs.size(); ++n) {
        const std::string& in = inputs[n];
        Picture picture;
        std::string error;
        if (!ReadPicture(in, picture, error)) {
            std::fprintf(stderr, "quenzit: %s: %s\n", in.c_str(), error.c_str());
            exitCode = std::max(exitCode, kExitInput);
            continue;
        }
        RenderResult r;
        {
            std::optional<ProgressBar> progress;
            if (bar) progress.emplace(in);
            options.progress = [&progress](int done, int total) {
                if (progress) progress->Report(done, total);
            };
            r = RenderPicture(picture, options, played);
        }
        if (r.status != RenderStatus::Done) {
            std::fprintf(stderr, "quenzit: %s: %s\n", in.c_str(), r.message.c_str());
            exitCode = std::max(exitCode, r.status == RenderStatus::BadInput ? kExitInput : kExitRender);
            continue;
        }
        // Written aside and renamed, so a failed write leaves no partial picture.
        const fs::path out = outputs[n];
        const fs::path part = out.string() + ".part";
        const PictureFormat format = FormatOf(out.string());
        const Picture written = r.picture.cmyk && format != PictureFormat::Tiff ? RgbOf(r.picture) : r.picture;
        if (!WritePicture(part.string(), format, written, error)) {
            fs::remove(part, ec);
            std::fprintf(stderr, "quenzit: %s: %s\n", out.string().c_str(), error.c_str());
            exitCode = std::max(exitCode, kExitInput);
            continue;
        }
        fs::rename(part, out, ec);
        if (ec) {
            fs::remove(part, ec);
            std::fprintf(stderr, "quenzit: %s: %s\n", out.string().c_str(), ec.message().c_str());
            exitCode = std::max(exitCode, kExitInput);
            continue;
        }
        if (!quiet) std::printf("%s\n", out.string().c_str());
        if (!savePreset.empty() && !r.parameters.empty()) {
            if (!SaveLook(savePreset, r.parameters, error)) {
                std::fprintf(stderr, "quenzit: %s: %s\n", savePreset.c_str(), error.c_str());
                exitCode = std::max(exitCode, kExitInput);
            }
            savePreset.clear();
        }
    }
    return exitCode;
}

int Params(int argc, char** argv) {
    for (int i = 0; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "-h" || arg == "--help") {
            std::fputs(kParamsHelp, stdout);
            return kExitOk;
        }
        return Usage("params takes no arguments", "params");
    }
    PrintParameterTable(stdout);
    return kExitOk;
}

int Preset(int argc, char** argv) {
    const std::string sub = argc > 0 ? argv[0] : "";
    if (sub == "-h" || sub == "--help") {
        std::fputs(kPresetHelp, stdout);
        return kExitOk;
    }
    std::vector<std::string> args;
    std::string data;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--data" && i + 1 < argc) data = argv[++i];
        else if (arg.compare(0, 7, "--data=") == 0) data = arg.substr(7);
        else args.push_back(arg);
    }
    const fs::path dataDir = data.empty() ? DefaultData() : fs::path(data);
    if (sub == "list") {
        if (args.size() > 1) return Usage("preset list takes at most one kind", "preset");
        if (!ListPresets(dataDir, args.empty() ? "" : args[0], stdout)) {
            std::fprintf(stderr, "quenzit: %s: no looks of kind %s\n", (dataDir / "Presets").string().c_str(),
                         args[0].c_str());
            return kExitInput;
        }
        return kExitOk;
    }
    if (sub != "show" || args.size() != 1) return Usage("preset show needs one preset file or name", "preset");
    std::string path, error;
    if (!FindPresetFile(args[0], dataDir, path, error)) {
        std::fprintf(stderr, "quenzit: %s\n", error.c_str());
        return kExitInput;
    }
    if (!ShowPreset(path, stdout, error)) {
        std::fprintf(stderr, "quenzit: %s: %s\n", path.c_str(), error.c_str());
        return kExitInput;
    }
    return kExitOk;
}

// The texture commands are those of qz-texture, which is built beside this program.
int Texture(int argc, char** argv) {
    std::error_code ec;
    const fs::path tool = fs::read_symlink("/proc/self/exe", ec).parent_path() / "qz-texture";
    const std::string sub = argc > 0 ? argv[0] : "";
    if (sub != "pack" && sub != "info") {
        if (sub == "-h" || sub == "--help") {
            std::fputs("Usage: quenzit texture pack IMAGE OUT.qzt [--grey] [--set-id N] [--effects BITS]\n"
                       "       quenzit texture info FILE...\n"
                       "\n"
                       "pack makes a texture file from a PNG or JPEG (colour, or grey with --grey); BITS is\n"
                       "the effect mask, decimal or 0x hexadecimal. info tells what texture files hold.\n"
                       "Exit status: 0 done; 1 usage error; 2 an input could not be read; 3 the output\n"
                       "could not be written.\n",
                       stdout);
            return kExitOk;
        }
        return Usage("texture needs pack or info", "texture");
    }
    std::vector<char*> args;
    std::string name = tool.string();
    args.push_back(name.data());
    for (int i = 0; i < argc; ++i) args.push_back(argv[i]);
    args.push_back(nullptr);
    std::fflush(nullptr);
    execv(name.c_str(), args.data());
    std::fprintf(stderr, "quenzit: %s: %s\n", name.c_str(), std::strerror(errno));
    return kExitInput;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) return Usage("a command is needed");
    const std::string command = argv[1];
    if (command == "-h" || command == "--help" || command == "help") {
        std::fputs(kToolHelp, stdout);
        return kExitOk;
    }
    if (command == "render") return Render(argc - 2, argv + 2);
    if (command == "params") return Params(argc - 2, argv + 2);
    if (command == "preset") return Preset(argc - 2, argv + 2);
    if (command == "texture") return Texture(argc - 2, argv + 2);
    return Usage("unknown command \"" + command + "\"");
}
