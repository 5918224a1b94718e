#pragma once

#include "docview/interfaces/Context.h"

namespace OV::CFW::DocViewUtils {
class ExchangeRing;
}

namespace OV::CFW::DocView {

// The context of the MAF role: the exchange ring that all MAF mediators of the tree share.
class MAFContext : public InterfaceContext {
public:
    const std::type_info& GetType() const override { return typeid(MAFContext); }
    virtual DocViewUtils::ExchangeRing& GetExchangeRing() = 0;
};

}  // namespace OV::CFW::DocView
