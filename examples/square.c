// A host in C: finds the first engraving machine, homes it and engraves a square of one inch.
#include <stdio.h>
#include <windows.h>

#include "k7/driver_c.h"

// Runs on the driver's reader thread: count, and go. A host that does not care for progress still
// has one, because a driver with nobody to tell makes no engrave delays and switches no air head.
static volatile LONG finished;
static void OnProgress(uint32_t message, uint64_t context) {
  (void)context;
  if (message == 3) InterlockedIncrement(&finished);
}

// CheckAlive asks for a sign of life and tells whether the last one is recent: only a second 0
// counts.
static int LinkIsLost(K7Device* machine) {
  if (machine->operations->CheckAlive(machine)) return 0;
  Sleep(500);
  return !machine->operations->CheckAlive(machine);
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
  const uint32_t corners[5][2] = {{x, y}, {2 * x, y}, {2 * x, 2 * y}, {x, 2 * y}, {x, y}};
  printf("%ls: %u x %u steps an inch\n", name, x, y);
  call->EnsureTableHome(machine, NULL);

  call->SetNotifyCallback(machine, OnProgress, 0, 1, 2, 3);
  int good = call->BeginJob(machine);
  const int jobOpen = good;
  for (uint32_t pass = 1; good && pass <= call->GetPassCount(machine); ++pass) {
    call->StartPass(machine, pass, x, y, NULL, 0);
    call->MoveTo(machine, x, y);
    for (int i = 1; good && i < 5; ++i) {
      uint32_t status = call->EngraveTo(machine, corners[i][0], corners[i][1]);
      if (status == K7_STATUS_PROBED) {  // the surface is known now: the same cut again
        status = call->EngraveTo(machine, corners[i][0], corners[i][1]);
      }
      good = status == K7_STATUS_SENT && !LinkIsLost(machine);
    }
  }
  if (good) call->MoveTo(machine, 0, 0);  // lifts the cutter and parks
  if (jobOpen) call->EndJob(machine);     // waits until the machine stands still
  call->SetSpindle(machine, K7_SPINDLE_OFF);
  good = good && !LinkIsLost(machine);
  ReleaseController(machine);
  printf(good ? "done: %ld moves\n" : "broken off after %ld moves\n", finished);
  return good ? 0 : 1;
}
