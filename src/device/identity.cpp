#include "device/identity.h"

#include <chrono>
#include <random>

#include "device/bounded_copy.h"
#include "device/identity_generator.h"
#include "device/polling.h"
#include "link/link.h"
#include "settings/load.h"

namespace k7 {

namespace {

constexpr std::uint32_t kPollMs = 200;
constexpr int kMostMisses = 3;

// Stores a fresh identity here and in the controller. Seeded from the calendar clock at its full
// resolution: two controllers that are met in the same second must not become one.
void GiveIdentity(DeviceState& record) noexcept {
  const auto ticks = std::chrono::system_clock::now().time_since_epoch().count();
  std::mt19937_64 generator{static_cast<std::uint64_t>(ticks)};
  const GeneratedId id = GenerateControllerId([&] { return generator(); });
  record.controllerId.Set(id.text);

  char line[256] = "config-set sd controller_id ";
  char digits[17] = "";
  for (int i = 0; i < 16; ++i) digits[i] = static_cast<char>(id.text[i]);
  AppendText(line, digits);
  AppendText(line, "\n");
  SendLine(record, line);
}

// The end of every successful query: the settings are those of this controller from here on.
std::int32_t Settle(DeviceState& record, wchar_t* buffer, std::int32_t size) noexcept {
  LoadSettings(record);
  CopyText(buffer, size, record.controllerId.Get().text);
  return kIdCapacity;
}

}  // namespace

std::int32_t QueryControllerId(DeviceState& record, wchar_t* buffer, std::int32_t size) noexcept {
  if (!record.controllerId.Is(kUnsetControllerId) || record.linkHandle == nullptr) {
    return Settle(record, buffer, size);
  }
  record.controllerId.Set(kPendingControllerId);
  SendLine(record, "config-get sd controller_id\n");
  for (int misses = 0; misses < kMostMisses; ++misses) {
    Pause(kPollMs);
    if (record.controllerId.Is(kPendingControllerId)) continue;
    if (record.controllerId.Is(kUnsetControllerId)) GiveIdentity(record);
    return Settle(record, buffer, size);
  }
  // KEEP: the mark stays, and the next query takes it for an identity; callers that want to ask
  // again reset it first, as discovery does.
  return 0;
}

void ResetControllerId(DeviceState& record) noexcept {
  record.controllerId.Set(kUnsetControllerId);
}

}  // namespace k7
