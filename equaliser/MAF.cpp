#include "equaliser/MAF.h"

#include "docview/utils/MAFParamMediator.h"

namespace OV::Comp::ModuleLinearPhaseEq {

using CFW::DocViewUtils::MAFParamMediator;

MAF::MAF(const MAFProfile* profile, CFW::DocView::MAFContext* context, Document* document)
    : BasicMAF(profile, context, document)
{
}

void MAF::Attach(CFW::DocView::MAFWrapper* wrapper, const std::string& prefix)
{
    BasicMAF::Attach(wrapper, prefix);
    engine = wrapper;
    coeffsL = {};
    coeffsR = {};
    sampleRate = {};
    if (engine == nullptr)
        return;
    engine->ResolveName(coeffsL, MAFParamMediator::MakeEngineName("ChainCoeffsL", prefix));
    engine->ResolveName(coeffsR, MAFParamMediator::MakeEngineName("ChainCoeffsR", prefix));
    engine->ResolveName(sampleRate, MAFParamMediator::MakeEngineName("SampleRate", prefix));
}

void MAF::Detach()
{
    BasicMAF::Detach();
    engine = nullptr;
}

void MAF::Idle()
{
    BasicMAF::Idle();
    if (engine == nullptr)
        return;
    // The audio thread goes on changing them: the three are read as one moment's, or this
    // tick passes and the next one tries again.
    const bool whole = engine->ReadBetweenChanges([this] {
        engine->ReadDataBlock(coeffsL, left);
        engine->ReadDataBlock(coeffsR, right);
        rate = engine->GetFloatParameter(sampleRate);
    });
    if (whole)
        GetEqualiserDocument().GetCoefficientRing().Push(left, right, rate);
}

}  // namespace OV::Comp::ModuleLinearPhaseEq
