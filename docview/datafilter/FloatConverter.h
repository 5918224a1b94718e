#pragma once

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace OV::CFW::DataFilter {

// Maps between a normalised scale (as a rule 0 to 1, what widgets and the host use) and a plain
// one (hertz, decibels). Both directions compute in double and return float. Immutable after
// construction: any thread, the audio thread included; no allocation except in Clone.
class FloatConverter {
public:
    virtual ~FloatConverter() = default;
    // An owned copy with the same stored fields.
    virtual void Clone(std::unique_ptr<FloatConverter>& out) const = 0;
    virtual float ToValue(float normalized) const = 0;
    virtual float ToNormalized(float value) const = 0;

protected:
    FloatConverter() = default;
    FloatConverter(const FloatConverter&) = default;
    FloatConverter& operator=(const FloatConverter&) = delete;
};

// No argument is checked: the ranges below are the caller's to keep.
namespace Details {

// The identity.
class FloatConverterNull final : public FloatConverter {
public:
    void Clone(std::unique_ptr<FloatConverter>& out) const override;
    float ToValue(float normalized) const override;
    float ToNormalized(float value) const override;
};

// Linear between minimum and maximum; maximum != minimum.
class FloatConverterNorm final : public FloatConverter {
public:
    FloatConverterNorm(float minimum, float maximum);
    void Clone(std::unique_ptr<FloatConverter>& out) const override;
    float ToValue(float normalized) const override;
    float ToNormalized(float value) const override;

private:
    double minimum;
    double span;
};

// Logarithmic between minimum and maximum: 0 < minimum < maximum. `span` is kept with the
// object but no mapping reads it.
class FloatConverterLogNorm final : public FloatConverter {
public:
    FloatConverterLogNorm(float minimum, float maximum);
    void Clone(std::unique_ptr<FloatConverter>& out) const override;
    float ToValue(float normalized) const override;
    float ToNormalized(float value) const override;

private:
    double minimum;
    double span;
    double decades;
};

// normalized^exponent, stretched linearly onto minimum..maximum; exponent != 0.
class FloatConverterPowNorm final : public FloatConverter {
public:
    FloatConverterPowNorm(float exponent, float minimum, float maximum);
    void Clone(std::unique_ptr<FloatConverter>& out) const override;
    float ToValue(float normalized) const override;
    float ToNormalized(float value) const override;

private:
    double exponent;
    double minimum;
    double span;
};

// "Normalised" is decibels, "value" a linear gain. A gain <= 0 gives -inf or NaN.
class FloatConverterdB final : public FloatConverter {
public:
    void Clone(std::unique_ptr<FloatConverter>& out) const override;
    float ToValue(float decibels) const override;
    float ToNormalized(float gain) const override;
};

// Cuts to `digits` decimal places, toward zero, after a nudge of 0.01 steps away from zero so
// that 2.9999 still gives 3. Not rounding to nearest: 2.96 gives 2.9 with one digit. Both
// directions are this same function.
class FloatConverterStep final : public FloatConverter {
public:
    explicit FloatConverterStep(unsigned digits);
    void Clone(std::unique_ptr<FloatConverter>& out) const override;
    float ToValue(float value) const override;
    float ToNormalized(float value) const override;

private:
    double scale;
    unsigned digits;
};

// A piecewise linear curve for plain-to-normalised only: ToValue is always 0. Flat beyond the
// first and last points. Needs at least one point.
class FloatConverterCustom final : public FloatConverter {
public:
    explicit FloatConverterCustom(const std::map<float, float>& curve);
    void Clone(std::unique_ptr<FloatConverter>& out) const override;
    float ToValue(float normalized) const override;
    float ToNormalized(float value) const override;

private:
    std::vector<std::pair<float, float>> points;  // (x, y), ascending in x
};

}  // namespace Details

std::unique_ptr<FloatConverter> MakeNull();
std::unique_ptr<FloatConverter> MakeNorm(float minimum, float maximum);
std::unique_ptr<FloatConverter> MakeLogNorm(float minimum, float maximum);
std::unique_ptr<FloatConverter> MakePowNorm(float exponent, float minimum, float maximum);
std::unique_ptr<FloatConverter> MakedB();
std::unique_ptr<FloatConverter> MakeStep(unsigned digits);
std::unique_ptr<FloatConverter> MakeCustom(const std::map<float, float>& curve);

}  // namespace OV::CFW::DataFilter
