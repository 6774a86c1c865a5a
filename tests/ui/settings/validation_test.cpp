#include "ui/settings/validation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <string>

#include "base/parse_number.h"
#include "ui/resource_ids.h"

namespace k7 {
namespace {

// The texts of a dialog whose values all pass.
class ValidationTest : public testing::Test {
 protected:
  ValidationTest() {
    for (const int id :
         {IDC_CS_MAX_CUTTER_DOWN_SPEED, IDC_CS_MAX_TRAVERSE_SPEED, IDC_CS_MAX_CUTTER_UP_SPEED,
          IDC_CS_MAX_ENGRAVE_SPEED, IDC_CS_MAX_GRID_SPEED}) {
      texts_[id] = L"10.0000";
    }
    texts_[IDC_CS_MAX_ENGRAVE_DEPTH] = L"1.0000";
    texts_[IDC_CS_CUTTER_LIFT] = L"0.1250";
    texts_[IDC_CS_ENGRAVE_DEPTH] = L"0.5000";
  }

  static float ValueOf(const void* context, int control) {
    const auto& texts = static_cast<const ValidationTest*>(context)->texts_;
    const auto found = texts.find(control);
    return found == texts.end() ? 0.0f : ParseTypedDecimal(found->second.c_str());
  }
  const ValidationRule* Broken() const {
    return FirstBrokenRule({.valueOf = &ValueOf,
                            .context = this,
                            .multiPass = multiPass_,
                            .passCopies = passCopies_,
                            .roundFixture = roundFixture_,
                            .bufferModified = bufferModified_});
  }
  std::wstring Message() const {
    const ValidationRule* const rule = Broken();
    return rule == nullptr ? L"" : std::wstring{rule->caption} + L": " + rule->text;
  }
  int Field() const {
    const ValidationRule* const rule = Broken();
    return rule == nullptr ? -100 : rule->field;
  }

