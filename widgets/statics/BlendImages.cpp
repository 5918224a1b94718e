#include "widgets/statics/BlendImages.h"

#include "graphics/Image.h"
#include "widgets/gui/WidgetManager.h"
#include "widgets/layout/ElementContext.h"
#include "widgets/statics/Tiling.h"

#include <algorithm>
#include <cmath>

namespace OV::CFW::Widgets {

namespace {

constexpr int ticksPerSecond = 25; // the manager's tick

}  // namespace

BlendImages::BlendImages(GUI::Widget& parent, const Rect& rect, Graphics::Image& a, Graphics::Image& b, double frequency, int fps)
    : Widget(parent, rect), a(a), b(b), frequency(std::isfinite(frequency) && frequency > 0.0 ? frequency : 0.0),
      ticksPerFrame(fps > 0 ? std::max(1, static_cast<int>(std::lround(double(ticksPerSecond) / fps))) : 1)
{
    keepConnection(getSignals()->paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { paint(*painter, clip); }));
    if (this->frequency > 0.0)
        keepConnection(getManager()->tick.connect([this](GUI::WidgetManager*) { tick(); }));
}

void BlendImages::tick()
{
    if (++ticks % ticksPerFrame != 0)
        return;
    const double cycles = std::fmod(frequency * static_cast<double>(ticks) / ticksPerSecond, 1.0);
    const int next = static_cast<int>(std::lround(127.5 * (1.0 - std::cos(2.0 * M_PI * cycles))));
    if (next == blend)
        return;
    blend = next;
    invalidate();
}

void BlendImages::paint(Graphics::Painter& painter, const Rect& clip)
{
    const Point sizeA = a.size();
    const Point sizeB = b.size();
    DrawTiled(painter, a, {0, 0, sizeA.x, sizeA.y}, {0, 0, sizeA.x, sizeA.y}, clip);
    if (blend > 0) {
        const Graphics::Color weight = blend == 255 ? 0xFFFFFFFFu : static_cast<Graphics::Color>(blend) << 24 | 0xFFFFFFu;
        DrawTiled(painter, b, {0, 0, sizeB.x, sizeB.y}, {0, 0, sizeB.x, sizeB.y}, clip, weight);
    }
}

GUI::Widget* BlendImages::build(ElementContext& context)
{
    Graphics::Image* const a = context.image(context.text("ImageA"));
    Graphics::Image* const b = context.image(context.text("ImageB"));
    if (a == nullptr || b == nullptr)
        return nullptr;
    return new BlendImages(context.parent(), context.rect(a->size()), *a, *b, context.real("Frequency"),
                           context.integer("FPS", ticksPerSecond));
}

}  // namespace OV::CFW::Widgets
