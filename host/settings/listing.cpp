#include "settings/listing.h"

#include <algorithm>

#include "settings/row_text.h"
#include "settings/schema.h"
#include "settings/settings_check.h"

namespace k7host {

using namespace k7::settings;  // the rows, all over this file

namespace {

constexpr std::size_t kNameWidth = 38;
constexpr std::size_t kValueWidth = 38;

std::optional<std::string> Held(const IniText& file, const Row& row) {
  return file.Find(Narrow(row.section), Narrow(row.key));
}

// The key whose number a load takes for a missing one, as it stands in the file.
struct StandIn {
  const Row* row;
  const Row* other;
};
constexpr StandIn kStandIns[] = {{&kEngraveType, &kTableSurface},
                                 {&kCutterMode, &kEngraveType},
                                 {&kAirZ, &kCutterMode},
                                 {&kSpindleRpm, &kSemiAutoOffset},
                                 {&kBeadToolOffsetY, &kBeadToolOffsetX},
                                 {&kDiodeOffsetY, &kDiodeOffsetX}};

std::optional<std::int32_t> NumberOf(const IniText& file, const Row& row);

// A load keeps the speed of the spindle within what its motor and gear make.
std::int32_t WithinSpindle(const IniText& file, std::int32_t rpm) {
  const double most = ValueOf(kMotorRpm, NumberOf(file, kMotorRpm).value_or(0)) *
                      ValueOf(kSpindleGearRatio, NumberOf(file, kSpindleGearRatio).value_or(0));
  if (!(most >= 1)) return 1;
  return rpm < 1 ? 1 : most < rpm ? static_cast<std::int32_t>(most + 0.5) : rpm;
}

// The number that a load takes; none where it computes one, or reads none at all.
std::optional<std::int32_t> NumberOf(const IniText& file, const Row& row) {
  if (const auto text = Held(file, row)) return NumberInText(*text);
  if (IsWrittenOnly(row)) return std::nullopt;
  for (const StandIn& chain : kStandIns) {
    if (chain.row != &row) continue;
    const std::optional<std::int32_t> number = NumberOf(file, *chain.other);
    return number && &row == &kSpindleRpm ? WithinSpindle(file, *number) : number;
  }
  if (&row == &kTableSurface) return std::nullopt;
  if (&row == &kRoundMode) {
    return static_cast<std::int32_t>(Held(file, kCircumference).value_or("").size());
  }
  return DefaultOf(row, Reader::Load);
}

std::string Padded(std::string text, std::size_t width) {
  // Bytes that continue a character take no place of their own.
  const auto shown = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
  if (shown < width) text.append(width - shown, ' ');
  return text;
}

const char* StandInOf(const Row& row) {
  for (const Override& other : row.overrides) {
    if (other.reader == Reader::Load && other.standIn != nullptr) return other.standIn;
  }
  return nullptr;
}

}  // namespace

Reading ReadKey(const IniText& file, const Row& row) {
  if (const auto text = Held(file, row)) return {true, ValueText(row, *text)};
  if (row.encoding == Encoding::Text) return {false, Narrow(row.text)};
  const std::optional<std::int32_t> number = NumberOf(file, row);
  if (number) return {false, ValueText(row, *number)};
  const char* standIn = StandInOf(row);
  return {false, standIn != nullptr ? standIn : "-"};
}

std::string GetLine(const IniText& file, const Row& row) {
  const Reading reading = ReadKey(file, row);
  return KeyName(row) + ": " + reading.value +
         (reading.held ? "" : " (not in the file; default " + DefaultText(row) + ")");
}

std::vector<std::string> ShowLines(const IniText& file, bool all) {
  const std::vector<SettingsFault> faults = CheckSettings(file);
  std::vector<std::string> lines;
  for (const SettingsFault& fault : faults) {
    if (fault.key.empty()) lines.push_back("! the file " + FaultText(fault));
  }
  for (const Row* row : kRows) {
    const Reading reading = ReadKey(file, *row);
    std::string line =
        Padded(KeyName(*row) + ":", kNameWidth) + " " + Padded(reading.value, kValueWidth) + " ";
    line += reading.held ? "in the file" : "missing    ";
    line += "  range " + RangeText(*row) + ", default ";
    const std::string otherwise = DefaultText(*row);
    line += otherwise.empty() ? "empty" : otherwise;
    if (all) {
      if (reading.held && row->encoding != Encoding::Text) {
        line += ", text " + *Held(file, *row);
      }
      line += ". " + std::string(row->meaning);
    }
    lines.push_back(line);
    const std::string key = "[" + Narrow(row->section) + "] " + Narrow(row->key);
    for (const SettingsFault& fault : faults) {
      if (fault.key == key) lines.push_back("  ! " + fault.problem + "; " + fault.todo);
    }
  }
  if (!all) return lines;
  for (const IniEntry& entry : file.Entries()) {
    if (RowOf(entry.section, entry.key) != nullptr) continue;
    lines.push_back(Padded(entry.section + "/" + entry.key + ":", kNameWidth) + " " +
                    Padded(entry.text, kValueWidth) + " in the file  no key of the driver");
  }
  return lines;
}

std::vector<std::string> DiffLines(const IniText& a, const IniText& b) {
  std::vector<std::string> lines;
  for (const Row* row : kRows) {
    const auto textA = Held(a, *row);
    const auto textB = Held(b, *row);
    const bool same = textA.has_value() == textB.has_value() &&
                      (!textA || (row->encoding == Encoding::Text
                                      ? *textA == *textB
                                      : NumberInText(*textA) == NumberInText(*textB)));
    if (same) continue;
    const auto side = [&](const IniText& file) {
      const Reading reading = ReadKey(file, *row);
      return reading.held ? reading.value : reading.value + " (missing)";
    };
    lines.push_back(Padded(KeyName(*row) + ":", kNameWidth) + " " + Padded(side(a), kValueWidth) +
                    " | " + side(b));
  }
  const auto others = [&](const IniText& from, const IniText& in, const char* where) {
    for (const IniEntry& entry : from.Entries()) {
      if (RowOf(entry.section, entry.key) != nullptr) continue;
      if (in.Find(entry.section, entry.key) == entry.text) continue;
      lines.push_back(Padded(entry.section + "/" + entry.key + ":", kNameWidth) + " " + entry.text +
                      " (in the " + where + " alone)");
    }
  };
  others(a, b, "first");
  others(b, a, "second");
  return lines;
}

}  // namespace k7host
