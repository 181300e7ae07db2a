#include "ResourceChecks.h"

#include "resources/ResourceTables.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

std::string CodeString(uint32_t v) { return {char(v >> 24), char(v >> 16), char(v >> 8), char(v)}; }

// A bounds-checked little-endian reader: a short resource fails the test, never reads past it.
class Reader {
public:
    Reader(const uint8_t* data, size_t size) : data_(data), size_(size) {}
    uint32_t Int(int bytes) {
        uint32_t v = 0;
        for (int i = 0; i < bytes; ++i) v |= uint32_t(Byte()) << (8 * i);
        return v;
    }
    uint8_t Byte() {
        if (pos_ >= size_) {
            overrun_ = true;
            return 0;
        }
        return data_[pos_++];
    }
    std::string Bytes(size_t n) {
        std::string s;
        for (size_t i = 0; i < n; ++i) s.push_back(char(Byte()));
        return s;
    }
    std::string Pascal() { return Bytes(Byte()); }
    std::string CString() {
        std::string s;
        for (char c; (c = char(Byte())) != 0 && !overrun_;) s.push_back(c);
        return s;
    }
    std::string FourCC() { return CodeString(Int(4)); }
    size_t Pos() const { return pos_; }
    void Seek(size_t p) { pos_ = p; }
    bool Overrun() const { return overrun_; }
    bool AtEnd() const { return pos_ == size_; }

private:
    const uint8_t* data_;
    size_t size_;
    size_t pos_ = 0;
    bool overrun_ = false;
};

struct Property {
    std::string key;
    std::vector<uint8_t> data;
};

} // namespace

void CheckPiplResource(const uint8_t* data, size_t size) {
    Reader r(data, size);
    EXPECT_EQ(r.Int(2), 1u);
    EXPECT_EQ(r.Int(4), 0u) << "hosts accept PiPL version 0 only";
    const uint32_t count = r.Int(4);
    ASSERT_EQ(count, 12u);

    std::vector<Property> props;
    for (uint32_t i = 0; i < count; ++i) {
        EXPECT_EQ(r.FourCC(), "8BIM");
        Property p;
        p.key = r.FourCC();
        EXPECT_EQ(r.Int(4), 0u) << p.key;
        const uint32_t length = r.Int(4);
        const std::string bytes = r.Bytes(length);
        p.data.assign(bytes.begin(), bytes.end());
        ASSERT_FALSE(r.Overrun()) << "property " << p.key << " runs past the resource";
        while (r.Pos() % 4 != 2) EXPECT_EQ(r.Byte(), 0) << "padding of " << p.key;
        props.push_back(p);
    }
    EXPECT_TRUE(r.AtEnd());

    std::ostringstream order;
    for (const Property& p : props) order << p.key << ' ';
    ASSERT_EQ(order.str(), "kind name catg vers cmpt 8664 mode hstm enbl ms32 flly fici ");

    auto reader = [&](int i) { return Reader(props[i].data.data(), props[i].data.size()); };
    Reader kind = reader(0);
    EXPECT_EQ(kind.FourCC(), "8BFM");
    EXPECT_EQ(reader(1).Pascal(), "Quenzit...");
    EXPECT_EQ(reader(2).Pascal(), "Quenzit Works");
    EXPECT_EQ(reader(3).Int(4), 0x00040000u);
    Reader cmpt = reader(4);
    EXPECT_EQ(cmpt.Int(4), 0u);
    EXPECT_EQ(cmpt.CString(), "Quenzit");
    EXPECT_EQ(reader(5).CString(), "PluginMain");

    // RGB (3), CMYK (4) and Lab (9), most significant bit first.
    ASSERT_EQ(props[6].data.size(), 2u);
    EXPECT_EQ(props[6].data[0], 0x18);
    EXPECT_EQ(props[6].data[1], 0x40);

    Reader hstm = reader(7);
    EXPECT_EQ(hstm.Int(4), 0u);
    EXPECT_EQ(hstm.FourCC(), "QZTD");
    EXPECT_EQ(hstm.FourCC(), "QZTD");
    EXPECT_EQ(hstm.Int(2), 16000u);
    EXPECT_EQ(hstm.CString(), "d9543b0c-3c91-11d4-98bc-00b008042009");
    EXPECT_TRUE(hstm.AtEnd());

    EXPECT_EQ(reader(8).CString(), "in (PSHOP_ImageMode, RGBMode,CMYKMode ) ||PSHOP_ImageDepth == 8 ");
    Reader ms32 = reader(9);
    EXPECT_EQ(ms32.Int(4), 2000000u);
    EXPECT_EQ(ms32.Int(4), 2000000u);
    EXPECT_EQ(reader(10).Int(4) >> 31, 1u) << "filter layers supported";

    // Seven cases: straight data in and out, source copied, blank data and layer masks
    // accepted; only the cases with a selection or a floating one write outside it.
    ASSERT_EQ(props[11].data.size(), 28u);
    const bool outside[7] = {false, true, true, false, true, false, true};
    for (int c = 0; c < 7; ++c) {
        const uint8_t* f = &props[11].data[4 * c];
        EXPECT_EQ(f[0], 1) << "case " << c + 1;
        EXPECT_EQ(f[1], 1) << "case " << c + 1;
        EXPECT_EQ(f[2], outside[c] ? 0x0E : 0x06) << "case " << c + 1;
        EXPECT_EQ(f[3], 0) << "case " << c + 1;
    }
}

