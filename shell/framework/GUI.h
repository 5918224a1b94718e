#pragma once

#include "graphics/Geometry.h"
#include "shell/hla2/GUI.h"

#include <memory>

#include <boost/signals2/connection.hpp>

namespace OV::CFW::DocView {
class GUI;
}

namespace OV::CFW::Graphics {
class Device;
class WindowChild;
}

namespace OV::CFW::GUI {
class Root;
}

namespace OV::CFW::HLAFramework {

class Process;

// The editor of one process, as the host drives it: a widget tree in a child of the host's
// window. It lives from the first GetGUI to the destruction of its process, across any number
// of Open and Close pairs. Main thread.
class GUI : public HLA2::GUI {
public:
    explicit GUI(HLA2::Process* process);
    ~GUI() override;

    HLA2::Process* GetProcess() override;
    void GetSize(int* width, int* height) override;
    void SetPosition(int x, int y) override;
    void SetHostDeliversMouse(bool delivers) override { windowTakesMouse = !delivers; }
    void SetHostDeliversKeys(bool delivers) override { windowTakesKeys = !delivers; }
    void Open(HLA2NativeWindow parent) override;
    void Close() override;
    void Reserved() override {}
    void Idle() override;
    void Invalidate(int left, int top, int right, int bottom) override;
    void MouseDown(int x, int y, int button, int modifiers) override;
    void MouseUp(int x, int y, int button, int modifiers) override;
    void MouseMove(int x, int y, int modifiers) override;
    bool KeyPress(int key, int modifiers, int repeat) override;

    bool IsOpen() const { return isOpen; }
    // The editor's window while open; null when closed or when no window could be made.
    Graphics::WindowChild* GetWindow() const { return window.get(); }
    CFW::GUI::Root* GetRoot() const { return root.get(); }

private:
    void OnTick();

    Process* process;
    DocView::GUI* documentGUI = nullptr;
    bool isOpen = false;
    BasicPoint<int> position;
    BasicPoint<int> size{100, 100};
    bool windowTakesMouse = true;
    bool windowTakesKeys = true;
    // Shared by every open editor of the library; it goes with the last of them.
    std::shared_ptr<Graphics::Device> device;
    // The window goes before the root: it tells the root's manager that it closes.
    std::unique_ptr<CFW::GUI::Root> root;
    std::unique_ptr<Graphics::WindowChild> window;
    boost::signals2::scoped_connection tickConnection;
};

}  // namespace OV::CFW::HLAFramework
