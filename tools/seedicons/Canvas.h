// A small drawing surface for the seed's pictures: shapes in a 48-unit square
// (whatever the pixel size), filled with 4-by-4 supersampling and given a
// one-pixel outline at their edge, so the same drawing reads at 16, 32 and 48
// pixels.
#pragma once

#include "iconfiles/IconImage.h"

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace glyphmoor::seed {

struct Colour {
    std::uint8_t r, g, b;
};

// The sixteen colours of the standard VGA palette, so that the 16-colour
// images of each icon match the full-colour ones.
inline constexpr Colour kBlack{0, 0, 0}, kMaroon{128, 0, 0}, kGreen{0, 128, 0}, kOlive{128, 128, 0},
    kNavy{0, 0, 128}, kPurple{128, 0, 128}, kTeal{0, 128, 128}, kSilver{192, 192, 192}, kGray{128, 128, 128},
    kRed{255, 0, 0}, kLime{0, 255, 0}, kYellow{255, 255, 0}, kBlue{0, 0, 255}, kFuchsia{255, 0, 255},
    kAqua{0, 255, 255}, kWhite{255, 255, 255};

// A shape: whether a point (in 48-unit coordinates) lies inside.
using Shape = std::function<bool(float, float)>;

Shape Rect(float x0, float y0, float x1, float y1);
Shape Ellipse(float cx, float cy, float rx, float ry);
Shape Polygon(std::vector<std::pair<float, float>> points);
Shape Line(float x0, float y0, float x1, float y1, float width);
Shape Ring(float cx, float cy, float r, float width);
Shape Union(Shape a, Shape b);
Shape Minus(Shape a, Shape b);

class Canvas {
public:
    explicit Canvas(int size);

    // Fills the shape; with an outline colour, pixels on its edge take it.
    void Fill(const Shape& shape, Colour fill);
    void Fill(const Shape& shape, Colour fill, Colour outline);
    // Draws later shapes shrunk by `scale` and moved by (dx, dy) units, for
    // the small pictures set on the corner of a larger one.
    void PushTransform(float scale, float dx, float dy);
    void PopTransform();

    [[nodiscard]] int Size() const { return m_size; }
    [[nodiscard]] const RgbaImage& Image() const { return m_image; }

private:
    [[nodiscard]] std::vector<float> Coverage(const Shape& shape) const;
    void Blend(std::size_t pixel, Colour c, float alpha);

    int m_size;
    RgbaImage m_image;
    struct Transform {
        float scale, dx, dy;
    };
    std::vector<Transform> m_transforms;
};

}  // namespace glyphmoor::seed
