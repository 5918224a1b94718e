// The LV2 entry: the descriptor, its C callbacks and the state interface.
#include "hosts/lv2/Lv2Plugin.h"
#include "hosts/lv2/PortLayout.h"

#include <lv2/atom/atom.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/core/lv2.h>
#include <lv2/options/options.h>
#include <lv2/state/state.h>
#include <lv2/urid/urid.h>

#include <cstdio>
#include <cstring>
#include <exception>

namespace OV::Hosts::Lv2 {

namespace {

// Without the host's word on block lengths, runs are cut into blocks of this many frames.
constexpr int fallbackBlockSize = 4096;

struct Instance {
    Lv2Plugin plugin;
    LV2_URID chunkKey;  // 0 without the host's URID map
    LV2_URID stringType;
};

const void* Feature(const LV2_Feature* const* features, const char* uri)
{
    for (; features != nullptr && *features != nullptr; ++features) {
        if (std::strcmp((*features)->URI, uri) == 0)
            return (*features)->data;
    }
    return nullptr;
}

int BlockSizeFrom(const LV2_Options_Option* options, LV2_URID_Map* map)
{
    const LV2_URID maximum = map->map(map->handle, LV2_BUF_SIZE__maxBlockLength);
    const LV2_URID integer = map->map(map->handle, LV2_ATOM__Int);
    for (; options != nullptr && options->key != 0; ++options) {
        if (options->key == maximum && options->type == integer && options->size == sizeof(int32_t)) {
            const int32_t frames = *static_cast<const int32_t*>(options->value);
            if (frames > 0)
                return frames;
        }
    }
    return fallbackBlockSize;
}

LV2_Handle Instantiate(const LV2_Descriptor*, double rate, const char* bundle, const LV2_Feature* const* features)
{
    // Without a map (lv2apply offers none) there is no state and no word on block lengths.
    auto* map = static_cast<LV2_URID_Map*>(const_cast<void*>(Feature(features, LV2_URID__map)));
    const auto* options = static_cast<const LV2_Options_Option*>(Feature(features, LV2_OPTIONS__options));
    try {
        if (map == nullptr)
            return new Instance{Lv2Plugin(bundle, rate, fallbackBlockSize), 0, 0};
        return new Instance{Lv2Plugin(bundle, rate, BlockSizeFrom(options, map)),
                            map->map(map->handle, programChunkUri), map->map(map->handle, LV2_ATOM__String)};
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", pluginUri, error.what());
        return nullptr;
    }
}

Instance& Of(LV2_Handle handle)
{
    return *static_cast<Instance*>(handle);
}

LV2_State_Status Save(LV2_Handle handle, LV2_State_Store_Function store, LV2_State_Handle state, uint32_t,
                      const LV2_Feature* const*)
{
    Instance& instance = Of(handle);
    if (instance.chunkKey == 0)
        return LV2_STATE_ERR_NO_FEATURE;
    const std::string chunk = instance.plugin.GetProgramChunk();
    if (chunk.empty())
        return LV2_STATE_ERR_UNKNOWN;
    return store(state, instance.chunkKey, chunk.c_str(), chunk.size() + 1, instance.stringType,
                 LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE);
}

LV2_State_Status Restore(LV2_Handle handle, LV2_State_Retrieve_Function retrieve, LV2_State_Handle state, uint32_t,
                         const LV2_Feature* const*)
{
    Instance& instance = Of(handle);
    if (instance.chunkKey == 0)
        return LV2_STATE_ERR_NO_FEATURE;
    std::size_t size = 0;
    uint32_t type = 0;
    uint32_t flags = 0;
    const void* value = retrieve(state, instance.chunkKey, &size, &type, &flags);
    if (value == nullptr)
        return LV2_STATE_ERR_NO_PROPERTY;
    if (type != instance.stringType)
        return LV2_STATE_ERR_BAD_TYPE;
    const char* text = static_cast<const char*>(value);
    instance.plugin.SetProgramChunk(std::string(text, strnlen(text, size)));
    return LV2_STATE_SUCCESS;
}

const LV2_State_Interface stateInterface = {&Save, &Restore};

const LV2_Descriptor descriptor = {
    pluginUri,
    &Instantiate,
    [](LV2_Handle handle, uint32_t port, void* data) { Of(handle).plugin.ConnectPort(port, data); },
    [](LV2_Handle handle) { Of(handle).plugin.Activate(); },
    [](LV2_Handle handle, uint32_t frames) { Of(handle).plugin.Run(frames); },
    [](LV2_Handle) {},
    [](LV2_Handle handle) { delete static_cast<Instance*>(handle); },
    [](const char* uri) -> const void* { return std::strcmp(uri, LV2_STATE__interface) == 0 ? &stateInterface : nullptr; },
};

}  // namespace

}  // namespace OV::Hosts::Lv2

LV2_SYMBOL_EXPORT const LV2_Descriptor* lv2_descriptor(uint32_t index)
{
    return index == 0 ? &OV::Hosts::Lv2::descriptor : nullptr;
}
