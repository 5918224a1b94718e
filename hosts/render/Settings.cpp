#include "hosts/render/Settings.h"

#include "hosts/render/RenderError.h"
#include "hosts/common/ProductRegistry.h"
#include "platform/UserFolders.h"
#include "platform/XmlParse.h"

#include <tinyxml.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/filesystem.hpp>

namespace OV::Hosts::Render {

namespace fs = boost::filesystem;

namespace {

const char* const presetExtension = ".vn4m";
// No preset or chunk comes near this; a stray recording named like one is not read whole.
constexpr std::uintmax_t largestStateFile = 4u << 20;

std::string ReadState(const std::string& path, const char* what)
{
    boost::system::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error)
        throw RenderError(BadPreset, "cannot read the " + std::string(what) + " '" + path + "': " + error.message());
    if (size > largestStateFile)
        throw RenderError(BadPreset, "'" + path + "' is too large for a " + what);
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    if (!stream)
        throw RenderError(BadPreset, "cannot read the " + std::string(what) + " '" + path + "'");
    return text.str();
}

std::string Printed(const TiXmlDocument& document)
{
    TiXmlPrinter printer;
    document.Accept(&printer);
    return printer.Str();
}

// A preset file as the program chunk that loads it: the plug-in's program load reads both
// preset forms, and the preset's name goes with it.
std::string PresetAsProgram(const std::string& path)
{
    const std::string text = ReadState(path, "preset");
    TiXmlDocument document;
    const auto notPreset = [&](const std::string& why) {
        return RenderError(BadPreset, "'" + path + "' is not a preset file: " + why);
    };
    if (!Platform::ParseXml(document, text.c_str(), text.size()))
        throw notPreset("not well-formed XML");
    TiXmlElement& root = *document.RootElement();
    const char* format = root.Attribute("Format");
    if (std::string(root.Value()) != "Preset" || format == nullptr)
        throw notPreset("no Preset element with a Format");
    const std::string form = format;
    if (form == "vn4m" && root.FirstChildElement("Slot") == nullptr)
        throw notPreset("no Slot");
    if (form != "vn4m" && form != "vn4p")
        throw notPreset("unknown format '" + form + "'");
    root.SetValue("Program");
    if (root.Attribute("PresetName") == nullptr)
        root.SetAttribute("PresetName", fs::path(path).stem().string());
    return Printed(document);
}

std::string ChannelModeName(const std::string& mode)
{
    const std::string lowered = boost::algorithm::to_lower_copy(mode);
    if (lowered == "lr" || lowered == "l/r")
        return "L/R";
    if (lowered == "ms" || lowered == "m/s")
        return "M/S";
    throw RenderError(BadArgument, "unknown channel mode '" + mode + "' (lr or ms)");
}

std::string RegistryFolder(const char* name)
{
    std::string folder;
    if (!ProductRegistry().ReadString(name, folder))
        return std::string();
    return Platform::ExpandFolderVariables(folder);
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
    throw RenderError(BadArgument, "'" + text + "' is not a value for '" + slotName + "'");
}

}  // namespace

PresetFolders PresetFolders::FromRegistry()
{
    return {RegistryFolder("PresetPath"), RegistryFolder("FactoryPresetPath")};
}

std::vector<std::string> PresetFolders::List() const
{
    std::vector<std::string> names;
    for (const std::string& root : {user, factory}) {
        boost::system::error_code error;
        if (root.empty() || !fs::is_directory(root, error))
            continue;
        for (fs::recursive_directory_iterator entry(root, error), end; !error && entry != end; entry.increment(error)) {
            if (entry->path().extension() != presetExtension || !fs::is_regular_file(entry->status()))
                continue;
            fs::path relative = entry->path().lexically_relative(root);
            names.push_back(relative.replace_extension().generic_string());
        }
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

std::string PresetFolders::Find(const std::string& preset) const
{
    boost::system::error_code error;
    if (fs::is_regular_file(preset, error))
        return preset;
    for (const std::string& root : {user, factory}) {
        const fs::path candidate = fs::path(root) / (preset + presetExtension);
        if (!root.empty() && fs::is_regular_file(candidate, error))
            return candidate.string();
    }
    std::vector<std::string> matches;
    for (const std::string& name : List()) {
        if (fs::path(name).filename().string() == preset)
            matches.push_back(name);
    }
    if (matches.size() == 1)
        return Find(matches.front());
    if (matches.empty())
        throw RenderError(BadPreset, "no preset '" + preset + "' (--list-presets lists them)");
    std::string names;
    for (const std::string& match : matches)
        names += "\n  " + match;
    throw RenderError(BadPreset, "several presets are named '" + preset + "':" + names);
}

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
    throw RenderError(BadArgument, "unknown slot '" + slot + "' (--list-slots lists them)");
}

SlotRange FindRange(HostedProcess& probe, int slot)
{
    const float was = probe.GetSlotNormalized(slot);
    probe.SetSlotNormalized(slot, 0.0f);
    const float atZero = probe.GetSlotValue(slot);
    probe.SetSlotNormalized(slot, 1.0f);
    const float atOne = probe.GetSlotValue(slot);
    probe.SetSlotNormalized(slot, was);
    return {std::min(atZero, atOne), std::max(atZero, atOne)};
}

Settings Settings::Resolve(const Options& options, const PresetFolders& folders, HostedProcess& probe)
{
    Settings settings;
    if (!options.chunk.empty()) {
        settings.chunk = ReadState(options.chunk, "chunk");
        TiXmlDocument document;
        const bool parsed = Platform::ParseXml(document, settings.chunk.c_str(), settings.chunk.size());
        const std::string root = parsed ? document.RootElement()->Value() : "";
        if (root != "Program" && root != "Bank")
            throw RenderError(BadPreset, "'" + options.chunk + "' is not a state chunk (a saved Program or Bank)");
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
            throw RenderError(BadArgument, message.str());
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
            process.SetProgramChunk(Printed(document));
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
