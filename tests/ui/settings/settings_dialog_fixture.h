// A machine with a settings file of its own and the settings dialog open on it.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "device/module_state.h"
#include "session/load.h"
#include "support/attached_device.h"
#include "support/controller_id.h"
#include "support/dialog_driver.h"
#include "support/fake_controller.h"
#include "support/key_file.h"
#include "support/wait_until.h"
#include "ui/common/dialog_state.h"
#include "ui/resource_ids.h"
#include "ui/settings/settings_dialog.h"

namespace k7 {

class SettingsDialogTest : public testing::Test {
 protected:
  SettingsDialogTest() {
    dialogState = {};
    controller_.BehaveWell();
    device_->link.controllerId.Set(id_.c_str());
    device_->position.tableHomed = 1;
    k7test::GiveDefaults(*device_);
  }

  DeviceState& Record() { return *device_; }
  k7test::KeyFile File() { return k7test::KeyFile{device_->link}; }
  std::wstring Path() { return k7test::SettingsFileOf(id_); }

  void WriteInt(const wchar_t* section, const wchar_t* key, std::int32_t value) {
    File().WriteInt(section, key, value);
  }
  void WriteFloat(const wchar_t* section, const wchar_t* key, float value) {
    File().WriteFloat(section, key, value);
  }
  // The text of a key; "(none)" when it is not there.
  std::wstring Stored(const wchar_t* section, const wchar_t* key) {
    return StoredIn(Path(), section, key);
  }
  static std::wstring StoredIn(const std::wstring& path, const wchar_t* section,
                               const wchar_t* key) {
    return k7test::KeyFile{path}.ReadText(section, key, L"(none)");
  }
  // Every key of the settings file as "section/key", with its text, in the order of the file.
  using KeyTexts = std::vector<std::pair<std::wstring, std::wstring>>;
  KeyTexts KeysInOrder() { return KeysOf(Path()); }
  static KeyTexts KeysOf(const std::wstring& path) {
    KeyTexts keys;
    std::wstring sections(4096, L'\0');
    sections.resize(GetPrivateProfileSectionNamesW(sections.data(), 4096, path.c_str()));
    for (const std::wstring& section : Split(sections)) {
      std::wstring text(16384, L'\0');
      text.resize(GetPrivateProfileSectionW(section.c_str(), text.data(), 16384, path.c_str()));
      for (const std::wstring& line : Split(text)) {
        const std::size_t sign = line.find(L'=');
        keys.emplace_back(section + L"/" + line.substr(0, sign), line.substr(sign + 1));
      }
    }
    return keys;
  }
  // The same by key.
  std::map<std::wstring, std::wstring> AllKeys() {
    const KeyTexts keys = KeysInOrder();
    return {keys.begin(), keys.end()};
  }
  // The texts of a list of terminated texts.
  static std::vector<std::wstring> Split(const std::wstring& list) {
    std::vector<std::wstring> texts;
    for (std::size_t at = 0; at < list.size(); at += texts.back().size() + 1) {
      texts.emplace_back(&list[at]);
    }
    return texts;
  }
  float StoredFloat(const wchar_t* section, const wchar_t* key) {
    return File().ReadFloat(section, key, -12345.0f);
  }

  void FitAllSwitches() {
    WriteInt(L"Axis X", L"Limit Switch", 1);
    WriteInt(L"Axis Y", L"Limit Switch", 1);
    WriteInt(L"Axis Z", L"Limit Switch", 1);
    WriteInt(L"Axis Z", L"Prox Switch", 1);
  }

  // Loads the settings as a connect does and opens the dialog.
  void Open(std::uint32_t mode = 1, std::uint32_t allowRun = 1, std::uint64_t initParam = 0,
            std::uint32_t showGrid = 1) {
    LoadSettings(*device_);
    if (speaksUnasked_)
      signsOfLife_ = std::jthread{[this](const std::stop_token& stop) { Live(stop); }};
    driver_.emplace([=, this] {
      onHostThread_();
      return ShowSettingsDialog(*device_, parent_, mode, allowRun, initParam, showGrid);
    });
    dialog_ = driver_->WaitForDialog();
    ASSERT_NE(dialog_, nullptr);
  }
  // Presses a closing button and waits for the result.
  std::int64_t CloseBy(int button) {
    k7test::Press(dialog_, button);
    return driver_->Result();
  }
  // Presses a button that opens something over the dialog, and returns that.
  HWND OpenOver(int button) {
    k7test::Press(dialog_, button);
    const HWND above = driver_->WaitForDialogOver(dialog_);
    EXPECT_NE(above, nullptr) << button;
    return above;
  }
  // Closes what was opened over the dialog.
  void CloseOver(HWND above, int button) {
    k7test::Press(above, button);
    EXPECT_TRUE(driver_->WaitUntilTop(dialog_));
    WaitUntilHandled();
  }
  // Until the dialog has carried out every command that it was sent so far: the last one, which
  // needs no device, shows a box.
  void WaitUntilHandled() {
    PostMessageW(dialog_, WM_COMMAND, IDC_CS_IMPORT_NOTICE, 0);
    EXPECT_EQ(driver_->AnswerBox(dialog_, IDOK).caption, L"Import...");
    EXPECT_TRUE(driver_->WaitUntilTop(dialog_));
  }

  void SetFocusTo(int id) {
    PostMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog_, id)), TRUE);
    EXPECT_TRUE(driver_->WaitForFocus(dialog_, id));
  }
  std::wstring Text(int id) { return k7test::TextOf(dialog_, id); }
  void Type(int id, const std::wstring& text) { k7test::TypeText(dialog_, id, text); }
  bool Shown(int id) { return k7test::IsShown(dialog_, id); }
  bool Enabled(int id) { return k7test::IsEnabled(dialog_, id); }
  bool Checked(int id) { return k7test::IsBoxChecked(dialog_, id); }

  void Live(const std::stop_token& stop) {
    std::mutex mutex;
    std::unique_lock lock{mutex};
    std::condition_variable_any stopped;
    while (!stop.stop_requested()) {
      controller_.Say("SmoothieIsConnected\r\n");
      stopped.wait_for(lock, stop, std::chrono::milliseconds{200}, [] { return false; });
    }
  }

  std::wstring id_ = k7test::FreshControllerId();
  k7test::FakeController controller_;
  k7test::AttachedDevice device_{controller_};
  // A dialog on a busy machine may be held up for longer than the two seconds of silence after
  // which it closes; the controller therefore speaks unasked, but for tests that are about its
  // silence.
  bool speaksUnasked_ = true;
  std::jthread signsOfLife_;
  std::function<void()> onHostThread_ = [] {};  // called before the dialog opens
  HWND parent_ = nullptr;                       // of the dialog
  std::optional<k7test::DialogDriver> driver_;  // ends before the device does
  HWND dialog_ = nullptr;
};

}  // namespace k7
