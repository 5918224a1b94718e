#include "docview/datafilter/FloatRange.h"

namespace OV::CFW::DataFilter {
namespace Details {

FloatRangeInterval::FloatRangeInterval(float minimum, float maximum) : minimum(minimum), maximum(maximum) {}

void FloatRangeInterval::Clone(std::unique_ptr<FloatRange>& out) const
{
    out = std::make_unique<FloatRangeInterval>(*this);
}

float FloatRangeInterval::Constrain(float value) const
{
    if (value < minimum)
        return minimum;
    if (value > maximum)
        return maximum;
    return value;
}

}  // namespace Details

std::unique_ptr<FloatRange> MakeRange(float minimum, float maximum)
{
    return std::make_unique<Details::FloatRangeInterval>(minimum, maximum);
}

}  // namespace OV::CFW::DataFilter
