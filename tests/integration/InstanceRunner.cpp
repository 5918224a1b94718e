#include "tests/integration/InstanceRunner.h"

#include "platform/RegistryKey.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <stdexcept>

namespace OV::Testing {

InstanceRunner::InstanceRunner(const LibraryCopy& copy, float rate, int blockSize) : library(copy), block(blockSize)
{
    plugIn = library.Acquire();
    if (plugIn == nullptr)
        throw std::runtime_error("the library refused to start");
    process = plugIn->CreateProcess(plugIn, host.Callbacks(), 0);
    process->SetHostInputCount(process, 2);
    process->SetHostOutputCount(process, 2);
    process->SetSampleRate(process, rate);
    process->SetBlockSize(process, static_cast<unsigned>(blockSize));
    process->Start(process);
    process->Resume(process);
}

InstanceRunner::~InstanceRunner()
{
    process->Suspend(process);
    plugIn->DestroyProcess(plugIn, process);
    library.Library().Release();
}

std::vector<std::vector<float>> InstanceRunner::Run(const std::vector<float>& left, const std::vector<float>& right)
{
    std::vector<float> inL(left), inR(right);
    std::vector<std::vector<float>> out(2, std::vector<float>(left.size()));
    for (std::size_t done = 0; done < left.size(); done += static_cast<std::size_t>(block)) {
        const int count = static_cast<int>(std::min<std::size_t>(static_cast<std::size_t>(block), left.size() - done));
        float* in[2] = {inL.data() + done, inR.data() + done};
        float* outs[2] = {out[0].data() + done, out[1].data() + done};
        process->ProcessSeparate(process, in, outs, count, nullptr);
    }
    return out;
}

std::string InstanceRunner::Chunk(int (*get)(HLA2Process*, void**))
{
    void* text = nullptr;
    const int size = get(process, &text);
    return std::string(static_cast<const char*>(text), static_cast<std::size_t>(size));
}

void InstanceRunner::EditProgram(AttributeEdits edits) { SetProgramChunk(Edited(GetProgramChunk(), edits)); }

std::string Edited(const std::string& chunk, AttributeEdits edits, const char* name)
{
    TiXmlDocument document;
    document.Parse(chunk.c_str());
    std::function<void(TiXmlElement*)> walk = [&](TiXmlElement* element) {
        for (; element != nullptr; element = element->NextSiblingElement()) {
            for (const auto& [attribute, value] : edits)
                if (std::string(element->Value()) == name)
                    value != nullptr ? element->SetAttribute(attribute, value) : element->RemoveAttribute(attribute);
            walk(element->FirstChildElement());
        }
    };
    walk(document.RootElement());
    TiXmlPrinter printer;
    document.Accept(&printer);
    return printer.Str();
}

std::map<std::string, std::string> AttributesOf(const TiXmlElement* element)
{
    std::map<std::string, std::string> values;
    for (auto* a = element != nullptr ? element->FirstAttribute() : nullptr; a != nullptr; a = a->Next())
        values[a->Name()] = a->Value();
    return values;
}

std::map<std::string, std::string> ModuleOf(const std::string& chunk)
{
    TiXmlDocument document;
    document.Parse(chunk.c_str());
    const TiXmlHandle slot = TiXmlHandle(&document).FirstChildElement().FirstChildElement("Slot0");
    return AttributesOf(slot.FirstChildElement("Module").ToElement());
}

std::vector<float> Noise(std::size_t frames, std::uint32_t seed)
{
    std::vector<float> noise(frames);
    for (float& x : noise) {
        seed = seed * 1664525u + 1013904223u;
        x = static_cast<float>(seed >> 8) / float(1u << 24) - 0.5f;
    }
    return noise;
}

std::vector<float> Impulse(std::size_t frames, float height)
{
    std::vector<float> impulse(frames, 0.0f);
    impulse[0] = height;
    return impulse;
}

void InstanceFixture::SetUp() { setenv("XDG_CONFIG_HOME", config.Path().c_str(), 1); }

void InstanceFixture::SetLatencyLevel(int level)
{
    ASSERT_TRUE(Platform::RegistryKey("Varnel4 Lin Phase EQ", "Orvane Studio", 0)
                    .WriteString("Main.LatencyLevel", std::to_string(level)));
}

}  // namespace OV::Testing
