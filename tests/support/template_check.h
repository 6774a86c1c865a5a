// What every dialog template is checked for: the controls that it must hold, and that a careful
// layout clips and covers nothing.
#pragma once

#include <windows.h>

#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace k7test {

// One control as the template creates it.
struct ControlSeen {
  int id;
  std::wstring kind;  // "S" text, "E" edit, "B" button, "D" default button, "X" check box,
                      // "C" drop-down list, "G" group
  std::wstring text;  // letter for letter: "&&" where "&" is shown
  bool shown;
  bool enabled;
  RECT place;   // in dialog units
  RECT pixels;  // on this display
  LONG style;
};

// One control as the template must create it.
struct ControlRow {
  int id;
  const wchar_t* kind;
  const wchar_t* text;
  bool shown = true;
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

  // Pairs of controls, shown or hidden, that cover each other. A group may hold others, wholly and
  // below its caption. One line each.
  std::vector<std::string> Overlaps() const;
  // Controls nearer than 7 units to an edge of the dialog.
  std::vector<std::string> OutsideMargins() const;
  // Controls whose text holds a single "&", which would make the next letter an access key.
  std::vector<std::string> AccessKeys() const;
  // Texts that do not fit their control at 96, 120 or 144 dots per inch, and controls too low for
  // any; `extraTexts` are texts that the code sets, with the control that takes them.
  std::vector<std::string> ClippedTexts(
      const std::vector<std::pair<int, std::wstring>>& extraTexts) const;

 private:
  HWND window_ = nullptr;
  int PixelsHigh(LONG units) const;
  int PixelsWide(LONG units) const;

  std::vector<ControlSeen> controls_;
};

// Expects these controls and no others, their texts letter for letter and without access keys;
// `enabled` tells which of them take input, all by default.
void ExpectControls(
    const TemplateOf& dialog, std::span<const ControlRow> rows,
    const std::function<bool(int id)>& enabled = [](int) { return true; });
// Expects a caption and a size in dialog units.
void ExpectFrame(const TemplateOf& dialog, const wchar_t* caption, SIZE units);
// Expects the tab key to reach every control that takes input, and no other.
void ExpectTabStops(const TemplateOf& dialog);
// Expects that nothing is covered, clipped or at the edge.
void ExpectCarefulLayout(const TemplateOf& dialog,
                         const std::vector<std::pair<int, std::wstring>>& extraTexts);

}  // namespace k7test
