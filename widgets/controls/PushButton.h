#pragma once

#include "graphics/Color.h"
#include "widgets/controls/Button.h"

#include <string>

namespace OV::CFW::Graphics {
class Font;
}

namespace OV::CFW::Widgets {

// A button drawn released, pressed, or highlighted while the pointer is over it. The images
// are not owned, and any may be null; without a highlight the released image shows.
class PushButton : public Button {
public:
    PushButton(GUI::Widget& parent, const Rect& rect, Graphics::Image* released, Graphics::Image* pressed,
               Graphics::Image* highlighted);

    // Another look, as hover labels swap to mark a state.
    void setImages(Graphics::Image* released, Graphics::Image* pressed, Graphics::Image* highlighted);

protected:
    void draw(Graphics::Painter& painter, const Rect& clip) override;

private:
    Graphics::Image* imageReleased;
    Graphics::Image* imagePressed;
    Graphics::Image* imageHighlighted;
};

// A push button with a caption written in its middle, over its image.
class LabeledButton : public PushButton {
public:
    // The font is not owned; without one no caption shows.
    LabeledButton(GUI::Widget& parent, const Rect& rect, Graphics::Image* released, Graphics::Image* pressed,
                  Graphics::Image* highlighted, Graphics::Font* font, Graphics::Color textColor, std::string caption);

    void setCaption(const std::string& text);
    const std::string& getCaption() const { return caption; }

protected:
    void draw(Graphics::Painter& painter, const Rect& clip) override;

private:
    Graphics::Font* font;
    Graphics::Color textColor;
    std::string caption;
};

}  // namespace OV::CFW::Widgets
