#pragma once

#include "docview/interfaces/Component.h"
#include "docview/utils/BasicDocument.h"
#include "docview/utils/BasicDocumentProfile.h"

#include <memory>
#include <vector>

namespace OV::Products::VN4 {

// The rows of a module slot: its switches and which model it holds.
class ModuleDocumentProfile : public CFW::DocViewUtils::BasicDocumentProfile {
public:
    enum Row { Stop = 0, Bypass = 1, Mute = 2, Model = 3 };

    static const ModuleDocumentProfile& Instance();

private:
    ModuleDocumentProfile();
};

// The document of a module slot. It owns the hosted component (the "child"), made by the
// registry for the "Model" row, and passes "Bypass" on as the child's "EngineStopped".
// Scheduler or main thread.
class ModuleDocument : public CFW::DocViewUtils::BasicDocument {
public:
    // Told when the child is replaced: first null, while the old child still lives, then the
    // new one. On the thread that set "Model".
    class ChildListener {
    public:
        virtual void OnChildChanged(const std::shared_ptr<CFW::DocView::Component>& child) = 0;

    protected:
        ~ChildListener() = default;
    };

    // `context` is the slot's context; each child gets a local one of its own.
    ModuleDocument(CFW::DocView::DocumentContext* documents, CFW::DocView::ComponentContext* context);
    ~ModuleDocument() override;

    const std::shared_ptr<CFW::DocView::Component>& GetChild() const { return child; }
    // The child's document, or null.
    CFW::DocView::Document* GetChildDocument() const;
    // Set-up and tear-down, while no model switch runs.
    void AddChildListener(ChildListener* listener) { listeners.push_back(listener); }
    void RemoveChildListener(ChildListener* listener);

protected:
    void DoReset() override;
    bool DoLoad(const TiXmlElement& element) override;
    bool DoSave(TiXmlElement& element) override;
    void DoSetParameter(int index, CFW::DocView::Parameter value, int source) override;

private:
    void CreateChild();
    // "Bypass" into the child's "EngineStopped".
    void PassBypass();
    bool LoadModule(const TiXmlElement& element);

    CFW::DocView::ComponentContext* context;
    std::shared_ptr<CFW::DocView::ComponentContext> childContext;
    std::shared_ptr<CFW::DocView::Component> child;
    std::vector<ChildListener*> listeners;
};

}  // namespace OV::Products::VN4
