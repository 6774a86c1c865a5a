#include "module/controller_table.h"

#include <cwchar>

namespace k7 {

void ControllerTable::Clear() noexcept {
  for (ControllerEntry& entry : entries) entry = ControllerEntry{};
}

const ControllerEntry* ControllerTable::Find(const wchar_t* id, int count) const noexcept {
  if (id == nullptr) return nullptr;
  for (int i = 0; i < count && i < kMostControllers; ++i) {
    if (std::wcscmp(entries[i].id, id) == 0) return &entries[i];
  }
  return nullptr;
}

ControllerTable& Table() noexcept {
  static constinit ControllerTable table;
  return table;
}

}  // namespace k7
