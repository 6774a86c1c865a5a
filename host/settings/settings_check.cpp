#include "settings/settings_check.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "settings/key_text.h"
#include "settings/row_text.h"
#include "settings/schema.h"

namespace k7host {

using namespace k7::settings;  // the rows, all over this file

namespace {

// Keys by which the machine is driven: nothing is moved while one of them is out of its range. The
// others are shown, kept for the host, or put right by the driver itself.
constexpr const Row* kMotionRows[] = {
    &kMotorStepsX,   &kMicroStepsX,     &kScrewPitchX,   &kTableHomeX,   &kMotorStepsY,
    &kMicroStepsY,   &kScrewPitchY,     &kTableHomeY,    &kMotorStepsZ,  &kMicroStepsZ,
    &kScrewPitchZ,   &kCutterHome,      &kTableBuffer,   &kTableWidth,   &kTableHeight,
    &kTableDepth,    &kJogFastSpeed,    &kJogSlowSpeed,  &kCutterLift,   &kEngraveDepth,
    &kTraverseSpeed, &kCutterDownSpeed, &kCutterUpSpeed, &kEngraveSpeed, &kGridSpeed,
    &kEngraveDelay,  &kXAxisFactor,     &kYAxisFactor};
constexpr const Row* kRoundRows[] = {&kRoundMotorSteps, &kRoundMicroSteps, &kRoundMode,
                                     &kRoundGearRatio};
constexpr const Row* kSpindleRows[] = {&kMotorRpm, &kSpindleGearRatio, &kRampTime};
// A pneumatic head has none of these; the driver puts values of its own in their place.
constexpr const Row* kNotOfAirZ[] = {&kCutterLift, &kEngraveDepth, &kCutterDownSpeed,
                                     &kCutterUpSpeed, &kCutterHome};

constexpr float kLeastLiftInches = 0.001f;  // a load takes at least that
constexpr double kNextToNothing = 1e-6;     // no length, speed or time is so small, a typed 5 is

template <std::size_t kCount>
bool Has(const Row* const (&rows)[kCount], const Row& row) {
  return std::find(std::begin(rows), std::end(rows), &row) != std::end(rows);
}

std::string InBrackets(const Row& row) {
  return "[" + Narrow(row.section) + "] " + Narrow(row.key);
}

class Check {
 public:
  Check(const IniText& file, SettingsKind kind) : file_(file), kind_(kind) {}

  std::vector<SettingsFault> Run() {
    if (!LooksLikeSettings()) return std::move(faults_);
    for (const Row* row : kRows) {
      if (const auto text = file_.Find(Narrow(row->section), Narrow(row->key))) {
        CheckKey(*row, *text);
      }
    }
    if (kind_ == SettingsKind::Controller) {
      CheckHomes();
      CheckChain();
    }
    CheckMaxima();
    CheckNames();
    return std::move(faults_);
  }

 private:
  void Add(Severity severity, const std::string& key, const std::string& problem,
           const std::string& todo) {
    faults_.push_back({severity, key, problem, todo});
  }

  // False: there is nothing to be read in it.
  bool LooksLikeSettings() {
    if (file_.HasNulls()) {
      Add(Severity::Wrong, "", "is no settings file: it holds null characters",
          "restore it from a backup, or delete it, and set the machine up again");
      return false;
    }
    if (file_.HasUtf8Mark()) {
      Add(Severity::Odd, "", "starts with the mark of UTF-8, which hides its first section",
          "save it as ANSI or UTF-16");
    }
    const std::vector<IniEntry> entries = file_.Entries();
    const bool known = std::any_of(entries.begin(), entries.end(), [](const IniEntry& entry) {
      return std::any_of(std::begin(kRows), std::end(kRows), [&](const Row* row) {
        return SameName(entry.section, Narrow(row->section));
      });
    });
    if (known) return true;
    if (entries.empty() && file_.Bytes().find_first_not_of("\r\n\t ") == std::string::npos) {
      Add(Severity::Odd, "", "is empty: every value is the default", "set the machine up");
    } else {
      Add(Severity::Wrong, "", "is no settings file: it has none of the sections of one",
          "restore it from a backup, or delete it, and set the machine up again");
    }
    return false;
  }

