// A shared library that stands for the driver where there is no Windows: every operation notes its
// slot, and those that the Python host calls answer as a machine would.
#include <string.h>
#include <wchar.h>

#include "k7/driver_c.h"

int32_t called = -1;  // slot of the last operation
int32_t released = 0;
uint32_t path[64][2];  // where the cuts and travels went
int32_t moves = 0;

// A function for each slot: a row of ten at a time. The format would break the rows.
// clang-format off
#define SLOT(n) static uint64_t Slot##n(void) { called = n; return n; }
#define TEN(t) SLOT(t##0) SLOT(t##1) SLOT(t##2) SLOT(t##3) SLOT(t##4) \
               SLOT(t##5) SLOT(t##6) SLOT(t##7) SLOT(t##8) SLOT(t##9)
#define NAMES(t) Slot##t##0, Slot##t##1, Slot##t##2, Slot##t##3, Slot##t##4, \
                 Slot##t##5, Slot##t##6, Slot##t##7, Slot##t##8, Slot##t##9,
TEN() TEN(1) TEN(2) TEN(3) TEN(4) TEN(5) TEN(6) TEN(7) TEN(8) TEN(9) TEN(10) TEN(11)
SLOT(120) SLOT(121) SLOT(122) SLOT(123) SLOT(124) SLOT(125)

static uint64_t (*slots[126])(void) = {
  NAMES() NAMES(1) NAMES(2) NAMES(3) NAMES(4) NAMES(5) NAMES(6) NAMES(7) NAMES(8) NAMES(9) NAMES(10)
  NAMES(11) Slot120, Slot121, Slot122, Slot123, Slot124, Slot125};
// clang-format on

static K7NotifyCallback notify;
static uint64_t notifyContext;

static uint32_t Go(uint32_t x, uint32_t y) {
  path[moves][0] = x;
  path[moves++][1] = y;
  if (notify != NULL) notify(3, notifyContext);
  return K7_STATUS_SENT;
}
static uint32_t MoveTo(K7Device* self, uint32_t x, uint32_t y) {
  return (void)self, Go(x, y);
}
static uint32_t EngraveTo(K7Device* self, uint32_t x, uint32_t y) {
  static int probed;
  (void)self;
  return probed++ == 0 ? K7_STATUS_PROBED : Go(x, y);
}
static float Resolution(K7Device* self) {
  return (void)self, 4000.5f;
}
static bool BeginJob(K7Device* self) {
  return (void)self, true;
}
static int32_t CheckAlive(K7Device* self) {
  return (void)self, 1;
}
static uint32_t GetPassCount(K7Device* self) {
  return (void)self, 2;
}
static int32_t GetFriendlyName(K7Device* self, wchar_t* buffer, int32_t size) {
  (void)self;
  wcsncpy(buffer, L"Bench \u00e9", (size_t)size);
  return 0;
}
static void SetNotifyCallback(K7Device* self, K7NotifyCallback callback, uint64_t context,
                              uint32_t queued, uint32_t started, uint32_t finished) {
  (void)self, (void)queued, (void)started, (void)finished;
  notify = callback;
  notifyContext = context;
}

static K7Operations table;
static K7Device device = {&table};

// usable 0: every operation only notes its slot.
void Prepare(int32_t usable) {
  memcpy(&table, slots, sizeof(table));
  called = -1;
  moves = released = 0;
  if (!usable) return;
  table.MoveTo = MoveTo;
  table.EngraveTo = EngraveTo;
  table.GetXStepsPerUnit = Resolution;
  table.GetYStepsPerUnit = Resolution;
  table.BeginJob = BeginJob;
  table.CheckAlive = CheckAlive;
  table.GetPassCount = GetPassCount;
  table.GetFriendlyName = GetFriendlyName;
  table.SetNotifyCallback = SetNotifyCallback;
}

int32_t EnumerateControllers(void) {
  return 1;
}
void GetControllerInfo(int32_t index, wchar_t* id, wchar_t* name, int32_t size) {
  wcsncpy(id, index == 0 ? L"PYTHONMACHINE001" : L"", (size_t)size);
  wcsncpy(name, L"Bench", (size_t)size);
}
K7Device* ConnectToController(const wchar_t* id) {
  return wcscmp(id, L"PYTHONMACHINE001") == 0 ? &device : NULL;
}
void ReleaseController(K7Device* gone) {
  released += gone == &device;
}
