#include "ImageFiles.h"

#include "state/Parameters.h"
#include "host/PluginMain.h"
#include "hostsim/Host.h"
#include "hostsim/Registry.h"
#include "platform/ModulePath.h"

#include <gtest/gtest.h>
#include <png.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

struct Outcome {
    int code;
    std::string err, out;
};

class Quenzit : public ::testing::Test {
protected:
    void SetUp() override {
        // The sanitizer build does not generate the textures and presets the renders need.
        if (!fs::exists(fs::path(QZ_DATA_DIR) / "Scratched.qzt")) GTEST_SKIP() << "no generated data folder";
        dir_ = fs::path(QZ_WORK_DIR) / ::testing::UnitTest::GetInstance()->current_test_info()->name();
        fs::remove_all(dir_);
        fs::create_directories(dir_);
    }

    std::string At(const std::string& name) const { return (dir_ / name).string(); }

    Outcome Quiet(const std::string& args) const {
        const std::string err = At("stderr.txt"), out = At("stdout.txt");
        const std::string command = std::string("QUENZIT_DATA='") + QZ_DATA_DIR + "' '" + QZ_QUENZIT + "' " + args +
                                    " >'" + out + "' 2>'" + err + "'";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Slurp(err), Slurp(out)};
    }

    static std::string Slurp(const std::string& path) {
        std::ifstream f(path, std::ios::binary);
        std::stringstream s;
        s << f.rdbuf();
        return s.str();
    }

    // A picture with structure in every channel, alpha with a hole.
    static Picture Card(uint32_t w, uint32_t h, int channels) {
        Picture p;
        p.width = w;
        p.height = h;
        p.channels = channels;
        for (uint32_t y = 0; y < h; ++y)
            for (uint32_t x = 0; x < w; ++x)
                for (int c = 0; c < channels; ++c)
                    p.samples.push_back(c == 3 ? uint8_t(x > w / 4 ? 255 : 40) : uint8_t(x * 5 + y * 3 + c * 80));
        return p;
    }

    std::string Write(const std::string& name, const Picture& p) const {
        std::string error;
        EXPECT_TRUE(WritePicture(At(name), FormatOf(name), p, error)) << error;
        return At(name);
    }

    Picture Read(const std::string& name) const {
        Picture p;
        std::string error;
        EXPECT_TRUE(ReadPicture(At(name), p, error)) << name << ": " << error;
        return p;
    }

    fs::path dir_;
};

// The plug-in in this process, played by hostsim as a host with its dialog off.
std::vector<uint8_t> HostRender(const std::vector<uint8_t>& samples, uint32_t w, uint32_t h, int16 mode, int planes,
                                const std::vector<uint8_t>& selection) {
    SetModuleFilePathOverride((fs::path(QZ_DATA_DIR).parent_path() / "Quenzit64.8bf").string());
    hostsim::Document doc = hostsim::MakeDocument(int32(w), int32(h), mode, 8, samples, planes);
    doc.selection = selection;
    hostsim::HostOptions options;
    options.writesOutsideSelection = true;
    options.registry = std::make_shared<hostsim::Registry>();
    hostsim::Host host(std::move(doc), options, &PluginMain);
    EXPECT_EQ(host.PlayAction(hostsim::Descriptor(), plugInDialogDontDisplay), noErr);
    return host.Doc().TargetInterleaved(true);
}

std::vector<uint8_t> HostRender(const Picture& p, const std::vector<uint8_t>& selection) {
    return HostRender(p.samples, p.width, p.height, plugInModeRGBColor, p.channels, selection);
}

