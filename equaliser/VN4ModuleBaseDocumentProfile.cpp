#include "equaliser/VN4ModuleBaseDocumentProfile.h"

namespace OV::Comp::VN4ModuleBase {

using CFW::DocView::ParameterInfo;

DocumentProfile::DocumentProfile(int firstChannelParameter, int lastChannelParameter)
    : firstChannelParameter(firstChannelParameter), lastChannelParameter(lastChannelParameter),
      channelParameterCount(lastChannelParameter - firstChannelParameter + 1)
{
    // Written by the host module, never saved.
    SetParameter(EngineStopped, ParameterInfo::MakeBool("EngineStopped", false, 0));
}

}  // namespace OV::Comp::VN4ModuleBase
