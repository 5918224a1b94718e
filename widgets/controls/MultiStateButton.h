#pragma once

#include "widgets/controls/Button.h"

#include <vector>

namespace OV::CFW::Widgets {

// A button with one image per state; each click steps to the next state, after the last back
// to the first.
class MultiStateButton : public Button {
public:
    boost::signals2::signal<void(MultiStateButton*, int)> stateChanged;

    // Not owned; a null image draws nothing for its state. The state starts at 0.
    MultiStateButton(GUI::Widget& parent, const Rect& rect, std::vector<Graphics::Image*> images);

    // Nothing without images, for a state out of range or for the current one; otherwise emits
    // and repaints.
    void setState(int value);
    int getState() const { return state; }

protected:
    void clickAction() override;
    void draw(Graphics::Painter& painter, const Rect& clip) override;

private:
    std::vector<Graphics::Image*> images;
    int state = 0;
};

}  // namespace OV::CFW::Widgets