void CheckTerminologyResource(const uint8_t* data, size_t size) {
    Reader r(data, size);
    EXPECT_EQ(r.Int(2), 1u);
    EXPECT_EQ(r.Byte(), 1) << "major version";
    EXPECT_EQ(r.Byte(), 0) << "minor version";
    EXPECT_EQ(r.Int(2), 0u) << "language";
    EXPECT_EQ(r.Int(2), 0u) << "script";
    EXPECT_EQ(r.Int(2), 1u) << "suites";

    EXPECT_EQ(r.Pascal(), "Quenzit Works");
    EXPECT_EQ(r.Pascal(), "Adobe example plug-ins");
    EXPECT_EQ(r.FourCC(), "QZTD");
    EXPECT_EQ(r.Int(2), 1u) << "suite level";
    EXPECT_EQ(r.Int(2), 1u) << "suite version";
    EXPECT_EQ(r.Int(2), 1u) << "events";

    EXPECT_EQ(r.Pascal(), "Quenzit");
    EXPECT_EQ(r.Pascal(), "dissolve example filter plug-in");
    EXPECT_EQ(r.FourCC(), "QZTD");
    EXPECT_EQ(r.FourCC(), "QZTD");
    EXPECT_EQ(r.FourCC(), "null");
    EXPECT_EQ(r.Pascal(), "") << "hosts expect an empty reply description";
    EXPECT_EQ(r.Int(2), 0u);
    EXPECT_EQ(r.FourCC(), "#ImR");
    EXPECT_EQ(r.Pascal(), "");
    EXPECT_EQ(r.Int(2), 0xB000u);
    ASSERT_EQ(r.Int(2), 68u);

    const std::string expectedKeys =
        "NLBs WSOn NLWs WTp1 WSt1 WFN1 WSc1 WIt1 WFH1 WFV1 WIv1 Isd1 WAg1 Cov1 CSc1 EDs1 ESf1 "
        "Rnd1 W2Ex Ctgr HiCl MdCl SdCl Ctgr HiCl MdCl SdCl SfOn SFV1 SFH1 SAg1 SFN1 SfEn SInW "
        "SDh1 SSc1 SIn1 SPO1 STp1 SBRH SfCn SHue SfIn SMD1 SHC1 SMC1 SSC1 SAp1 SBt1 Sf2E BkOn "
        "BkFN NLSf NLBk BkEn BFpH BFpV BAng BInv BScl BHLt BMdt BSdw BHue BEnh BHCl BMCl BSCl ";
    std::string keys;
    std::vector<std::pair<std::string, std::string>> nameAndType;
    for (int i = 0; i < 68; ++i) {
        const std::string name = r.Pascal();
        const std::string key = r.FourCC();
        const std::string type = r.FourCC();
        EXPECT_EQ(r.Pascal(), " ") << key;
        EXPECT_EQ(r.Int(2), 0u) << key;
        ASSERT_FALSE(r.Overrun());
        keys += key + ' ';
        nameAndType.emplace_back(name, type);

        const auto& t = resources::kTerminologyParameters[i];
        EXPECT_EQ(name, t.name) << key;
        EXPECT_EQ(key, CodeString(t.key));
        EXPECT_EQ(type, CodeString(t.type)) << key;
    }
    EXPECT_EQ(keys, expectedKeys);

    // The odd names are part of the format and must survive as they stand.
    EXPECT_EQ(nameAndType[17].first, "Wash1 Ransomize");
    EXPECT_EQ(nameAndType[19], (std::pair<std::string, std::string>("Preset Category", "TEXT")));
    EXPECT_EQ(nameAndType[24].first, "Hightlight Color");
    EXPECT_EQ(nameAndType[44].first, "Surface Hightlight Color");
    EXPECT_EQ(nameAndType[47], (std::pair<std::string, std::string>(";Surface light alpha", "doub")));
    EXPECT_EQ(nameAndType[48], (std::pair<std::string, std::string>(";Surface light beta", "doub")));
    EXPECT_EQ(nameAndType[0], (std::pair<std::string, std::string>("Effect in new layer", "long")));
    EXPECT_EQ(nameAndType[5].second, "TEXT");

    EXPECT_EQ(r.Int(2), 0u) << "classes";
    EXPECT_EQ(r.Int(2), 0u) << "comparison operators";
    EXPECT_EQ(r.Int(2), 0u) << "enumerations";
    EXPECT_TRUE(r.AtEnd());
}
