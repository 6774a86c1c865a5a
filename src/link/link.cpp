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
#include "link/tags.h"

namespace k7 {

namespace {

// The rest of the link fails quietly after a failed write; a pause keeps a sender in a loop from
// hammering it.
constexpr DWORD kLostLinkPauseMs = 250;

}  // namespace

void AttachLink(DeviceState& record, LinkHandle link, std::uint32_t linkType,
                const wchar_t* portName) noexcept {
  LinkState& state = record.link;
  if (state.linkHandle != nullptr) DetachLink(record, kLinkNone);
  CopyText(state.portName, portName);
  state.linkHandle = link;
  state.linkType = linkType;
  TraceName(link, "attach", NameOfLink(linkType), state.portName);
  ForEachGuarded(record, [](auto& guarded) { guarded.Open(); });
  state.alive.Set({});
  state.lost = 0;
  state.newsEvent = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  state.newsTold = 0;
  state.readerWake = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  state.readerRun = 1;
  state.writeQueue.Set(new (std::nothrow) WriteQueue{link, linkType});
  StartReader(record);
}

void DetachLink(DeviceState& record, std::uint32_t linkType) noexcept {
  LinkState& state = record.link;
  TraceEvent(state.linkHandle, "detach");
  CopyText(state.portName, static_cast<const wchar_t*>(nullptr));
  state.readerRun = 0;
  if (state.readerWake != nullptr) SetEvent(state.readerWake);
  {
    // The host can set the mark itself (slot 120), so that there may be no reader to end it.
    NewsWaiter waiter{state, awaited::kReader};
    while (state.readerAlive == 1) waiter.Round();
  }
  JoinReader(record);
  {
    const auto queue = state.writeQueue.Lock();
    delete *queue;
    *queue = nullptr;
    state.linkHandle = nullptr;
    state.linkType = linkType;
  }
  ForEachGuarded(record, [](auto& guarded) { guarded.Close(); });
  for (void** const event : {&state.newsEvent, &state.readerWake}) {
    if (*event != nullptr) CloseHandle(*event);
    *event = nullptr;
  }
}

void SendLine(LinkState& state, const char* line, CommandTag tag) noexcept {
  if (line == nullptr) return;
  const auto queue = state.writeQueue.Lock();
  if (!queue || state.linkHandle == nullptr || *queue == nullptr) return;
  if (state.linkType != kLinkSerial && state.linkType != kLinkTcp) return;
  // Nothing is waited for any more on a lost link.
  const bool alreadyLost = state.lost != 0;
  const DWORD waitMs = alreadyLost ? 0 : WriteQueue::kWaitMs;
  // Under the lock, so that the trace has the lines in the order in which they go out.
  TraceSent(state.linkHandle, kTagNames[static_cast<std::size_t>(tag)], line);
  if ((*queue)->Write(line, std::strlen(line), waitMs) != WriteResult::Lost || alreadyLost) return;
  state.readerRun = 0;
  state.lost = 1;
  TraceEvent(state.linkHandle, "lost", "write");
  SetEvent(state.readerWake);
  TellNews(state);
  Sleep(kLostLinkPauseMs);
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
    if (state.lost != 0) alive = 0;
  }
  SendLine(state, commands::kSignOfLife);
  return alive;
}

}  // namespace k7
