#pragma once

// Roles of a component made for the shell's tests: each records what reached it.
#include "docview/interfaces/Audio.h"
#include "docview/interfaces/Automation.h"
#include "docview/interfaces/Programs.h"
#include "docview/utils/BasicComponent.h"
#include "docview/utils/BasicComponentProfile.h"
#include "docview/utils/BasicDocument.h"
#include "docview/utils/BasicDocumentProfile.h"

#include <tinyxml.h>

#include <vector>

namespace OV::Testing {

// Renders out0 = 2 * in0 and out1 = -3 * in1 (-3 * in0 with one input); counts stops in
// `stops`, which outlives the role.
class FakeAudio : public CFW::DocView::Audio, public CFW::DocView::AudioProfile {
public:
    FakeAudio(int inputs, int outputs, int* stops) : inputs(inputs), outputs(outputs), stops(stops) {}

    const AudioProfile* GetProfile() const override { return this; }
    int GetInputCount() const override { return inputs; }
    int GetOutputCount() const override { return outputs; }
    void SetBlockSize(unsigned frames) override { blockSizes.push_back(frames); }
    void SetSampleRate(float rate) override { rates.push_back(rate); }
    void SetTransport(float bpm, double, double) override { tempos.push_back(bpm); }
    void Process(float** in, float** out, int frames, void*) override
    {
        seenInputs.assign(in, in + 2);
        seenFrames.push_back(frames);
        for (int i = 0; i < frames; ++i) {
            const float first = in[0][i], second = inputs > 1 ? in[1][i] : first;
            out[0][i] = 2.0f * first;
            if (outputs > 1)
                out[1][i] = -3.0f * second;
        }
    }
    int GetLatency() override { return 123; }
    void Stop() override { ++*stops; }

    int inputs, outputs;
    int* stops;
    std::vector<unsigned> blockSizes;
    std::vector<float> rates, tempos;
    std::vector<float*> seenInputs;
    std::vector<int> seenFrames;
};

// A document without rows that records the tempo and flag it is given.
class FakeDocument : public CFW::DocViewUtils::BasicDocument {
public:
    FakeDocument() : BasicDocument(&profile, nullptr) {}

    bool QueueSetBPM(float bpm, int source) override
    {
        queuedTempos.push_back(bpm);
        sources.push_back(source);
        return true;
    }
    void SetHostFlag(bool flag) override { hostFlags.push_back(flag); }

    std::vector<float> queuedTempos;
    std::vector<int> sources;
    std::vector<bool> hostFlags;

private:
    static inline const CFW::DocViewUtils::BasicDocumentProfile profile;
};

// Three slots whose texts and values follow from the slot number; queues are recorded, and
// slot 2 refuses normalised values.
class FakeAutomation : public CFW::DocView::Automation, public CFW::DocView::AutomationProfile {
public:
    const AutomationProfile* GetProfile() const override { return this; }
    const std::string& GetName() const override { return name; }
    int GetSlotCount() const override { return 3; }
    std::string GetSlotName(int slot) const override { return "Slot number " + std::to_string(slot); }
    std::string GetSlotShortName(int slot) const override { return "S" + std::to_string(slot); }
    void SetListener(Listener* value) override { listener = value, ++listenerSets; }
    Listener* GetListener() const override { return listener; }
    void GetDisplay(std::string& text, int slot) override { text = "display " + std::to_string(slot); }
    void GetDisplayFor(std::string& text, int slot, float plain) override
    {
        text = std::to_string(slot) + ":" + std::to_string(static_cast<int>(plain));
    }
    float ToNormalized(int slot, float plain) override { return plain / 10.0f + static_cast<float>(slot); }
    float GetValue(int slot) override { return 2.0f * static_cast<float>(slot); }
    float GetNormalized(int slot) override { return 0.25f * static_cast<float>(slot); }
    void SetValue(int, float) override {}
    void SetNormalized(int, float) override {}
    bool QueueValue(int slot, float plain) override { return queued.push_back({slot, plain}), true; }
    bool QueueNormalized(int slot, float normalised) override { return queued.push_back({slot, normalised}), slot != 2; }

    std::string name = "Automation";
    Listener* listener = nullptr;
    int listenerSets = 0;
    std::vector<std::pair<int, float>> queued;
};

// Two programs kept as the XML they were given; loads counted.
class FakePrograms : public CFW::DocView::Programs, public CFW::DocView::ProgramsProfile {
public:
    FakePrograms() : elements(2, TiXmlElement("Program")), names{"First", "Second"}
    {
        elements[0].SetAttribute("Gain", "1.5");
        elements[1].SetAttribute("Gain", "-3");
    }
    const ProgramsProfile* GetProfile() const override { return this; }
    int GetProgramCount() const override { return 2; }
    void SetCurrent(int index) override { current = index; }
    int GetCurrent() const override { return current; }
    void SetName(int index, const std::string& name) override { names[index] = name; }
    std::string GetName(int index) const override { return names[index]; }
    void LoadProgram(int index, const TiXmlElement& element) override
    {
        ++loads;
        if (std::string(element.Value()) == "Program")
            elements[index] = element;
    }
    void SaveProgram(int index, TiXmlElement& element) override { element = elements[index]; }
    void LoadBank(const TiXmlElement& element) override
    {
        ++loads;
        const TiXmlElement* child = std::string(element.Value()) == "Bank" ? element.FirstChildElement("Program") : nullptr;
        for (int index = 0; child != nullptr && index < 2; child = child->NextSiblingElement("Program"))
            elements[index++] = *child;
    }
    void SaveBank(TiXmlElement& element) override
    {
        element.SetValue("Bank");
        for (const TiXmlElement& program : elements)
            element.InsertEndChild(program);
    }
    void Copy(int source, int target) override { elements[target] = elements[source]; }

    int current = 0;
    int loads = 0;
    std::vector<TiXmlElement> elements;
    std::vector<std::string> names;
};

// A component offering whichever of the roles it is given, and owning them.
class FakeComponent : public CFW::DocViewUtils::BasicComponent {
public:
    explicit FakeComponent(std::vector<CFW::DocView::Interface*> roles) : BasicComponent(&profile), owned(roles)
    {
        for (CFW::DocView::Interface* role : roles)
            AddInterface(role);
    }
    ~FakeComponent() override
    {
        for (CFW::DocView::Interface* role : owned)
            delete role;
    }

private:
    static inline const CFW::DocViewUtils::BasicComponentProfile profile{{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}}, "Fake Component"};
    std::vector<CFW::DocView::Interface*> owned;
};

}  // namespace OV::Testing
