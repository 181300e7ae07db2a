#include "Font.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace artgen {

namespace {

// x' = a x + c y + e, y' = b x + d y + f, as TrueType composes its glyphs.
struct Affine {
    float a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;
    Point Apply(float x, float y) const { return {a * x + c * y + e, b * x + d * y + f}; }
    Affine Then(const Affine& outer) const {
        return {outer.a * a + outer.c * b, outer.b * a + outer.d * b,           outer.a * c + outer.c * d,
                outer.b * c + outer.d * d, outer.a * e + outer.c * f + outer.e, outer.b * e + outer.d * f + outer.f};
    }
};

float F2Dot14(uint32_t v) { return float(int16_t(v)) / 16384.0f; }

struct OutlinePoint {
    Point p;
    bool on;
};

// One contour of on- and off-curve points as lines and curves; two off-curve points in a
// row have an on-curve point halfway between them.
void AddContour(Path& path, const std::vector<OutlinePoint>& raw) {
    if (raw.size() < 2) return;
    std::vector<OutlinePoint> pts;
    for (size_t i = 0; i < raw.size(); ++i) {
        const OutlinePoint& cur = raw[i];
        const OutlinePoint& next = raw[(i + 1) % raw.size()];
        pts.push_back(cur);
        if (!cur.on && !next.on) pts.push_back({{(cur.p.x + next.p.x) / 2, (cur.p.y + next.p.y) / 2}, true});
    }
    const auto first = std::find_if(pts.begin(), pts.end(), [](const OutlinePoint& q) { return q.on; });
    std::rotate(pts.begin(), first, pts.end());
    path.MoveTo(pts[0].p.x, pts[0].p.y);
    for (size_t i = 1; i <= pts.size(); ++i) {
        const OutlinePoint& q = pts[i % pts.size()];
        if (q.on) {
            path.LineTo(q.p.x, q.p.y);
        } else {
            const OutlinePoint& to = pts[(i + 1) % pts.size()];
            path.QuadTo(q.p.x, q.p.y, to.p.x, to.p.y);
            ++i;
        }
    }
    path.Close();
}

} // namespace

std::vector<uint32_t> DecodeUtf8(const std::string& text) {
    std::vector<uint32_t> out;
    for (size_t i = 0; i < text.size();) {
        const uint8_t c = uint8_t(text[i]);
        int extra = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : 0;
        uint32_t cp = extra == 3 ? c & 0x07 : extra == 2 ? c & 0x0F : extra == 1 ? c & 0x1F : c;
        ++i;
        for (; extra > 0 && i < text.size(); --extra, ++i) cp = cp << 6 | (uint8_t(text[i]) & 0x3F);
        out.push_back(cp);
    }
    return out;
}

uint32_t Font::U16(size_t at) const { return at + 2 <= data_.size() ? uint32_t(data_[at]) << 8 | data_[at + 1] : 0; }

uint32_t Font::U32(size_t at) const { return U16(at) << 16 | U16(at + 2); }

