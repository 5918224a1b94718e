#include "shell/hla2/GUI.h"

#include "shell/hla2/Boundary.h"
#include "shell/hla2/Process.h"

namespace OV::HLA2 {

namespace {

GUI* Self(HLA2GUI* table)
{
    return static_cast<GUI*>(table->object);
}

}  // namespace

GUI::GUI() : table{}
{
    HLA2GUI& t = table;
    t.GetProcess = [](HLA2GUI* g) {
        return Guarded<HLA2Process*>(nullptr, [&] { return Process::ToTable(Self(g)->GetProcess()); });
    };
    t.GetSize = [](HLA2GUI* g, int* w, int* h) { Guarded([&] { Self(g)->GetSize(w, h); }); };
    t.SetPosition = [](HLA2GUI* g, int x, int y) { Guarded([&] { Self(g)->SetPosition(x, y); }); };
    t.SetHostDeliversMouse = [](HLA2GUI* g, int d) { Guarded([&] { Self(g)->SetHostDeliversMouse(d != 0); }); };
    t.SetHostDeliversKeys = [](HLA2GUI* g, int d) { Guarded([&] { Self(g)->SetHostDeliversKeys(d != 0); }); };
    t.Open = [](HLA2GUI* g, HLA2NativeWindow w) { Guarded([&] { Self(g)->Open(w); }); };
    t.Close = [](HLA2GUI* g) { Guarded([&] { Self(g)->Close(); }); };
    t.Reserved = [](HLA2GUI* g) { Guarded([&] { Self(g)->Reserved(); }); };
    t.Idle = [](HLA2GUI* g) { Guarded([&] { Self(g)->Idle(); }); };
    t.Invalidate = [](HLA2GUI* g, int l, int tp, int r, int b) {
        Guarded([&] { Self(g)->Invalidate(l, tp, r, b); });
    };
    t.MouseDown = [](HLA2GUI* g, int x, int y, int b, int m) { Guarded([&] { Self(g)->MouseDown(x, y, b, m); }); };
    t.MouseUp = [](HLA2GUI* g, int x, int y, int b, int m) { Guarded([&] { Self(g)->MouseUp(x, y, b, m); }); };
    t.MouseMove = [](HLA2GUI* g, int x, int y, int m) { Guarded([&] { Self(g)->MouseMove(x, y, m); }); };
    t.KeyPress = [](HLA2GUI* g, int k, int m, int r) {
        return Guarded(0, [&] { return Self(g)->KeyPress(k, m, r) ? 1 : 0; });
    };
    t.object = this;
}

}  // namespace OV::HLA2
