#pragma once

// A small document table for the framework's tests.
#include "docview/datafilter/FloatRange.h"
#include "docview/utils/BasicDocumentProfile.h"

namespace OV::Testing {

using CFW::DocView::Parameter;
using CFW::DocView::ParameterInfo;

class TestDocumentProfile : public CFW::DocViewUtils::BasicDocumentProfile {
public:
    enum Row { Gain = 0, Mode = 1, Active = 2, Meter = 3, Kept = 4, Hidden = 5, Shared = 6, Level = 7 };

    TestDocumentProfile()
    {
        using CFW::DataFilter::MakeRange;
        // Declared out of order, with a gap at 8 and rows up to 9.
        SetParameter(Mode, ParameterInfo::MakeEnum("Mode", {"HighPass", "Peaking", "LowPass"}, 1, ParameterInfo::Serializable));
        SetParameter(Gain, ParameterInfo::MakeFloat("Gain", 0.0f, *MakeRange(-15.0f, 15.0f), ParameterInfo::Serializable));
        SetParameter(Active, ParameterInfo::MakeBool("Active", true, ParameterInfo::Serializable));
        SetParameter(Meter, ParameterInfo::MakeFloat("Meter", 0.0f, *MakeRange(0.0f, 100.0f), ParameterInfo::Transient));
        SetParameter(Kept, ParameterInfo::MakeFloat("Kept", 3.0f, *MakeRange(0.0f, 10.0f),
                                                    ParameterInfo::Serializable | ParameterInfo::NoDefault));
        SetParameter(Hidden, ParameterInfo::MakeFloat("Hidden", 440.0f, *MakeRange(20.0f, 20000.0f), 0));
        SetParameter(Shared, ParameterInfo::MakeEnum("Shared", {"One", "Two", "Three"}, 0, ParameterInfo::Property));
        SetParameter(Level, ParameterInfo::MakeEnum("Test.Level", {"Low", "Mid", "High"}, 0, ParameterInfo::Preference));
        SetParameter(9, ParameterInfo::MakeBool("Last", false, 0));
    }
};

}  // namespace OV::Testing
