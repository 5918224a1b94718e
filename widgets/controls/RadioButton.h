#pragma once

#include "widgets/controls/Button.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

#include <boost/core/noncopyable.hpp>

namespace OV::CFW::Widgets {

class RadioButton;

// Radio buttons of one name, of which at most one is selected. The buttons share it and it
// lives as long as one of them. Window thread only.
class RadioGroup : private boost::noncopyable {
public:
    boost::signals2::signal<void(RadioGroup*, RadioButton*)> selectionChanged;

    explicit RadioGroup(std::string name) : name(std::move(name)) {}
    virtual ~RadioGroup() = default;

    const std::string& getName() const { return name; }
    // Selects one of the group's buttons, or none with null, and deselects the others; emits
    // and repaints on a change only.
    void select(RadioButton* button);
    RadioButton* getSelected() const { return selected; }
    // In the order they joined.
    const std::vector<RadioButton*>& getButtons() const { return buttons; }

private:
    friend class RadioButton;

    std::string name;
    std::vector<RadioButton*> buttons;
    RadioButton* selected = nullptr;
};

// A button of a group that a click selects.
class RadioButton : public Button {
public:
    // Unselected, selected, unselected pressed, selected pressed; not owned, any may be null.
    using Images = std::array<Graphics::Image*, 4>;

    // Joins `group`, unselected.
    RadioButton(GUI::Widget& parent, const Rect& rect, const Images& images, std::shared_ptr<RadioGroup> group);
    // Leaves the group, quietly.
    ~RadioButton() override;

    const std::shared_ptr<RadioGroup>& getGroup() const { return group; }
    bool isSelected() const { return group->getSelected() == this; }

protected:
    void clickAction() override { group->select(this); }
    void draw(Graphics::Painter& painter, const Rect& clip) override;

private:
    Images images;
    std::shared_ptr<RadioGroup> group;
};

}  // namespace OV::CFW::Widgets
