#pragma once

#include "docview/utils/BasicMAFProfile.h"

#include <string>

namespace OV::Comp::VN4ModuleBase {

// The engine bindings of a module of the family. Its name is the engine module's name, which
// the module registry registers with the engine. The Add operations are for the concrete
// profile's constructor (set-up, allocates); afterwards it is read-only: any thread.
class MAFProfile : public CFW::DocViewUtils::BasicMAFProfile {
protected:
    explicit MAFProfile(std::string engineModuleName);

    // The row's value as a plain float.
    void AddFloat(int row, std::string engineName);
    // The enum's (or bool's) index as a float.
    void AddIndex(int row, std::string engineName);
    // A bool as 0 or 1.
    void AddBool(int row, std::string engineName);
};

}  // namespace OV::Comp::VN4ModuleBase
