// The renderer's command line: any arguments give options or the user's error, nothing else.
#include "hosts/render/Options.h"
#include "tests/fuzz/FuzzTargets.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace OV::Fuzz {

void RenderArguments(const std::uint8_t* data, std::size_t size)
{
    std::vector<std::string> arguments = {"varnel4-render"};
    std::string current;
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == '\n') {
            arguments.push_back(current);
            current.clear();
        } else {
            current.push_back(static_cast<char>(data[i]));
        }
    }
    if (!current.empty())
        arguments.push_back(current);
    std::vector<char*> argv;
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    try {
        Hosts::Render::ParseOptions(static_cast<int>(arguments.size()), argv.data());
    } catch (const std::invalid_argument&) {
    }
}

}  // namespace OV::Fuzz
