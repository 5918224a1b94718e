#pragma once

#include "docview/interfaces/Component.h"
#include "docview/utils/PointerVector.h"

namespace OV::CFW::DocViewUtils {

// Offers roles by type. The roles are not owned: the concrete component keeps them in fields
// of its own and deletes them.
class BasicComponent : public DocView::Component {
public:
    explicit BasicComponent(const DocView::ComponentProfile* profile);

    const DocView::ComponentProfile* GetProfile() const override { return profile; }
    int GetInterfaceCount() const override { return interfaces.size(); }
    const DocView::Interface* GetInterface(const std::type_info& type) const override;
    DocView::Interface* GetInterface(const std::type_info& type) override;
    DocView::Interface* GetInterface(int index) override { return interfaces[index]; }
    bool HasInterface(const std::type_info& type) const override;

protected:
    void AddInterface(DocView::Interface* role);

private:
    const DocView::ComponentProfile* profile;
    PointerVector<DocView::Interface> interfaces;
};

}  // namespace OV::CFW::DocViewUtils
