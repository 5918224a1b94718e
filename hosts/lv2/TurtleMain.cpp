// Writes the LV2 bundle's turtle from what the library in the bundle answers: the ports of its
// slots with their ranges and defaults, and the factory presets with their state.
#include "hosts/common/HostError.h"
#include "hosts/common/PlugInLibrary.h"
#include "hosts/common/PresetFiles.h"
#include "hosts/lv2/Description.h"
#include "hosts/lv2/PortLayout.h"

#include <cstdio>
#include <fstream>
#include <iomanip>
#include <sstream>

namespace OV::Hosts::Lv2 {

namespace {

const char* const prefixes =
    "@prefix bufsz: <http://lv2plug.in/ns/ext/buf-size#> .\n"
    "@prefix doap: <http://usefulinc.com/ns/doap#> .\n"
    "@prefix foaf: <http://xmlns.com/foaf/0.1/> .\n"
    "@prefix lv2: <http://lv2plug.in/ns/lv2core#> .\n"
    "@prefix opts: <http://lv2plug.in/ns/ext/options#> .\n"
    "@prefix owl: <http://www.w3.org/2002/07/owl#> .\n"
    "@prefix pprops: <http://lv2plug.in/ns/ext/port-props#> .\n"
    "@prefix pset: <http://lv2plug.in/ns/ext/presets#> .\n"
    "@prefix rdf: <http://www.w3.org/1999/02/22-rdf-syntax-ns#> .\n"
    "@prefix rdfs: <http://www.w3.org/2000/01/rdf-schema#> .\n"
    "@prefix state: <http://lv2plug.in/ns/ext/state#> .\n"
    "@prefix units: <http://lv2plug.in/ns/extensions/units#> .\n"
    "@prefix urid: <http://lv2plug.in/ns/ext/urid#> .\n"
    "@prefix xsd: <http://www.w3.org/2001/XMLSchema#> .\n\n";

std::string Quoted(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        switch (c) {
        case '"': quoted += "\\\""; break;
        case '\\': quoted += "\\\\"; break;
        case '\n': quoted += "\\n"; break;
        case '\r': quoted += "\\r"; break;
        case '\t': quoted += "\\t"; break;
        default: quoted += c;
        }
    }
    return quoted + "\"";
}

// Enough digits that the float reads back as itself.
std::string Number(float value)
{
    std::ostringstream text;
    text << std::setprecision(9) << value;
    const std::string digits = text.str();
    return digits.find_first_of(".e") == std::string::npos ? digits + ".0" : digits;
}

void Write(const std::string& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    if (!file.flush())
        throw HostError(BadOutput, "cannot write '" + path + "'");
}

std::string Manifest(const std::vector<Preset>& presets)
{
    std::ostringstream ttl;
    ttl << prefixes << "<" << pluginUri << ">\n    a lv2:Plugin ;\n    lv2:binary <" << binaryName
        << "> ;\n    rdfs:seeAlso <varnel4-lin-phase-eq.ttl> .\n";
    for (const Preset& preset : presets) {
        ttl << "\n<" << preset.uri << ">\n    a pset:Preset ;\n    lv2:appliesTo <" << pluginUri
            << "> ;\n    rdfs:seeAlso <presets.ttl> .\n";
    }
    return ttl.str();
}

void AudioPort(std::ostringstream& ttl, unsigned index, bool input, const char* symbol, const char* name)
{
    ttl << "    [\n        a lv2:AudioPort , lv2:" << (input ? "InputPort" : "OutputPort") << " ;\n        lv2:index "
        << index << " ;\n        lv2:symbol \"" << symbol << "\" ;\n        lv2:name \"" << name << "\"\n    ] ,\n";
}

std::string PluginDescription(const std::string& name, const std::string& vendor, const std::vector<SlotPort>& slots)
{
    std::ostringstream ttl;
    ttl << prefixes << "<" << programChunkUri << ">\n    a rdf:Property , owl:DatatypeProperty ;\n"
        << "    rdfs:label \"Program chunk\" ;\n"
        << "    rdfs:comment \"The whole state of the equaliser: its library's program chunk.\" ;\n"
        << "    rdfs:range xsd:string .\n\n";
    ttl << "<" << pluginUri << ">\n    a lv2:Plugin , lv2:ParaEQPlugin , doap:Project ;\n    doap:name " << Quoted(name)
        << " ;\n    doap:maintainer [ foaf:name " << Quoted(vendor) << " ] ;\n"
        << "    lv2:optionalFeature lv2:hardRTCapable , opts:options , urid:map ;\n"
        << "    opts:supportedOption bufsz:maxBlockLength ;\n    lv2:extensionData state:interface ;\n    lv2:port\n";
    AudioPort(ttl, InputLeft, true, "in_l", "In L");
    AudioPort(ttl, InputRight, true, "in_r", "In R");
    AudioPort(ttl, OutputLeft, false, "out_l", "Out L");
    AudioPort(ttl, OutputRight, false, "out_r", "Out R");
    ttl << "    [\n        a lv2:ControlPort , lv2:OutputPort ;\n        lv2:index " << Latency
        << " ;\n        lv2:symbol \"latency\" ;\n        lv2:name \"Latency\" ;\n"
        << "        lv2:designation lv2:latency ;\n        lv2:portProperty lv2:reportsLatency , lv2:integer ;\n"
        << "        lv2:minimum 0 ;\n        lv2:maximum 32768 ;\n        units:unit units:frame\n    ] ,\n";
    ttl << "    [\n        a lv2:ControlPort , lv2:OutputPort ;\n        lv2:index " << LatencyLevel
        << " ;\n        lv2:symbol \"latency_level\" ;\n        lv2:name \"Latency Level\" ;\n"
        << "        lv2:portProperty lv2:integer , lv2:enumeration ;\n        lv2:minimum 0 ;\n        lv2:maximum 2 ;\n"
        << "        lv2:scalePoint [ rdfs:label \"Low\" ; rdf:value 0 ] , [ rdfs:label \"Mid\" ; rdf:value 1 ] ,"
        << " [ rdfs:label \"High\" ; rdf:value 2 ]\n    ] ,\n";
    for (unsigned channel = 0; channel < 2; ++channel) {
        ttl << "    [\n        a lv2:ControlPort , lv2:OutputPort ;\n        lv2:index " << MeterLeft + channel
            << " ;\n        lv2:symbol \"meter_" << (channel == 0 ? "l" : "r") << "\" ;\n        lv2:name \"Output Peak "
            << (channel == 0 ? "L" : "R") << "\" ;\n        lv2:minimum " << Number(meterFloor)
            << " ;\n        lv2:maximum 24.0 ;\n        units:unit units:db\n    ] ,\n";
    }
    for (std::size_t slot = 0; slot < slots.size(); ++slot) {
        const SlotPort& port = slots[slot];
        ttl << "    [\n        a lv2:ControlPort , lv2:InputPort ;\n        lv2:index " << FirstSlot + slot
            << " ;\n        lv2:symbol \"" << port.symbol << "\" ;\n        lv2:name " << Quoted(port.name)
            << " ;\n        lv2:default " << Number(port.value) << " ;\n        lv2:minimum " << Number(port.minimum)
            << " ;\n        lv2:maximum " << Number(port.maximum);
        if (port.toggled)
            ttl << " ;\n        lv2:portProperty lv2:toggled , lv2:integer";
        if (port.logarithmic)
            ttl << " ;\n        lv2:portProperty pprops:logarithmic";
        if (port.unit != nullptr)
            ttl << " ;\n        units:unit units:" << port.unit;
        ttl << "\n    ]" << (slot + 1 < slots.size() ? " ,\n" : " .\n");
    }
    return ttl.str();
}

std::string PresetDescriptions(const std::vector<SlotPort>& slots, const std::vector<Preset>& presets)
{
    std::ostringstream ttl;
    ttl << prefixes;
    for (const Preset& preset : presets) {
        ttl << "<" << preset.uri << ">\n    a pset:Preset ;\n    lv2:appliesTo <" << pluginUri
            << "> ;\n    rdfs:label " << Quoted(preset.label) << " ;\n    lv2:port\n";
        for (std::size_t slot = 0; slot < slots.size(); ++slot) {
            ttl << "        [ lv2:symbol \"" << slots[slot].symbol << "\" ; pset:value " << Number(preset.values[slot])
                << " ]" << (slot + 1 < slots.size() ? " ,\n" : " ;\n");
        }
        ttl << "    state:state [\n        <" << programChunkUri << "> " << Quoted(preset.programChunk)
            << "\n    ] .\n\n";
    }
    return ttl.str();
}

int Generate(const std::string& bundle, const std::string& libraryPath)
{
    const PlugInLibrary library(libraryPath);
    int version = 0;
    HLA2PlugIn* plugIn = library.Acquire(HLA2_INTERFACE_VERSION, &version);
    if (plugIn == nullptr)
        throw HostError(Failed, libraryPath + " refused interface version " + std::to_string(HLA2_INTERFACE_VERSION));
    std::vector<SlotPort> slots;
    std::vector<Preset> presets;
    std::string name;
    std::string vendor;
    {
        HostedProcess process(plugIn, 48000.0f, 512, 2);
        char text[256] = {};
        process.Get()->GetName(process.Get(), text, sizeof text - 1);
        name = text;
        std::fill(std::begin(text), std::end(text), '\0');
        process.Get()->GetVendor(process.Get(), text, sizeof text - 1);
        vendor = text;
        slots = DescribeSlots(process);
        const PresetFolders factory{std::string(), PresetFolders::FromRegistry().factory};
        const std::vector<std::string> labels = factory.List();
        std::vector<std::string> paths;
        for (const std::string& label : labels)
            paths.push_back(factory.Find(label));
        presets = DescribePresets(plugIn, labels, paths);
    }
    library.Release();
    Write(bundle + "/manifest.ttl", Manifest(presets));
    Write(bundle + "/varnel4-lin-phase-eq.ttl", PluginDescription(name, vendor, slots));
    Write(bundle + "/presets.ttl", PresetDescriptions(slots, presets));
    return Done;
}

}  // namespace

}  // namespace OV::Hosts::Lv2

int main(int argc, char** argv)
{
    if (argc < 2 || argc > 3) {
        std::fputs("usage: varnel4-lv2-turtle BUNDLE [LIBRARY]\n"
                   "Writes the bundle's turtle from the library (default BUNDLE/libvarnel4.so).\n",
                   stderr);
        return OV::Hosts::BadArgument;
    }
    const std::string bundle = argv[1];
    try {
        return OV::Hosts::Lv2::Generate(bundle, argc == 3 ? argv[2] : bundle + "/" + OV::Hosts::Lv2::libraryName);
    } catch (const OV::Hosts::HostError& error) {
        std::fprintf(stderr, "varnel4-lv2-turtle: %s\n", error.what());
        return error.GetCode();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "varnel4-lv2-turtle: %s\n", error.what());
        return OV::Hosts::Failed;
    }
}
