// What every dialog template is checked for: the controls that it must hold, and that a careful
// layout clips and covers nothing.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace k7test {

// One control as the template creates it.
struct ControlSeen {
  int id;
  std::wstring kind;  // "S" text, "E" edit, "B" button, "D" default button, "X" check box,
                      // "C" drop-down list, "G" group
  std::wstring text;  // with its "&"
  bool shown;
  bool enabled;
  RECT place;  // in dialog units
  LONG style;
};

// A dialog made from its template alone, never shown.
class TemplateOf {
 public:
  explicit TemplateOf(int dialogId);
  ~TemplateOf();
  TemplateOf(const TemplateOf&) = delete;
  TemplateOf& operator=(const TemplateOf&) = delete;

  HWND Window() const { return window_; }
  const std::vector<ControlSeen>& Controls() const { return controls_; }
  const ControlSeen* Find(int id) const;  // the first of that number
  SIZE SizeInUnits() const;

  // Pairs of controls that cover each other; a group may hold
  // others. One line each.
  std::vector<std::string> Overlaps() const;
  // Controls nearer than 7 units to an edge of the dialog.
  std::vector<std::string> OutsideMargins() const;
  // Texts that do not fit their control at 96, 120 or 144 dots per inch; `extraTexts` are texts
  // that the code sets, with the control that takes them.
  std::vector<std::string> ClippedTexts(
      const std::vector<std::pair<int, std::wstring>>& extraTexts) const;

 private:
  HWND window_ = nullptr;
  std::vector<ControlSeen> controls_;
};

}  // namespace k7test
