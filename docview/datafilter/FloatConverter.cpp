#include "docview/datafilter/FloatConverter.h"

#include <algorithm>
#include <cmath>

namespace OV::CFW::DataFilter {
namespace Details {

void FloatConverterNull::Clone(std::unique_ptr<FloatConverter>& out) const
{
    out = std::make_unique<FloatConverterNull>(*this);
}

float FloatConverterNull::ToValue(float normalized) const
{
    return normalized;
}

float FloatConverterNull::ToNormalized(float value) const
{
    return value;
}

FloatConverterNorm::FloatConverterNorm(float minimum, float maximum)
    : minimum(minimum), span(static_cast<double>(maximum) - minimum)
{
}

void FloatConverterNorm::Clone(std::unique_ptr<FloatConverter>& out) const
{
    out = std::make_unique<FloatConverterNorm>(*this);
}

float FloatConverterNorm::ToValue(float normalized) const
{
    return static_cast<float>(normalized * span + minimum);
}

float FloatConverterNorm::ToNormalized(float value) const
{
    return static_cast<float>((value - minimum) / span);
}

FloatConverterLogNorm::FloatConverterLogNorm(float minimum, float maximum)
    : minimum(minimum),
      span(static_cast<double>(maximum) - minimum),
      decades(std::log10(static_cast<double>(maximum) / minimum))
{
}

void FloatConverterLogNorm::Clone(std::unique_ptr<FloatConverter>& out) const
{
    out = std::make_unique<FloatConverterLogNorm>(*this);
}

float FloatConverterLogNorm::ToValue(float normalized) const
{
    return static_cast<float>(minimum * std::pow(10.0, normalized * decades));
}

float FloatConverterLogNorm::ToNormalized(float value) const
{
    return static_cast<float>(std::log10(value / minimum) / decades);
}

FloatConverterPowNorm::FloatConverterPowNorm(float exponent, float minimum, float maximum)
    : exponent(exponent), minimum(minimum), span(static_cast<double>(maximum) - minimum)
{
}

void FloatConverterPowNorm::Clone(std::unique_ptr<FloatConverter>& out) const
{
    out = std::make_unique<FloatConverterPowNorm>(*this);
}

float FloatConverterPowNorm::ToValue(float normalized) const
{
    return static_cast<float>(std::pow(static_cast<double>(normalized), exponent) * span + minimum);
}

float FloatConverterPowNorm::ToNormalized(float value) const
{
    return static_cast<float>(std::pow((value - minimum) / span, 1.0 / exponent));
}

void FloatConverterdB::Clone(std::unique_ptr<FloatConverter>& out) const
{
    out = std::make_unique<FloatConverterdB>(*this);
}

float FloatConverterdB::ToValue(float decibels) const
{
    return static_cast<float>(std::pow(10.0, decibels * 0.05));
}

float FloatConverterdB::ToNormalized(float gain) const
{
    return static_cast<float>(20.0 * std::log10(static_cast<double>(gain)));
}

FloatConverterStep::FloatConverterStep(unsigned digits)
    : scale(std::pow(10.0, static_cast<double>(digits))), digits(digits)
{
}

void FloatConverterStep::Clone(std::unique_ptr<FloatConverter>& out) const
{
    out = std::make_unique<FloatConverterStep>(*this);
}

float FloatConverterStep::ToValue(float value) const
{
    const double scaled = value * scale;
    const double nudged = value >= 0.0f ? scaled + 0.01 : scaled - 0.01;
    return static_cast<float>(std::trunc(nudged) / scale);
}

float FloatConverterStep::ToNormalized(float value) const
{
    return ToValue(value);
}

FloatConverterCustom::FloatConverterCustom(const std::map<float, float>& curve)
    : points(curve.begin(), curve.end())
{
}

void FloatConverterCustom::Clone(std::unique_ptr<FloatConverter>& out) const
{
    out = std::make_unique<FloatConverterCustom>(*this);
}

float FloatConverterCustom::ToValue(float) const
{
    return 0.0f;
}

float FloatConverterCustom::ToNormalized(float value) const
{
    if (value <= points.front().first)
        return points.front().second;
    const auto above = std::lower_bound(points.begin(), points.end(), value,
                                        [](const std::pair<float, float>& point, float v) { return point.first < v; });
    if (above == points.end())
        return points.back().second;
    const auto& [x1, y1] = *above;
    const auto& [x0, y0] = *(above - 1);
    return static_cast<float>((static_cast<double>(value) - x0) / (static_cast<double>(x1) - x0) *
                                  (static_cast<double>(y1) - y0) +
                              y0);
}

}  // namespace Details

std::unique_ptr<FloatConverter> MakeNull()
{
    return std::make_unique<Details::FloatConverterNull>();
}

std::unique_ptr<FloatConverter> MakeNorm(float minimum, float maximum)
{
    return std::make_unique<Details::FloatConverterNorm>(minimum, maximum);
}

std::unique_ptr<FloatConverter> MakeLogNorm(float minimum, float maximum)
{
    return std::make_unique<Details::FloatConverterLogNorm>(minimum, maximum);
}

std::unique_ptr<FloatConverter> MakePowNorm(float exponent, float minimum, float maximum)
{
    return std::make_unique<Details::FloatConverterPowNorm>(exponent, minimum, maximum);
}

std::unique_ptr<FloatConverter> MakedB()
{
    return std::make_unique<Details::FloatConverterdB>();
}

std::unique_ptr<FloatConverter> MakeStep(unsigned digits)
{
    return std::make_unique<Details::FloatConverterStep>(digits);
}

std::unique_ptr<FloatConverter> MakeCustom(const std::map<float, float>& curve)
{
    return std::make_unique<Details::FloatConverterCustom>(curve);
}

}  // namespace OV::CFW::DataFilter
