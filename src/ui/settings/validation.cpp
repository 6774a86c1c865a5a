#include "ui/settings/validation.h"

#include <cmath>

#include "base/arithmetic.h"
#include "ui/resource_ids.h"

namespace k7 {
namespace {

constexpr float kLeastLiftInches = 0.1f;
constexpr int kLeastCopies = 2;

constexpr wchar_t kExceedsMax[] = L"Value Exceeds Max";

// Order is the rule: the first broken one is shown.
constexpr ValidationRule kRules[] = {
    {IDC_CS_CUTTER_DOWN_SPEED, RuleWhen::Always, RuleBreak::AboveLimit,
     IDC_CS_MAX_CUTTER_DOWN_SPEED, L"Cutter Down Speed Exceeds Maximum Allowed Value", kExceedsMax},
    {IDC_CS_TRAVERSE_SPEED, RuleWhen::Always, RuleBreak::AboveLimit, IDC_CS_MAX_TRAVERSE_SPEED,
     L"Traverse Speed Exceeds Maximum Allowed Value", kExceedsMax},
    {IDC_CS_ENGRAVE_DEPTH, RuleWhen::Always, RuleBreak::AboveLimit, IDC_CS_MAX_ENGRAVE_DEPTH,
     L"Engrave Depth Exceeds Maximum Allowed Value", kExceedsMax},
    {IDC_CS_CUTTER_UP_SPEED, RuleWhen::Always, RuleBreak::AboveLimit, IDC_CS_MAX_CUTTER_UP_SPEED,
     L"Cutter Up Speed Exceeds Maximum Allowed Value", kExceedsMax},
    {IDC_CS_ENGRAVE_SPEED, RuleWhen::Always, RuleBreak::AboveLimit, IDC_CS_MAX_ENGRAVE_SPEED,
     L"Engrave Speed Exceeds Maximum Allowed Value", kExceedsMax},
    {IDC_CS_GRID_SPEED, RuleWhen::Always, RuleBreak::AboveLimit, IDC_CS_MAX_GRID_SPEED,
     L"Grid Speed Exceeds Maximum Allowed Value", kExceedsMax},
    {IDC_CS_CUTTER_LIFT, RuleWhen::Always, RuleBreak::BelowLift, 0,
     L"Cutter Lift Should Be At Least 0.100 Or Greater", L"Value Less Than Minimum"},
    {IDC_CS_PASS_DEPTH_OR_COPIES, RuleWhen::PassCopies, RuleBreak::FewCopies, 0,
     L"Number of Pass Copies Must Be At Least 2 Or Greater", L"Value Too Low"},
    {IDC_CS_PASS_DEPTH_OR_COPIES, RuleWhen::PassDepths, RuleBreak::AboveLimit, IDC_CS_ENGRAVE_DEPTH,
     L"Maximum Pass Depth Exceeds Engrave Depth", kExceedsMax},
    {IDC_CS_FINISH_DEPTH, RuleWhen::PassDepths, RuleBreak::AboveLimit, IDC_CS_ENGRAVE_DEPTH,
     L"Maximum Finish Depth Exceeds Engrave Depth", kExceedsMax},
    {IDC_CS_CIRCUMFERENCE, RuleWhen::RoundFixture, RuleBreak::NoCircumference, 0,
     L"Circumference value is invalid", L"Invalid Value"},
    {0, RuleWhen::Always, RuleBreak::BufferModified, 0,
     L"Your Engrave Buffer has been modified. Always reset your Table Zero after modifying Engrave "
     L"Buffer",
     L"Extra Step Required"},
};

bool Applies(const ValidationRule& rule, const ValidationInput& input) noexcept {
  switch (rule.when) {
    case RuleWhen::Always:
      return true;
    case RuleWhen::PassCopies:
      return input.multiPass && input.passCopies;
    case RuleWhen::PassDepths:
      return input.multiPass && !input.passCopies;
    case RuleWhen::RoundFixture:
      return input.roundFixture;
  }
  return false;
}

bool IsBroken(const ValidationRule& rule, const ValidationInput& input) noexcept {
  if (rule.breaks == RuleBreak::BufferModified) return input.bufferModified;
  const float value = input.valueOf(input.context, rule.field);
  switch (rule.breaks) {
    case RuleBreak::AboveLimit:
      return value > input.valueOf(input.context, rule.limit);
    case RuleBreak::BelowLift:
      return value < kLeastLiftInches;
    case RuleBreak::FewCopies:
      return RoundToSteps(value) < kLeastCopies;
    case RuleBreak::NoCircumference:
      // Also of a text such as "nan". KEEP: a negative circumference passes.
      return !(std::fabs(value * 1000.0f) >= 1.0f);
    case RuleBreak::BufferModified:
      break;
  }
  return false;
}

}  // namespace

std::span<const ValidationRule> ValidationRules() noexcept {
  return kRules;
}

const ValidationRule* FirstBrokenRule(const ValidationInput& input) noexcept {
  for (const ValidationRule& rule : kRules) {
    if (Applies(rule, input) && IsBroken(rule, input)) return &rule;
  }
  return nullptr;
}

}  // namespace k7