TEST_F(Quenzit, DefaultsRenderAsTheHostDoes) {
    const Picture rgb = Card(90, 60, 3);
    Outcome r = Quiet("render --quiet '" + Write("rgb.png", rgb) + "' -o '" + At("rgb-out.png") + "'");
    ASSERT_EQ(r.code, 0) << r.err;
    const std::vector<uint8_t> expected = HostRender(rgb, {});
    EXPECT_NE(expected, rgb.samples); // the default look changes the picture
    EXPECT_EQ(Read("rgb-out.png").samples, expected);

    // Transparency and a selection reach the plug-in as a host's would.
    const Picture rgba = Card(90, 60, 4);
    Picture mask = Card(90, 60, 1);
    for (size_t i = 0; i < mask.samples.size(); ++i) mask.samples[i] = (i % 90) < 45 ? 255 : 0;
    r = Quiet("render --quiet '" + Write("rgba.png", rgba) + "' --selection '" + Write("mask.png", mask) + "' -o '" +
              At("rgba-out.png") + "'");
    ASSERT_EQ(r.code, 0) << r.err;
    const Picture out = Read("rgba-out.png");
    EXPECT_EQ(out.channels, 4);
    EXPECT_EQ(out.samples, HostRender(rgba, mask.samples));
    EXPECT_NE(out.samples, HostRender(rgba, {}));

    // A JPEG renders as its decoded pixels do.
    Write("photo.jpg", rgb);
    r = Quiet("render --quiet '" + At("photo.jpg") + "' -o '" + At("photo.png") + "'");
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(Read("photo.png").samples, HostRender(Read("photo.jpg"), {}));

    // --cmyk: the host's naive conversion there (255 is no ink) and back.
    r = Quiet("render --quiet --cmyk '" + At("rgb.png") + "' -o '" + At("cmyk.png") + "'");
    ASSERT_EQ(r.code, 0) << r.err;
    std::vector<uint8_t> cmyk;
    for (size_t i = 0; i < rgb.samples.size(); i += 3) {
        const unsigned k = std::max({rgb.samples[i], rgb.samples[i + 1], rgb.samples[i + 2]});
        for (size_t c = 0; c < 3; ++c) cmyk.push_back(uint8_t(k ? (rgb.samples[i + c] * 510u + k) / (2 * k) : 255));
        cmyk.push_back(uint8_t(k));
    }
    const std::vector<uint8_t> rendered = HostRender(cmyk, rgb.width, rgb.height, plugInModeCMYKColor, 4, {});
    std::vector<uint8_t> back;
    for (size_t i = 0; i < rendered.size(); i += 4)
        for (size_t c = 0; c < 3; ++c) back.push_back(uint8_t((rendered[i + c] * rendered[i + 3] * 2u + 255) / 510));
    EXPECT_EQ(Read("cmyk.png").samples, back);

    // --flat drops the alpha.
    r = Quiet("render --quiet --flat '" + At("rgba.png") + "' -o '" + At("flat.png") + "'");
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(Read("flat.png").channels, 3);
}

