#include "ResourceWriter.h"

#include "resources/ResourceTables.h"

#include <cstring>
#include <stdexcept>

using namespace resources;

namespace {

class Bytes {
public:
    void U8(uint8_t v) { data_.push_back(v); }
    void U16(uint16_t v) { Little(v, 2); }
    void U32(uint32_t v) { Little(v, 4); }
    void CString(const char* s) { Raw(s, std::strlen(s) + 1); }
    void Pascal(const char* s) {
        const size_t n = std::strlen(s);
        if (n > 255) throw std::length_error("Pascal string longer than 255 bytes");
        U8(uint8_t(n));
        Raw(s, n);
    }
    void Raw(const void* p, size_t n) {
        const auto* b = static_cast<const uint8_t*>(p);
        data_.insert(data_.end(), b, b + n);
    }
    void PadTo4() {
        while (data_.size() % 4) data_.push_back(0);
    }
    size_t Size() const { return data_.size(); }
    std::vector<uint8_t>& Data() { return data_; }

private:
    void Little(uint32_t v, int n) {
        for (int i = 0; i < n; ++i) data_.push_back(uint8_t(v >> (8 * i)));
    }
    std::vector<uint8_t> data_;
};

// The property header holds the unpadded length; the data is padded to 4 bytes.
void Property(Bytes& out, const char (&key)[5], const Bytes& data) {
    Bytes copy = data;
    out.U32(kVendor);
    out.U32(FourCC(key));
    out.U32(0);
    out.U32(uint32_t(copy.Size()));
    out.Raw(copy.Data().data(), copy.Size());
    out.PadTo4();
}

} // namespace

std::vector<uint8_t> BuildPipl() {
    Bytes props;
    int count = 0;
    auto add = [&](const char(&key)[5], const Bytes& data) {
        Property(props, key, data);
        ++count;
    };

    Bytes kind, name, catg, vers, cmpt, entry, mode, hstm, enbl, size, layers, cases;
    kind.U32(kFilterKind);
    name.Pascal(kMenuName);
    catg.Pascal(kCategory);
    vers.U32(uint32_t(kInterfaceVersion));
    cmpt.U32(uint32_t(kComponentVersion));
    cmpt.CString(kComponentName);
    entry.CString(kEntryPoint);

    // A flag set read from the most significant bit down: mode m is bit 7 - m % 8 of byte m / 8.
    uint8_t modeBits[2] = {0, 0};
    for (int m : kSupportedModes) modeBits[m / 8] |= uint8_t(0x80 >> (m % 8));
    mode.Raw(modeBits, 2);

    hstm.U32(0);
    hstm.U32(kEventCode);
    hstm.U32(kEventCode);
    hstm.U16(uint16_t(kTerminologyId));
    hstm.CString(kScope);

    enbl.CString(kEnableExpression);
    size.U32(uint32_t(kMaxHeight)); // height first, as a host's points are
    size.U32(uint32_t(kMaxWidth));
    layers.U32(0x80000000u); // the high bit says: filter layers supported

    for (const FilterCase& c : kFilterCases) {
        cases.U8(c.inputHandling);
        cases.U8(c.outputHandling);
        cases.U8(uint8_t(kCaseWorksWithBlankData | kCaseFiltersLayerMasks |
                         (c.writesOutsideSelection ? kCaseWritesOutsideSelection : 0)));
        cases.U8(0);
    }

    add("kind", kind);
    add("name", name);
    add("catg", catg);
    add("vers", vers);
    add("cmpt", cmpt);
    add("8664", entry);
    add("mode", mode);
    add("hstm", hstm);
    add("enbl", enbl);
    add("ms32", size);
    add("flly", layers);
    add("fici", cases);

    Bytes out;
    out.U16(1);
    out.U32(0);
    out.U32(uint32_t(count));
    out.Raw(props.Data().data(), props.Size());
    return std::move(out.Data());
}

std::vector<uint8_t> BuildTerminology() {
    Bytes out;
    out.U16(1);
    out.U8(1); // version 1.0
    out.U8(0);
    out.U16(0); // language
    out.U16(0); // script
    out.U16(1); // suites

    out.Pascal(kSuiteName);
    out.Pascal(kSuiteDescription);
    out.U32(kEventCode);
    out.U16(1); // level
    out.U16(1); // version
    out.U16(1); // events

    out.Pascal(kEventName);
    out.Pascal(kEventDescription);
    out.U32(kEventCode); // class
    out.U32(kEventCode); // event
    out.U32(kReplyType);
    out.Pascal("");
    out.U16(0);
    out.U32(kDirectParameterType);
    out.Pascal("");
    out.U16(kDirectParameterFlags);
    out.U16(uint16_t(kTerminologyParameterCount));
    for (const TerminologyParameter& p : kTerminologyParameters) {
        out.Pascal(p.name);
        out.U32(p.key);
        out.U32(p.type);
        out.Pascal(kParameterDescription);
        out.U16(0);
    }

    out.U16(0); // classes
    out.U16(0); // comparison operators
    out.U16(0); // enumerations
    return std::move(out.Data());
}
