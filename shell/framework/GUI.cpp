#include "shell/framework/GUI.h"

#include "docview/interfaces/Component.h"
#include "docview/interfaces/GUI.h"
#include "shell/framework/Process.h"

namespace OV::CFW::HLAFramework {

GUI::GUI(HLA2::Process* owner) : process(dynamic_cast<Process*>(owner))
{
    if (process == nullptr || process->GetComponent() == nullptr)
        return;
    documentGUI = DocView::FindInterface<DocView::GUI>(*process->GetComponent());
    if (documentGUI != nullptr)
        size = documentGUI->GetDefaultSize();
}

GUI::~GUI()
{
    if (isOpen)
        Close();
}

HLA2::Process* GUI::GetProcess()
{
    return process;
}

void GUI::GetSize(int* width, int* height)
{
    if (width != nullptr)
        *width = size.x;
    if (height != nullptr)
        *height = size.y;
}

void GUI::SetPosition(int x, int y)
{
    position = {x, y};
}

// The window and the widget tree join Open and Close with the window layer; until then an
// open editor is an empty area of `size`.
void GUI::Open(HLA2NativeWindow)
{
    isOpen = true;
}

void GUI::Close()
{
    isOpen = false;
}

void GUI::Idle()
{
    if (documentGUI != nullptr)
        documentGUI->Update();
}

void GUI::Invalidate(int, int, int, int)
{
    if (documentGUI != nullptr)
        documentGUI->Update();
}

// Mouse and keys from the host reach the widgets only once the host delivers them and a widget
// tree exists to take them.
void GUI::MouseDown(int, int, int, int) {}

void GUI::MouseUp(int, int, int, int) {}

void GUI::MouseMove(int, int, int) {}

bool GUI::KeyPress(int, int, int)
{
    return false;
}

}  // namespace OV::CFW::HLAFramework
