#pragma once

// What the fuzzers run on each input. The replay test runs the same on the seed corpus and on
// every input a fuzzer once found to break something. A broken promise (a non-finite output,
// a value read back wrong) ends the process with a message: a crash to the fuzzer, a failure
// to the test.
#include <cstddef>
#include <cstdint>

namespace OV::Fuzz {

// As a program chunk and as a bank chunk, given to a whole instance through the exports.
void Chunk(const std::uint8_t* data, std::size_t size);
// As a preset file, loaded by an instance and found by its folder scan.
void Preset(const std::uint8_t* data, std::size_t size);
// As the file of a registry key and as the machine defaults, then read and written.
void Registry(const std::uint8_t* data, std::size_t size);
// As an image file: read, drawn, cut into a bitmap font, built into a hit mask.
void Image(const std::uint8_t* data, std::size_t size);
// As a resource pack: every name of its directory asked for through every manager.
void Pack(const std::uint8_t* data, std::size_t size);
// As the renderer's command line, one argument a line.
void RenderArguments(const std::uint8_t* data, std::size_t size);

// Ends the process with `what` on standard error unless `holds`.
void Require(bool holds, const char* what);
// A folder of this process for the targets' files and the user's settings (HOME and the XDG
// folders point into it), made on first use.
const char* PrivateFolder();

}  // namespace OV::Fuzz
