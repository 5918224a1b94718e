#pragma once

#include "platform/DebugOutput.h"

#include <exception>
#include <string>

namespace OV::HLA2 {

// Runs one table entry so that no exception crosses into the host: a throw is reported on the
// debug output and the entry answers `fallback`.
template <typename Result, typename Call>
Result Guarded(Result fallback, Call&& call) noexcept
{
    try {
        return call();
    } catch (const std::exception& error) {
        Platform::DebugOutput(std::string("Varnel4: exception at the host boundary: ") + error.what());
    } catch (...) {
        Platform::DebugOutput("Varnel4: unknown exception at the host boundary");
    }
    return fallback;
}

template <typename Call>
void Guarded(Call&& call) noexcept
{
    Guarded(0, [&] {
        call();
        return 0;
    });
}

}  // namespace OV::HLA2
