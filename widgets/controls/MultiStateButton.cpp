#include "widgets/controls/MultiStateButton.h"

namespace OV::CFW::Widgets {

MultiStateButton::MultiStateButton(GUI::Widget& parent, const Rect& rect, std::vector<Graphics::Image*> images)
    : Button(parent, rect), images(std::move(images))
{
}

void MultiStateButton::setState(int value)
{
    if (value < 0 || static_cast<std::size_t>(value) >= images.size() || value == state)
        return;
    state = value;
    stateChanged(this, state);
    invalidate();
}

void MultiStateButton::clickAction()
{
    if (!images.empty())
        setState(static_cast<int>((static_cast<std::size_t>(state) + 1) % images.size()));
}

void MultiStateButton::draw(Graphics::Painter& painter, const Rect& clip)
{
    if (static_cast<std::size_t>(state) < images.size())
        drawPart(painter, images[static_cast<std::size_t>(state)], clip);
}

}  // namespace OV::CFW::Widgets
