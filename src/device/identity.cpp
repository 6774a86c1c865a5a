#include "device/identity.h"

#include <ctime>
#include <mutex>

#include "device/bounded_copy.h"
#include "device/identity_generator.h"
#include "device/polling.h"
#include "link/link.h"
#include "settings/load.h"

namespace k7 {

namespace {

constexpr std::uint32_t kPollMs = 200;
constexpr int kMostMisses = 3;

// A fresh identity. A host may run each of its devices on a thread of its own.
GeneratedId FreshIdentity() noexcept {
  static std::mutex guard;
  static IdentityNumbers numbers;
  const std::lock_guard lock{guard};
  numbers.SeedAt(static_cast<std::uint64_t>(std::time(nullptr)));
  return GenerateControllerId([] { return numbers(); });
}

// Stores a fresh identity here and in the controller.
void GiveIdentity(DeviceState& record) noexcept {
  const GeneratedId id = FreshIdentity();
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