bool Font::Load(const std::string& path, std::string& error) {
    FILE* f = std::fopen(path.c_str(), "rb");
    if (!f) {
        error = path + ": cannot open";
        return false;
    }
    data_.clear();
    uint8_t buffer[65536];
    for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, f)) > 0;) data_.insert(data_.end(), buffer, buffer + n);
    std::fclose(f);

    size_t head = 0, maxp = 0, hhea = 0, cmap = 0, kern = 0;
    const uint32_t tables = U16(4);
    for (uint32_t i = 0; i < tables; ++i) {
        const size_t entry = 12 + 16 * size_t(i);
        if (entry + 16 > data_.size()) break;
        const std::string tag(reinterpret_cast<const char*>(&data_[entry]), 4);
        const size_t offset = U32(entry + 8);
        if (tag == "head") head = offset;
        if (tag == "maxp") maxp = offset;
        if (tag == "hhea") hhea = offset;
        if (tag == "hmtx") hmtx_ = offset;
        if (tag == "loca") loca_ = offset;
        if (tag == "glyf") glyf_ = offset;
        if (tag == "cmap") cmap = offset;
        if (tag == "kern") kern = offset;
    }
    if (!head || !maxp || !hhea || !hmtx_ || !loca_ || !glyf_ || !cmap) {
        error = path + ": not a TrueType font with outlines";
        return false;
    }
    unitsPerEm_ = int(U16(head + 18));
    longLoca_ = I16(head + 50) != 0;
    glyphCount_ = int(U16(maxp + 4));
    hMetrics_ = int(U16(hhea + 34));
    if (unitsPerEm_ <= 0 || hMetrics_ <= 0) {
        error = path + ": bad font header";
        return false;
    }

    // The Unicode map of segments (format 4), Windows or Unicode platform.
    cmap4_ = 0;
    for (uint32_t i = 0, n = U16(cmap + 2); i < n && !cmap4_; ++i) {
        const size_t rec = cmap + 4 + 8 * size_t(i);
        const uint32_t platform = U16(rec), encoding = U16(rec + 2);
        const size_t sub = cmap + U32(rec + 4);
        if ((platform == 3 && encoding == 1) || platform == 0)
            if (U16(sub) == 4) cmap4_ = sub;
    }
    if (!cmap4_) {
        error = path + ": no Unicode character map";
        return false;
    }

    kerning_.clear();
    if (kern && U16(kern) == 0) {
        size_t sub = kern + 4;
        for (uint32_t t = 0, n = U16(kern + 2); t < n; ++t) {
            const uint32_t length = U16(sub + 2), coverage = U16(sub + 4);
            if ((coverage >> 8) == 0 && (coverage & 0x7) == 1) {
                for (uint32_t p = 0, pairs = U16(sub + 6); p < pairs; ++p) {
                    const size_t at = sub + 14 + 6 * size_t(p);
                    kerning_[U16(at) << 16 | U16(at + 2)] += I16(at + 4);
                }
            }
            sub += length;
        }
    }

    const int h = GlyphIndex('H');
    const size_t hAt = glyf_ + (longLoca_ ? U32(loca_ + 4 * size_t(h)) : U16(loca_ + 2 * size_t(h)) * 2);
    if (h > 0) capHeight_ = I16(hAt + 8);
    return true;
}

int Font::GlyphIndex(uint32_t cp) const {
    if (cp > 0xFFFF) return 0;
    const uint32_t segments = U16(cmap4_ + 6) / 2;
    const size_t ends = cmap4_ + 14, starts = ends + 2 * size_t(segments) + 2;
    const size_t deltas = starts + 2 * size_t(segments), ranges = deltas + 2 * size_t(segments);
    for (uint32_t i = 0; i < segments; ++i) {
        if (U16(ends + 2 * i) < cp) continue;
        const uint32_t start = U16(starts + 2 * i);
        if (start > cp) return 0;
        const uint32_t delta = U16(deltas + 2 * i), range = U16(ranges + 2 * i);
        if (range == 0) return int((cp + delta) & 0xFFFF);
        const uint32_t g = U16(ranges + 2 * i + range + 2 * (cp - start));
        return g ? int((g + delta) & 0xFFFF) : 0;
    }
    return 0;
}

int Font::Advance(int glyph) const { return int(U16(hmtx_ + 4 * size_t(std::min(glyph, hMetrics_ - 1)))); }

int Font::Kerning(int left, int right) const {
    const auto it = kerning_.find(uint32_t(left) << 16 | uint32_t(right));
    return it == kerning_.end() ? 0 : it->second;
}

