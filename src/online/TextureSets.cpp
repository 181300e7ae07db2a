#include "online/TextureSets.h"

#include "online/UpdateFile.h"

#include <cstring>

TextureSet TextureSets[kMaxTextureSets];
int TextureSetCount = 0;

namespace {

bool Known(uint32_t id) {
    for (int i = 0; i < TextureSetCount; ++i)
        if (TextureSets[i].SetId == id) return true;
    return false;
}

} // namespace

void BuildTextureSets(const char* text) {
    TextureSetCount = 0;
    if (!text) return;
    static const char kId[] = "set_uid:";
    static const char kName[] = "set_name:";
    for (const char* at = std::strstr(text, kId); at && TextureSetCount < kMaxTextureSets;
         at = std::strstr(at + 1, kId)) {
        const char* value = at + sizeof kId - 1;
        uint32_t id = 0;
        if (!ReadEntryNumber(value, id) || Known(id)) continue;
        TextureSet& row = TextureSets[TextureSetCount++];
        row.SetId = id;
        row.Name[0] = '\0';
        if (const char* name = std::strstr(value, kName)) {
            name += sizeof kName - 1;
            size_t n = 0;
            while (name[n] && name[n] != ';' && n < sizeof row.Name - 1) ++n;
            std::memcpy(row.Name, name, n);
            row.Name[n] = '\0';
        }
    }
}
