#include "engine/dsp/equaliser/LinearizedFilterChain.h"

namespace AudioEngine::VN4 {

using AudioAlgorithm::EqChain;
using AudioAlgorithm::FilterBand;

namespace {

bool Starts(const std::string& name, const char* prefix)
{
    return name.compare(0, std::char_traits<char>::length(prefix), prefix) == 0;
}

}  // namespace

LinearizedFilterChain::LinearizedFilterChain()
    : ModuleMono(ModuleInfo{18, "LinearizedFilterChain", ""}), reversedBlock(chainA, chainB)
{
}

void LinearizedFilterChain::CreateParameters()
{
    const std::vector<std::string> offOn = {"Off", "On"};
    AddParameter(std::make_unique<Parameter>("Linearize", "", offOn, "On", 0));
    AddParameter(std::make_unique<Parameter>("Process", "", std::vector<std::string>{"Normal", "Bypass"}, "Normal", 0));
    const std::vector<std::string> modes = {"HiPass", "LowShelving", "Peaking", "HiShelving", "LowPass"};
    for (int band = 0; band < EqChain::bandCount; ++band) {
        AddParameter(std::make_unique<Parameter>(BandName("Active", band), "", offOn, "Off", 0));
        AddParameter(std::make_unique<Parameter>(BandName("Mode", band), "", modes, "Peaking", 0));
        AddParameter(std::make_unique<Parameter>(BandName("Gain", band), "", -15.0f, 15.0f, 0.0f, ParameterBase::Step));
        AddParameter(std::make_unique<Parameter>(BandName("F", band), "", 10.0f, 20000.0f, 10.0f, ParameterBase::Step));
        AddParameter(std::make_unique<Parameter>(BandName("Q_Peaking", band), "", 0.2f, 20.0f, 0.7f, ParameterBase::Step));
        AddParameter(std::make_unique<Parameter>(BandName("Q_Shelving", band), "", 0.2f, 3.0f, 0.2f, ParameterBase::Step));
        AddParameter(std::make_unique<Parameter>(BandName("Q_LPHP", band), "", 0.3f, 2.0f, 0.7f, ParameterBase::Step));
    }
    chainCoeffs = static_cast<DataBlock*>(&AddDataBlock(std::make_unique<DataBlock>("ChainCoeffs", "", coefficientCount)));
}

void LinearizedFilterChain::ProcessBlock()
{
    const int count = GetBlockSize();
    if (linearize)
        reversedBlock.Process(output->GetBuffer(), input->GetBuffer(), count);
    else
        chainA.Process(input->GetBuffer(), output->GetBuffer(), count);
}

void LinearizedFilterChain::ProcessPair(LinearizedFilterChain& left, LinearizedFilterChain& right)
{
    if (left.linearize != right.linearize) {
        left.ProcessBlock();
        right.ProcessBlock();
        return;
    }
    const int count = left.GetBlockSize();
    float* outL = left.output->GetBuffer();
    float* outR = right.output->GetBuffer();
    const float* inL = left.input->GetBuffer();
    const float* inR = right.input->GetBuffer();
    if (left.linearize)
        AudioAlgorithm::ReversedBlockFilter::ProcessPair(left.reversedBlock, right.reversedBlock, outL, outR, inL, inR, count);
    else
        EqChain::ProcessPair(left.chainA, right.chainA, inL, inR, outL, outR, count);
}

template <typename Update>
void LinearizedFilterChain::ForBand(int band, Update&& update)
{
    if (band < 0 || band >= EqChain::bandCount)
        return;
    for (EqChain* chain : {&chainA, &chainB})
        update(*chain, chain->bands[static_cast<std::size_t>(band)]);
}

void LinearizedFilterChain::SetParameter(const std::string& name, float value)
{
    ModuleMono::SetParameter(name, value);
    ParameterBase* parameter = GetParameter(name);
    if (parameter == nullptr)
        return;
    const float stored = parameter->GetValue();
    const int band = BandOf(name);
    const auto section = [band](EqChain& chain) -> AudioAlgorithm::Biquad& {
        return chain.sections[static_cast<std::size_t>(band)];
    };

    if (name == "Linearize") {
        const bool on = stored != 0.0f;
        if (on != linearize) {
            linearize = on;
            for (EqChain* chain : {&chainA, &chainB}) {
                if (chain->linearized != on) {
                    chain->linearized = on;
                    chain->Reset();
                }
            }
        }
        reversedBlock.Clear();
    } else if (name == "Process") {
        const bool bypass = stored != 0.0f;
        for (EqChain* chain : {&chainA, &chainB}) {
            if (chain->bypass != bypass) {
                chain->bypass = bypass;
                if (bypass)
                    chain->Reset();
            }
        }
    } else if (Starts(name, "Active_")) {
        ForBand(band, [&](EqChain& chain, FilterBand& settings) {
            settings.active = stored != 0.0f;
            section(chain).Reset();
        });
    } else if (Starts(name, "Mode_")) {
        ForBand(band, [&](EqChain& chain, FilterBand& settings) {
            settings.type = static_cast<int>(stored);
            chain.Design(band);
            section(chain).Reset();
        });
    } else if (Starts(name, "Gain_")) {
        ForBand(band, [&](EqChain& chain, FilterBand& settings) {
            settings.gain = stored;
            chain.Design(band);
        });
    } else if (Starts(name, "F_")) {
        ForBand(band, [&](EqChain& chain, FilterBand& settings) {
            settings.frequency = stored;
            chain.Design(band);
        });
    } else if (Starts(name, "Q_Peaking_")) {
        ForBand(band, [&](EqChain& chain, FilterBand& settings) {
            settings.qPeaking = stored;
            if (settings.type == AudioAlgorithm::Peaking)
                chain.Design(band);
        });
    } else if (Starts(name, "Q_Shelving_")) {
        ForBand(band, [&](EqChain& chain, FilterBand& settings) {
            settings.qShelving = stored;
            if (settings.type == AudioAlgorithm::LowShelving || settings.type == AudioAlgorithm::HiShelving)
                chain.Design(band);
        });
    } else if (Starts(name, "Q_LPHP_")) {
        ForBand(band, [&](EqChain& chain, FilterBand& settings) {
            settings.qLowHighPass = stored;
            if (settings.type == AudioAlgorithm::HiPass || settings.type == AudioAlgorithm::LowPass)
                chain.Design(band);
        });
    } else {
        return;
    }
    PublishCoefficients();
}

void LinearizedFilterChain::PublishCoefficients()
{
    float coefficients[coefficientCount];
    chainA.CopyCoefficients(coefficients);
    chainCoeffs->Store(coefficients, coefficientCount);
}

void LinearizedFilterChain::SampleRateChanged()
{
    const float rate = GetSampleRate();
    for (EqChain* chain : {&chainA, &chainB}) {
        chain->SetSampleRate(rate);
        chain->Reset();
    }
    PublishCoefficients();
}

void LinearizedFilterChain::Reset()
{
    chainA.Reset();
    chainB.Reset();
    reversedBlock.Clear();
}

}  // namespace AudioEngine::VN4
