#pragma once

#include "docview/interfaces/Context.h"
#include "docview/interfaces/Parameter.h"

#include <memory>

namespace OV::CFW::DocView {

class Command;
class Document;

// Makes the pooled commands that carry a change to the scheduler. Any thread, the audio thread
// included: no allocation; null when the pool is empty.
class DocumentCommandFactory {
public:
    virtual Command* MakeSetParameter(const std::weak_ptr<Document>& document, int index, Parameter value,
                                      int source) = 0;
    virtual Command* MakeSetBPM(const std::weak_ptr<Document>& document, float bpm, int source) = 0;
    virtual ~DocumentCommandFactory() = default;
};

class DocumentContext : public InterfaceContext {
public:
    const std::type_info& GetType() const override { return typeid(DocumentContext); }
    virtual DocumentCommandFactory& GetCommandFactory() = 0;
};

}  // namespace OV::CFW::DocView
