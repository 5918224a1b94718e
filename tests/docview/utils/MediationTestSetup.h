#pragma once

// A document, a MAF profile over it and a MAF context, for the tests of the audio mediation.
#include "docview/datafilter/FloatRange.h"
#include "docview/interfaces/MAFContext.h"
#include "docview/utils/BasicDocument.h"
#include "docview/utils/BasicDocumentProfile.h"
#include "docview/utils/BasicMAFProfile.h"
#include "docview/utils/BasicProperties.h"
#include "docview/utils/ExchangeRing.h"

#include <memory>
#include <string>

namespace OV::CFW::DocViewUtils::TestDoubles {

using DocView::Parameter;
using DocView::ParameterInfo;

// Rows: a few of each kind, a transient output, an unmediated row, and 40 band rows.
class MediatedDocumentProfile : public BasicDocumentProfile {
public:
    enum Row { Gain = 0, Mode = 1, Active = 2, Level = 3, Free = 4, Bypass = 5, FirstBand = 6 };
    static constexpr int bands = 40;

    MediatedDocumentProfile()
    {
        using DataFilter::MakeRange;
        SetParameter(Gain, ParameterInfo::MakeFloat("Gain", 0.0f, *MakeRange(-15.0f, 15.0f), ParameterInfo::Serializable));
        SetParameter(Mode, ParameterInfo::MakeEnum("Mode", {"A", "B", "C"}, 1, ParameterInfo::Serializable));
        SetParameter(Active, ParameterInfo::MakeBool("Active", false, ParameterInfo::Serializable));
        SetParameter(Level, ParameterInfo::MakeFloat("Level", 0.0f, *MakeRange(0.0f, 100.0f), ParameterInfo::Transient));
        SetParameter(Free, ParameterInfo::MakeFloat("Free", 0.0f, *MakeRange(0.0f, 1.0f), ParameterInfo::Serializable));
        SetParameter(Bypass, ParameterInfo::MakeBool("Bypass", false, 0));
        for (int band = 0; band < bands; ++band)
            SetParameter(FirstBand + band, ParameterInfo::MakeFloat("Band" + std::to_string(band), static_cast<float>(band),
                                                                    *MakeRange(0.0f, 1000.0f), ParameterInfo::Serializable));
    }
};

// Gain drives two engine parameters; Level comes back from the engine; Free has none.
class MediatedMAFProfile : public BasicMAFProfile {
public:
    MediatedMAFProfile() : BasicMAFProfile("Test")
    {
        using Row = MediatedDocumentProfile;
        AddCreator(std::make_unique<MAFParamMediatorFloat::Creator>(Row::Gain, "Gain"));
        AddCreator(std::make_unique<MAFParamMediatorFloat::Creator>(Row::Gain, "GainCopy"));
        AddCreator(std::make_unique<MAFParamMediatorEnum::Creator>(Row::Mode, "Mode", std::vector<float>{10, 20, 30}));
        AddCreator(std::make_unique<MAFParamMediatorBool::Creator>(Row::Active, "Active", std::string("Off"), std::string("On")));
        AddCreator(std::make_unique<MAFParamMediatorFloat::Creator>(Row::Level, "Level"));
        AddCreator(std::make_unique<MAFParamMediatorProcess::Creator>(-1, Row::Bypass, -1));
        for (int band = 0; band < Row::bands; ++band)
            AddCreator(std::make_unique<MAFParamMediatorFloat::Creator>(Row::FirstBand + band, "Band" + std::to_string(band)));
    }
    using BasicMAFProfile::AddCreator;
};

// A document whose batches a test can open.
class BatchDocument : public BasicDocument {
public:
    using BasicDocument::BasicDocument;
    template <typename Work>
    void Batch(Work&& work)
    {
        InBatch([&] {
            work();
            return 0;
        });
    }
};

class TestMAFContext : public DocView::MAFContext {
public:
    const DocView::Properties& GetProperties() const override { return properties; }
    DocView::Properties& GetProperties() override { return properties; }
    std::shared_ptr<DocView::InterfaceContext> CreateLocal(DocView::ComponentContext*) override { return nullptr; }
    DocView::ComponentContext* GetParent() const override { return nullptr; }
    ExchangeRing& GetExchangeRing() override { return ring; }

    BasicProperties properties;
    ExchangeRing ring;
};

}  // namespace OV::CFW::DocViewUtils::TestDoubles
