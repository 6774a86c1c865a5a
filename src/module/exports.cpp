// The four exported functions.
#include "base/bounded_copy.h"
#include "base/trace.h"
#include "k7/driver.h"
#include "module/connection.h"
#include "module/controller_table.h"
#include "module/discovery.h"

int32_t EnumerateControllers() noexcept {
  k7::BeginTraceIfWanted();
  return k7::DiscoverControllers(k7::Table());
}

void GetControllerInfo(int32_t index, wchar_t* id, wchar_t* name, int32_t size) noexcept {
  if (index < 0 || index >= k7::kMostControllers) return;
  const k7::ControllerEntry& entry = k7::Table().entries[index];
  k7::CopyText(id, size, entry.id);
  k7::CopyText(name, size, entry.name);
}

k7::IEngraver* ConnectToController(const wchar_t* controllerId) noexcept {
  if (controllerId == nullptr) return nullptr;
  k7::BeginTraceIfWanted();
  const int count = k7::DiscoverControllers(k7::Table());
  const k7::ControllerEntry* entry = k7::Table().Find(controllerId, count);
  return entry == nullptr ? nullptr : k7::ConnectTo(*entry);
}

// Every device that a host can hold was made by ConnectToController.
void ReleaseController(k7::IEngraver* device) noexcept {
  if (device != nullptr) k7::Disconnect(static_cast<k7::Smoothieboard*>(device));
}
