#include "session/identity.h"

#include <ctime>
#include <optional>

#include "base/bounded_copy.h"
#include "base/short_lock.h"
#include "device/polling.h"
#include "link/commands.h"
#include "link/link.h"
#include "session/identity_generator.h"
#include "session/load.h"

namespace k7 {

namespace {

constexpr std::uint32_t kPollMs = 200;
constexpr int kMostMisses = 3;

// A fresh identity. Locked, because a host may run each of its devices on a thread of its own.
GeneratedId FreshIdentity() noexcept {
  static constinit ShortLock guard;
  static constinit std::optional<IdentityNumbers> kept;
  const ShortLockScope lock{guard};
  IdentityNumbers& numbers = kept ? *kept : kept.emplace();
  numbers.SeedAt(static_cast<std::uint64_t>(std::time(nullptr)));
  return GenerateControllerId([&] { return numbers(); });
}

// Stores a fresh identity here and in the controller.
void GiveIdentity(LinkState& link) noexcept {
  const GeneratedId id = FreshIdentity();
  link.controllerId.Set(id.text);

  SendLine(link, StoreIdentityLine(id.text).c_str());
}

// The end of every successful query: loads the settings of this controller.
std::int32_t Settle(DeviceState& record, wchar_t* buffer, std::int32_t size) noexcept {
  LoadSettings(record);
  CopyText(buffer, size, record.link.controllerId.Get().text);
  return kIdCapacity;
}

}  // namespace

std::int32_t SettleIdentity(DeviceState& record, wchar_t* buffer, std::int32_t size) noexcept {
  if (!record.link.controllerId.Is(kUnsetControllerId) || record.link.linkHandle == nullptr) {
    return Settle(record, buffer, size);
  }
  record.link.controllerId.Set(kPendingControllerId);
  SendLine(record.link, commands::kAskIdentity);
  for (int misses = 0; misses < kMostMisses; ++misses) {
    Pause(kPollMs);
    if (record.link.controllerId.Is(kPendingControllerId)) continue;
    if (record.link.controllerId.Is(kUnsetControllerId)) GiveIdentity(record.link);
    return Settle(record, buffer, size);
  }
  // KEEP: the pending mark stays, and the next query takes it for an identity. A caller that wants
  // to ask again forgets the identity first, as discovery does.
  return 0;
}

void ForgetIdentity(LinkState& link) noexcept {
  link.controllerId.Set(kUnsetControllerId);
}

}  // namespace k7
