// MachineTest: the fixture for what the machine does beside moves: homing, probing, tools, jogs.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "device/module_state.h"
#include "settings/paths.h"
#include "support/host_window.h"
#include "support/message_box.h"
#include "support/test_machine.h"

namespace k7test {

// A healthy machine without switches, spindle or round fixture, standing at 0, 0, 0.
class MachineTest : public testing::Test {
 protected:
  static constexpr UINT kPosition = WM_APP + 1, kSurface = WM_APP + 2, kJogZ = WM_APP + 3,
                        kJogEnd = WM_APP + 4, kRampEnd = WM_APP + 5;

  MachineTest() { k7::hasRoundAttachment = 0; }
  ~MachineTest() override { k7::hasRoundAttachment = 0; }

  void FitSwitches() { machine_.FitSwitches(); }
  void FitSpindle() { machine_.FitSpindle(); }
  // A fixture of 8000 steps per inch.
  void FitRoundFixture() {
    k7::hasRoundAttachment = 1;
    record_.mechanics.roundCircumference = 5.0f;
  }
  void Tell(const HostWindow& window) {
    record_.notify.ownerWindow = window.Handle();
    record_.notify.msgExtra1 = kPosition;
    record_.notify.msgExtra2 = kSurface;
    record_.notify.msgExtra3 = kJogZ;
  }

  // The text of one key of the controller's file; "(none)" when it is missing.
  std::wstring Key(const wchar_t* section, const wchar_t* key) const {
    wchar_t text[256] = L"";
    GetPrivateProfileStringW(section, key, L"(none)", text, 256,
                             k7::SettingsFilePath(record_.link).text);
    return text;
  }
  void WriteKey(const wchar_t* section, const wchar_t* key, const wchar_t* text) const {
    WritePrivateProfileStringW(section, key, text, k7::SettingsFilePath(record_.link).text);
  }
  // Everything in the controller's file as "section/key=value" in file order.
  std::wstring File() const {
    const k7::SettingsPath path = k7::SettingsFilePath(record_.link);
    wchar_t sections[1024] = L"";
    GetPrivateProfileSectionNamesW(sections, 1024, path.text);
    std::wstring all;
    for (const wchar_t* section = sections; *section; section += wcslen(section) + 1) {
      wchar_t rows[2048] = L"";
      GetPrivateProfileSectionW(section, rows, 2048, path.text);
      for (const wchar_t* row = rows; *row; row += wcslen(row) + 1) {
        all += std::wstring{section} + L"/" + row + L"\n";
      }
    }
    return all;
  }

  TestMachine machine_;
  k7::DeviceState& record_ = *machine_;
};

// Milliseconds that a call takes.
template <typename Call>
std::uint32_t Duration(Call call) {
  const DWORD start = GetTickCount();
  call();
  return GetTickCount() - start;
}

}  // namespace k7test
