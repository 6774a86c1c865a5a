// A machine with a settings file of its own and one of the smaller dialogs open on it alone.
#pragma once

#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "link/link.h"
#include "support/wait_until.h"
#include "ui/settings/settings_dialog_fixture.h"

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
    SendLine(device_->link, mark.c_str());
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
  int marks_ = 0;
};

}  // namespace k7
