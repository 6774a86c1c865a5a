// The controllers that the last discovery found.
#pragma once

#include <cstdint>

#include "k7/driver.h"

namespace k7 {

inline constexpr int kMostControllers = 10;
inline constexpr int kAddressCapacity = 16;

struct ControllerEntry {
  wchar_t id[kIdCapacity] = L"";
  wchar_t name[kNameCapacity] = L"";        // friendly name at the time of the probe
  wchar_t address[kAddressCapacity] = L"";  // serial device path, or network address
  std::uint32_t linkType = kLinkNone;       // a kLink number
};

// Filled from index 0 upwards, without gaps; entries beyond the last count are empty. No lock: the
// exported functions belong to one thread of the host. [host]
struct ControllerTable {
  ControllerEntry entries[kMostControllers];

  // Empties every entry.
  void Clear() noexcept;
  // Among the first `count` entries, the first whose identity equals `id` exactly, letter case
  // included. Null when there is none or `id` is null.
  const ControllerEntry* Find(const wchar_t* id, int count) const noexcept;
};

// The one table of the process.
ControllerTable& Table() noexcept;

}  // namespace k7
