#pragma once

#include "widgets/controls/ValueInput.h"

namespace OV::CFW::Widgets {

// The value of a knob or a slider, kept within its range. Setters limit; only a change is told
// through the control's `valueChanged` and repainted. `Control` derives from this and from
// GUI::Widget.
template <typename Control>
class RangedValue {
public:
    void setValue(float v)
    {
        const float limited = Limit(v, minValue, maxValue);
        if (limited == value)
            return;
        value = limited;
        told();
    }
    float getValue() const { return value; }
    float getMinValue() const { return minValue; }
    float getMaxValue() const { return maxValue; }
    float getDefaultValue() const { return defaultValue; }
    // Each also moves the default to the middle of the range and pulls the value into it.
    void setMinValue(float v)
    {
        minValue = v;
        pullIntoRange();
    }
    void setMaxValue(float v)
    {
        maxValue = v;
        pullIntoRange();
    }
    void setDefaultValue(float v) { defaultValue = v; }

protected:
    RangedValue(float minValue, float maxValue, float defaultValue, float value)
        : minValue(minValue), maxValue(maxValue), defaultValue(defaultValue), value(value)
    {
    }

    float minValue;
    float maxValue;
    float defaultValue;
    float value;

private:
    void told()
    {
        Control& control = static_cast<Control&>(*this);
        control.valueChanged(&control, value);
        control.invalidate();
    }
    void pullIntoRange()
    {
        defaultValue = (minValue + maxValue) / 2.0f;
        const float limited = Limit(value, minValue, maxValue);
        if (limited != value) {
            value = limited;
            told();
        } else {
            // The same value may be drawn elsewhere in the new range.
            static_cast<Control&>(*this).invalidate();
        }
    }
};

}  // namespace OV::CFW::Widgets
