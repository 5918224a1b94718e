#pragma once

#include "docview/interfaces/Interface.h"

namespace OV::CFW::DocView {

// The model of a component: a table of typed parameters and a tempo.
class Document : public Interface {
public:
    const std::type_info& GetType() const override { return typeid(Document); }
    // Any thread: hands the tempo to the scheduler; false when its pool is empty.
    virtual bool QueueSetBPM(float bpm, int source) = 0;
    // Stores the host's capability flag; nothing reads it.
    virtual void SetHostFlag(bool flag) = 0;
};

}  // namespace OV::CFW::DocView