  std::map<int, std::wstring> texts_;
  bool multiPass_ = false;
  bool passCopies_ = false;
  bool roundFixture_ = false;
  bool bufferModified_ = false;
};

TEST_F(ValidationTest, AllRulesHoldForTheDefaults) {
  EXPECT_EQ(Broken(), nullptr);
}

struct Maximum {
  int field;
  int limit;
  const wchar_t* message;
};
constexpr Maximum kMaxima[] = {
    {1048, 1139, L"Value Exceeds Max: Cutter Down Speed Exceeds Maximum Allowed Value"},
    {1047, 1140, L"Value Exceeds Max: Traverse Speed Exceeds Maximum Allowed Value"},
    {1046, 1135, L"Value Exceeds Max: Engrave Depth Exceeds Maximum Allowed Value"},
    {1049, 1142, L"Value Exceeds Max: Cutter Up Speed Exceeds Maximum Allowed Value"},
    {1055, 1143, L"Value Exceeds Max: Engrave Speed Exceeds Maximum Allowed Value"},
    {1181, 1182, L"Value Exceeds Max: Grid Speed Exceeds Maximum Allowed Value"},
};

TEST_F(ValidationTest, AValueAboveItsShownMaximumBreaksItsRule) {
  for (const Maximum& c : kMaxima) {
    const std::wstring before = texts_[c.field];
    texts_[c.limit] = L"2.5000";
    texts_[c.field] = L"2.5001";
    EXPECT_EQ(Message(), c.message);
    EXPECT_EQ(Field(), c.field);
    texts_[c.field] = L"2.5";
    EXPECT_EQ(Message(), L"") << "a value equal to its maximum passes";
    texts_[c.field] = before;
  }
}

TEST_F(ValidationTest, ComparesInSinglePrecision) {
  texts_[IDC_CS_TRAVERSE_SPEED] = L"10.0000001";  // the same single as 10
  EXPECT_EQ(Message(), L"");
  texts_[IDC_CS_TRAVERSE_SPEED] = L"10.000001";
  EXPECT_EQ(Field(), IDC_CS_TRAVERSE_SPEED);
}

TEST_F(ValidationTest, TheFirstBrokenRuleIsTold) {
  constexpr int kOrder[] = {1048, 1047, 1046, 1049, 1055, 1181, 1045, 1159, 1160, 1174, 0};
  for (const int field : {1048, 1047, 1049, 1055, 1181}) texts_[field] = L"11";
  texts_[1046] = L"2";
  texts_[1045] = L"0";
  texts_[1159] = L"3";
  texts_[1160] = L"3";
  texts_[1174] = L"0";
  multiPass_ = roundFixture_ = bufferModified_ = true;
  for (const int field : kOrder) {
    EXPECT_EQ(Field(), field);
    texts_[field] = field == 1045 || field == 1174 ? L"1" : L"0.1";
  }
}

TEST_F(ValidationTest, ACutterLiftBelowATenthBreaksItsRule) {
  const std::wstring message =
      L"Value Less Than Minimum: Cutter Lift Should Be At Least 0.100 Or Greater";
  for (const wchar_t* text : {L"0.0999", L"0.09999", L"", L"abc", L"-1"}) {
    texts_[IDC_CS_CUTTER_LIFT] = text;
    EXPECT_EQ(Message(), message) << std::wstring{text};
    EXPECT_EQ(Field(), IDC_CS_CUTTER_LIFT);
  }
  texts_[IDC_CS_CUTTER_LIFT] = L"0.1";
  EXPECT_EQ(Message(), L"");
}

TEST_F(ValidationTest, TextThatIsNoNumberCountsAsZero) {
  for (const Maximum& c : kMaxima) texts_[c.field] = L"";
  EXPECT_EQ(Message(), L"");
  texts_[IDC_CS_MAX_GRID_SPEED] = L"";
  EXPECT_EQ(Message(), L"");
  texts_[IDC_CS_GRID_SPEED] = L"0.1";
  EXPECT_EQ(Field(), IDC_CS_GRID_SPEED);
}

TEST_F(ValidationTest, PassCopiesRoundToAtLeastTwo) {
  multiPass_ = passCopies_ = true;
  constexpr struct {
    const wchar_t* text;
    bool passes;
  } kCases[] = {{L"2", true}, {L"1.5", true}, {L"1.4", false}, {L"1", false},  {L"0", false},
                {L"", false}, {L"-3", false}, {L"1e30", true}, {L"nan", false}};
  for (const auto& c : kCases) {
    texts_[IDC_CS_PASS_DEPTH_OR_COPIES] = c.text;
    EXPECT_EQ(
        Message(),
        c.passes ? L"" : L"Value Too Low: Number of Pass Copies Must Be At Least 2 Or Greater")
        << std::wstring{c.text};
  }
}

TEST_F(ValidationTest, PassDepthsMayNotExceedTheEngraveDepth) {
  multiPass_ = true;
  texts_[IDC_CS_PASS_DEPTH_OR_COPIES] = L"0.5";
  texts_[IDC_CS_FINISH_DEPTH] = L"0.5";
  EXPECT_EQ(Message(), L"");
  texts_[IDC_CS_FINISH_DEPTH] = L"0.5001";
  EXPECT_EQ(Message(), L"Value Exceeds Max: Maximum Finish Depth Exceeds Engrave Depth");
  EXPECT_EQ(Field(), IDC_CS_FINISH_DEPTH);
  texts_[IDC_CS_PASS_DEPTH_OR_COPIES] = L"0.5001";
  EXPECT_EQ(Message(), L"Value Exceeds Max: Maximum Pass Depth Exceeds Engrave Depth");
  EXPECT_EQ(Field(), IDC_CS_PASS_DEPTH_OR_COPIES);
}

TEST_F(ValidationTest, PassRulesAreSkippedWithoutMultiPass) {
  texts_[IDC_CS_PASS_DEPTH_OR_COPIES] = L"9";
  texts_[IDC_CS_FINISH_DEPTH] = L"9";
  EXPECT_EQ(Message(), L"");
  passCopies_ = true;
  texts_[IDC_CS_PASS_DEPTH_OR_COPIES] = L"0";
  EXPECT_EQ(Message(), L"");
}

TEST_F(ValidationTest, TheFinishDepthIsSkippedWithPassCopies) {
  multiPass_ = passCopies_ = true;
  texts_[IDC_CS_PASS_DEPTH_OR_COPIES] = L"3";
  texts_[IDC_CS_FINISH_DEPTH] = L"9";
  EXPECT_EQ(Message(), L"");
}

TEST_F(ValidationTest, ACircumferenceOfLessThanAThousandthIsInvalid) {
  roundFixture_ = true;
  constexpr struct {
    const wchar_t* text;
    bool passes;
  } kCases[] = {{L"0.0009", false}, {L"0.001", true},    {L"6.28", true}, {L"", false},
                {L"abc", false},    {L"-0.0009", false}, {L"nan", false}, {L"1e30", true}};
  for (const auto& c : kCases) {
    texts_[IDC_CS_CIRCUMFERENCE] = c.text;
    EXPECT_EQ(Message(), c.passes ? L"" : L"Invalid Value: Circumference value is invalid")
        << std::wstring{c.text};
    EXPECT_EQ(Field(), c.passes ? -100 : IDC_CS_CIRCUMFERENCE);
  }
  roundFixture_ = false;
  texts_[IDC_CS_CIRCUMFERENCE] = L"";
  EXPECT_EQ(Message(), L"");
}

// KEEP: only zero is told apart.
TEST_F(ValidationTest, ANegativeCircumferencePasses) {
  roundFixture_ = true;
  texts_[IDC_CS_CIRCUMFERENCE] = L"-5";
  EXPECT_EQ(Message(), L"");
}

TEST_F(ValidationTest, AModifiedEngraveBufferIsRemindedOfLast) {
  bufferModified_ = true;
  EXPECT_EQ(Message(),
            L"Extra Step Required: Your Engrave Buffer has been modified. Always reset your Table "
            L"Zero after modifying Engrave Buffer");
  EXPECT_EQ(Field(), 0) << "no field is to blame";
  texts_[IDC_CS_CUTTER_LIFT] = L"0";
  EXPECT_EQ(Field(), IDC_CS_CUTTER_LIFT);
}

TEST_F(ValidationTest, NumbersThatAreNoNumberPassTheMaxima) {
  for (const Maximum& c : kMaxima) texts_[c.field] = L"nan";
  texts_[IDC_CS_CUTTER_LIFT] = L"inf";
  EXPECT_EQ(Message(), L"");
}

}  // namespace
}  // namespace k7
