#pragma once

#include <string>

namespace OV::Platform {

// Per-user folders after the XDG base directory rules: the variable when it holds an absolute
// path, else the fallback under the home folder. Read anew on every call.
std::string ConfigHome();
std::string DataHome();
std::string HomeFolder();

// The folder of the binary (library or program) that holds this code.
std::string ModuleFolder();

// Replaces a leading "$XDG_CONFIG_HOME", "$XDG_DATA_HOME" or "$HOME" with its folder.
std::string ExpandFolderVariables(const std::string& text);

}  // namespace OV::Platform
