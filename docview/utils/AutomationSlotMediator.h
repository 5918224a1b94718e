#pragma once

#include "docview/datafilter/FloatConverter.h"
#include "docview/interfaces/Document.h"
#include "docview/interfaces/Parameter.h"

#include <atomic>
#include <memory>
#include <string>

#include <boost/format.hpp>

namespace OV::CFW::DocViewUtils {

// One host-visible slot over one document row: it holds the slot's present value, converts
// between plain and normalised, and formats. Made by the Creator an automation profile lists.
//
// Threads: GetValue, GetNormalized, ToNormalized, SetValue, SetNormalized and GetParameterValue
// may run on any thread, the audio thread included: no allocation, no lock (the value is one
// atomic word). The display operations allocate (main thread); SetFromDocument runs on the
// thread of the document change.
class AutomationSlotMediator {
public:
    // The declaration of one slot, held by a profile. Read-only: any thread.
    class Creator {
    public:
        virtual ~Creator() = default;
        // Allocates. Throws std::invalid_argument when the row is not of the slot's kind.
        virtual std::unique_ptr<AutomationSlotMediator> Create(const DocView::Document& document) const = 0;

        int GetParameter() const { return row; }
        int GetSlot() const { return slot; }
        const std::string& GetName() const { return name; }
        const std::string& GetShortName() const { return shortName; }

    protected:
        Creator(int row, int slot, std::string name, std::string shortName);

    private:
        int row;
        int slot;
        std::string name;
        std::string shortName;
    };

    AutomationSlotMediator() = default;
    AutomationSlotMediator(const AutomationSlotMediator&) = delete;
    AutomationSlotMediator& operator=(const AutomationSlotMediator&) = delete;
    virtual ~AutomationSlotMediator() = default;

    // The document row.
    virtual int GetParameter() const = 0;
    virtual int GetSlot() const = 0;
    virtual void GetDisplay(std::string& text) const = 0;
    // The text of a normalised value.
    virtual void GetDisplayFor(std::string& text, float normalised) const = 0;
    virtual float ToNormalized(float plain) const = 0;
    virtual float GetValue() const = 0;
    virtual float GetNormalized() const = 0;
    // True when the slot changed, and so the document must hear of it.
    virtual bool SetValue(float plain) = 0;
    virtual bool SetNormalized(float normalised) = 0;
    // The present value as the document row takes it.
    virtual DocView::Parameter GetParameterValue() const = 0;
    // Follows the row; true when the slot changed, and so the host must hear of it.
    virtual bool SetFromDocument(DocView::Parameter value) = 0;
};

// A float row: the plain value is the row's, the normalised one comes from the row's converter,
// and the text is the plain value printed with a fixed number of decimals and the unit.
class AutomationSlotMediatorFloat : public AutomationSlotMediator {
public:
    class Creator : public AutomationSlotMediator::Creator {
    public:
        // `precision` decimals ("%.2f"), or the default six ("%f") when negative. A non-empty
        // unit follows the number after a space.
        Creator(int row, int slot, std::string name, std::string shortName, int precision, const std::string& unitText);
        std::unique_ptr<AutomationSlotMediator> Create(const DocView::Document& document) const override;

        // A copy to format with: a format object is not to be shared between threads.
        boost::format GetFormat() const { return format; }

    private:
        boost::format format;
    };

    // `converter` belongs to the row's declaration, which outlives the slot.
    AutomationSlotMediatorFloat(const Creator& creator, const DataFilter::FloatConverter& converter, float value);

    int GetParameter() const override { return creator.GetParameter(); }
    int GetSlot() const override { return creator.GetSlot(); }
    void GetDisplay(std::string& text) const override { Format(text, GetValue()); }
    void GetDisplayFor(std::string& text, float normalised) const override { Format(text, converter.ToValue(normalised)); }
    float ToNormalized(float plain) const override { return converter.ToNormalized(plain); }
    float GetValue() const override { return value.load(std::memory_order_relaxed); }
    float GetNormalized() const override { return converter.ToNormalized(GetValue()); }
    bool SetValue(float plain) override;
    bool SetNormalized(float normalised) override { return SetValue(converter.ToValue(normalised)); }
    DocView::Parameter GetParameterValue() const override { return DocView::Parameter::FromFloat(GetValue()); }
    bool SetFromDocument(DocView::Parameter parameter) override;

    // Allocates.
    virtual void Format(std::string& text, float plain) const;

private:
    const Creator& creator;
    const DataFilter::FloatConverter& converter;
    std::atomic<float> value;
};

// A bool row as a switch: plain and normalised are the same number, and 0.5 or more is on.
class AutomationSlotMediatorBool : public AutomationSlotMediator {
public:
    class Creator : public AutomationSlotMediator::Creator {
    public:
        Creator(int row, int slot, std::string name, std::string shortName, std::string onText, std::string offText);
        std::unique_ptr<AutomationSlotMediator> Create(const DocView::Document& document) const override;

        const std::string& GetOnText() const { return onText; }
        const std::string& GetOffText() const { return offText; }

    private:
        std::string onText;
        std::string offText;
    };

    AutomationSlotMediatorBool(const Creator& creator, bool on);

    int GetParameter() const override { return creator.GetParameter(); }
    int GetSlot() const override { return creator.GetSlot(); }
    void GetDisplay(std::string& text) const override { GetDisplayFor(text, GetValue()); }
    void GetDisplayFor(std::string& text, float normalised) const override;
    float ToNormalized(float plain) const override { return plain; }
    float GetValue() const override { return value.load(std::memory_order_relaxed); }
    float GetNormalized() const override { return GetValue(); }
    // Stores the number as given; true only when it turned the switch over.
    bool SetValue(float plain) override;
    bool SetNormalized(float normalised) override { return SetValue(normalised); }
    DocView::Parameter GetParameterValue() const override { return DocView::Parameter::FromBool(IsOn(GetValue())); }
    // A switch turned over from inside reads back as 0.5 (on) or 0 (off).
    bool SetFromDocument(DocView::Parameter parameter) override;

private:
    static bool IsOn(float value) { return value >= 0.5f; }

    const Creator& creator;
    std::atomic<float> value;
};

}  // namespace OV::CFW::DocViewUtils
