#pragma once

#include <algorithm>

namespace OV::CFW {

// A point; also carries sizes, with x the width and y the height.
template <typename T>
struct BasicPoint {
    T x{};
    T y{};
};

// A rectangle; it contains (px, py) when x <= px < x + width and y <= py < y + height.
template <typename T>
struct BasicRect {
    T x{};
    T y{};
    T width{};
    T height{};

    bool contains(T px, T py) const { return x <= px && px < x + width && y <= py && py < y + height; }
};

inline bool IsEmpty(const BasicRect<int>& r)
{
    return r.width <= 0 || r.height <= 0;
}

// The common part of two rects, in 64 bits so that far corners cannot overflow; zero-sized at
// the nearer corner when they do not overlap.
inline BasicRect<int> Intersect(const BasicRect<int>& a, const BasicRect<int>& b)
{
    const long long x0 = std::max(a.x, b.x);
    const long long y0 = std::max(a.y, b.y);
    const long long x1 = std::min(static_cast<long long>(a.x) + a.width, static_cast<long long>(b.x) + b.width);
    const long long y1 = std::min(static_cast<long long>(a.y) + a.height, static_cast<long long>(b.y) + b.height);
    if (x1 <= x0 || y1 <= y0)
        return {static_cast<int>(x0), static_cast<int>(y0), 0, 0};
    return {static_cast<int>(x0), static_cast<int>(y0), static_cast<int>(x1 - x0), static_cast<int>(y1 - y0)};
}

// The smallest rect holding both; an empty rect adds nothing. For rects within a surface.
inline BasicRect<int> Bounding(const BasicRect<int>& a, const BasicRect<int>& b)
{
    if (IsEmpty(a))
        return b;
    if (IsEmpty(b))
        return a;
    const int x0 = std::min(a.x, b.x);
    const int y0 = std::min(a.y, b.y);
    return {x0, y0, std::max(a.x + a.width, b.x + b.width) - x0, std::max(a.y + a.height, b.y + b.height) - y0};
}

inline BasicRect<int> Moved(const BasicRect<int>& r, const BasicPoint<int>& by)
{
    return {r.x + by.x, r.y + by.y, r.width, r.height};
}

}  // namespace OV::CFW
