#pragma once

#include "widgets/controls/Button.h"

#include <array>

namespace OV::CFW::Widgets {

// A button that a click turns on and off.
class CheckBox : public Button {
public:
    boost::signals2::signal<void(CheckBox*, bool)> toggled;

    // Unchecked, checked, unchecked pressed, checked pressed; not owned, any may be null.
    using Images = std::array<Graphics::Image*, 4>;

    CheckBox(GUI::Widget& parent, const Rect& rect, const Images& images);

    // Emits and repaints on a change only.
    void setChecked(bool value);
    bool isChecked() const { return checked; }

protected:
    void clickAction() override { setChecked(!checked); }
    void draw(Graphics::Painter& painter, const Rect& clip) override;

private:
    Images images;
    bool checked = false;
};

}  // namespace OV::CFW::Widgets
