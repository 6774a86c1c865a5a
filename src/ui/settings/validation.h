// The rules that typed engrave settings must keep before they are saved, as a table.
#pragma once

#include <span>

namespace k7 {

// When a rule is looked at. Hidden fields are looked at like shown ones.
enum class RuleWhen {
  Always,
  PassCopies,    // multi-pass by a number of copies
  PassDepths,    // multi-pass by depth
  RoundFixture,  // a round fixture replaces an axis
};

// What breaks a rule.
enum class RuleBreak {
  AboveLimit,       // the value is greater than that of the limit's field
  BelowLift,        // below 0.1 in
  FewCopies,        // rounded half up: below 2
  NoCircumference,  // below a thousandth of an inch in magnitude
  BufferModified,   // the engrave buffer was changed and table zero not set anew
};

struct ValidationRule {
  int field;  // control; 0: none
  RuleWhen when;
  RuleBreak breaks;
  int limit;  // control whose number is the limit, as it is shown; 0: none
  const wchar_t* text;
  const wchar_t* caption;
};

// In the order in which they are checked.
std::span<const ValidationRule> ValidationRules() noexcept;

// What is checked. `valueOf` gives the number in a control's text (ParseTypedDecimal).
struct ValidationInput {
  float (*valueOf)(const void* context, int control);
  const void* context;
  bool multiPass;       // the box is checked
  bool passCopies;      // the selected mode is not 0
  bool roundFixture;    // the selected mode is not 0
  bool bufferModified;  // dialogState.engraveBufferModified is 1
};

// The first broken rule; null when all hold. Comparisons in single precision. [any]
const ValidationRule* FirstBrokenRule(const ValidationInput& input) noexcept;

}  // namespace k7
