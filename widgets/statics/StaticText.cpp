#include "widgets/statics/StaticText.h"

#include "graphics/Font.h"
#include "graphics/Painter.h"
#include "widgets/gui/WidgetSignals.h"
#include "widgets/layout/ElementContext.h"

namespace OV::CFW::Widgets {

StaticText::StaticText(GUI::Widget& parent, const Rect& rect, Graphics::Font& font, int alignment, std::string text)
    : Widget(parent, rect), font(font), alignment(alignment), text(std::move(text))
{
    keepConnection(getSignals()->paint.connect([this](Widget*, Graphics::Painter* painter, const Rect&) { paint(*painter); }));
}

void StaticText::setText(const std::string& value)
{
    if (value == text)
        return;
    text = value;
    invalidate();
}

// The painter cuts the glyphs to the clip; a line costs little beyond that.
void StaticText::paint(Graphics::Painter& painter)
{
    painter.drawTextAligned(font, getColor(), text, {0, 0, getRect().width, getRect().height}, alignment);
}

GUI::Widget* StaticText::build(ElementContext& context)
{
    Graphics::Font* const font = context.font(context.text("Font"));
    if (font == nullptr)
        return nullptr;
    const std::string alignment = context.text("Alignment");
    const int align = alignment == "Center" ? Graphics::Font::AlignCenter
        : alignment == "Right"              ? Graphics::Font::AlignRight
                                            : Graphics::Font::AlignLeft;
    return new StaticText(context.parent(), context.rect(), *font, align, context.text("Text"));
}

}  // namespace OV::CFW::Widgets
