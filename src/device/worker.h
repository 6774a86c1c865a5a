// The driver's own short-lived threads on a record: a jog, a spindle ramp.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

using WorkerBody = void (*)(DeviceState& record) noexcept;

// Runs `body` on a new thread whose waits end when stopWorkers is set, and keeps its handle in
// `slot`; `role` names it in a trace. An earlier worker of that slot may still be sitting in its
// last message to the host, which may be what the host answers with this start: the new thread then
// ends only after that one. False: no thread could be had. [host]
bool StartWorker(DeviceState& record, void*& slot, WorkerBody body,
                 const char* role = "worker") noexcept;

// Asks a running jog and ramp to end and waits for their threads; prompt also when the controller
// is silent. Called before the link goes. [host]
void EndWorkers(DeviceState& record) noexcept;

// Whether the key that keeps a worker going is held; false once the worker is asked to stop. [any]
bool WorkerKeyHeld(std::uint32_t virtualKey) noexcept;

}  // namespace k7
