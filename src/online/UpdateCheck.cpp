#include "online/UpdateCheck.h"

#include "online/HttpGet.h"
#include "online/TextureSets.h"
#include "online/UpdateEndpoint.h"
#include "online/UpdateFile.h"
#include "online/UpdateState.h"
#include "platform/Clock.h"
#include "platform/UserStore.h"
#include "state/PathTable.h"

#include <fstream>
#include <iterator>

namespace {

// No update file is this large; a bigger one is read only so far.
constexpr std::streamsize kMaxFileSize = std::streamsize(kHttpAnswerSize);

bool ReadWholeFile(const std::string& path, std::string& text) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    text.resize(size_t(kMaxFileSize));
    in.read(text.data(), kMaxFileSize);
    text.resize(size_t(in.gcount()));
    return true;
}

void WriteWholeFile(const std::string& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(text.data(), std::streamsize(text.size()));
}

} // namespace

void RefreshUpdateInfo() { RefreshUpdateInfoAt(PathTable.UpdateFile, CurrentTimeSeconds()); }

void RefreshUpdateInfoAt(const std::string& updateFile, int64_t now) {
    NewVersionKnown = ReadUserValue(kNewVersionValue) != 0;
    std::string old;
    const bool readable = ReadWholeFile(updateFile, old);
    std::string text;
    bool answered = true;
    if (readable && StampIsFresh(old.c_str(), now)) {
        text = old;
    } else {
        const uint32_t stamp = uint32_t(now);
        const std::unique_ptr<char[]> answer = HttpGet(UpdateQueryAddress().c_str());
        std::string body;
        if (answer && ReadAnswerBody(answer.get(), body)) {
            text = StampedText(stamp, body);
        } else {
            answered = false;
            text = RestampAfterFailure(readable ? old : std::string(), stamp);
        }
        WriteWholeFile(updateFile, text);
    }
    LatestVersion = ReadLatestVersion(text.c_str());
    BuildTextureSets(text.c_str());
    // A failed ask learns nothing: the flag stays as the user value had it.
    if (answered) NewVersionKnown = LatestVersion > kProgramVersion;
    WriteUserValue(kNewVersionValue, NewVersionKnown ? 1u : 0u);
}