TEST_F(Quenzit, TiffKeepsCmykAndJpegTakesFlatPictures) {
    // Files round trip as they are: RGBA and CMYK with alpha.
    const Picture rgba = Card(50, 40, 4);
    EXPECT_EQ(Read(fs::path(Write("rgba.tif", rgba)).filename().string()).samples, rgba.samples);
    Picture inks = Card(50, 40, 5);
    inks.cmyk = true;
    const Picture back = Read(fs::path(Write("inks.tif", inks)).filename().string());
    EXPECT_TRUE(back.cmyk);
    EXPECT_EQ(back.channels, 5);
    EXPECT_EQ(back.samples, inks.samples);

    // A CMYK TIFF runs as a CMYK document and comes out CMYK; into a PNG it turns RGB.
    Picture cmyk = Card(50, 40, 4);
    cmyk.cmyk = true;
    Write("cmyk.tif", cmyk);
    Outcome r = Quiet("render --quiet '" + At("cmyk.tif") + "' -o '" + At("cmyk-out.tif") + "'");
    ASSERT_EQ(r.code, 0) << r.err;
    const Picture out = Read("cmyk-out.tif");
    EXPECT_TRUE(out.cmyk);
    EXPECT_EQ(out.samples, HostRender(cmyk.samples, cmyk.width, cmyk.height, plugInModeCMYKColor, 4, {}));
    r = Quiet("render --quiet '" + At("cmyk.tif") + "' -o '" + At("cmyk-out.png") + "'");
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(Read("cmyk-out.png").channels, 3);
    // Without -o a TIFF's result is a TIFF beside it.
    r = Quiet("render --quiet '" + At("cmyk.tif") + "'");
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_TRUE(Read("cmyk-quenzit.tif").cmyk);

    // JPEG out for a flat picture; a picture with alpha is refused and leaves nothing.
    r = Quiet("render --quiet --flat '" + At("rgba.tif") + "' -o '" + At("flat.jpg") + "'");
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(Read("flat.jpg").channels, 3);
    r = Quiet("render --quiet '" + At("rgba.tif") + "' -o '" + At("alpha.jpg") + "'");
    EXPECT_EQ(r.code, 2);
    EXPECT_NE(r.err.find("JPEG keeps no transparency"), std::string::npos) << r.err;
    EXPECT_FALSE(fs::exists(At("alpha.jpg")));
    EXPECT_FALSE(fs::exists(At("alpha.jpg.part")));

    // A TIFF that claims 31489 by 65520 pixels and holds 14 bytes (found by fuzzing).
    const unsigned char claim[] = {
        0x49, 0x49, 0x2a, 0x00, 0x16, 0x00, 0x00, 0x00, 0x80, 0x13, 0x60, 0x50, 0x38, 0x24, 0x16, 0x0d, 0x07,
        0x84, 0x42, 0x60, 0x70, 0x10, 0x0a, 0x00, 0x00, 0x01, 0x03, 0x00, 0x01, 0x00, 0x00, 0x00, 0x01, 0x7b,
        0x00, 0x00, 0x01, 0x01, 0x03, 0x00, 0x01, 0x00, 0x00, 0x00, 0xf0, 0xff, 0x00, 0x00, 0x02, 0x01, 0x03,
        0x00, 0x01, 0x00, 0x00, 0x00, 0x08, 0x00, 0x00, 0x00, 0x01, 0x03, 0x00, 0x01, 0x00, 0x03, 0x00, 0x00,
        0x05, 0x6c, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x11,
        0x01, 0x04, 0x00, 0x01, 0x00, 0x00, 0x00, 0x08, 0x00, 0x00, 0x00, 0x15, 0x01, 0x03, 0x00, 0x01, 0x00,
        0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x16, 0x01, 0x03, 0x00, 0x01, 0x00, 0x00, 0x00, 0x00, 0x04, 0x00,
        0x00, 0x17, 0x01, 0x04, 0x00, 0x01, 0x00, 0x00, 0x00, 0x0e, 0x00, 0x00, 0x00, 0x1c, 0x01, 0x03, 0x00,
        0x01, 0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
    };
    std::ofstream(At("claim.tif"), std::ios::binary).write(reinterpret_cast<const char*>(claim), sizeof claim);
    r = Quiet("render --quiet '" + At("claim.tif") + "' -o '" + At("claim-out.png") + "'");
    EXPECT_EQ(r.code, 2) << r.err;
    EXPECT_NE(r.err.find("too large"), std::string::npos) << r.err;

    // A cut TIFF and an output name of no known kind.
    const std::string whole = Slurp(At("cmyk.tif"));
    std::ofstream(At("cut.tif"), std::ios::binary) << whole.substr(0, whole.size() / 2);
    r = Quiet("render --quiet '" + At("cut.tif") + "' -o '" + At("cut-out.tif") + "'");
    EXPECT_EQ(r.code, 2) << r.err;
    EXPECT_FALSE(fs::exists(At("cut-out.tif")));
    r = Quiet("render --quiet '" + At("cmyk.tif") + "' -o '" + At("out.bmp") + "'");
    EXPECT_EQ(r.code, 1);
    EXPECT_NE(r.err.find(".png, .tif or .jpg"), std::string::npos) << r.err;
}

