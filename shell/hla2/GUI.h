#pragma once

#include "shell/include/varnel4/hla2.h"

namespace OV::HLA2 {

class Process;

// An instance's editor as the host sees it. Host's main thread only.
class GUI {
public:
    GUI();
    GUI(const GUI&) = delete;
    GUI& operator=(const GUI&) = delete;
    virtual ~GUI() = default;

    virtual Process* GetProcess() = 0;
    virtual void GetSize(int* width, int* height) = 0;
    virtual void SetPosition(int x, int y) = 0;
    virtual void SetHostDeliversMouse(bool delivers) = 0;
    virtual void SetHostDeliversKeys(bool delivers) = 0;
    virtual void Open(HLA2NativeWindow parent) = 0;
    virtual void Close() = 0;
    virtual void Reserved() = 0;
    virtual void Idle() = 0;
    virtual void Invalidate(int left, int top, int right, int bottom) = 0;
    virtual void MouseDown(int x, int y, int button, int modifiers) = 0;
    virtual void MouseUp(int x, int y, int button, int modifiers) = 0;
    virtual void MouseMove(int x, int y, int modifiers) = 0;
    virtual bool KeyPress(int key, int modifiers, int repeat) = 0;

    static HLA2GUI* ToTable(GUI* object) { return object ? &object->table : nullptr; }

private:
    HLA2GUI table;
};

}  // namespace OV::HLA2
