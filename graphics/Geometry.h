#pragma once

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

}  // namespace OV::CFW
