#include "widgets/controls/PushButton.h"

#include "graphics/Font.h"
#include "graphics/Painter.h"
#include "widgets/gui/WidgetManager.h"

namespace OV::CFW::Widgets {

PushButton::PushButton(GUI::Widget& parent, const Rect& rect, Graphics::Image* released, Graphics::Image* pressed,
                       Graphics::Image* highlighted)
    : Button(parent, rect), imageReleased(released), imagePressed(pressed), imageHighlighted(highlighted)
{
}

void PushButton::setImages(Graphics::Image* released, Graphics::Image* pressed, Graphics::Image* highlighted)
{
    imageReleased = released;
    imagePressed = pressed;
    imageHighlighted = highlighted;
    invalidate();
}

void PushButton::draw(Graphics::Painter& painter, const Rect& clip)
{
    if (isDown())
        drawPart(painter, imagePressed, clip);
    else if (imageHighlighted && getManager()->getHoverWidget() == this)
        drawPart(painter, imageHighlighted, clip);
    else
        drawPart(painter, imageReleased, clip);
}

LabeledButton::LabeledButton(GUI::Widget& parent, const Rect& rect, Graphics::Image* released, Graphics::Image* pressed,
                             Graphics::Image* highlighted, Graphics::Font* font, Graphics::Color textColor, std::string caption)
    : PushButton(parent, rect, released, pressed, highlighted), font(font), textColor(textColor), caption(std::move(caption))
{
}

void LabeledButton::setCaption(const std::string& text)
{
    if (text == caption)
        return;
    caption = text;
    invalidate();
}

void LabeledButton::draw(Graphics::Painter& painter, const Rect& clip)
{
    PushButton::draw(painter, clip);
    if (font)
        painter.drawTextAligned(*font, textColor, caption, {0, 0, getRect().width, getRect().height}, Graphics::Font::AlignCenter);
}

}  // namespace OV::CFW::Widgets
