#include "settings/schema.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace k7::settings {
namespace {

std::string NameOf(const Row& row) {
  const std::wstring name = std::wstring{row.section} + L"/" + row.key;
  std::string text;
  for (const wchar_t c : name) text += static_cast<char>(c);
  return text;
}

bool IsWithin(const Range& range, double number) {
  return number >= range.least && number <= range.most;
}

TEST(Schema, NoTwoRowsAreTheSameKey) {
  std::set<std::string> seen;
  for (const Row* row : kRows) EXPECT_TRUE(seen.insert(NameOf(*row)).second) << NameOf(*row);
}

TEST(Schema, TheRowsOfASectionStandTogether) {
  std::vector<std::wstring> sections;
  for (const Row* row : kRows) {
    if (sections.empty() || sections.back() != row->section) sections.emplace_back(row->section);
  }
  const std::set<std::wstring> once{sections.begin(), sections.end()};
  EXPECT_EQ(sections.size(), once.size());
}

TEST(Schema, EveryDefaultIsOneThatATechnicianWouldAccept) {
  for (const Row* row : kRows) {
    if (row->encoding == Encoding::Text) {
      EXPECT_TRUE(IsWithin(row->range, static_cast<double>(std::wstring{row->text}.size())))
          << NameOf(*row);
      continue;
    }
    if (row->otherwise) {
      EXPECT_TRUE(IsWithin(row->range, *row->otherwise)) << NameOf(*row);
    }
    for (const Override& other : row->overrides) {
      if (other.reader == Reader::Any || other.standIn != nullptr) continue;
      EXPECT_TRUE(IsWithin(row->range, other.number)) << NameOf(*row);
    }
  }
}

TEST(Schema, EveryRowSaysWhatItMeansInOneSentence) {
  for (const Row* row : kRows) {
    const std::string meaning = row->meaning;
    ASSERT_FALSE(meaning.empty()) << NameOf(*row);
    EXPECT_EQ(meaning.back(), '.') << NameOf(*row);
    EXPECT_EQ(meaning.find(". "), meaning.npos) << NameOf(*row);
  }
}

TEST(Schema, OnlyTheseKeysAreWrittenAndNeverRead) {
  std::vector<std::string> written;
  for (const Row* row : kRows) {
    if (IsWrittenOnly(*row)) written.push_back(NameOf(*row));
  }
  EXPECT_EQ(written,
            (std::vector<std::string>{"Axis Z/Table Zero Mode", "Engrave Settings/Resolution",
                                      "Engrave Settings/Pass Copies", "Current Location/Z Axis"}));
}

TEST(Schema, ADefaultIsTheNumberThatStandsInTheFile) {
  EXPECT_EQ(DefaultOf(kMotorStepsX), 200);
  EXPECT_EQ(DefaultOf(kCutterLift), 1040187392);  // 0.125
  EXPECT_EQ(DefaultOf(kHasSpindle), 0);
  EXPECT_EQ(DefaultOf(kResolution), 0);
}

TEST(Schema, AnOverrideIsForItsReaderAlone) {
  constexpr std::int32_t kHalf = BitsOfFloat(0.5f);
  EXPECT_EQ(DefaultOf(kSemiAutoOffset), kHalf);
  EXPECT_EQ(DefaultOf(kSemiAutoOffset, Reader::Load), kHalf);
  EXPECT_EQ(DefaultOf(kSemiAutoOffset, Reader::TableSetupDialog), 0);
  EXPECT_EQ(DefaultOf(kTableHomeZ, Reader::TableHomeDialog), BitsOfFloat(1.75f));
  EXPECT_EQ(DefaultOf(kTableHomeZ, Reader::TableSetupDialog), 0);
  EXPECT_EQ(DefaultOf(kTableHomeX, Reader::TableHomeDialog), 0);
}

TEST(Schema, ARowFillsItsFieldByItsEncoding) {
  DeviceState record;
  kMotorStepsZ.fill(record, 400);
  EXPECT_EQ(record.mechanics.axis.z.motorSteps, 400);
  kCutterLift.fill(record, 1040187392);
  EXPECT_EQ(record.tools.cutterLift, 0.125f);
  kLimitSwitchY.fill(record, 256);
  EXPECT_EQ(record.mechanics.axis.y.limitSwitch, 1);
  kLimitSwitchY.fill(record, 0);
  EXPECT_EQ(record.mechanics.axis.y.limitSwitch, 0);
}

TEST(Schema, NoTwoRowsFillTheSameField) {
  std::set<void (*)(DeviceState&, std::int32_t) noexcept> seen;
  for (const Row* row : kRows) {
    if (row->fill == nullptr) continue;
    EXPECT_TRUE(seen.insert(row->fill).second) << NameOf(*row);
  }
}

}  // namespace
}  // namespace k7::settings