void Font::AddGlyph(Path& out, int glyph, float scale, float x, float baseline, int depth) const {
    Path glyphPath;
    // Font units to pixels: y turns downwards, so outlines turn the other way round and
    // are reversed to run as the canvas's own shapes do.
    const Affine toPixels{scale, 0, 0, -scale, x, baseline};
    struct Walker {
        const Font& font;
        Path& path;
        void Glyph(int g, const Affine& m, int level) const {
            if (g < 0 || g >= font.glyphCount_ || level > 8) return;
            const size_t off =
                font.longLoca_ ? font.U32(font.loca_ + 4 * size_t(g)) : font.U16(font.loca_ + 2 * size_t(g)) * 2;
            const size_t next = font.longLoca_ ? font.U32(font.loca_ + 4 * size_t(g) + 4)
                                               : font.U16(font.loca_ + 2 * size_t(g) + 2) * 2;
            if (next <= off) return;
            const size_t at = font.glyf_ + off;
            const int contours = font.I16(at);
            if (contours >= 0) {
                Simple(at, contours, m);
                return;
            }
            // A composite: parts of other glyphs, each moved and perhaps scaled.
            size_t p = at + 10;
            for (uint32_t flags = 0x20; flags & 0x20;) {
                flags = font.U16(p);
                const int part = int(font.U16(p + 2));
                p += 4;
                Affine local;
                if (flags & 1) {
                    local.e = float(font.I16(p)), local.f = float(font.I16(p + 2));
                    p += 4;
                } else {
                    local.e = float(int8_t(font.data_[std::min(p, font.data_.size() - 1)]));
                    local.f = float(int8_t(font.data_[std::min(p + 1, font.data_.size() - 1)]));
                    p += 2;
                }
                if (!(flags & 2)) local.e = local.f = 0; // anchored by points: not used by our fonts
                if (flags & 0x08) {
                    local.a = local.d = F2Dot14(font.U16(p));
                    p += 2;
                } else if (flags & 0x40) {
                    local.a = F2Dot14(font.U16(p)), local.d = F2Dot14(font.U16(p + 2));
                    p += 4;
                } else if (flags & 0x80) {
                    local.a = F2Dot14(font.U16(p)), local.b = F2Dot14(font.U16(p + 2));
                    local.c = F2Dot14(font.U16(p + 4)), local.d = F2Dot14(font.U16(p + 6));
                    p += 8;
                }
                Glyph(part, local.Then(m), level + 1);
            }
        }
        void Simple(size_t at, int contours, const Affine& m) const {
            std::vector<uint32_t> ends(static_cast<size_t>(contours));
            for (int i = 0; i < contours; ++i) ends[size_t(i)] = font.U16(at + 10 + 2 * size_t(i));
            if (contours == 0) return;
            const size_t count = size_t(ends.back()) + 1;
            size_t p = at + 10 + 2 * size_t(contours);
            p += 2 + font.U16(p);
            std::vector<uint8_t> flags;
            while (flags.size() < count && p < font.data_.size()) {
                const uint8_t f = font.data_[p++];
                flags.push_back(f);
                if (f & 8 && p < font.data_.size())
                    for (int r = font.data_[p++]; r > 0 && flags.size() < count; --r) flags.push_back(f);
            }
            if (flags.size() < count) return;
            std::vector<int> xs(count), ys(count);
            auto coords = [&](std::vector<int>& out, uint8_t shortBit, uint8_t sameBit) {
                int v = 0;
                for (size_t i = 0; i < count; ++i) {
                    if (flags[i] & shortBit) {
                        const int d = p < font.data_.size() ? font.data_[p] : 0;
                        ++p;
                        v += (flags[i] & sameBit) ? d : -d;
                    } else if (!(flags[i] & sameBit)) {
                        v += font.I16(p);
                        p += 2;
                    }
                    out[i] = v;
                }
            };
            coords(xs, 2, 16);
            coords(ys, 4, 32);
            size_t begin = 0;
            for (uint32_t end : ends) {
                std::vector<OutlinePoint> contour;
                for (size_t i = begin; i <= end && i < count; ++i)
                    contour.push_back({m.Apply(float(xs[i]), float(ys[i])), (flags[i] & 1) != 0});
                Path one;
                AddContour(one, contour);
                path.Append(one.Reversed());
                begin = size_t(end) + 1;
            }
        }
    };
    Walker{*this, glyphPath}.Glyph(glyph, toPixels, depth);
    out.Append(glyphPath);
}

Path Font::Text(const std::string& text, float size, float x, float baseline, float tracking) const {
    Path out;
    const float scale = size / float(unitsPerEm_);
    int previous = -1;
    for (uint32_t cp : DecodeUtf8(text)) {
        const int g = GlyphIndex(cp);
        if (previous >= 0) x += float(Kerning(previous, g)) * scale;
        AddGlyph(out, g, scale, x, baseline, 0);
        x += float(Advance(g)) * scale + tracking;
        previous = g;
    }
    return out;
}

float Font::Width(const std::string& text, float size, float tracking) const {
    const float scale = size / float(unitsPerEm_);
    float w = 0;
    int previous = -1;
    const std::vector<uint32_t> cps = DecodeUtf8(text);
    for (uint32_t cp : cps) {
        const int g = GlyphIndex(cp);
        if (previous >= 0) w += float(Kerning(previous, g)) * scale;
        w += float(Advance(g)) * scale + tracking;
        previous = g;
    }
    return cps.empty() ? 0.0f : w - tracking;
}

} // namespace artgen
