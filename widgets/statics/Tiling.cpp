#include "widgets/statics/Tiling.h"

#include "graphics/Image.h"
#include "graphics/Painter.h"

#include <algorithm>

namespace OV::CFW::Widgets {

void DrawTiled(Graphics::Painter& painter, Graphics::Image& image, const BasicRect<int>& source, const BasicRect<int>& area,
               const BasicRect<int>& clip, Graphics::Color color)
{
    const BasicPoint<int> size = image.size();
    const BasicRect<int> tile = Intersect(source, {0, 0, size.x, size.y});
    const BasicRect<int> visible = Intersect(area, clip);
    if (IsEmpty(tile) || IsEmpty(visible))
        return;
    // The first tile that reaches into the visible part, then on to its far edges.
    const int left = area.x + (visible.x - area.x) / tile.width * tile.width;
    const int top = area.y + (visible.y - area.y) / tile.height * tile.height;
    for (int y = top; y < visible.y + visible.height; y += tile.height) {
        for (int x = left; x < visible.x + visible.width; x += tile.width) {
            const BasicRect<int> part = Intersect({x, y, tile.width, tile.height}, visible);
            const BasicRect<int> from{tile.x + part.x - x, tile.y + part.y - y, part.width, part.height};
            if (color == 0xFFFFFFFF)
                painter.drawImage(image, {part.x, part.y}, from);
            else
                painter.drawImageTinted(image, Graphics::Painter::Modulate, color, {part.x, part.y}, from);
        }
    }
}

void DrawNineSliced(Graphics::Painter& painter, Graphics::Image& image, const BasicRect<int>& middle, const BasicRect<int>& area,
                    const BasicRect<int>& clip, Graphics::Color color)
{
    const BasicPoint<int> size = image.size();
    const BasicRect<int> whole{0, 0, size.x, size.y};
    const BasicRect<int> inside = Intersect(middle, whole);
    const BasicRect<int> stretch = IsEmpty(inside) ? whole : inside;
    const BasicPoint<int> extent{std::max(area.width, 0), std::max(area.height, 0)};
    // Column and row edges in the picture, then in the area: the corners keep their size.
    const int sourceX[4] = {0, stretch.x, stretch.x + stretch.width, size.x};
    const int sourceY[4] = {0, stretch.y, stretch.y + stretch.height, size.y};
    const int left = std::min(stretch.x, extent.x);
    const int top = std::min(stretch.y, extent.y);
    const int right = std::min(size.x - sourceX[2], extent.x - left);
    const int bottom = std::min(size.y - sourceY[2], extent.y - top);
    const int x[4] = {area.x, area.x + left, area.x + extent.x - right, area.x + extent.x};
    const int y[4] = {area.y, area.y + top, area.y + extent.y - bottom, area.y + extent.y};
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const BasicRect<int> source{sourceX[column], sourceY[row], sourceX[column + 1] - sourceX[column],
                                        sourceY[row + 1] - sourceY[row]};
            const BasicRect<int> target{x[column], y[row], x[column + 1] - x[column], y[row + 1] - y[row]};
            DrawTiled(painter, image, source, target, clip, color);
        }
    }
}

}  // namespace OV::CFW::Widgets
