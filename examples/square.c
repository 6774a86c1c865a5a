// A host in C: finds the first engraving machine, homes it and engraves a square of one inch.
#include <stdio.h>
#include <windows.h>

#include "k7/driver_c.h"

// On the driver's reader thread: count, and go. Without one: no engrave delays, no air head.
static volatile LONG finished;
static void OnProgress(uint32_t message, uint64_t context) {
  (void)context;
  if (message == 3) InterlockedIncrement(&finished);
}

// CheckAlive asks for a sign of life and tells of the last one: only a second 0 counts.
static int IsAlive(K7Device* machine) {
  if (machine->operations->CheckAlive(machine)) return 1;
  Sleep(500);
  return machine->operations->CheckAlive(machine);
}

int main(void) {
  wchar_t id[K7_NAME_CAPACITY], name[K7_NAME_CAPACITY];
  if (EnumerateControllers() < 1) return puts("No machine found."), 1;
  GetControllerInfo(0, id, name, K7_NAME_CAPACITY);
  K7Device* machine = ConnectToController(id);
  if (machine == NULL) return puts("The machine does not answer."), 1;
  const K7Operations* call = machine->operations;
  const uint32_t x = (uint32_t)call->GetXStepsPerUnit(machine);  // an inch, in host steps
  const uint32_t y = (uint32_t)call->GetYStepsPerUnit(machine);
  const uint32_t corners[4][2] = {{2 * x, y}, {2 * x, 2 * y}, {x, 2 * y}, {x, y}};
  printf("%ls: %u x %u steps an inch\n", name, x, y);
  call->EnsureTableHome(machine, NULL);
  call->SetNotifyCallback(machine, OnProgress, 0, 1, 2, 3);
  int good = call->BeginJob(machine);
  for (uint32_t pass = 1; good && pass <= call->GetPassCount(machine); ++pass) {
    call->StartPass(machine, pass, x, y, NULL, 0);
    call->MoveTo(machine, x, y);
    for (int i = 0; good && i < 4; ++i) {
      uint32_t status = K7_STATUS_PROBED;  // the surface is known then: the same cut again
      for (int n = 0; n < 2 && status == K7_STATUS_PROBED; ++n)
        status = call->EngraveTo(machine, corners[i][0], corners[i][1]);
      good = status == K7_STATUS_SENT && IsAlive(machine);
    }
  }
  if (good) call->MoveTo(machine, 0, 0);  // lifts the cutter and parks
  call->EndJob(machine);                  // waits until the machine stands still
  call->SetSpindle(machine, K7_SPINDLE_OFF);
  good = good && IsAlive(machine);
  ReleaseController(machine);
  return printf(good ? "done: %ld moves\n" : "broken off after %ld\n", finished), !good;
}