  bool Held(const Row& row) const {
    return file_.Find(Narrow(row.section), Narrow(row.key)).has_value();
  }
  // As a load reads it, as long as no key stands in for a missing one.
  std::int32_t Number(const Row& row) const {
    const auto text = file_.Find(Narrow(row.section), Narrow(row.key));
    return text ? NumberInText(*text) : DefaultOf(row, Reader::Load);
  }
  double Value(const Row& row) const { return ValueOf(row, Number(row)); }

  Severity SeverityOf(const Row& row) const {
    if (Number(kAirZ) == 1 && Has(kNotOfAirZ, row)) return Severity::Odd;
    if (Has(kRoundRows, row)) return Either(Number(kHasRoundAttachment) != 0);
    if (Has(kSpindleRows, row)) return Either(Number(kHasSpindle) != 0);
    return Either(Has(kMotionRows, row));
  }
  static Severity Either(bool wrong) { return wrong ? Severity::Wrong : Severity::Odd; }

  void CheckKey(const Row& row, const std::string& text) {
    if (row.encoding == Encoding::Text) return CheckText(row, text);
    const std::string quoted = "\"" + text + "\"";
    if (!text.empty() && !IsWholeNumber(text)) {
      if (row.encoding == Encoding::Float) {
        return Add(Severity::Wrong, InBrackets(row),
                   quoted + " reads as " + ValueText(row, text) +
                       ": decimal text where the bits of a float are due",
                   "expected the bits of " + RangeText(row) + HowToSet(row, text));
      }
      const bool digits = text.find_first_of("0123456789") != std::string::npos;
      return Add(digits ? SeverityOf(row) : Severity::Wrong, InBrackets(row),
                 quoted + " is no whole number and reads as " + ValueText(row, text),
                 "expected " + RangeText(row));
    }
    const std::int32_t number = NumberInText(text);
    const double value = ValueOf(row, number);
    if (row.encoding == Encoding::Float) {
      if (!std::isfinite(value)) {
        return Add(Severity::Wrong, InBrackets(row), quoted + " are the bits of no number",
                   "expected the bits of " + RangeText(row));
      }
      if (value != 0 && std::fabs(value) < kNextToNothing) {
        return Add(Severity::Wrong, InBrackets(row),
                   quoted + " reads as " + ValueText(row, text) +
                       ": a plain number where the bits of a float are due",
                   "expected the bits of " + RangeText(row) + HowToSet(row, text));
      }
    }
    // Flags are read as set by any number but 0, and numbers of a few keys are emptied by dialogs.
    if (row.encoding == Encoding::Flag ? number == 0 || number == 1 : InRange(row, value)) return;
    const bool lowLift = &row == &kCutterLift && value >= static_cast<double>(kLeastLiftInches);
    Add(lowLift ? Severity::Odd : SeverityOf(row), InBrackets(row),
        text.empty() ? "is empty, which reads as " + ValueText(row, 0)
                     : "is " + (row.encoding == Encoding::Flag ? text : ValueText(row, text)),
        "expected " + RangeText(row));
  }

  void CheckText(const Row& row, const std::string& text) {
    const Encoded encoded = Encode(row, text);
    if (!encoded.error.empty()) {
      Add(Severity::Odd, InBrackets(row), encoded.error, "shorten it");
    }
  }

  // For a number that somebody typed into the file.
  static std::string HowToSet(const Row& row, const std::string& text) {
    if (!Encode(row, text).error.empty()) return "";
    return "; k7host settings set \"" + KeyName(row) + "\" " + text + " writes them";
  }

  void CheckHome(const Row& home, const Row& length, const char* axis) {
    if (!Held(home) || !(Value(home) * 1000 > Value(length)) || !InRange(home, Value(home))) return;
    Add(Severity::Wrong, InBrackets(home),
        "is " + ValueText(home, Number(home)) + ", outside the table, which is " +
            NumberText(Value(length) / 1000) + " in long along " + axis,
        "expected less than that, or a larger " + InBrackets(length));
  }

  void CheckHomes() {
    CheckHome(kTableHomeX, kTableWidth, "X");
    CheckHome(kTableHomeY, kTableHeight, "Y");
    if (Held(kCutterHome) && Value(kCutterHome) * 1000 > Value(kTableDepth)) {
      Add(Severity::Odd, InBrackets(kCutterHome),
          "is " + ValueText(kCutterHome, Number(kCutterHome)) + ", deeper than the way along Z, " +
              NumberText(Value(kTableDepth) / 1000) + " in",
          "find the cutter home anew, or set " + InBrackets(kTableDepth));
    }
  }

