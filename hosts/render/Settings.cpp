#include "hosts/render/Settings.h"

#include "hosts/common/HostError.h"
#include "platform/XmlParse.h"

#include <tinyxml.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <sstream>

#include <boost/algorithm/string/case_conv.hpp>

namespace OV::Hosts::Render {

namespace {

std::string ChannelModeName(const std::string& mode)
{
    const std::string lowered = boost::algorithm::to_lower_copy(mode);
    if (lowered == "lr" || lowered == "l/r")
        return "L/R";
    if (lowered == "ms" || lowered == "m/s")
        return "M/S";
    throw HostError(BadArgument, "unknown channel mode '" + mode + "' (lr or ms)");
}

float ParseValue(HostedProcess& probe, int slot, const std::string& slotName, const std::string& text)
{
    char* end = nullptr;
    errno = 0;
    const float value = std::strtof(text.c_str(), &end);
    if (end != text.c_str() && *end == '\0' && errno == 0 && std::isfinite(value))
        return value;
    // A switch also takes its texts ("On", "Off").
    for (const float normalised : {0.0f, 1.0f}) {
        if (boost::algorithm::to_lower_copy(probe.GetSlotDisplayFor(slot, normalised)) == boost::algorithm::to_lower_copy(text))
            return normalised;
    }
    throw HostError(BadArgument, "'" + text + "' is not a value for '" + slotName + "'");
}

}  // namespace

int FindSlot(HostedProcess& process, const std::string& slot)
{
    const int count = process.GetSlotCount();
    char* end = nullptr;
    const long number = std::strtol(slot.c_str(), &end, 10);
    if (end != slot.c_str() && *end == '\0') {
        if (number >= 0 && number < count)
            return static_cast<int>(number);
    } else {
        for (int index = 0; index < count; ++index) {
            if (boost::algorithm::to_lower_copy(process.GetSlotName(index)) == boost::algorithm::to_lower_copy(slot))
                return index;
        }
    }
    throw HostError(BadArgument, "unknown slot '" + slot + "' (--list-slots lists them)");
}

Settings Settings::Resolve(const Options& options, const PresetFolders& folders, HostedProcess& probe)
{
    Settings settings;
    if (!options.chunk.empty()) {
        settings.chunk = ReadStateFile(options.chunk, "chunk");
        TiXmlDocument document;
        const bool parsed = Platform::ParseXml(document, settings.chunk.c_str(), settings.chunk.size());
        const std::string root = parsed ? document.RootElement()->Value() : "";
        if (root != "Program" && root != "Bank")
            throw HostError(BadPreset, "'" + options.chunk + "' is not a state chunk (a saved Program or Bank)");
        settings.chunkIsBank = root == "Bank";
    }
    if (!options.preset.empty())
        settings.preset = PresetAsProgram(folders.Find(options.preset));
    if (!options.channelMode.empty())
        settings.channelMode = ChannelModeName(options.channelMode);
    for (const Options::SlotSetting& setting : options.settings) {
        const int slot = FindSlot(probe, setting.slot);
        const std::string name = probe.GetSlotName(slot);
        const float value = ParseValue(probe, slot, name, setting.value);
        const SlotRange range = setting.normalised ? SlotRange{0.0f, 1.0f} : FindRange(probe, slot);
        // A hair of slack for ends typed with fewer digits than the float holds.
        const float slack = (range.highest - range.lowest) * 1e-6f;
        if (value < range.lowest - slack || value > range.highest + slack) {
            std::ostringstream message;
            message << setting.value << " is out of range for '" << name << "' (" << range.lowest << " to "
                    << range.highest << (setting.normalised ? ", normalised" : "") << ")";
            throw HostError(BadArgument, message.str());
        }
        settings.writes.push_back({slot, std::clamp(value, range.lowest, range.highest), setting.normalised});
    }
    return settings;
}

void Settings::ApplyTo(HostedProcess& process) const
{
    if (!chunk.empty()) {
        if (chunkIsBank)
            process.SetBankChunk(chunk);
        else
            process.SetProgramChunk(chunk);
    }
    if (!preset.empty())
        process.SetProgramChunk(preset);
    if (!channelMode.empty()) {
        // Not a slot: it lives in the module's state.
        const std::string text = process.GetProgramChunk();
        TiXmlDocument document;
        if (Platform::ParseXml(document, text.c_str(), text.size())) {
            for (TiXmlNode* slot = document.RootElement()->FirstChild(); slot != nullptr; slot = slot->NextSibling()) {
                if (TiXmlElement* module = slot->FirstChildElement("Module"))
                    module->SetAttribute("ChannelMode", channelMode);
            }
            process.SetProgramChunk(PrintXml(document));
        }
    }
    for (const SlotWrite& write : writes) {
        if (write.normalised)
            process.SetSlotNormalized(write.slot, write.value);
        else
            process.SetSlotValue(write.slot, write.value);
    }
    process.Settle();
}

}  // namespace OV::Hosts::Render
