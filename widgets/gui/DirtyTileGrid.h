#pragma once

#include "graphics/Geometry.h"

#include <cstdint>
#include <vector>

namespace OV::CFW::GUI {

// What needs painting, in tiles of 64 × 64 pixels: marking costs a few stores however often it
// happens between two paints, and a paint collects the dirty tiles as a few rects.
class DirtyTileGrid {
public:
    struct TileRect {
        std::int32_t x0, x1, y0, y1; // pixels, x1 and y1 excluded
    };

    // Every tile starts dirty.
    DirtyTileGrid(int width, int height);

    // Marks every tile from (x, y) to (x + width, y + height) inclusive, so a rect ending on a
    // tile boundary marks the tile after it too. An empty rect marks nothing.
    void mark(const BasicRect<int>& rect);
    // Clears the dirty tiles of `area`'s tile block (taken as by mark) and returns them as runs
    // along each tile row; a run with the same columns as a run right above it extends that
    // rect downwards. Tiles outside the block stay dirty.
    const std::vector<TileRect>& collect(const BasicRect<int>& area);

private:
    static constexpr std::uint32_t noLink = 0xFFFFFF;

    // The tile block of `rect`, limited to the grid; false when it holds no tile.
    bool block(const BasicRect<int>& rect, int& x0, int& x1, int& y0, int& y1) const;

    int width;
    int height;
    int columns;
    int rows;
    int tileCount;
    std::vector<std::uint32_t> tiles;    // 1 = dirty
    std::vector<std::uint32_t> rowLinks; // per tile: the rect that ends right above it, or noLink
    std::vector<TileRect> rects;
};

}  // namespace OV::CFW::GUI
