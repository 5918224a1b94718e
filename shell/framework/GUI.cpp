#include "shell/framework/GUI.h"

#include "docview/interfaces/Component.h"
#include "docview/interfaces/GUI.h"
#include "graphics/Device.h"
#include "platform/DebugOutput.h"
#include "shell/framework/Process.h"
#include "widgets/gui/Root.h"
#include "widgets/gui/WidgetManager.h"

namespace OV::CFW::HLAFramework {

namespace {

// The device that open editors share, made again when the last one has gone.
std::shared_ptr<Graphics::Device> SharedDevice()
{
    static std::weak_ptr<Graphics::Device> shared;
    std::shared_ptr<Graphics::Device> device = shared.lock();
    if (!device) {
        device.reset(Graphics::createDevice(0));
        shared = device;
    }
    return device;
}

// The widgets' code for a host's key: a character, or one of the table's special keys.
int KeyCode(int key, char& character)
{
    character = 0;
    if (key >= HLA2_KEY_LEFT && key <= HLA2_KEY_END)
        return Graphics::KeyboardButton::Left + (key - HLA2_KEY_LEFT);
    const int code = Graphics::KeyboardButton::FromCharacter(key);
    if (code == Graphics::KeyboardButton::Character)
        character = static_cast<char>(key);
    return code;
}

}  // namespace

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

void GUI::Open(HLA2NativeWindow parent)
{
    root = std::make_unique<CFW::GUI::Root>(size);
    device = SharedDevice();
    if (device != nullptr)
        window.reset(device->createWindowChild(*root->getManager(), {position.x, position.y, size.x, size.y}, parent,
                                               windowTakesMouse, windowTakesKeys));
    // Without a window (no display, a parent that is gone) the editor stays open and empty.
    if (window == nullptr)
        Platform::DebugOutput("Varnel4: the editor's window could not be made");
    tickConnection = root->getManager()->tick.connect([this](CFW::GUI::WidgetManager*) { OnTick(); });
    isOpen = true;
    if (documentGUI != nullptr)
        documentGUI->Open(root.get());
}

void GUI::Close()
{
    tickConnection.disconnect();
    if (documentGUI != nullptr)
        documentGUI->Close();
    window.reset();
    root.reset();
    device.reset();
    isOpen = false;
}

void GUI::OnTick()
{
    if (documentGUI != nullptr)
        documentGUI->Update();
}

void GUI::Idle()
{
    if (documentGUI != nullptr)
        documentGUI->Update();
    if (window != nullptr)
        window->redraw();
}

void GUI::Invalidate(int left, int top, int right, int bottom)
{
    if (documentGUI != nullptr)
        documentGUI->Update();
    if (window != nullptr)
        window->invalidate({left, top, right - left, bottom - top});
}

// The host's mouse and keys reach the widgets only once the host has said it delivers them.
void GUI::MouseDown(int x, int y, int button, int modifiers)
{
    if (!windowTakesMouse && window != nullptr)
        root->getManager()->mouseDown(*window, {x, y}, button, modifiers);
}

void GUI::MouseUp(int x, int y, int button, int modifiers)
{
    if (!windowTakesMouse && window != nullptr)
        root->getManager()->mouseUp(*window, {x, y}, button, modifiers);
}

void GUI::MouseMove(int x, int y, int modifiers)
{
    if (!windowTakesMouse && window != nullptr)
        root->getManager()->mouseMoved(*window, {x, y}, modifiers);
}

bool GUI::KeyPress(int key, int modifiers, int)
{
    if (windowTakesKeys || window == nullptr || root->getManager()->getFocusWidget() == nullptr)
        return false;
    char character = 0;
    const int code = KeyCode(key, character);
    if (code >= 0)
        root->getManager()->keyDown(*window, code, character, modifiers);
    return true;
}

}  // namespace OV::CFW::HLAFramework