  // A load takes the number of the key before for a missing one of these.
  void CheckChain() {
    if (Held(kTableSurface) && !Held(kEngraveType) && Number(kTableSurface) > 1) {
      Add(Severity::Odd, InBrackets(kEngraveType),
          "is missing beside a Table Surface, whose number a load then takes for it",
          "k7host settings set \"" + KeyName(kEngraveType) + "\" 0, or 1 to route");
    }
    const bool typeIsOne = Held(kEngraveType) && Number(kEngraveType) == 1;
    if (!Held(kCutterMode) && !Held(kAirZ) && typeIsOne) {
      Add(Severity::Odd, InBrackets(kAirZ),
          "is missing, and so is Cutter Mode: with Engrave Type 1 the machine counts as one with "
          "an "
          "air head",
          "k7host settings set \"" + KeyName(kAirZ) + "\" off, if it has a motor along Z");
    }
  }

  void CheckMaximum(const Row& row, const Row& maximum) {
    if (!Held(row) || !InRange(row, Value(row)) || !(Value(maximum) > 0)) return;
    if (Number(kAirZ) == 1 && Has(kNotOfAirZ, row)) return;
    if (Value(row) <= Value(maximum)) return;
    Add(Severity::Odd, InBrackets(row),
        "is " + ValueText(row, Number(row)) + ", above the machine's maximum",
        "expected at most " + ValueText(maximum, Number(maximum)) + " (" + InBrackets(maximum) +
            ")");
  }

  void CheckMaxima() {
    if (kind_ != SettingsKind::Controller) return;
    for (const Row* row :
         {static_cast<const Row*>(&kTraverseSpeed), static_cast<const Row*>(&kEngraveSpeed),
          static_cast<const Row*>(&kGridSpeed)}) {
      CheckMaximum(*row, kMaxXySpeed);
    }
    CheckMaximum(kCutterDownSpeed, kMaxZSpeed);
    CheckMaximum(kCutterUpSpeed, kMaxZSpeed);
    CheckMaximum(kEngraveDepth, kMaxEngraveDepth);
  }

  // Keys that nothing reads: misspelt ones, and those that stand there a second time.
  void CheckNames() {
    std::vector<std::string> seen;
    for (const IniEntry& entry : file_.Entries()) {
      const std::string name = entry.section + "/" + entry.key;
      const std::string shown = "[" + entry.section + "] " + entry.key;
      const bool again = std::any_of(seen.begin(), seen.end(), [&](const std::string& other) {
        return SameName(name, other);
      });
      seen.push_back(name);
      if (again) {
        Add(Severity::Odd, shown, "stands there twice: the second is not read", "delete one");
      } else if (RowOf(entry.section, entry.key) != nullptr) {
        const auto read = file_.Find(entry.section, entry.key);
        if (!read) {
          Add(Severity::Odd, shown, "stands in a section that is there twice: it is not read",
              "move it to the first of them");
        }
      } else if (const auto near = NearestKeys(name, 1); !near.empty() && Alike(near[0], name)) {
        Add(Severity::Odd, shown, "is no key of a settings file and is not read",
            "is it \"" + near[0] + "\"?");
      }
    }
  }

  // A slip of the pen, in the same section; other keys may be another program's.
  static bool Alike(const std::string& key, const std::string& name) {
    const std::size_t slash = key.find('/');
    return SameName(key.substr(0, slash), name.substr(0, name.find('/'))) &&
           key.size() + 2 >= name.size() && name.size() + 2 >= key.size();
  }

  const IniText& file_;
  SettingsKind kind_;
  std::vector<SettingsFault> faults_;
};

}  // namespace

std::vector<SettingsFault> CheckSettings(const IniText& file, SettingsKind kind) {
  return Check(file, kind).Run();
}

std::string FaultText(const SettingsFault& fault) {
  return (fault.key.empty() ? "" : fault.key + ": ") + fault.problem + "; " + fault.todo;
}

std::size_t CountWrong(const std::vector<SettingsFault>& faults) {
  return static_cast<std::size_t>(
      std::count_if(faults.begin(), faults.end(),
                    [](const SettingsFault& fault) { return fault.severity == Severity::Wrong; }));
}

}  // namespace k7host
