// A host by Microsoft's rules without Microsoft's libraries: the program starts in Start, links
// nothing but the driver's import library, and calls the device through the C++ class. It engraves
// a square of an inch; its exit code is 0, or the number of the step that failed.
#include "k7/driver.h"

extern "C" int _fltused = 0;  // a program that uses floats defines it, or its run-time library does

static void OnProgress(uint32_t, uint64_t) {}

extern "C" int Start() {
  wchar_t id[k7::kNameCapacity], name[k7::kNameCapacity];
  if (EnumerateControllers() != 1) return 1;
  GetControllerInfo(0, id, name, k7::kNameCapacity);
  k7::IEngraver* machine = ConnectToController(id);
  if (machine == nullptr) return 2;
  int step = 0;
  if (machine->GetInterfaceVersion() != 998) step = 3;
  if (machine->GetTableWidth() != 7000) step = 4;
  const float inch = machine->GetXStepsPerUnit();
  if (inch != 4000.0f) step = 5;
  machine->EnsureTableHome(nullptr);
  machine->SetNotifyCallback(OnProgress, 0, 1, 2, 3);
  if (step == 0 && machine->BeginJob()) {
    const auto one = static_cast<uint32_t>(inch), two = static_cast<uint32_t>(2 * inch);
    const uint32_t corners[][2] = {{two, one}, {two, two}, {one, two}, {one, one}};
    for (uint32_t pass = 1; pass <= machine->GetPassCount(); ++pass) {
      machine->StartPass(pass, one, one, nullptr, 0);
      machine->MoveTo(one, one);
      for (const auto& corner : corners) {
        uint32_t status = machine->EngraveTo(corner[0], corner[1]);
        if (status == k7::kStatusProbed) status = machine->EngraveTo(corner[0], corner[1]);
        if (status != k7::kStatusSent) step = 6;
      }
    }
    machine->MoveTo(0, 0);
    machine->EndJob();
    machine->SetSpindle(k7::kSpindleOff);
  }
  ReleaseController(machine);
  return step;
}
