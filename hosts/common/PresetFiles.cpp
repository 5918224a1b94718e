#include "hosts/common/PresetFiles.h"

#include "hosts/common/HostError.h"
#include "hosts/common/ProductRegistry.h"
#include "platform/UserFolders.h"
#include "platform/XmlParse.h"

#include <tinyxml.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include <boost/filesystem.hpp>

namespace OV::Hosts {

namespace fs = boost::filesystem;

namespace {

const char* const presetExtension = ".vn4m";
// No preset or chunk comes near this; a stray recording named like one is not read whole.
constexpr std::uintmax_t largestStateFile = 4u << 20;

std::string RegistryFolder(const char* name)
{
    std::string folder;
    if (!ProductRegistry().ReadString(name, folder))
        return std::string();
    return Platform::ExpandFolderVariables(folder);
}

}  // namespace

std::string PrintXml(const TiXmlDocument& document)
{
    TiXmlPrinter printer;
    document.Accept(&printer);
    return printer.Str();
}

std::string ReadStateFile(const std::string& path, const char* what)
{
    boost::system::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error)
        throw HostError(BadPreset, "cannot read the " + std::string(what) + " '" + path + "': " + error.message());
    if (size > largestStateFile)
        throw HostError(BadPreset, "'" + path + "' is too large for a " + what);
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    if (!stream)
        throw HostError(BadPreset, "cannot read the " + std::string(what) + " '" + path + "'");
    return text.str();
}

// A preset file as the program chunk that loads it: the plug-in's program load reads both
// preset forms, and the preset's name goes with it.
std::string PresetAsProgram(const std::string& path)
{
    const std::string text = ReadStateFile(path, "preset");
    TiXmlDocument document;
    const auto notPreset = [&](const std::string& why) {
        return HostError(BadPreset, "'" + path + "' is not a preset file: " + why);
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
    return PrintXml(document);
}

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
        throw HostError(BadPreset, "no preset '" + preset + "' (--list-presets lists them)");
    std::string names;
    for (const std::string& match : matches)
        names += "\n  " + match;
    throw HostError(BadPreset, "several presets are named '" + preset + "':" + names);
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

}  // namespace OV::Hosts
