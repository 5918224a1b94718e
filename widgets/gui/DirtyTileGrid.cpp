#include "widgets/gui/DirtyTileGrid.h"

#include <algorithm>

namespace OV::CFW::GUI {

namespace {

constexpr int tileShift = 6;
constexpr int tileSize = 1 << tileShift;

int TilesFor(int pixels)
{
    return static_cast<int>((std::max(pixels, 0) + static_cast<long long>(tileSize) - 1) >> tileShift);
}

}  // namespace

DirtyTileGrid::DirtyTileGrid(int width, int height)
    : width(width), height(height), columns(TilesFor(width)), rows(TilesFor(height)), tileCount(columns * rows),
      tiles(static_cast<std::size_t>(tileCount), 1u), rowLinks(static_cast<std::size_t>(tileCount), noLink)
{
}

bool DirtyTileGrid::block(const BasicRect<int>& rect, int& x0, int& x1, int& y0, int& y1) const
{
    if (rect.width <= 0 || rect.height <= 0)
        return false;
    // 64-bit ends, so that a rect near the integer limits cannot wrap round.
    const auto limit = [](long long tile, int count) { return static_cast<int>(std::clamp(tile, -1LL, static_cast<long long>(count))); };
    x0 = std::max(limit(rect.x >> tileShift, columns), 0);
    y0 = std::max(limit(rect.y >> tileShift, rows), 0);
    x1 = std::min(limit((static_cast<long long>(rect.x) + rect.width) >> tileShift, columns), columns - 1);
    y1 = std::min(limit((static_cast<long long>(rect.y) + rect.height) >> tileShift, rows), rows - 1);
    return x0 <= x1 && y0 <= y1;
}

void DirtyTileGrid::mark(const BasicRect<int>& rect)
{
    int x0, x1, y0, y1;
    if (!block(rect, x0, x1, y0, y1))
        return;
    for (int y = y0; y <= y1; ++y)
        std::fill(tiles.begin() + y * columns + x0, tiles.begin() + y * columns + x1 + 1, 1u);
}

const std::vector<DirtyTileGrid::TileRect>& DirtyTileGrid::collect(const BasicRect<int>& area)
{
    std::fill(rowLinks.begin(), rowLinks.end(), noLink);
    rects.clear();
    int x0, x1, y0, y1;
    if (!block(area, x0, x1, y0, y1))
        return rects;
    for (int row = y0; row <= y1; ++row) {
        std::uint32_t* const line = tiles.data() + row * columns;
        for (int start = x0; start <= x1; ++start) {
            if (line[start] == 0)
                continue;
            int end = start;
            line[start] = 0;
            while (end < x1 && line[end + 1] != 0)
                line[++end] = 0;
            const TileRect run{start * tileSize, (end + 1) * tileSize, row * tileSize, (row + 1) * tileSize};
            std::uint32_t used = rowLinks[static_cast<std::size_t>(row * columns + start)];
            if (used != noLink && rects[used].x0 == run.x0 && rects[used].x1 == run.x1 && rects[used].y1 == run.y0) {
                rects[used].y1 = run.y1;
            } else {
                used = static_cast<std::uint32_t>(rects.size());
                rects.push_back(run);
            }
            if (row + 1 < rows)
                rowLinks[static_cast<std::size_t>((row + 1) * columns + start)] = used;
            start = end;
        }
    }
    return rects;
}

}  // namespace OV::CFW::GUI
