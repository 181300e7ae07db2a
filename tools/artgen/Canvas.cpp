#include "Canvas.h"

#include <algorithm>
#include <cmath>

namespace artgen {

namespace {

constexpr float kPi = 3.14159265358979f;

// Signed area of each outline edge, gathered per pixel; the running sum along a row is
// the coverage. Edges left of the picture count at its left side, so shapes may reach out.
class Accumulator {
public:
    Accumulator(int width, int height) : w_(width), h_(height), cells_(size_t(width + 2) * height, 0.0f) {}

    void Edge(Point a, Point b) {
        // Pieces beyond either side are moved onto it, split where they cross.
        const float lo = 0.0f, hi = float(w_);
        for (float bound : {lo, hi}) {
            if ((a.x - bound) * (b.x - bound) < 0.0f) {
                const float t = (bound - a.x) / (b.x - a.x);
                const Point m{bound, a.y + (b.y - a.y) * t};
                Edge(a, m);
                Edge(m, b);
                return;
            }
        }
        a.x = std::clamp(a.x, lo, hi);
        b.x = std::clamp(b.x, lo, hi);
        Line(a, b);
    }

    std::vector<float> Result() const {
        std::vector<float> out(size_t(w_) * h_);
        for (int y = 0; y < h_; ++y) {
            float sum = 0.0f;
            const float* row = &cells_[size_t(y) * (w_ + 2)];
            for (int x = 0; x < w_; ++x) {
                sum += row[x];
                out[size_t(y) * w_ + x] = std::min(1.0f, std::fabs(sum));
            }
        }
        return out;
    }

private:
    void Line(Point p0, Point p1) {
        if (p0.y == p1.y) return;
        float dir = 1.0f;
        if (p0.y > p1.y) {
            std::swap(p0, p1);
            dir = -1.0f;
        }
        const float dxdy = (p1.x - p0.x) / (p1.y - p0.y);
        float top = p0.y, x = p0.x;
        if (top < 0.0f) {
            x -= top * dxdy;
            top = 0.0f;
        }
        const float bottom = std::min(p1.y, float(h_));
        if (top >= bottom) return;
        for (int y = int(top); float(y) < bottom; ++y) {
            float* row = &cells_[size_t(y) * (w_ + 2)];
            const float dy = std::min(float(y + 1), bottom) - std::max(float(y), top);
            const float next = x + dxdy * dy;
            const float d = dy * dir;
            const float x0 = std::min(x, next), x1 = std::max(x, next);
            const float x0floor = std::floor(x0), x1ceil = std::ceil(x1);
            const int i0 = int(x0floor), i1 = int(x1ceil);
            if (i1 <= i0 + 1) {
                // Within one pixel: split by where the edge stands on average.
                const float mid = 0.5f * (x + next) - x0floor;
                row[i0] += d - d * mid;
                row[i0 + 1] += d * mid;
            } else {
                // Across pixels: the triangle in the first, even steps between, the rest last.
                const float s = 1.0f / (x1 - x0);
                const float f0 = x0 - x0floor;
                const float a0 = 0.5f * s * (1.0f - f0) * (1.0f - f0);
                const float f1 = x1 - x1ceil + 1.0f;
                const float am = 0.5f * s * f1 * f1;
                row[i0] += d * a0;
                if (i1 == i0 + 2) {
                    row[i0 + 1] += d * (1.0f - a0 - am);
                } else {
                    const float a1 = s * (1.5f - f0);
                    row[i0 + 1] += d * (a1 - a0);
                    for (int i = i0 + 2; i < i1 - 1; ++i) row[i] += d * s;
                    const float a2 = a1 + float(i1 - i0 - 3) * s;
                    row[i1 - 1] += d * (1.0f - a2 - am);
                }
                row[i1] += d * am;
            }
            x = next;
        }
    }