TEST_F(Quenzit, PresetsApplyInOrderAndSettingsLast) {
    const std::string in = Write("in.png", Card(80, 50, 3));
    // Only the first wash, with a look the coverage visibly changes.
    const std::string look =
        " -s SFN1=No_Texture.qzt -s SFN2=No_Texture.qzt -s BkFN=No_Texture.qzt -s WFN1=Scratched.qzt -s WTp1=0"
        " -s WIv1=true -s CSc1=60 -s EDs1=20 -s ESf1=40 -s WIt1=130 -s Rnd1=777 -s W2Ex=false";
    const auto preset = [&](const std::string& name, int coverage) {
        std::ofstream(At(name)) << "Quenzit Press Preset;\nVersion 2;\n1voC " << coverage << " \t;Wash1 Coverage\n";
        return " -p '" + At(name) + "'";
    };
    const std::string plus40 = preset("plus40.qztpst", 40), minus30 = preset("minus30.qztpst", -30);
    const auto render = [&](const std::string& args, const std::string& out) {
        const Outcome r = Quiet("render --quiet '" + in + "'" + args + look + " -o '" + At(out) + "'");
        EXPECT_EQ(r.code, 0) << args << "\n" << r.err;
        return Read(out).samples;
    };
    const auto setPlus40 = render(" -s Cov1=40", "a.png");
    const auto setMinus30 = render(" -s Cov1=-30", "b.png");
    ASSERT_NE(setPlus40, setMinus30);
    EXPECT_EQ(render(minus30 + plus40, "c.png"), setPlus40);
    EXPECT_EQ(render(plus40 + minus30, "d.png"), setMinus30);
    EXPECT_EQ(render(plus40 + " -s Cov1=-30", "e.png"), setMinus30);
    // --set comes last wherever it stands on the line.
    EXPECT_EQ(render(" -s Cov1=-30" + plus40, "f.png"), setMinus30);

    // A colour preset: the surface's colours, or the background's from a BackPalette.
    const std::string colours = "Quenzit Press Preset;\nVersion 2;\n;------Color Preset------\nrgtC Empty \t;c\n"
                                "lCiH 255 \t;h\nlCdM 51200 \t;m\nlCdS 1310720 \t;s\n";
    std::ofstream(At("tones.qztpst")) << colours;
    fs::create_directories(At("BackPalette"));
    std::ofstream(At("BackPalette/tones.qztpst")) << colours;
    // The picture has a transparent strip, so the background shows.
    const std::string holed = Write("holed.png", Card(80, 50, 4));
    const auto plain = [&](const std::string& args, const std::string& out) {
        const Outcome r = Quiet("render --quiet '" + holed + "'" + args + " -o '" + At(out) + "'");
        EXPECT_EQ(r.code, 0) << args << "\n" << r.err;
        return Read(out).samples;
    };
    const auto defaults = plain("", "defaults.png");
    const auto surface = plain(" -p '" + At("tones.qztpst") + "'", "g.png");
    EXPECT_NE(surface, defaults);
    EXPECT_EQ(surface, plain(" -s SHC1=255 -s SMC1=51200 -s SSC1=1310720", "h.png"));
    const auto background = plain(" -p '" + At("BackPalette/tones.qztpst") + "'", "i.png");
    EXPECT_NE(background, defaults);
    EXPECT_EQ(background, plain(" -s BHCl=255 -s BMCl=51200 -s BSCl=1310720", "j.png"));
}

// A 16-bit grey PNG, which the filter cannot take.
void WriteSixteenBit(const std::string& path) {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, f);
    png_set_IHDR(png, info, 4, 4, 16, PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    std::vector<uint8_t> row(8, 0x80);
    for (int y = 0; y < 4; ++y) png_write_row(png, row.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    std::fclose(f);
}

TEST_F(Quenzit, BadInputsAreReportedAndWriteNothing) {
    const std::string good = Write("good.png", Card(40, 30, 3));
    std::ofstream(At("text.png")) << "this is not a picture\n";
    const std::string whole = Slurp(good);
    std::ofstream(At("truncated.png"), std::ios::binary) << whole.substr(0, whole.size() / 2);
    WriteSixteenBit(At("deep.png"));
    Write("small-mask.png", Card(20, 30, 1));

    struct Case {
        std::string args;
        int code;
        std::string message;
    };
    const Case cases[] = {
        {"'" + At("missing.png") + "'", 2, At("missing.png") + ": No such file"},
        {"'" + At("text.png") + "'", 2, At("text.png") + ": not a PNG, JPEG or TIFF"},
        {"'" + At("truncated.png") + "'", 2, At("truncated.png") + ": not a readable PNG"},
        {"'" + At("deep.png") + "'", 2, "16-bit"},
        {"'" + good + "' -s Zzz9=1", 1, "unknown key \"Zzz9\""},
        {"'" + good + "' -s Cov1=lots", 1, "Cov1: \"lots\" is not an integer"},
        {"'" + good + "' -s SAp1=4x", 1, "SAp1: \"4x\" is not a number"},
        {"'" + good + "' -s WFV1=yes", 1, "not true, false"},
        {"'" + good + "' --selection '" + At("small-mask.png") + "'", 2, "small-mask.png: the selection must be"},
        {"'" + good + "' -p '" + At("text.png") + "'", 2, "text.png: not a preset file"},
        {"'" + good + "' --bogus", 1, "unknown option --bogus"},
    };
    for (const Case& c : cases) {
        const Outcome r = Quiet("render " + c.args + " -o '" + At("out.png") + "'");
        EXPECT_EQ(r.code, c.code) << c.args << "\n" << r.err;
        EXPECT_NE(r.err.find(c.message), std::string::npos) << c.args << "\n" << r.err;
        EXPECT_FALSE(fs::exists(At("out.png"))) << c.args;
        EXPECT_FALSE(fs::exists(At("out.png.part"))) << c.args;
    }

    // Out of range is taken, with a warning.
    const Outcome r = Quiet("render '" + good + "' -s Cov1=250 --quiet -o '" + At("range.png") + "'");
    EXPECT_EQ(r.code, 0);
    EXPECT_NE(r.err.find("Cov1=250 is outside -100..100"), std::string::npos) << r.err;
}

TEST_F(Quenzit, SeveralInputsGoOnAfterAFailure) {
    const std::string a = Write("a.png", Card(30, 20, 3)), b = Write("b.png", Card(20, 30, 1));
    const Outcome r = Quiet("render --quiet '" + a + "' '" + At("gone.png") + "' '" + b + "' -o '" + At("outs") + "'");
    EXPECT_EQ(r.code, 2);
    EXPECT_NE(r.err.find("gone.png"), std::string::npos) << r.err;
    EXPECT_EQ(Read("outs/a.png").width, 30u);
    EXPECT_EQ(Read("outs/b.png").channels, 3); // grey runs as RGB
    EXPECT_FALSE(fs::exists(At("outs/gone.png")));
}

TEST_F(Quenzit, ParamsListsEveryKey) {
    const Outcome r = Quiet("params");
    ASSERT_EQ(r.code, 0);
    for (size_t i = 0; i < kParameterFieldCount; ++i) {
        if (!kParameterFields[i].key[0]) continue;
        EXPECT_NE(r.out.find(std::string("\n") + kParameterFields[i].key + "  " + kParameterFields[i].name),
                  std::string::npos)
            << kParameterFields[i].key;
    }
    EXPECT_NE(r.out.find("Scratched.qzt"), std::string::npos);
}

} // namespace

