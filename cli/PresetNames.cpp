#include "PresetNames.h"

#include "platform/FolderList.h"
#include "presets/PresetFormat.h"

#include <algorithm>
#include <cctype>

namespace fs = std::filesystem;

namespace {

// Upper case without blanks, underscores or the preset extension: how names are compared.
std::string Key(std::string s) {
    const std::string ext = kPresetExtension;
    if (s.size() > ext.size()) {
        std::string tail = s.substr(s.size() - ext.size());
        std::transform(tail.begin(), tail.end(), tail.begin(), [](unsigned char c) { return std::tolower(c); });
        if (tail == ext) s.resize(s.size() - ext.size());
    }
    std::string k;
    for (unsigned char c : s)
        if (c != ' ' && c != '_') k += char(std::toupper(c));
    return k;
}

std::vector<std::string> Words(const std::string& s) {
    std::vector<std::string> words;
    std::string w;
    for (unsigned char c : s + " ") {
        if (std::isalnum(c)) {
            w += char(std::toupper(c));
        } else if (!w.empty()) {
            words.push_back(w);
            w.clear();
        }
    }
    return words;
}

// How many of the query's words the name holds, whole or as a start.
size_t Nearness(const std::string& query, const ShippedPreset& p) {
    const std::vector<std::string> in = Words(p.name);
    size_t n = 0;
    for (const std::string& q : Words(query))
        if (std::any_of(in.begin(), in.end(), [&](const std::string& w) { return w.rfind(q, 0) == 0; })) ++n;
    return n;
}

bool IsPresetFile(const std::string& name) {
    const std::string ext = kPresetExtension;
    if (name.size() <= ext.size()) return false;
    std::string tail = name.substr(name.size() - ext.size());
    std::transform(tail.begin(), tail.end(), tail.begin(), [](unsigned char c) { return std::tolower(c); });
    return tail == ext;
}

void Walk(const fs::path& folder, const std::string& kind, std::vector<ShippedPreset>& out) {
    std::vector<FolderEntry> entries;
    if (!ListFolder(folder.string(), "*", entries)) return;
    for (const FolderEntry& e : entries) {
        if (e.name == "." || e.name == "..") continue;
        if (e.isDirectory) {
            Walk(folder / e.name, kind, out);
        } else if (IsPresetFile(e.name)) {
            std::string name = e.name.substr(0, e.name.size() - std::string(kPresetExtension).size());
            std::replace(name.begin(), name.end(), '_', ' ');
            out.push_back({kind, name, folder / e.name});
        }
    }
}

} // namespace

std::vector<ShippedPreset> ShippedPresets(const fs::path& data) {
    std::vector<ShippedPreset> all;
    std::vector<FolderEntry> kinds;
    const fs::path presets = data / "Presets";
    if (!ListFolder(presets.string(), "*", kinds)) return all;
    for (const FolderEntry& k : kinds)
        if (k.isDirectory && k.name != "." && k.name != "..") Walk(presets / k.name, k.name, all);
    return all;
}

bool FindPresetFile(const std::string& arg, const fs::path& data, std::string& path, std::string& error) {
    std::error_code ec;
    if (fs::is_regular_file(arg, ec)) {
        path = arg;
        return true;
    }
    const std::vector<ShippedPreset> all = ShippedPresets(data);
    std::string kind, name = arg;
    if (const size_t slash = arg.find('/'); slash != std::string::npos) {
        kind = Key(arg.substr(0, slash));
        name = arg.substr(slash + 1);
    }
    std::vector<const ShippedPreset*> found;
    for (const ShippedPreset& p : all)
        if (Key(p.name) == Key(name) && (kind.empty() || Key(p.kind) == kind)) found.push_back(&p);
    if (found.size() == 1) {
        path = found[0]->path.string();
        return true;
    }
    if (found.size() > 1) {
        error = arg + ": a look of that name is in several kinds; say which:";
        for (const ShippedPreset* p : found) error += "\n  " + p->kind + "/" + p->name;
        return false;
    }
    error = arg + ": no such file, and no look of that name in " + (data / "Presets").string();
    std::vector<std::pair<size_t, const ShippedPreset*>> near;
    for (const ShippedPreset& p : all)
        if (const size_t n = Nearness(name, p)) near.push_back({n, &p});
    std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    if (!near.empty()) error += "; the nearest:";
    for (size_t i = 0; i < near.size() && i < 8; ++i)
        error += "\n  " + near[i].second->kind + "/" + near[i].second->name;
    return false;
}

bool ListPresets(const fs::path& data, const std::string& kind, std::FILE* out) {
    bool any = kind.empty();
    for (const ShippedPreset& p : ShippedPresets(data)) {
        if (!kind.empty() && Key(p.kind) != Key(kind)) continue;
        any = true;
        std::fprintf(out, "%-12s %s\n", p.kind.c_str(), p.name.c_str());
    }
    return any;
}
