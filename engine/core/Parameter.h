#pragma once

#include <atomic>
#include <map>
#include <string>
#include <vector>

namespace AudioEngine {

class ParameterHandler;

// A float value of the engine, addressed by name. Written on the audio thread between blocks
// with no lock (the host environment keeps writers apart); other threads may read, and do so
// consistently through the queue's ChangeSequence.
class ParameterBase {
public:
    // State name to value; the values count from 0 in the order the building code gave.
    using States = std::map<std::string, float>;

    enum Flags {
        OutputOnly = 1, // a queued change is dropped
        Barrier = 2,    // applying it first applies every older queued change
        Step = 4,       // applied at once, never ramped
        FloorHold = 8,  // keeps the smallest value until read
        PeakHold = 16,  // keeps the largest value until read
    };

    virtual ~ParameterBase() = default;
    virtual void SetValue(float value) = 0;
    virtual const std::string& GetName() const = 0;
    virtual const std::string& GetDescription() const = 0;
    // Destructive for the hold flags: the read re-arms the hold.
    virtual float GetValue() = 0;
    virtual float GetMin() const = 0;
    virtual float GetMax() const = 0;
    virtual float GetDefault() const = 0;
    virtual const States& GetStates() const = 0;
    virtual unsigned GetFlags() const = 0;
};

class Parameter : public ParameterBase {
public:
    Parameter(std::string name, std::string description, float minimum, float maximum,
              float defaultValue, unsigned flags);
    // A state parameter: range 0 to count - 1, default the value of `defaultState`.
    Parameter(std::string name, std::string description, const std::vector<std::string>& stateNames,
              const std::string& defaultState, unsigned flags);

    // Clamps to the range; a NaN is ignored. The hold flags keep the smaller or larger value.
    void SetValue(float value) override;
    const std::string& GetName() const override { return name; }
    const std::string& GetDescription() const override { return description; }
    float GetValue() override;
    float GetMin() const override { return minimum; }
    float GetMax() const override { return maximum; }
    float GetDefault() const override { return defaultValue; }
    const States& GetStates() const override { return states; }
    unsigned GetFlags() const override { return flags; }

private:
    std::string name;
    std::string description;
    float minimum;
    float maximum;
    float defaultValue;
    States states;
    unsigned flags;
    std::atomic<float> value; // relaxed: read by other threads
};

// Re-exports a parameter of another handler under a name of its own. A write goes through the
// target handler's SetParameter, so that the module's reaction runs.
class ParameterLinked : public ParameterBase {
public:
    ParameterLinked(ParameterHandler& target, const std::string& targetName, std::string linkName);

    void SetValue(float value) override;
    const std::string& GetName() const override { return linkName; }
    const std::string& GetDescription() const override { return description; }
    float GetValue() override;
    float GetMin() const override;
    float GetMax() const override;
    float GetDefault() const override;
    const States& GetStates() const override;
    unsigned GetFlags() const override;
    // Points the link at another handler, looking the target name up again.
    virtual void Retarget(ParameterHandler& handler);

private:
    ParameterHandler* targetHandler;
    std::atomic<ParameterBase*> targetParameter; // relaxed: moved on the audio thread, read anywhere
    std::string targetName;
    std::string linkName;
    std::string description;
};

// One name over the same-named parameter of several handlers: writes go to all, in order;
// reads come from the first.
class ParameterMultiLink : public ParameterBase {
public:
    ParameterMultiLink(std::vector<ParameterHandler*> handlers, std::string name);

    void SetValue(float value) override;
    const std::string& GetName() const override { return name; }
    const std::string& GetDescription() const override { return description; }
    float GetValue() override;
    float GetMin() const override;
    float GetMax() const override;
    float GetDefault() const override;
    const States& GetStates() const override;
    unsigned GetFlags() const override;

private:
    ParameterBase& First() const;

    std::string name;
    std::vector<ParameterHandler*> handlers;
    std::string description;
};

// Band-indexed names: a base name, "_" and one digit, as in "Gain_3".
std::string BandName(const std::string& base, int band);
// The band of a band-indexed name: its last character as a digit.
inline int BandOf(const std::string& name)
{
    return name.empty() ? 0 : name.back() - '0';
}

}  // namespace AudioEngine
