#include "widgets/controls/CheckBox.h"

namespace OV::CFW::Widgets {

CheckBox::CheckBox(GUI::Widget& parent, const Rect& rect, const Images& images) : Button(parent, rect), images(images)
{
}

void CheckBox::setChecked(bool value)
{
    if (value == checked)
        return;
    checked = value;
    toggled(this, checked);
    invalidate();
}

void CheckBox::draw(Graphics::Painter& painter, const Rect& clip)
{
    drawPart(painter, images[(isDown() ? 2 : 0) + (checked ? 1 : 0)], clip);
}

}  // namespace OV::CFW::Widgets
