#pragma once

#include "graphics/Geometry.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

namespace OV::CFW::Graphics {

// A picture of 32-bit pixels (see Color.h). `hasAlpha` says whether it is to be blended when
// drawn, or copied. Window thread only.
class Image {
public:
    // What the image file reader reports: its message through what().
    class LoadError : public std::exception {
    public:
        explicit LoadError(std::string message) : message(std::move(message)) {}
        const char* what() const noexcept override { return message.c_str(); }

    private:
        std::string message;
    };

    virtual ~Image() = default;
    // Width and height.
    virtual const BasicPoint<int>& size() const = 0;
    virtual bool hasAlpha() const = 0;
    // The first pixel and the row pitch in bytes. Locks neither nest nor block.
    virtual std::pair<std::uint32_t*, int> lock() = 0;
    virtual void unlock() = 0;
};

}  // namespace OV::CFW::Graphics
