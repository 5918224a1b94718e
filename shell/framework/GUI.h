#pragma once

#include "graphics/Geometry.h"
#include "shell/hla2/GUI.h"

namespace OV::CFW::DocView {
class GUI;
}

namespace OV::CFW::HLAFramework {

class Process;

// The editor of one process, as the host drives it. It lives from the first GetGUI to the
// destruction of its process, across any number of Open and Close pairs. Main thread.
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

private:
    Process* process;
    DocView::GUI* documentGUI = nullptr;
    bool isOpen = false;
    BasicPoint<int> position;
    BasicPoint<int> size{100, 100};
    bool windowTakesMouse = true;
    bool windowTakesKeys = true;
};

}  // namespace OV::CFW::HLAFramework
