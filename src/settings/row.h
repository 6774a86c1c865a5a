// What the schema (settings/schema.h) says of one key of a settings file.
#pragma once

#include <cstdint>
#include <optional>

#include "device/device_state.h"
#include "settings/encodings.h"

namespace k7::settings {

// How the value stands in the file.
enum class Encoding : std::uint8_t {
  Int,    // decimal text
  Flag,   // decimal text; any number but 0 is set
  Float,  // decimal text of the bits of a single
  Text,   // as it is
};

// Who reads a key, as far as the readers differ in what they take for a missing one.
enum class Reader : std::uint8_t {
  Any,
  Load,
  SettingsDialog,
  TableSetupDialog,
  TableHomeDialog,
};

// What one reader takes for a missing key instead of the default: a number, or the value that
// `standIn` names and that the reader has at hand (SettingsFile::ReadChained).
struct Override {
  Reader reader = Reader::Any;  // Any: no override
  double number = 0.0;
  const char* standIn = nullptr;
};

// What a technician would accept, in the unit of the row; of texts the number of characters. The
// driver does not enforce it.
struct Range {
  double least;
  double most;
};

inline constexpr std::optional<double> kNoDefault;

// One key. Numbers are those that the encoding stands for: a float with the default 0.125 stands in
// the file as 1040187392.
struct Row {
  const wchar_t* section;
  const wchar_t* key;
  Encoding encoding;
  const char* unit;  // as shown to people; empty: none
  // Default of a number; none where the key is written only or every reader has its own.
  std::optional<double> otherwise;
  const wchar_t* text;  // default of a text
  Range range;
  const char* meaning = "";  // one sentence
  // Puts the number of the file into the field of the record that a load fills with it; null: a
  // load computes something from it, or leaves it alone.
  void (*fill)(DeviceState& record, std::int32_t number) noexcept = nullptr;
  Override overrides[2] = {};
};

// The number as it stands in the file. [any]
constexpr std::int32_t InFile(Encoding encoding, double number) noexcept {
  return encoding == Encoding::Float ? BitsOfFloat(static_cast<float>(number))
                                     : static_cast<std::int32_t>(number);
}

// What `reader` takes for a missing key, as it would stand in the file; 0 where the row has neither
// an override with a number nor a default. [any]
constexpr std::int32_t DefaultOf(const Row& row, Reader reader = Reader::Any) noexcept {
  double number = row.otherwise.value_or(0.0);
  for (const Override& o : row.overrides) {
    if (o.reader == reader && reader != Reader::Any) number = o.number;
  }
  return InFile(row.encoding, number);
}

// Whether the driver writes the key and never reads it. [any]
constexpr bool IsWrittenOnly(const Row& row) noexcept {
  return row.encoding != Encoding::Text && !row.otherwise && row.overrides[0].reader == Reader::Any;
}

// The field of the record at the end of a path of members.
template <auto kFirst, auto... kRest>
constexpr auto& FieldAt(auto& whole) noexcept {
  if constexpr (sizeof...(kRest) == 0) {
    return whole.*kFirst;
  } else {
    return FieldAt<kRest...>(whole.*kFirst);
  }
}

// Stores a number of the file in that field: a float by its bits, a flag as 1 or 0.
template <Encoding kEncoding, auto... kPath>
void Store(DeviceState& record, std::int32_t number) noexcept {
  auto& field = FieldAt<kPath...>(record);
  if constexpr (kEncoding == Encoding::Float) {
    field = FloatOfBits(number);
  } else if constexpr (kEncoding == Encoding::Int) {
    field = number;
  } else if (number != 0) {
    field = 1;
  } else {
    field = 0;
  }
}

// The rows by encoding, so that a float cannot be read as a whole number. One is written as a
// sentence: FloatRow(section, key, unit, default, range).Means(...).Fills<...>().ButFor(...).
template <Encoding kEncoding>
struct RowOf : Row {
  constexpr RowOf(const wchar_t* ofSection, const wchar_t* ofKey, const char* inUnit,
                  std::optional<double> byDefault, Range sensible) noexcept
      : Row{ofSection, ofKey, kEncoding, inUnit, byDefault, L"", sensible} {}

  constexpr RowOf Means(const char* sentence) const noexcept {
    RowOf row = *this;
    row.meaning = sentence;
    return row;
  }
  // The path from the record to the field.
  template <auto... kPath>
  constexpr RowOf Fills() const noexcept {
    RowOf row = *this;
    row.fill = &Store<kEncoding, kPath...>;
    return row;
  }
  constexpr RowOf ButFor(Reader reader, double number) const noexcept {
    return With({reader, number, nullptr});
  }
  constexpr RowOf ButFor(Reader reader, const char* standIn) const noexcept {
    return With({reader, 0.0, standIn});
  }

 private:
  constexpr RowOf With(const Override& other) const noexcept {
    RowOf row = *this;
    row.overrides[row.overrides[0].reader == Reader::Any ? 0 : 1] = other;
    return row;
  }
};
using IntRow = RowOf<Encoding::Int>;
using FlagRow = RowOf<Encoding::Flag>;
using FloatRow = RowOf<Encoding::Float>;

struct TextRow : Row {
  // `longest` in characters.
  constexpr TextRow(const wchar_t* ofSection, const wchar_t* ofKey, const char* inUnit,
                    const wchar_t* byDefault, int longest) noexcept
      : Row{ofSection,
            ofKey,
            Encoding::Text,
            inUnit,
            kNoDefault,
            byDefault,
            Range{0, static_cast<double>(longest)}} {}

  constexpr TextRow Means(const char* sentence) const noexcept {
    TextRow row = *this;
    row.meaning = sentence;
    return row;
  }
};

}  // namespace k7::settings
