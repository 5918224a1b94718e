#include "widgets/controls/RadioButton.h"

#include <algorithm>
#include <utility>

namespace OV::CFW::Widgets {

void RadioGroup::select(RadioButton* button)
{
    if (button == selected || (button && std::find(buttons.begin(), buttons.end(), button) == buttons.end()))
        return;
    RadioButton* const previous = std::exchange(selected, button);
    if (previous)
        previous->invalidate();
    if (button)
        button->invalidate();
    selectionChanged(this, button);
}

RadioButton::RadioButton(GUI::Widget& parent, const Rect& rect, const Images& images, std::shared_ptr<RadioGroup> group)
    : Button(parent, rect), images(images), group(std::move(group))
{
    this->group->buttons.push_back(this);
}

RadioButton::~RadioButton()
{
    std::vector<RadioButton*>& buttons = group->buttons;
    buttons.erase(std::remove(buttons.begin(), buttons.end(), this), buttons.end());
    if (group->selected == this)
        group->selected = nullptr;
}

void RadioButton::draw(Graphics::Painter& painter, const Rect& clip)
{
    drawPart(painter, images[(isDown() ? 2 : 0) + (isSelected() ? 1 : 0)], clip);
}

}  // namespace OV::CFW::Widgets
