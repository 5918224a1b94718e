#pragma once

#include "docview/interfaces/Component.h"
#include "docview/utils/PointerVector.h"

namespace OV::CFW::DocViewUtils {

// A component's declaration: its GUID, name and the profiles of its roles (not owned; they are
// process-wide singletons too).
class BasicComponentProfile : public DocView::ComponentProfile {
public:
    BasicComponentProfile(const Platform::Guid& id, std::string name);

    const Platform::Guid& GetId() const override { return id; }
    const std::string& GetName() const override { return name; }
    const std::string& GetVendor() const override { return vendor; }
    int GetInterfaceProfileCount() const override { return interfaceProfiles.size(); }
    const DocView::Profile* GetInterfaceProfile(const std::type_info& type) const override;
    DocView::Profile* GetInterfaceProfile(const std::type_info& type) override;
    const DocView::Profile* GetInterfaceProfile(int index) const override;
    bool HasInterfaceProfile(const std::type_info& type) const override;

protected:
    // Throws std::invalid_argument for null.
    void AddInterfaceProfile(DocView::Profile* profile);

private:
    Platform::Guid id;
    std::string name;
    std::string vendor;
    PointerVector<DocView::Profile> interfaceProfiles;
};

}  // namespace OV::CFW::DocViewUtils
