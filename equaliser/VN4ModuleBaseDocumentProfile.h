#pragma once

#include "docview/utils/BasicDocumentProfile.h"

namespace OV::Comp::VN4ModuleBase {

// The rows every module of the family shares, and where its per-channel block lies: the rows
// from firstChannelParameter to lastChannelParameter are the set on view, and the same rows
// channelParameterCount and 2 * channelParameterCount further on are the two channels.
// Declares row 0, `EngineStopped`. Read-only after construction: any thread.
class DocumentProfile : public CFW::DocViewUtils::BasicDocumentProfile {
public:
    enum Row { EngineStopped = 0 };

    int GetFirstChannelParameter() const { return firstChannelParameter; }
    int GetLastChannelParameter() const { return lastChannelParameter; }
    int GetChannelParameterCount() const { return channelParameterCount; }

protected:
    DocumentProfile(int firstChannelParameter, int lastChannelParameter);

private:
    int firstChannelParameter;
    int lastChannelParameter;
    int channelParameterCount;
};

}  // namespace OV::Comp::VN4ModuleBase
