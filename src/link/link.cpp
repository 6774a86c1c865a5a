#include "link/link.h"

#include <windows.h>

#include <cstring>
#include <new>

#include "device/bounded_copy.h"
#include "device/handles.h"
#include "device/polling.h"
#include "link/reader.h"
#include "link/write_queue.h"

namespace k7 {

namespace {

// The rest of the link fails quietly after a failed write; a pause keeps a sender in a loop from
// hammering it.
constexpr DWORD kLostLinkPauseMs = 250;
constexpr std::uint32_t kReaderPollMs = 200;

}  // namespace

void AttachLink(DeviceState& record, LinkHandle link, std::uint32_t linkType,
                const wchar_t* portName) noexcept {
  if (record.linkHandle != nullptr) DetachLink(record, kLinkNone);
  CopyText(record.portName, portName);
  record.linkHandle = link;
  record.linkType = linkType;
  for (void*& mutex : record.mutexes) mutex = CreateMutexW(nullptr, FALSE, nullptr);
  record.lastCheckTick = 0;
  record.lastAnswerTick = 0;
  record.readerRun = 1;
  record.writeQueue = new (std::nothrow) WriteQueue{link, linkType};
  StartReader(record);
}

void DetachLink(DeviceState& record, std::uint32_t linkType) noexcept {
  CopyText(record.portName, static_cast<const wchar_t*>(nullptr));
  record.readerRun = 0;
  PollUntil(kReaderPollMs, [&] { return record.readerAlive != 1; });
  JoinReader(record);
  {
    const RecordLock<sendMutex> lock{record};
    delete record.writeQueue;
    record.writeQueue = nullptr;
    record.linkHandle = nullptr;
    record.linkType = linkType;
  }
  for (void*& mutex : record.mutexes) {
    if (mutex != nullptr) CloseHandle(mutex);
    mutex = nullptr;
  }
}

void SendLine(DeviceState& record, const char* line) noexcept {
  if (line == nullptr) return;
  const RecordLock<sendMutex> lock{record};
  if (!lock || record.linkHandle == nullptr || record.writeQueue == nullptr) return;
  if (record.linkType != kLinkSerial && record.linkType != kLinkTcp) return;
  if (record.writeQueue->Write(line, std::strlen(line)) == WriteResult::Lost) {
    record.readerRun = 0;
    Sleep(kLostLinkPauseMs);
  }
}

void PumpWrites(DeviceState& record) noexcept {
  WriteQueue* const queue = record.writeQueue;
  if (queue == nullptr || !queue->HasOutstanding()) return;
  if (WaitForSingleObject(queue->DoneEvent(), 0) != WAIT_OBJECT_0) return;
  if (const RecordLock<sendMutex> lock{record}) queue->Pump();
}

std::int32_t CheckAlive(DeviceState& record) noexcept {
  std::int32_t alive = 1;
  if (const RecordLock<aliveMutex> lock{record}) {
    record.lastCheckTick = TickMs();
    if (record.lastAnswerTick == 0) {
      record.lastAnswerTick = record.lastCheckTick;
    } else {
      alive = IsRecentAnswer(record.lastCheckTick, record.lastAnswerTick) ? 1 : 0;
    }
  }
  SendLine(record, "SmoothieIsConnected\n");
  return alive;
}

}  // namespace k7