    int w_, h_;
    std::vector<float> cells_;
};

} // namespace

void Path::MoveTo(float x, float y) { contours_.push_back({{x, y}}); }

void Path::LineTo(float x, float y) {
    if (contours_.empty()) contours_.push_back({});
    contours_.back().push_back({x, y});
}

void Path::QuadTo(float cx, float cy, float x, float y) {
    if (contours_.empty() || contours_.back().empty()) {
        MoveTo(x, y);
        return;
    }
    const Point p = contours_.back().back();
    const float length = std::hypot(cx - p.x, cy - p.y) + std::hypot(x - cx, y - cy);
    const int steps = std::clamp(int(std::ceil(length / 1.5f)), 2, 64);
    for (int i = 1; i <= steps; ++i) {
        const float t = float(i) / float(steps), u = 1.0f - t;
        LineTo(u * u * p.x + 2 * u * t * cx + t * t * x, u * u * p.y + 2 * u * t * cy + t * t * y);
    }
}

void Path::Close() {
    if (!contours_.empty() && !contours_.back().empty()) contours_.push_back({});
}

void Path::Append(const Path& other) {
    for (const auto& c : other.contours_)
        if (c.size() > 2) contours_.push_back(c);
}

Path Path::Rect(float x, float y, float w, float h) {
    return Polygon({{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}});
}

Path Path::RoundRect(float x, float y, float w, float h, float r) { return RoundRect4(x, y, w, h, r, r, r, r); }

Path Path::RoundRect4(float x, float y, float w, float h, float tl, float tr, float br, float bl) {
    std::vector<Point> pts;
    auto corner = [&](float cx, float cy, float r, float from) {
        const int steps = std::max(4, int(std::ceil(r * 1.2f)));
        for (int i = 0; i <= steps; ++i) {
            const float a = from + (kPi / 2) * float(i) / float(steps);
            pts.push_back({cx + std::cos(a) * r, cy + std::sin(a) * r});
        }
    };
    // Each corner's centre; a radius of 0 leaves the sharp corner itself.
    if (tl > 0) corner(x + tl, y + tl, tl, kPi);
    else pts.push_back({x, y});
    if (tr > 0) corner(x + w - tr, y + tr, tr, 1.5f * kPi);
    else pts.push_back({x + w, y});
    if (br > 0) corner(x + w - br, y + h - br, br, 0.0f);
    else pts.push_back({x + w, y + h});
    if (bl > 0) corner(x + bl, y + h - bl, bl, 0.5f * kPi);
    else pts.push_back({x, y + h});
    return Polygon(pts);
}

Path Path::Ellipse(float cx, float cy, float rx, float ry) {
    const int steps = std::max(16, int(std::ceil((rx + ry) * 2.0f)));
    std::vector<Point> pts;
    for (int i = 0; i < steps; ++i) {
        const float a = 2 * kPi * float(i) / float(steps);
        pts.push_back({cx + std::cos(a) * rx, cy + std::sin(a) * ry});
    }
    return Polygon(pts);
}

Path Path::Polygon(const std::vector<Point>& points) {
    Path p;
    if (points.size() < 3) return p;
    p.contours_.push_back(points);
    // Turned so that every shape runs the same way.
    float area = 0.0f;
    for (size_t i = 0; i < points.size(); ++i) {
        const Point a = points[i], b = points[(i + 1) % points.size()];
        area += a.x * b.y - b.x * a.y;
    }
    if (area < 0.0f) std::reverse(p.contours_.back().begin(), p.contours_.back().end());
    return p;
}

Path Path::Stroke(const std::vector<Point>& points, float w) {
    Path p;
    const float h = w / 2;
    for (size_t i = 0; i + 1 < points.size(); ++i) {
        const Point a = points[i], b = points[i + 1];
        const float len = std::hypot(b.x - a.x, b.y - a.y);
        if (len <= 0.0f) continue;
        const float ux = (b.x - a.x) / len * h, uy = (b.y - a.y) / len * h;
        // Square ends: each piece reaches half the width past its points.
        p.Append(Polygon({{a.x - ux - uy, a.y - uy + ux},
                          {b.x + ux - uy, b.y + uy + ux},
                          {b.x + ux + uy, b.y + uy - ux},
                          {a.x - ux + uy, a.y - uy - ux}}));
    }
    return p;
}

Path Path::Arc(float cx, float cy, float r0, float r1, float a0, float a1) {
    const int steps = std::max(6, int(std::ceil(std::fabs(a1 - a0) * r1)));
    std::vector<Point> pts;
    for (int i = 0; i <= steps; ++i) {
        const float a = a0 + (a1 - a0) * float(i) / float(steps);
        pts.push_back({cx + std::cos(a) * r1, cy + std::sin(a) * r1});
    }
    for (int i = steps; i >= 0; --i) {
        const float a = a0 + (a1 - a0) * float(i) / float(steps);
        pts.push_back({cx + std::cos(a) * r0, cy + std::sin(a) * r0});
    }
    return Polygon(pts);
}

Path Path::Reversed() const {
    Path p = *this;
    for (auto& c : p.contours_) std::reverse(c.begin(), c.end());
    return p;
}

Path Path::Transformed(float scale, float dx, float dy) const {
    Path p = *this;
    for (auto& c : p.contours_)
        for (Point& q : c) q = {q.x * scale + dx, q.y * scale + dy};
    return p;
}

std::vector<float> Coverage(const Path& path, int width, int height) {
    Accumulator acc(width, height);
    for (const auto& c : path.Contours()) {
        if (c.size() < 2) continue;
        for (size_t i = 0; i < c.size(); ++i) acc.Edge(c[i], c[(i + 1) % c.size()]);
    }
    return acc.Result();
}

Colour Of(art::Rgb c) { return {float(c.r), float(c.g), float(c.b)}; }

Colour Mix(Colour a, Colour b, float t) {
    return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}

Colour Paint::At(float y) const {
    if (y1 <= y0) return top;
    return Mix(top, bottom, std::clamp((y - y0) / (y1 - y0), 0.0f, 1.0f));
}

Canvas::Canvas(int width, int height, Colour fill)
    : width_(width), height_(height), pixels_(size_t(width) * height, fill) {}

Colour Canvas::Get(int x, int y) const { return pixels_[size_t(y) * width_ + x]; }

void Canvas::Set(int x, int y, Colour c) {
    if (x >= 0 && y >= 0 && x < width_ && y < height_) pixels_[size_t(y) * width_ + x] = c;
}

void Canvas::Fill(const Path& path, const Paint& paint, float opacity) {
    FillCoverage(Coverage(path, width_, height_), paint, opacity);
}

void Canvas::FillCoverage(const std::vector<float>& coverage, const Paint& paint, float opacity) {
    for (int y = 0; y < height_; ++y) {
        const Colour c = paint.At(float(y) + 0.5f);
        for (int x = 0; x < width_; ++x) {
            const float a = coverage[size_t(y) * width_ + x] * opacity;
            if (a <= 0.0f) continue;
            Colour& p = pixels_[size_t(y) * width_ + x];
            p = Mix(p, c, std::min(a, 1.0f));
        }
    }
}

void Canvas::Draw(const Canvas& source, int x, int y) {
    for (int sy = 0; sy < source.height_; ++sy)
        for (int sx = 0; sx < source.width_; ++sx) Set(x + sx, y + sy, source.Get(sx, sy));
}

Canvas Canvas::Crop(int x, int y, int w, int h) const {
    Canvas out(w, h, {0, 0, 0});
    for (int sy = 0; sy < h; ++sy)
        for (int sx = 0; sx < w; ++sx)
            if (x + sx >= 0 && y + sy >= 0 && x + sx < width_ && y + sy < height_) out.Set(sx, sy, Get(x + sx, y + sy));
    return out;
}

std::vector<uint8_t> Canvas::Rgb8() const {
    std::vector<uint8_t> out;
    out.reserve(pixels_.size() * 3);
    auto byte = [](float v) { return uint8_t(std::clamp(v, 0.0f, 255.0f) + 0.5f); };
    for (const Colour& c : pixels_) {
        out.push_back(byte(c.r));
        out.push_back(byte(c.g));
        out.push_back(byte(c.b));
    }
    return out;
}

} // namespace artgen
