#include "online/UpdateEndpoint.h"

#include <cstdlib>

namespace {

std::string EndpointOverride;

bool Alphanumeric(unsigned char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool WhiteSpace(unsigned char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

} // namespace

void SetUpdateEndpointOverride(const std::string& address) { EndpointOverride = address; }

std::string UpdateEndpoint() {
    if (!EndpointOverride.empty()) return EndpointOverride;
    const char* variable = std::getenv("QZ_TEST_UPDATE_ENDPOINT");
    if (variable && variable[0]) return variable;
    return kUpdateEndpoint;
}

std::string EncodeQueryValue(std::string_view value) {
    static const char hex[] = "0123456789ABCDEF";
    std::string out;
    for (char ch : value) {
        const auto c = static_cast<unsigned char>(ch);
        if (Alphanumeric(c)) out += ch;
        else if (WhiteSpace(c)) out += '+';
        else {
            out += '%';
            out += hex[c >> 4];
            out += hex[c & 15];
        }
    }
    return out;
}

std::string UpdateQueryAddress() {
    return UpdateEndpoint() + "?request=" + EncodeQueryValue("updateinfo") + "&os=" + EncodeQueryValue("Win");
}
