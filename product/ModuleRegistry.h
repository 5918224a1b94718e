#pragma once

#include "docview/utils/ComponentFactory.h"
#include "platform/Guid.h"

#include <string>
#include <vector>

namespace OV::Products::VN4 {

// The models a module slot can hold: a static table of rows and, over it, the factory of the
// enabled ones. Process-wide, built on first use; read-only afterwards.
class Info {
public:
    struct Row {
        std::string name;  // display name
        std::string label; // short text, "|" for a line break
        bool enabled;
    };

    static const Info& Instance();

    int GetRowCount() const { return static_cast<int>(rows.size()); }
    const Row& GetRow(int index) const { return rows[static_cast<std::size_t>(index)]; }
    // The factory of the enabled rows, in table order.
    const CFW::DocViewUtils::ComponentFactory& GetFactory() const { return factory; }
    // The GUID texts of the enabled rows: the labels of a module's "Model".
    std::vector<std::string> GetModelNames() const;
    // The factory index of the model with this GUID text (exact, case-sensitive); -1 for none.
    int FindModel(const std::string& guidText) const;

private:
    Info();

    std::vector<Row> rows;
    CFW::DocViewUtils::ComponentFactory factory;
};

}  // namespace OV::Products::VN4
