#pragma once

#include "graphics/Color.h"
#include "graphics/Geometry.h"

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// Draws `source`, a rect of `image` (cut to the image), repeated across `area` from its top-left
// corner, only where `area` meets `clip`: the work follows the clip, however large the area.
// Once is an area of the source's size. A colour other than 0xFFFFFFFF modulates the picture.
void DrawTiled(Graphics::Painter& painter, Graphics::Image& image, const BasicRect<int>& source, const BasicRect<int>& area,
               const BasicRect<int>& clip, Graphics::Color color = 0xFFFFFFFF);

// `image` fitted to `area` by nine parts, `middle` (a rect of the picture) being the part that
// stretches: the corners are drawn as they are, the edges between them repeated along the
// area's edges and the middle over the rest, so borders and patterns stay sharp. An area
// smaller than the corners cuts the far ones; a middle that misses the picture makes the whole
// picture the middle.
void DrawNineSliced(Graphics::Painter& painter, Graphics::Image& image, const BasicRect<int>& middle, const BasicRect<int>& area,
                    const BasicRect<int>& clip, Graphics::Color color = 0xFFFFFFFF);

}  // namespace OV::CFW::Widgets
