#include "widgets/statics/Tiling.h"

#include "graphics/Image.h"
#include "graphics/Painter.h"

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

}  // namespace OV::CFW::Widgets
