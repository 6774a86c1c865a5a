#include "link/link.h"

#include <windows.h>

#include <cstring>
#include <new>

#include "base/bounded_copy.h"
#include "base/handles.h"
#include "device/polling.h"
#include "link/commands.h"
#include "link/queue.h"
#include "link/reader.h"

namespace k7 {

namespace {

// The rest of the link fails quietly after a failed write; a pause keeps a sender in a loop from
// hammering it.
constexpr DWORD kLostLinkPauseMs = 250;
constexpr std::uint32_t kReaderPollMs = 200;

}  // namespace

void AttachLink(DeviceState& record, LinkHandle link, std::uint32_t linkType,
                const wchar_t* portName) noexcept {
  LinkState& state = record.link;
  if (state.linkHandle != nullptr) DetachLink(record, kLinkNone);
  CopyText(state.portName, portName);
  state.linkHandle = link;
  state.linkType = linkType;
  ForEachGuarded(record, [](auto& guarded) { guarded.Open(); });
  state.alive.Set({});
  state.readerRun = 1;
  state.writeQueue.Set(new (std::nothrow) WriteQueue{link, linkType});
  StartReader(record);
}

void DetachLink(DeviceState& record, std::uint32_t linkType) noexcept {
  LinkState& state = record.link;
  CopyText(state.portName, static_cast<const wchar_t*>(nullptr));
  state.readerRun = 0;
  PollUntil(kReaderPollMs, [&] { return state.readerAlive != 1; });
  JoinReader(record);
  {
    const auto queue = state.writeQueue.Lock();
    delete *queue;
    *queue = nullptr;
    state.linkHandle = nullptr;
    state.linkType = linkType;
  }
  ForEachGuarded(record, [](auto& guarded) { guarded.Close(); });
}

void SendLine(LinkState& state, const char* line) noexcept {
  if (line == nullptr) return;
  const auto queue = state.writeQueue.Lock();
  if (!queue || state.linkHandle == nullptr || *queue == nullptr) return;
  if (state.linkType != kLinkSerial && state.linkType != kLinkTcp) return;
  if ((*queue)->Write(line, std::strlen(line)) == WriteResult::Lost) {
    state.readerRun = 0;
    Sleep(kLostLinkPauseMs);
  }
}

void PumpWrites(LinkState& state) noexcept {
  // The queue outlives the reader, which alone is here.
  WriteQueue* const outstanding = state.writeQueue.Alone();
  if (outstanding == nullptr || !outstanding->HasOutstanding()) return;
  if (WaitForSingleObject(outstanding->DoneEvent(), 0) != WAIT_OBJECT_0) return;
  if (const auto queue = state.writeQueue.Lock()) (*queue)->Pump();
}

std::int32_t CheckAlive(LinkState& state) noexcept {
  std::int32_t alive = 1;
  if (const auto ticks = state.alive.Lock()) {
    ticks->lastCheckTick = TickMs();
    if (ticks->lastAnswerTick == 0) {
      ticks->lastAnswerTick = ticks->lastCheckTick;
    } else {
      alive = IsRecentAnswer(ticks->lastCheckTick, ticks->lastAnswerTick) ? 1 : 0;
    }
  }
  SendLine(state, commands::kSignOfLife);
  return alive;
}

}  // namespace k7
