#pragma once

#include <cstdint>
#include <cstring>

namespace OV::CFW::DocView {

// A document value: a type code and a 32-bit payload, passed by value everywhere.
struct Parameter {
    enum Type : std::uint32_t { Undefined = 0, Bool = 1, Integer = 2, Enum = 3, Float = 4 };

    std::uint32_t type = Undefined;
    std::uint32_t payload = 0;

    static Parameter FromBool(bool value) { return {Bool, value ? 1u : 0u}; }
    static Parameter FromInteger(std::int32_t value) { return {Integer, static_cast<std::uint32_t>(value)}; }
    static Parameter FromEnum(std::uint32_t index) { return {Enum, index}; }
    static Parameter FromFloat(float value)
    {
        std::uint32_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        return {Float, bits};
    }

    bool AsBool() const { return payload != 0; }
    std::int32_t AsInteger() const { return static_cast<std::int32_t>(payload); }
    std::uint32_t AsEnum() const { return payload; }
    float AsFloat() const
    {
        float value;
        std::memcpy(&value, &payload, sizeof value);
        return value;
    }
    // The value as a number, whatever the type: 0 or 1, the integer, the index, the float.
    float ToNumber() const
    {
        switch (type) {
        case Bool:
            return AsBool() ? 1.0f : 0.0f;
        case Integer:
            return static_cast<float>(AsInteger());
        case Enum:
            return static_cast<float>(AsEnum());
        case Float:
            return AsFloat();
        default:
            return 0.0f;
        }
    }

    // The value as one of `target` type: bits kept for the same type (or an undefined target),
    // else through its number; a bool is then 0 or 1 and a negative index 0.
    Parameter As(std::uint32_t target) const
    {
        if (type == target || target == Undefined)
            return {target, payload};
        const float number = ToNumber();
        switch (target) {
        case Bool:
            return FromBool(number != 0.0f);
        case Integer:
            return FromInteger(static_cast<std::int32_t>(number));
        case Enum:
            return FromEnum(number > 0.0f ? static_cast<std::uint32_t>(number) : 0u);
        default:
            return FromFloat(number);
        }
    }
    // The same type and the same bits.
    bool operator==(const Parameter& other) const { return type == other.type && payload == other.payload; }
    bool operator!=(const Parameter& other) const { return !(*this == other); }
};

// Who made a change; listeners use it not to echo.
enum Source {
    SourceHostTempo = 0,
    SourceInternal = 1, // defaults, loading, programs
    SourceEditor = 2,
    SourceHost = 3,     // the host, through automation
    SourceEngine = 5,   // the audio engine
};

}  // namespace OV::CFW::DocView
