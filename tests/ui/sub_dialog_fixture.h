// A machine with a settings file of its own and one of the smaller dialogs open on it alone.
#pragma once

#include <cmath>
#include <cstdlib>
#include <cwchar>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "link/link.h"
#include "support/wait_until.h"
#include "ui/settings_dialog_fixture.h"

namespace k7 {

class SubDialogTest : public SettingsDialogTest {
 protected:
  using ShowDialog = INT_PTR (*)(HWND owner);

  // Loads the settings as a connect does and opens the dialog with the machine as its device.
  void OpenOn(ShowDialog show) {
    LoadSettings(*device_);
    Sent();
    OpenWith(show, &*device_);
  }
  void OpenWith(ShowDialog show, DeviceState* device) {
    driver_.emplace([show, device] {
      dialogDevice = device;
      const INT_PTR result = show(nullptr);
      dialogDevice = nullptr;
      return static_cast<std::int64_t>(result);
    });
    dialog_ = driver_->WaitForDialog();
    ASSERT_NE(dialog_, nullptr);
  }

  // What the driver has sent since the last call, in order. A line of the test's own marks the end:
  // lines keep their order.
  std::vector<std::string> SentLines() {
    const std::string mark = ";" + std::to_string(++marks_) + "\n";
    SendLine(*device_, mark.c_str());
    EXPECT_TRUE(controller_.WaitForLine(mark));
    std::vector<std::string> lines;
    for (const std::string& line : controller_.Lines()) {
      if (line == mark) break;
      lines.push_back(line);
    }
    controller_.Clear();
    return lines;
  }
  std::string Sent() {
    std::string all;
    for (const std::string& line : SentLines()) all += line;
    return all;
  }

  // Every key of the settings file as "section/key", with its text, in the order of the file.
  std::vector<std::pair<std::wstring, std::wstring>> KeysInOrder() {
    std::vector<std::pair<std::wstring, std::wstring>> keys;
    std::wstring sections(4096, L'\0');
    sections.resize(GetPrivateProfileSectionNamesW(sections.data(), 4096, Path().c_str()));
    for (const std::wstring& section : Split(sections)) {
      std::wstring text(16384, L'\0');
      text.resize(GetPrivateProfileSectionW(section.c_str(), text.data(), 16384, Path().c_str()));
      for (const std::wstring& line : Split(text)) {
        const std::size_t sign = line.find(L'=');
        keys.emplace_back(section + L"/" + line.substr(0, sign), line.substr(sign + 1));
      }
    }
    return keys;
  }
  // The same by key.
  std::map<std::wstring, std::wstring> AllKeys() {
    const auto keys = KeysInOrder();
    return {keys.begin(), keys.end()};
  }

  // The brush that a control is painted with.
  HBRUSH BrushOf(int id) {
    const HDC device = GetDC(nullptr);
    const auto brush = reinterpret_cast<HBRUSH>(
        SendMessageW(dialog_, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(device),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog_, id))));
    ReleaseDC(nullptr, device);
    return brush;
  }
  COLORREF ColorOf(int id) {
    LOGBRUSH seen{};
    EXPECT_NE(GetObjectW(BrushOf(id), sizeof seen, &seen), 0) << id;
    return seen.lbColor;
  }

  // The lifts that followed a probe, in steps.
  std::vector<long> LiftsAfterProbes() {
    std::vector<long> lifts;
    double touched = 0.0;
    for (const std::string& line : SentLines()) {
      if (line.starts_with("G92 Z")) touched = std::atof(line.c_str() + 5);
      if (line.starts_with("G0 Z")) {
        lifts.push_back(std::lround((touched - std::atof(line.c_str() + 4)) / 25.4 * 4000.0));
      }
    }
    return lifts;
  }

 private:
  // The texts of a list of terminated texts.
  static std::vector<std::wstring> Split(const std::wstring& list) {
    std::vector<std::wstring> texts;
    for (std::size_t at = 0; at < list.size(); at += texts.back().size() + 1) {
      texts.emplace_back(&list[at]);
    }
    return texts;
  }

  int marks_ = 0;
};

}  // namespace k7
