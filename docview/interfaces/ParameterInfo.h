#pragma once

#include "docview/datafilter/FloatConverter.h"
#include "docview/datafilter/FloatRange.h"
#include "docview/interfaces/Parameter.h"

#include <memory>
#include <string>
#include <vector>

namespace OV::CFW::DocView {

// One declared row of a document: its type, name, flags and type-specific details. Copies are
// deep. Immutable once entered into a profile: any thread.
class ParameterInfo {
public:
    enum Flags {
        Serializable = 1, // written to and read from state; a change marks the document edited
        Transient = 2,    // stored without any notification (outputs of the audio side)
        NoDefault = 4,    // a reset leaves it as it was
        Property = 8,     // bound to the context property of its name
        Preference = 16,  // bound to the preference of its name
    };

    class Info {
    public:
        virtual ~Info() = default;
        virtual void Clone(std::unique_ptr<Info>& out) const = 0;
    };

    class UndefinedInfo : public Info {
    public:
        void Clone(std::unique_ptr<Info>& out) const override { out = std::make_unique<UndefinedInfo>(); }
    };

    class BoolInfo : public Info {
    public:
        explicit BoolInfo(bool defaultValue) : defaultValue(defaultValue) {}
        void Clone(std::unique_ptr<Info>& out) const override { out = std::make_unique<BoolInfo>(defaultValue); }
        bool defaultValue;
    };

    class EnumInfo : public Info {
    public:
        EnumInfo(std::uint32_t defaultIndex, std::vector<std::string> names)
            : defaultIndex(defaultIndex), names(std::move(names))
        {
        }
        void Clone(std::unique_ptr<Info>& out) const override { out = std::make_unique<EnumInfo>(defaultIndex, names); }
        std::uint32_t defaultIndex;
        std::vector<std::string> names; // at least one
    };

    class FloatInfo : public Info {
    public:
        // The default is clamped by the range; the converter is linear over the range.
        FloatInfo(float defaultValue, const DataFilter::FloatRange& range);
        FloatInfo(float defaultValue, const DataFilter::FloatRange& range, const DataFilter::FloatConverter& converter);
        FloatInfo(const FloatInfo& other);
        void Clone(std::unique_ptr<Info>& out) const override { out = std::make_unique<FloatInfo>(*this); }
        float defaultValue; // plain
        std::unique_ptr<DataFilter::FloatRange> range;
        std::unique_ptr<DataFilter::FloatConverter> converter;
    };

    // Type undefined, name "Undefined".
    ParameterInfo();
    ParameterInfo(std::uint32_t type, std::string name, std::uint32_t flags, const Info& info);
    ParameterInfo(const ParameterInfo& other);
    ParameterInfo& operator=(const ParameterInfo& other);

    static ParameterInfo MakeBool(std::string name, bool defaultValue, std::uint32_t flags);
    static ParameterInfo MakeEnum(std::string name, std::vector<std::string> names, std::uint32_t defaultIndex,
                                  std::uint32_t flags);
    static ParameterInfo MakeFloat(std::string name, float defaultValue, const DataFilter::FloatRange& range,
                                   std::uint32_t flags);
    static ParameterInfo MakeFloat(std::string name, float defaultValue, const DataFilter::FloatRange& range,
                                   const DataFilter::FloatConverter& converter, std::uint32_t flags);

    // The declared default, tagged with the row's type.
    Parameter GetDefault() const;
    // Null unless the row is of that kind.
    const BoolInfo* AsBool() const { return dynamic_cast<const BoolInfo*>(info.get()); }
    const EnumInfo* AsEnum() const { return dynamic_cast<const EnumInfo*>(info.get()); }
    const FloatInfo* AsFloat() const { return dynamic_cast<const FloatInfo*>(info.get()); }

    std::uint32_t type;
    std::string name; // also the XML attribute and the key of bound properties and preferences
    std::uint32_t flags;
    int index = -1;   // the row, once entered into a profile
    std::unique_ptr<Info> info;
};

}  // namespace OV::CFW::DocView
