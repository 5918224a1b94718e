#include "hosts/lv2/Description.h"

#include "hosts/common/PresetFiles.h"
#include "hosts/lv2/PortLayout.h"

#include <cctype>
#include <cmath>

namespace OV::Hosts::Lv2 {

namespace {

constexpr float probeRate = 48000.0f;
constexpr int probeBlock = 512;

bool Numeric(const std::string& text)
{
    return !text.empty() && (std::isdigit(static_cast<unsigned char>(text[0])) || text[0] == '-' || text[0] == '+' || text[0] == '.');
}

const char* UnitOf(const std::string& name)
{
    if (name.find("Gain") != std::string::npos || name.find("Level") != std::string::npos)
        return "db";
    if (name.find("Freq") != std::string::npos)
        return "hz";
    return nullptr;
}

}  // namespace

std::string SymbolOf(const std::string& name)
{
    std::string symbol;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(name[i]);
        const bool wordStart = i > 0 && std::isupper(c) && std::islower(static_cast<unsigned char>(name[i - 1]));
        if (std::isalnum(c)) {
            if (wordStart && !symbol.empty() && symbol.back() != '_')
                symbol += '_';
            symbol += static_cast<char>(std::tolower(c));
        } else if (!symbol.empty() && symbol.back() != '_') {
            symbol += '_';
        }
    }
    while (!symbol.empty() && symbol.back() == '_')
        symbol.pop_back();
    return symbol;
}

std::vector<SlotPort> DescribeSlots(HostedProcess& process)
{
    std::vector<SlotPort> slots;
    for (int slot = 0; slot < process.GetSlotCount(); ++slot) {
        SlotPort port;
        port.name = process.GetSlotName(slot);
        port.symbol = SymbolOf(port.name);
        port.value = process.GetSlotValue(slot);
        const SlotRange range = FindRange(process, slot);
        port.minimum = range.lowest;
        port.maximum = range.highest;
        port.toggled = range.lowest == 0.0f && range.highest == 1.0f && !Numeric(process.GetSlotDisplayFor(slot, 0.0f));
        // A logarithmic mapping puts the geometric mean at the middle of the normalised range.
        const float was = process.GetSlotNormalized(slot);
        process.SetSlotNormalized(slot, 0.5f);
        const float middle = process.GetSlotValue(slot);
        process.SetSlotNormalized(slot, was);
        port.logarithmic = range.lowest > 0.0f
                           && std::fabs(middle - std::sqrt(range.lowest * range.highest))
                                  < std::fabs(middle - 0.5f * (range.lowest + range.highest));
        port.unit = UnitOf(port.name);
        slots.push_back(port);
    }
    return slots;
}

std::vector<Preset> DescribePresets(HLA2PlugIn* plugIn, const std::vector<std::string>& labels,
                                    const std::vector<std::string>& paths)
{
    std::vector<Preset> presets;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        HostedProcess process(plugIn, probeRate, probeBlock, 2);
        process.SetProgramChunk(PresetAsProgram(paths[i]));
        Preset preset{labels[i], std::string(pluginUri) + "#preset-" + SymbolOf(labels[i]), {}, process.GetProgramChunk()};
        for (int slot = 0; slot < process.GetSlotCount(); ++slot)
            preset.values.push_back(process.GetSlotValue(slot));
        presets.push_back(std::move(preset));
    }
    return presets;
}

}  // namespace OV::Hosts::Lv2
