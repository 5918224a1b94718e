#pragma once

#include <algorithm>

namespace OV::CFW::Widgets {

// Bits of the modifier word that comes with mouse events.
constexpr int ControlKey = 8;
constexpr int ShiftKey = 16;

// `value` within [low, high]; `low` wins when the bounds cross, and NaN gives a bound.
inline float Limit(float value, float low, float high)
{
    return std::max(low, std::min(high, value));
}

}  // namespace OV::CFW::Widgets
