#include "docview/interfaces/ParameterInfo.h"

namespace OV::CFW::DocView {

ParameterInfo::FloatInfo::FloatInfo(float value, const DataFilter::FloatRange& valueRange)
    : defaultValue(valueRange.Constrain(value))
{
    valueRange.Clone(range);
    converter = DataFilter::MakeNorm(valueRange.GetMinimum(), valueRange.GetMaximum());
}

ParameterInfo::FloatInfo::FloatInfo(float value, const DataFilter::FloatRange& valueRange,
                                    const DataFilter::FloatConverter& valueConverter)
    : defaultValue(value)
{
    valueRange.Clone(range);
    valueConverter.Clone(converter);
}

ParameterInfo::FloatInfo::FloatInfo(const FloatInfo& other) : Info(), defaultValue(other.defaultValue)
{
    other.range->Clone(range);
    other.converter->Clone(converter);
}

ParameterInfo::ParameterInfo() : type(Parameter::Undefined), name("Undefined"), flags(0), info(std::make_unique<UndefinedInfo>()) {}

ParameterInfo::ParameterInfo(std::uint32_t type, std::string name, std::uint32_t flags, const Info& details)
    : type(type), name(std::move(name)), flags(flags)
{
    details.Clone(info);
}

ParameterInfo::ParameterInfo(const ParameterInfo& other)
    : type(other.type), name(other.name), flags(other.flags), index(other.index)
{
    other.info->Clone(info);
}

ParameterInfo& ParameterInfo::operator=(const ParameterInfo& other)
{
    if (this != &other) {
        type = other.type;
        name = other.name;
        flags = other.flags;
        index = other.index;
        other.info->Clone(info);
    }
    return *this;
}

ParameterInfo ParameterInfo::MakeBool(std::string name, bool defaultValue, std::uint32_t flags)
{
    return ParameterInfo(Parameter::Bool, std::move(name), flags, BoolInfo(defaultValue));
}

ParameterInfo ParameterInfo::MakeEnum(std::string name, std::vector<std::string> names, std::uint32_t defaultIndex,
                                      std::uint32_t flags)
{
    return ParameterInfo(Parameter::Enum, std::move(name), flags, EnumInfo(defaultIndex, std::move(names)));
}

ParameterInfo ParameterInfo::MakeFloat(std::string name, float defaultValue, const DataFilter::FloatRange& range,
                                       std::uint32_t flags)
{
    return ParameterInfo(Parameter::Float, std::move(name), flags, FloatInfo(defaultValue, range));
}

ParameterInfo ParameterInfo::MakeFloat(std::string name, float defaultValue, const DataFilter::FloatRange& range,
                                       const DataFilter::FloatConverter& converter, std::uint32_t flags)
{
    return ParameterInfo(Parameter::Float, std::move(name), flags, FloatInfo(defaultValue, range, converter));
}

Parameter ParameterInfo::GetDefault() const
{
    if (const BoolInfo* details = AsBool())
        return Parameter::FromBool(details->defaultValue);
    if (const EnumInfo* details = AsEnum())
        return Parameter::FromEnum(details->defaultIndex);
    if (const FloatInfo* details = AsFloat())
        return Parameter::FromFloat(details->defaultValue);
    return Parameter{type, 0};
}

}  // namespace OV::CFW::DocView
