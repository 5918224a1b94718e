#pragma once

#include "graphics/Image.h"
#include "graphics/res/Manager.h"

#include <ios>
#include <string>

namespace OV::CFW::Widgets {

// The resource named `name`, or null when the name is empty, no path holds it, or it cannot be
// read: a bad picture, a resource refused for its length, a damaged gzip stream.
template <typename T>
T* AcquireResource(Res::Manager<T>& manager, const std::string& name)
{
    if (name.empty())
        return nullptr;
    try {
        return manager.acquire(name);
    } catch (const Graphics::Image::LoadError&) {
    } catch (const Res::ResourceError&) {
    } catch (const std::ios_base::failure&) { // gzip_error
    }
    return nullptr;
}

}  // namespace OV::CFW::Widgets