namespace {

TEST_F(Quenzit, PackedTextureRendersAsAWash) {
    Picture grain = Card(64, 64, 1);
    for (size_t i = 0; i < grain.samples.size(); ++i) grain.samples[i] = uint8_t((i * 7919u) % 251u);
    // A data folder of its own: the new texture and the empty one that switches layers off.
    fs::create_directories(dir_ / "Quenzit");
    fs::copy_file(fs::path(QZ_DATA_DIR) / "No_Texture.qzt", dir_ / "Quenzit/No_Texture.qzt");
    Outcome r = Quiet("texture pack '" + Write("grain.png", grain) + "' '" + At("Quenzit/Grain.qzt") + "' --grey");
    ASSERT_EQ(r.code, 0) << r.err;
    r = Quiet("texture info '" + At("Quenzit/Grain.qzt") + "'");
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_NE(r.out.find("size: 64 x 64"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("planes: 1 (grey)"), std::string::npos) << r.out;

    const std::string in = Write("in.png", Card(80, 50, 3));
    // The first wash alone; everything else off.
    const std::string look = " --quiet --data '" + At("Quenzit") + "' '" + in +
                             "' -s SFN1=No_Texture.qzt -s SFN2=No_Texture.qzt -s BkFN=No_Texture.qzt -s W2Ex=false"
                             " -s WTp1=0 -s WIv1=true -s Cov1=-30 -s WIt1=130";
    r = Quiet("render" + look + " -s WFN1=Grain.qzt -o '" + At("wash.png") + "'");
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.err, ""); // the texture was found
    r = Quiet("render" + look + " -s WFN1=No_Texture.qzt -o '" + At("none.png") + "'");
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_NE(Read("wash.png").samples, Read("none.png").samples);
    EXPECT_EQ(Read("none.png").samples, Read("in.png").samples);
}

} // namespace

