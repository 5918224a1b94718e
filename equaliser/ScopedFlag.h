#pragma once

#include <cstdint>

namespace OV::Comp::VN4ModuleBase {

// Raises a byte flag for a scope and then puts back what it held, not 0, so that scopes nest.
class ScopedFlag {
public:
    explicit ScopedFlag(std::uint8_t& flag) : flag(flag), previous(flag) { flag = 1; }
    ~ScopedFlag() { flag = previous; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

private:
    std::uint8_t& flag;
    std::uint8_t previous;
};

}  // namespace OV::Comp::VN4ModuleBase
