// Drawing for the art generator: outlines made of lines and quadratic curves, their exact
// area coverage per pixel, and an RGB canvas to paint them on. Coordinates are pixels, x to
// the right and y down; pixel (x, y) is the square from (x, y) to (x + 1, y + 1).
// Everything is plain float arithmetic in a fixed order, so a picture is the same bytes on
// every run.
#pragma once

#include "resources/ArtIds.h"

#include <cstdint>
#include <vector>

namespace artgen {

struct Point {
    float x, y;
};

// Closed outlines. Overlapping outlines of the same direction unite; an outline of the
// opposite direction inside another cuts a hole.
class Path {
public:
    void MoveTo(float x, float y);
    void LineTo(float x, float y);
    void QuadTo(float cx, float cy, float x, float y);
    void Close();
    void Append(const Path& other);

    // Shapes, all drawn clockwise on screen; Reverse() gives a hole.
    static Path Rect(float x, float y, float w, float h);
    static Path RoundRect(float x, float y, float w, float h, float r);
    // Corner radii one by one: top left, top right, bottom right, bottom left.
    static Path RoundRect4(float x, float y, float w, float h, float tl, float tr, float br, float bl);
    static Path Ellipse(float cx, float cy, float rx, float ry);
    static Path Polygon(const std::vector<Point>& points);
    // A stroke of width w along a polyline, with square ends.
    static Path Stroke(const std::vector<Point>& points, float w);
    // An arc band between radii r0 < r1 from angle a0 to a1 (radians, y down, clockwise).
    static Path Arc(float cx, float cy, float r0, float r1, float a0, float a1);

    Path Reversed() const;
    Path Transformed(float scale, float dx, float dy) const;

    // Flattened contours.
    const std::vector<std::vector<Point>>& Contours() const { return contours_; }

private:
    std::vector<std::vector<Point>> contours_;
};

// Coverage of a path, 0 to 1 per pixel, width * height values row by row.
std::vector<float> Coverage(const Path& path, int width, int height);

struct Colour {
    float r, g, b; // 0 to 255
};
Colour Of(art::Rgb c);
Colour Mix(Colour a, Colour b, float t); // a at t = 0, b at t = 1

// What fills a shape: one colour, or a vertical run from `top` at y0 to `bottom` at y1.
struct Paint {
    Colour top, bottom;
    float y0 = 0, y1 = 1;
    static Paint Solid(Colour c) { return {c, c, 0, 1}; }
    static Paint Vertical(Colour top, Colour bottom, float y0, float y1) { return {top, bottom, y0, y1}; }
    Colour At(float y) const;
};

class Canvas {
public:
    Canvas() = default;
    Canvas(int width, int height, Colour fill);
    int Width() const { return width_; }
    int Height() const { return height_; }

    Colour Get(int x, int y) const;
    void Set(int x, int y, Colour c);
    // Paints over the covered pixels; `opacity` scales the coverage.
    void Fill(const Path& path, const Paint& paint, float opacity = 1.0f);
    // The same with a coverage already worked out (any of its values may have been changed).
    void FillCoverage(const std::vector<float>& coverage, const Paint& paint, float opacity = 1.0f);
    // Copies `source` with its top left at (x, y), clipped.
    void Draw(const Canvas& source, int x, int y);
    Canvas Crop(int x, int y, int w, int h) const;

    // 8-bit red, green, blue, rows top to bottom; values round to nearest.
    std::vector<uint8_t> Rgb8() const;

private:
    int width_ = 0, height_ = 0;
    std::vector<Colour> pixels_;
};

} // namespace artgen
