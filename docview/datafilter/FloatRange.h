#pragma once

#include <memory>

namespace OV::CFW::DataFilter {

// Which plain values a parameter may take. Immutable after construction: any thread, the audio
// thread included; no allocation except in Clone.
class FloatRange {
public:
    virtual ~FloatRange() = default;
    // An owned copy with the same stored fields.
    virtual void Clone(std::unique_ptr<FloatRange>& out) const = 0;
    // The nearest legal value.
    virtual float Constrain(float value) const = 0;
    virtual float GetMinimum() const = 0;
    virtual float GetMaximum() const = 0;

protected:
    FloatRange() = default;
    FloatRange(const FloatRange&) = default;
    FloatRange& operator=(const FloatRange&) = delete;
};

namespace Details {

// The closed interval minimum..maximum. NaN passes through unchanged.
class FloatRangeInterval final : public FloatRange {
public:
    FloatRangeInterval(float minimum, float maximum);
    void Clone(std::unique_ptr<FloatRange>& out) const override;
    float Constrain(float value) const override;
    float GetMinimum() const override { return minimum; }
    float GetMaximum() const override { return maximum; }

private:
    float minimum;
    float maximum;
};

}  // namespace Details

std::unique_ptr<FloatRange> MakeRange(float minimum, float maximum);

}  // namespace OV::CFW::DataFilter
