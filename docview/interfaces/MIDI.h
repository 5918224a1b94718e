#pragma once

#include "docview/interfaces/Interface.h"

namespace OV::CFW::DocView {

// MIDI input; declared and looked up, not implemented by this product.
class MIDI : public Interface {
public:
    const std::type_info& GetType() const override { return typeid(MIDI); }
    virtual int ProcessEvents(const void* events, int count) = 0;
};

}  // namespace OV::CFW::DocView
