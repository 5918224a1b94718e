#include "widgets/controls/ControlBuilders.h"

#include "graphics/Image.h"
#include "widgets/controls/CheckBox.h"
#include "widgets/controls/ClickRoll.h"
#include "widgets/controls/Dragger.h"
#include "widgets/controls/KnobRotatable.h"
#include "widgets/controls/MultiStateButton.h"
#include "widgets/controls/PushButton.h"
#include "widgets/controls/RadioButton.h"
#include "widgets/controls/Slider.h"
#include "widgets/controls/SliderStepArray.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>

namespace OV::CFW::Widgets {

namespace {

using GUI::Widget;
using Graphics::Image;
using Point = BasicPoint<int>;
using Rect = BasicRect<int>;

// The images of the attributes `names`, in order; null for those that cannot be had.
template <std::size_t N>
std::array<Image*, N> Images(ElementContext& context, const char* const (&names)[N])
{
    std::array<Image*, N> images;
    for (std::size_t i = 0; i < N; ++i)
        images[i] = context.image(context.text(names[i]));
    return images;
}

// The element's rect, sized as the first image there is when it gives no size ("SizeW" and
// "SizeH" missing or both 0).
template <typename Container>
Rect SizedByFirst(const ElementContext& context, const Container& images)
{
    Rect rect = context.rect();
    const auto first = std::find_if(std::begin(images), std::end(images), [](Image* image) { return image != nullptr; });
    if (rect.width == 0 && rect.height == 0 && first != std::end(images)) {
        rect.width = (*first)->size().x;
        rect.height = (*first)->size().y;
    }
    return rect;
}

// A knob of either kind with the attributes they share; null without a strip, without a
// position, or with neither a size nor frames to take one from.
template <typename K>
K* MakeKnob(ElementContext& context, double slowModeFactor)
{
    Image* const strip = context.image(context.text("Strip"));
    const int frames = context.integer("Frames");
    const bool sized = context.has("SizeW");
    if (!strip || !context.has("PositionX") || (!sized && frames < 1))
        return nullptr;
    const Rect rect = sized ? context.rect() : LimitedRect({context.integer("PositionX"), context.integer("PositionY"),
                                                            strip->size().x, strip->size().y / frames});
    std::vector<int> frameList;
    for (const std::string& frame : context.series("Frame"))
        frameList.push_back(std::atoi(frame.c_str()));
    K* const knob = new K(context.parent(), rect, strip, frames, std::move(frameList));
    knob->setMinValue(context.realFloat("MinValue", 0.0));
    knob->setMaxValue(context.realFloat("MaxValue", 1.0));
    knob->setMouseRange(context.realFloat("MouseRange", frames));
    knob->setSlowModeFactor(context.realFloat("SlowModeFactor", slowModeFactor));
    return knob;
}

// The group of that name among the radio buttons under `widget`, or null.
std::shared_ptr<RadioGroup> FindGroup(Widget& widget, const std::string& name)
{
    for (Widget* child : widget.getChildren()) {
        if (const auto* button = dynamic_cast<RadioButton*>(child); button && button->getGroup()->getName() == name)
            return button->getGroup();
        if (std::shared_ptr<RadioGroup> group = FindGroup(*child, name))
            return group;
    }
    return nullptr;
}

}  // namespace

Widget* BuildKnob(ElementContext& context)
{
    return MakeKnob<Knob>(context, 10.0);
}

Widget* BuildKnobRotatable(ElementContext& context)
{
    KnobRotatable* const knob = MakeKnob<KnobRotatable>(context, 2.0);
    if (knob) {
        knob->setRotationRange(context.realFloat("MinValueRotation", 0.0), context.realFloat("MaxValueRotation", 1.0));
        knob->setCenters({context.integer("CenterRotationX"), context.integer("CenterRotationY")},
                         {context.integer("CenterDestinationX"), context.integer("CenterDestinationY")});
        knob->setPixelPerDegree(context.realFloat("PixelPerDegree", 0.0));
    }
    return knob;
}

Widget* BuildSlider(ElementContext& context)
{
    Image* const handle = context.image(context.text("Handle"));
    if (!handle)
        return nullptr;
    Image* const background = context.image(context.text("Background"));
    Rect rect = context.rect();
    if (background && context.has("PositionX") && !context.has("SizeW")) {
        rect.width = background->size().x;
        rect.height = background->size().y;
    }
    auto* const slider = new Slider(context.parent(), rect, background, handle, context.realFloat("MinValue", 0.0),
                                    context.realFloat("MaxValue", 1.0), context.integer("Vertical") != 0,
                                    context.integer("Smooth") != 0);
    slider->setSlowModeFactor(context.realFloat("SlowModeFactor", 10.0));
    return slider;
}

Widget* BuildPushButton(ElementContext& context)
{
    const auto images = Images(context, {"Released", "Pressed", "Highlighted"});
    return new PushButton(context.parent(), SizedByFirst(context, images), images[0], images[1], images[2]);
}

Widget* BuildCheckBox(ElementContext& context)
{
    const CheckBox::Images images = Images(context, {"Unchecked", "Checked", "UncheckedPressed", "CheckedPressed"});
    return new CheckBox(context.parent(), SizedByFirst(context, images), images);
}

Widget* BuildRadioButton(ElementContext& context)
{
    const RadioButton::Images images = Images(context, {"Unselected", "Selected", "UnselectedPressed", "SelectedPressed"});
    // A button without a group name stands alone.
    const std::string name = context.text("Group");
    std::shared_ptr<RadioGroup> group = name.empty() ? nullptr : FindGroup(*context.parent().getRoot(), name);
    if (!group)
        group = std::make_shared<RadioGroup>(name);
    auto* const button = new RadioButton(context.parent(), SizedByFirst(context, images), images, group);
    if (context.integer("Default") != 0)
        group->select(button);
    return button;
}

Widget* BuildMultiStateButton(ElementContext& context)
{
    std::vector<Image*> images;
    for (const std::string& name : context.series("Image"))
        images.push_back(context.image(name));
    const Rect rect = SizedByFirst(context, images);
    return new MultiStateButton(context.parent(), rect, std::move(images));
}

Widget* BuildClickRoll(ElementContext& context)
{
    ClickRoll::Settings settings;
    settings.minValue = context.realFloat("MinValue", settings.minValue);
    settings.maxValue = context.realFloat("MaxValue", settings.maxValue);
    settings.defaultValue = context.realFloat("DefaultValue", settings.defaultValue);
    settings.stepValue = context.realFloat("StepValue", settings.stepValue);
    settings.slowModeFactor = context.realFloat("SlowModeFactor", settings.slowModeFactor);
    settings.decimals = context.integer("Decimals", settings.decimals);
    settings.rounding = context.integer("Rounding") != 0;
    return new ClickRoll(context.parent(), context.rect(), context.font(context.text("Font")), settings);
}

Widget* BuildDragger(ElementContext& context)
{
    Image* const image = context.image(context.text("Image"));
    if (!image)
        return nullptr;
    return new Dragger(context.parent(), context.rect(image->size()), *image, context.integer("Tiled") != 0);
}

Widget* BuildSliderStepArray(ElementContext& context)
{
    Image* const stepOff = context.image(context.text("StepOff"));
    if (!stepOff)
        return nullptr;
    const int count = std::max(0, context.integer("NumberOfSliderStep"));
    const Point cell = stepOff->size();
    const long long width = std::min<long long>(static_cast<long long>(count) * cell.x, maxLayoutExtent);
    const Rect rect = context.rect({static_cast<int>(width), cell.y});
    return new SliderStepArray(context.parent(), rect, *stepOff, count);
}

}  // namespace OV::CFW::Widgets
