// The standard pointers, drawn in the pixels of a 32-pixel square.
#include "Pictures.h"

#include <cmath>
#include <numbers>

namespace glyphmoor::seed {

namespace {

using Pt = std::pair<float, float>;

// Shapes below are in pixels of the 32-pixel pointer.
void InPixels(Canvas& c, const Shape& shape, Colour fill, Colour outline) {
    c.PushTransform(1.5f, 0, 0);
    c.Fill(shape, fill, outline);
    c.PopTransform();
}

void InPixels(Canvas& c, const Shape& shape, Colour fill) {
    c.PushTransform(1.5f, 0, 0);
    c.Fill(shape, fill);
    c.PopTransform();
}

Shape ArrowShape(float x, float y, float s) {
    std::vector<Pt> points = {{0, 0}, {0, 17}, {4, 13}, {7, 20}, {10, 19}, {7, 12}, {12, 12}};
    for (auto& [px, py] : points) {
        px = x + px * s;
        py = y + py * s;
    }
    return Polygon(points);
}

Shape Rotated(std::vector<Pt> points, float degrees) {
    const double a = degrees * std::numbers::pi / 180;
    for (auto& [x, y] : points) {
        const double dx = x - 16, dy = y - 16;
        x = static_cast<float>(16 + dx * std::cos(a) - dy * std::sin(a));
        y = static_cast<float>(16 + dx * std::sin(a) + dy * std::cos(a));
    }
    return Polygon(points);
}

// A double-headed arrow through the centre, vertical before rotation.
Shape DoubleArrow(float degrees) {
    return Rotated(
        {{16, 3}, {22, 9}, {18, 9}, {18, 23}, {22, 23}, {16, 29}, {10, 23}, {14, 23}, {14, 9}, {10, 9}},
        degrees);
}

Shape Hourglass(float x, float y, float s) {
    std::vector<Pt> points = {{0, 0},   {14, 0}, {14, 3}, {9, 10}, {14, 17},
                              {14, 20}, {0, 20}, {0, 17}, {5, 10}, {0, 3}};
    for (auto& [px, py] : points) {
        px = x + px * s;
        py = y + py * s;
    }
    return Polygon(points);
}

void Arrow(Canvas& c) {
    InPixels(c, ArrowShape(0, 0, 1), kWhite, kBlack);
}

void HelpSelect(Canvas& c) {
    Arrow(c);
    InPixels(c, Union(Rect(16, 2, 26, 16), Rect(16, 18, 26, 23)), kWhite, kBlack);
    InPixels(c,
             Union(Union(Rect(18, 4, 24, 6), Rect(22, 4, 24, 10)),
                   Union(Rect(20, 9, 23, 11), Rect(20, 11, 22, 15))),
             kBlack);
    InPixels(c, Rect(20, 19, 22, 22), kBlack);
}

void Working(Canvas& c) {
    Arrow(c);
    InPixels(c, Hourglass(14, 10, 0.8f), kWhite, kBlack);
}

void Busy(Canvas& c) {
    InPixels(c, Hourglass(9, 5, 1.0f), kWhite, kBlack);
    InPixels(c, Polygon({{14, 20}, {19, 20}, {22, 24}, {11, 24}}), kBlack);
}

void Crosshair(Canvas& c) {
    InPixels(c, Union(Rect(15, 3, 17, 29), Rect(3, 15, 29, 17)), kBlack);
}

void IBeam(Canvas& c) {
    InPixels(c, Union(Rect(15, 6, 17, 26), Union(Rect(12, 5, 20, 7), Rect(12, 25, 20, 27))), kBlack);
}

void Pen(Canvas& c) {
    InPixels(c, Polygon({{2, 29}, {5, 22}, {24, 3}, {28, 7}, {9, 26}}), kWhite, kBlack);
    InPixels(c, Polygon({{2, 29}, {4, 24}, {7, 27}}), kBlack);
}

void Unavailable(Canvas& c) {
    InPixels(c, Union(Ring(16, 16, 11, 5), Line(9, 9, 23, 23, 5)), kWhite, kBlack);
}

void SizeNS(Canvas& c) {
    InPixels(c, DoubleArrow(0), kWhite, kBlack);
}
void SizeWE(Canvas& c) {
    InPixels(c, DoubleArrow(90), kWhite, kBlack);
}
void SizeNWSE(Canvas& c) {
    InPixels(c, DoubleArrow(-45), kWhite, kBlack);
}
void SizeNESW(Canvas& c) {
    InPixels(c, DoubleArrow(45), kWhite, kBlack);
}
void Move(Canvas& c) {
    InPixels(c, Union(DoubleArrow(0), DoubleArrow(90)), kWhite, kBlack);
}

void UpArrow(Canvas& c) {
    InPixels(c, Polygon({{16, 1}, {25, 11}, {19, 11}, {19, 29}, {13, 29}, {13, 11}, {7, 11}}), kWhite,
             kBlack);
}

void Hand(Canvas& c) {
    const Shape finger = Rect(11, 1, 16, 16);
    const Shape palm = Polygon({{8, 14}, {26, 12}, {26, 24}, {22, 30}, {12, 30}, {6, 20}});
    InPixels(c, Union(finger, palm), kWhite, kBlack);
    InPixels(c, Union(Rect(16, 13, 17, 19), Union(Rect(21, 13, 22, 19), Rect(11, 13, 16, 14))), kBlack);
}

}  // namespace

const std::vector<PointerPicture>& StandardPointers() {
    static const std::vector<PointerPicture> kPointers = {
        {"Arrow", 0, 0, Arrow},     {"Help", 0, 0, HelpSelect},       {"AppStarting", 0, 0, Working},
        {"Wait", 16, 15, Busy},     {"Crosshair", 16, 16, Crosshair}, {"IBeam", 16, 16, IBeam},
        {"NWPen", 2, 29, Pen},      {"No", 16, 16, Unavailable},      {"SizeNS", 16, 16, SizeNS},
        {"SizeWE", 16, 16, SizeWE}, {"SizeNWSE", 16, 16, SizeNWSE},   {"SizeNESW", 16, 16, SizeNESW},
        {"SizeAll", 16, 16, Move},  {"UpArrow", 16, 1, UpArrow},      {"Hand", 13, 1, Hand},
    };
    return kPointers;
}

}  // namespace glyphmoor::seed
