// The manual as it ships in Quenzit/Help: six pages of well-formed HTML and one stylesheet,
// no scripts, and every link leading to a page or an anchor inside the folder.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const std::set<std::string> kPages = {"index.html",   "basic.html",      "wash.html",
                                      "surface.html", "background.html", "texture_picker.html"};
const std::set<std::string> kVoid = {"meta", "link", "br", "hr", "img", "wbr", "col", "source"};
const std::set<std::string> kForbidden = {"script", "iframe", "object", "embed", "form", "base", "applet"};

std::string Read(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::string Lower(std::string s) {
    for (char& c : s) c = char(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

struct Page {
    std::vector<std::string> errors;
    std::vector<std::string> links; // href and src values
    std::set<std::string> ids;
    std::set<std::string> tags;
    std::string title;
};

// A strict reader of the HTML we write: quoted attributes, balanced elements, entities only
// in their full form.
Page Parse(const std::string& html) {
    Page page;
    std::vector<std::string> open;
    size_t i = 0;
    auto error = [&](const std::string& what) { page.errors.push_back(what + " at byte " + std::to_string(i)); };
    while (i < html.size()) {
        const char c = html[i];
        if (c == '&') {
            const size_t end = html.find(';', i);
            const std::string entity = end == std::string::npos ? "" : html.substr(i + 1, end - i - 1);
            const bool named = !entity.empty() && entity.size() < 10 &&
                               std::all_of(entity.begin(), entity.end(),
                                           [](char ch) { return std::isalnum(static_cast<unsigned char>(ch)); });
            const bool numeric = entity.size() > 1 && entity[0] == '#';
            if (!named && !numeric) error("bare &");
            i = end == std::string::npos ? html.size() : end + 1;
            continue;
        }
        if (c != '<') {
            if (c == '>') error("bare >");
            if (!open.empty() && open.back() == "title") page.title += c;
            ++i;
            continue;
        }
        if (html.compare(i, 4, "<!--") == 0) {
            const size_t end = html.find("-->", i);
            if (end == std::string::npos) error("comment not closed");
            i = end == std::string::npos ? html.size() : end + 3;
            continue;
        }
        if (html.compare(i, 2, "<!") == 0) {
            if (Lower(html.substr(i, 15)) != "<!doctype html>") error("unknown declaration");
            i = html.find('>', i) + 1;
            continue;
        }
        const bool closing = html[i + 1] == '/';
        size_t p = i + (closing ? 2 : 1);
        std::string name;
        while (p < html.size() && std::isalnum(static_cast<unsigned char>(html[p])))
            name += char(std::tolower(html[p++]));
        if (name.empty()) {
            error("bad tag");
            ++i;
            continue;
        }
        // Attributes: name="value" or a bare name.
        while (p < html.size() && html[p] != '>') {
            if (std::isspace(static_cast<unsigned char>(html[p]))) {
                ++p;
                continue;
            }
            std::string attr;
            while (p < html.size() && (std::isalnum(static_cast<unsigned char>(html[p])) || html[p] == '-'))
                attr += char(std::tolower(html[p++]));
            if (attr.empty()) {
                error("bad attribute in <" + name + ">");
                break;
            }
            std::string value;
            if (html[p] == '=') {
                if (html[p + 1] != '"') error("unquoted attribute " + attr);
                const size_t end = html.find('"', p + 2);
                if (end == std::string::npos) break;
                value = html.substr(p + 2, end - p - 2);
                p = end + 1;
            }
            if (attr.rfind("on", 0) == 0) error("script in attribute " + attr);
            if (attr == "href" || attr == "src") page.links.push_back(value);
            if (attr == "id" && !page.ids.insert(value).second) error("id " + value + " twice");
        }
        i = p + 1;
        page.tags.insert(name);
        if (kForbidden.count(name)) error("<" + name + "> is not allowed");
        if (closing) {
            if (open.empty() || open.back() != name) {
                error("</" + name + "> closes " + (open.empty() ? std::string("nothing") : "<" + open.back() + ">"));
            } else {
                open.pop_back();
            }
        } else if (!kVoid.count(name)) {
            open.push_back(name);
        }
    }
    if (!open.empty()) page.errors.push_back("<" + open.back() + "> is never closed");
    return page;
}

} // namespace

TEST(HelpPages, SixPagesParseAndLinkOnlyAmongThemselves) {
    const fs::path folder = QZ_HELP_DIR;
    std::set<std::string> files;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().filename() != "CMakeLists.txt") files.insert(entry.path().filename().string());
    std::set<std::string> expected = kPages;
    expected.insert("quenzit.css");
    EXPECT_EQ(files, expected) << "the folder holds the six pages and the stylesheet";

    std::map<std::string, Page> pages;
    for (const std::string& name : kPages) pages[name] = Parse(Read(folder / name));

    std::set<std::string> reached;
    for (const auto& [name, page] : pages) {
        for (const std::string& e : page.errors) ADD_FAILURE() << name << ": " << e;
        EXPECT_FALSE(page.title.empty()) << name;
        for (const char* tag : {"html", "head", "body", "title", "main", "nav"})
            EXPECT_TRUE(page.tags.count(tag)) << name << " lacks <" << tag << ">";
        bool styled = false, home = false;
        for (const std::string& link : page.links) {
            const size_t hash = link.find('#');
            const std::string file = hash == std::string::npos ? link : link.substr(0, hash);
            const std::string anchor = hash == std::string::npos ? "" : link.substr(hash + 1);
            // Only plain names of files beside the page: no scheme, no folder, no way up.
            EXPECT_EQ(file.find_first_of(":/\\"), std::string::npos) << name << " links to " << link;
            EXPECT_TRUE(file.empty() || expected.count(file)) << name << " links to " << link;
            const std::string target = file.empty() ? name : file;
            if (!anchor.empty() && pages.count(target)) {
                EXPECT_TRUE(pages.at(target).ids.count(anchor)) << name << " links to a missing anchor " << link;
            }
            styled |= file == "quenzit.css";
            home |= file == "index.html";
            if (kPages.count(file)) reached.insert(file);
        }
        EXPECT_TRUE(styled) << name << " does not use the stylesheet";
        EXPECT_TRUE(home) << name << " has no way back to the index";
    }
    EXPECT_EQ(reached, kPages) << "every page is linked from another";

    // The stylesheet reaches for nothing outside either.
    const std::string css = Lower(Read(folder / "quenzit.css"));
    EXPECT_EQ(css.find("url("), std::string::npos);
    EXPECT_EQ(css.find("@import"), std::string::npos);
}
