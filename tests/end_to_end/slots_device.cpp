// The slots of the device, a command each.
#include <cstdint>

#include "slots.h"

namespace k7slots {

const Commands& DeviceCommands() {
  static const Commands commands = {
      {"begin", [](Driver& d, const Words&) { return Text(d.device->BeginJob()); }},
      {"end", [](Driver& d, const Words&) { return d.device->EndJob(), std::string{"done"}; }},
      {"move", [](Driver& d,
                  const Words& w) { return Text(d.device->MoveTo(Number(w, 1), Number(w, 2))); }},
      {"engrave",
       [](Driver& d, const Words& w) {
         return Text(d.device->EngraveTo(Number(w, 1), Number(w, 2)));
       }},
      {"goto-as-job",
       [](Driver& d, const Words& w) {
         d.device->GoToAsJob(Number(w, 1), Number(w, 2), static_cast<uint8_t>(Number(w, 3)));
         return std::string{"done"};
       }},
      {"home", [](Driver& d, const Words&) { return Text(d.device->HomeTable()); }},
      {"spindle",
       [](Driver& d, const Words& w) {
         d.device->SetSpindle(Number(w, 1));
         return Text(d.device->GetSpindleValue());
       }},
      {"switches",
       [](Driver& d, const Words&) {
         uint8_t state[4] = {9, 9, 9, 9};
         d.device->ReadSwitches(&state[0], &state[1], &state[2], &state[3]);
         return Text(state[0]) + " " + Text(state[1]) + " " + Text(state[2]) + " " + Text(state[3]);
       }},
      {"location-round",
       [](Driver& d, const Words&) {
         int32_t x = -1, y = -1, round = -1;
         d.device->GetMachinePosition(&x, &y, &round);
         return Text(x) + " " + Text(y) + " " + Text(round);
       }},
      {"pass",
       [](Driver& d, const Words& w) {
         wchar_t status[128] = L"";
         d.device->StartPass(Number(w, 1), Number(w, 2), Number(w, 3), status, 128);
         return Narrow(status);
       }},
      {"passes", [](Driver& d, const Words&) { return Text(d.device->GetPassCount()); }},
      {"connected", [](Driver& d, const Words&) { return Text(d.device->IsConnected()); }},
      // Speed, parity, stop bits, time-outs and event mask of the serial port.
      {"port",
       [](Driver& d, const Words&) {
         DCB line{};
         line.DCBlength = sizeof line;
         COMMTIMEOUTS times{};
         DWORD events = 0;
         const HANDLE port = d.device->GetLinkHandle();
         if (!GetCommState(port, &line) || !GetCommTimeouts(port, &times) ||
             !GetCommMask(port, &events)) {
           return std::string{"no port"};
         }
         return Text(line.BaudRate) + " " + Text(line.Parity) + " " + Text(line.StopBits) +
                ", time-outs " + Text(times.ReadIntervalTimeout) + " " +
                Text(times.ReadTotalTimeoutMultiplier) + " " +
                Text(times.ReadTotalTimeoutConstant) + " " +
                Text(times.WriteTotalTimeoutMultiplier) + " " +
                Text(times.WriteTotalTimeoutConstant) + ", events " + Text(events);
       }},
      {"resolution",
       [](Driver& d, const Words&) {
         return Text(static_cast<long long>(d.device->GetXStepsPerUnit())) + " " +
                Text(static_cast<long long>(d.device->GetYStepsPerUnit()));
       }},
      // alive: asks for a sign of life, which the next such question sees.
      {"alive", [](Driver& d, const Words&) { return Text(d.device->CheckAlive()); }},
      // settings MODE ALLOW_RUN: answers when the dialog has closed.
      {"settings",
       [](Driver& d, const Words& w) {
         return Text(d.device->ShowSettingsDialog(nullptr, Number(w, 1), Number(w, 2), 0, 1));
       }},
      // strokes N SEED: a job's worth of N random strokes, each a travel and three cuts.
      {"strokes",
       [](Driver& d, const Words& w) {
         unsigned state = Number(w, 2);
         const auto next = [&state] {
           state = state * 1664525u + 1013904223u;
           return 1 + (state >> 8) % 40000u;
         };
         for (unsigned i = 0; i < Number(w, 1); ++i) {
           d.device->MoveTo(next(), next());
           for (int k = 0; k < 3; ++k) {
             if (d.device->EngraveTo(next(), next()) != k7::kStatusSent) return Text(i);
           }
         }
         return Text(Number(w, 1));
       }},
  };
  return commands;
}

}  // namespace k7slots
