#include "session/attachment.h"

#include "device/worker.h"
#include "link/link.h"
#include "settings/current_location.h"

namespace k7 {

void ExchangeLink(DeviceState& record, LinkHandle link, std::uint32_t linkType,
                  const wchar_t* portName) noexcept {
  EndWorkers(record);
  if (link == nullptr) {
    DetachLink(record, linkType);
  } else {
    AttachLink(record, link, linkType, portName);
  }
}

// Workers and reader end first, because both change the position that is kept.
void EndSession(DeviceState& record) noexcept {
  EndWorkers(record);
  if (record.link.linkHandle != nullptr) DetachLink(record, kLinkNone);
  KeepPosition(record);
}

}  // namespace k7
