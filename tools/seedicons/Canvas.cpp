#include "Canvas.h"

#include <algorithm>
#include <cmath>

namespace glyphmoor::seed {

Shape Rect(float x0, float y0, float x1, float y1) {
    return [=](float x, float y) { return x >= x0 && x < x1 && y >= y0 && y < y1; };
}

Shape Ellipse(float cx, float cy, float rx, float ry) {
    return [=](float x, float y) {
        const float u = (x - cx) / rx, v = (y - cy) / ry;
        return u * u + v * v <= 1.0f;
    };
}

Shape Polygon(std::vector<std::pair<float, float>> points) {
    return [points = std::move(points)](float x, float y) {
        bool inside = false;
        for (std::size_t i = 0, j = points.size() - 1; i < points.size(); j = i++) {
            const auto [xi, yi] = points[i];
            const auto [xj, yj] = points[j];
            if ((yi > y) != (yj > y) && x < (xj - xi) * (y - yi) / (yj - yi) + xi) {
                inside = !inside;
            }
        }
        return inside;
    };
}

Shape Line(float x0, float y0, float x1, float y1, float width) {
    return [=](float x, float y) {
        const float dx = x1 - x0, dy = y1 - y0;
        const float len2 = dx * dx + dy * dy;
        float t = len2 == 0 ? 0 : ((x - x0) * dx + (y - y0) * dy) / len2;
        t = std::clamp(t, 0.0f, 1.0f);
        const float px = x0 + t * dx - x, py = y0 + t * dy - y;
        return px * px + py * py <= width * width / 4;
    };
}

Shape Ring(float cx, float cy, float r, float width) {
    return [=](float x, float y) {
        const float d = std::sqrt((x - cx) * (x - cx) + (y - cy) * (y - cy));
        return d <= r + width / 2 && d >= r - width / 2;
    };
}

Shape Union(Shape a, Shape b) {
    return [a = std::move(a), b = std::move(b)](float x, float y) { return a(x, y) || b(x, y); };
}

Shape Minus(Shape a, Shape b) {
    return [a = std::move(a), b = std::move(b)](float x, float y) { return a(x, y) && !b(x, y); };
}

Canvas::Canvas(int size) : m_size(size) {
    m_image.width = m_image.height = size;
    m_image.pixels.assign(static_cast<std::size_t>(size) * static_cast<std::size_t>(size) * 4, 0);
}

void Canvas::PushTransform(float scale, float dx, float dy) {
    m_transforms.push_back({scale, dx, dy});
}

void Canvas::PopTransform() {
    m_transforms.pop_back();
}

std::vector<float> Canvas::Coverage(const Shape& shape) const {
    constexpr int kSamples = 4;
    const float unit = 48.0f / static_cast<float>(m_size);
    std::vector<float> coverage(static_cast<std::size_t>(m_size) * static_cast<std::size_t>(m_size), 0);
    for (int py = 0; py < m_size; ++py) {
        for (int px = 0; px < m_size; ++px) {
            int hits = 0;
            for (int sy = 0; sy < kSamples; ++sy) {
                for (int sx = 0; sx < kSamples; ++sx) {
                    float x = (static_cast<float>(px) + (static_cast<float>(sx) + 0.5f) / kSamples) * unit;
                    float y = (static_cast<float>(py) + (static_cast<float>(sy) + 0.5f) / kSamples) * unit;
                    // Undo the transforms, the first pushed first.
                    for (auto t = m_transforms.begin(); t != m_transforms.end(); ++t) {
                        x = (x - t->dx) / t->scale;
                        y = (y - t->dy) / t->scale;
                    }
                    hits += shape(x, y) ? 1 : 0;
                }
            }
            coverage[static_cast<std::size_t>(py * m_size + px)] =
                static_cast<float>(hits) / (kSamples * kSamples);
        }
    }
    return coverage;
}

void Canvas::Blend(std::size_t pixel, Colour c, float alpha) {
    std::uint8_t* p = m_image.pixels.data() + pixel * 4;
    const float below = static_cast<float>(p[3]) / 255.0f;
    const float out = alpha + below * (1 - alpha);
    if (out <= 0) {
        return;
    }
    auto mix = [&](std::uint8_t top, std::uint8_t under) {
        return static_cast<std::uint8_t>(std::lround(
            (static_cast<float>(top) * alpha + static_cast<float>(under) * below * (1 - alpha)) / out));
    };
    p[0] = mix(c.r, p[0]);
    p[1] = mix(c.g, p[1]);
    p[2] = mix(c.b, p[2]);
    p[3] = static_cast<std::uint8_t>(std::lround(out * 255));
}

void Canvas::Fill(const Shape& shape, Colour fill) {
    const auto coverage = Coverage(shape);
    for (std::size_t i = 0; i < coverage.size(); ++i) {
        if (coverage[i] > 0) {
            Blend(i, fill, coverage[i]);
        }
    }
}

void Canvas::Fill(const Shape& shape, Colour fill, Colour outline) {
    const auto coverage = Coverage(shape);
    auto covered = [&](int x, int y) {
        return x >= 0 && y >= 0 && x < m_size && y < m_size &&
               coverage[static_cast<std::size_t>(y * m_size + x)] >= 0.5f;
    };
    for (int y = 0; y < m_size; ++y) {
        for (int x = 0; x < m_size; ++x) {
            const auto i = static_cast<std::size_t>(y * m_size + x);
            if (coverage[i] <= 0) {
                continue;
            }
            const bool edge = !covered(x, y) || !covered(x - 1, y) || !covered(x + 1, y) ||
                              !covered(x, y - 1) || !covered(x, y + 1);
            Blend(i, edge ? outline : fill, edge ? std::max(coverage[i], 0.5f) : coverage[i]);
        }
    }
}

}  // namespace glyphmoor::seed