namespace {

TEST_F(Quenzit, PresetShowListsWhatTheFileSets) {
    std::ofstream(At("p.qztpst")) << "Quenzit Press Preset;\nVersion 2;\n1voC -40 \t;Wash1 Coverage\n"
                                  << "1NFW Rusted.qzt \t;Name of Wash1\nWkLI 1\n";
    const Outcome r = Quiet("preset show '" + At("p.qztpst") + "'");
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_NE(r.out.find("Cov1  WashCoverage1               -40\n"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("WFN1  WashFileName1               Rusted.qzt\n"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("ILkW  (link flag)                 1\n"), std::string::npos) << r.out;
    EXPECT_EQ(r.out.find("WIt1"), std::string::npos) << r.out; // left alone by the file
    EXPECT_EQ(Quiet("preset show '" + At("none.qztpst") + "'").code, 2);
}

// Shipped looks by name, looks kept as presets, and a data folder of any name.
TEST_F(Quenzit, LooksByNameAndSavedLooksReadBack) {
    const std::string card = Write("card.png", Card(48, 32, 3));
    const Outcome list = Quiet("preset list basic");
    ASSERT_EQ(list.code, 0) << list.err;
    EXPECT_NE(list.out.find("Basic        Coffee Table on Bark\n"), std::string::npos) << list.out;
    EXPECT_EQ(list.out.find("Wash "), std::string::npos) << "one kind only";

    const std::string shipped = (fs::path(QZ_DATA_DIR) / "Presets" / "Basic" / "Coffee_Table_on_Bark.qztpst").string();
    // Another name and place for the library: a link named as users name their folders.
    fs::create_directory_symlink(QZ_DATA_DIR, dir_ / "My Textures");
    const std::string elsewhere = " --data '" + (dir_ / "My Textures").string() + "'";
    ASSERT_EQ(Quiet("render '" + card + "' --quiet -p '" + shipped + "' -o '" + At("path.png") + "'").code, 0);
    const Outcome byName =
        Quiet("render '" + card + "' --quiet -p 'coffee table on bark'" + elsewhere + " -o '" + At("name.png") + "'");
    ASSERT_EQ(byName.code, 0) << byName.err;
    EXPECT_EQ(Slurp(At("path.png")), Slurp(At("name.png")));
    const Outcome unknown = Quiet("render '" + card + "' -p 'Coffee Tabel' -o '" + At("none.png") + "'");
    EXPECT_EQ(unknown.code, 2);
    EXPECT_NE(unknown.err.find("Basic/Coffee Table on Bark"), std::string::npos) << "near matches: " << unknown.err;

    // An Auto look, and a look of presets and settings, kept as presets: the same bytes again.
    const std::pair<std::string, std::string> looks[] = {{"auto", "--random=1700000002"},
                                                         {"mixed", "-p 'Coffee Table on Bark' -s Cov1=-35 -s WTp1=2"}};
    for (const auto& [name, args] : looks) {
        const std::string saved = At(name + ".qztpst");
        const Outcome first = Quiet("render '" + card + "' --quiet " + args + " --save-preset '" + saved + "' -o '" +
                                    At(name + "-1.png") + "'");
        ASSERT_EQ(first.code, 0) << first.err;
        ASSERT_EQ(Quiet("render '" + card + "' --quiet -p '" + saved + "' -o '" + At(name + "-2.png") + "'").code, 0);
        EXPECT_EQ(Slurp(At(name + "-1.png")), Slurp(At(name + "-2.png"))) << name;
    }
}

// A batch split over processes: four at once on one data folder give the bytes of serial
// runs, and nothing is written beside or into the library.
TEST_F(Quenzit, ProcessesAtOnceOnOneFolderMatchSerialRuns) {
    const std::string card = Write("card.png", Card(96, 64, 4));
    const fs::path data(QZ_DATA_DIR);
    const auto tree = [&] {
        std::vector<std::string> files;
        for (const auto& e : fs::recursive_directory_iterator(data.parent_path())) files.push_back(e.path().string());
        std::sort(files.begin(), files.end());
        return files;
    };
    const std::vector<std::string> before = tree();
    const std::string seeds[] = {"1700000002", "1700000005", "1700000031", "1700000777"};
    std::string together;
    for (const std::string& seed : seeds)
        together += "'" + std::string(QZ_QUENZIT) + "' render '" + card + "' --quiet --random=" + seed + " -o '" +
                    At("p" + seed + ".png") + "' 2>/dev/null & ";
    const std::string command = std::string("export QUENZIT_DATA='") + QZ_DATA_DIR + "'; " + together + "wait";
    ASSERT_EQ(std::system(command.c_str()), 0);
    for (const std::string& seed : seeds) {
        ASSERT_EQ(
            Quiet("render '" + card + "' --quiet --random=" + seed + " -o '" + At("s" + seed + ".png") + "'").code, 0);
        const std::string parallel = Slurp(At("p" + seed + ".png"));
        EXPECT_FALSE(parallel.empty()) << seed;
        EXPECT_EQ(parallel, Slurp(At("s" + seed + ".png"))) << seed;
    }
    EXPECT_EQ(tree(), before) << "no settings file, cache or registry appeared";
}

} // namespace
