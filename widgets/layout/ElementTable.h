#pragma once

#include "widgets/layout/ElementContext.h"

#include <string>

namespace OV::CFW::Widgets {

// Finds the builder of a layout element by the element's name.
using ElementLookup = BuildFunction (*)(const std::string& name);

// The toolkit's vocabulary: the builder of the element named exactly `name`, or null for a
// name that builds nothing.
BuildFunction FindElement(const std::string& name);

}  // namespace OV::CFW::Widgets
