// The machines that the end-to-end tests work with: settings as the dialogs would have left them
// (lengths are single-precision bit patterns), and the simulated machine to match.
#pragma once

#include <string>
#include <vector>

#include "settings_files.h"

namespace k7test {

// A machine as an engraver would have set it up: table home an inch in from the switches, the work
// surface an inch down.
inline Settings EngraversSettings() {
  return {{"Axis X/Table Home", "1065353216"},               // 1.0
          {"Axis Y/Table Home", "1065353216"},               // 1.0
          {"Axis Z/Cutter Home", "1065353216"},              // 1.0
          {"Engrave Settings/Engrave Depth", "1017370378"},  // 0.02
          {"Engrave Settings/Engrave Type", "0"},
          {"Axis Z/Air Z", "0"}};
}

inline std::vector<std::string> EngraversTable() {
  return {"--homed", "--table-home", "1,1", "--surface", "plane:1.0"};
}

// A machine with all four switches, a spindle, and three passes to full depth.
inline Settings FullMachine() {
  return {{"Axis X/Limit Switch", "1"},
          {"Axis Y/Limit Switch", "1"},
          {"Axis Z/Limit Switch", "1"},
          {"Axis Z/Prox Switch", "1"},
          {"Axis X/Table Home", "1065353216"},
          {"Axis Y/Table Home", "1065353216"},
          {"Axis Z/Cutter Home", "1065353216"},
          {"Axis Z/Air Z", "0"},
          {"Prox/Semi Auto Offset", "0"},
          {"Engrave Settings/Engrave Type", "1"},
          {"Engrave Settings/Cutter Mode", "3"},
          {"Engrave Settings/Engrave Depth", "1022739087"},  // 0.03
          {"Engrave Settings/Multi Pass", "1"},
          {"Engrave Settings/Multi Pass Mode", "0"},
          {"Engrave Settings/Max Pass Depth", "1008981770"},  // 0.01
          {"Spindle/Has Spindle", "1"},
          {"Spindle/Spindle RPM", "9000"}};
}

inline std::vector<std::string> FullTable() {
  return {"--table-home", "1,1", "--surface", "plane:1.25", "--position", "4,3,0.2"};
}

// `table` with more of k7sim's arguments.
inline std::vector<std::string> With(std::vector<std::string> table,
                                     const std::vector<std::string>& more) {
  table.insert(table.end(), more.begin(), more.end());
  return table;
}

// A sample drawing, as a Windows program finds it.
inline std::string Sample(const std::string& name) {
  return WindowsPath(Places::Get().source / "host/samples" / name);
}

}  // namespace k7test
