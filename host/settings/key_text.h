// Keys and values of a settings file as people read and type them: "Axis X/Screw Pitch", "0.5 in a
// turn". What a key is, its unit, default and range come from the driver's own table of settings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/row.h"

namespace k7host {

using k7::settings::Row;

// "Axis X/Screw Pitch". [any]
std::string KeyName(const Row& row);

// The key of that name, or what to say when there is none. A key alone is enough when it stands in
// one section only; case is passed over. [any]
struct KeyFound {
  const Row* row = nullptr;
  std::string error;  // names the nearest keys
};
KeyFound FindKey(std::string_view name);

// The key of exactly that section and name, in any case; null: none of the driver's. [any]
const Row* RowOf(std::string_view section, std::string_view key);

// The names that are most like `name`, the likest first; none that is not alike at all. [any]
std::vector<std::string> NearestKeys(std::string_view name, std::size_t most = 3);

// Shortest decimal text that reads as exactly this number again. [any]
std::string NumberText(float value);
std::string NumberText(double value);

// The number that the profile functions read in a text: blanks and a sign, then digits up to the
// first other character, taken modulo 2^32; 0 without digits. [any]
std::int32_t NumberInText(std::string_view text);
// Whether the text is a whole number of 32 bits and nothing else. [any]
bool IsWholeNumber(std::string_view text);

// The value that a text of the file stands for, with its unit: "0.5 in a turn", "on", "200 steps a
// turn"; of a text row the text. [any]
std::string ValueText(const Row& row, std::string_view inFile);
// The same of a number as it stands in the file.
std::string ValueText(const Row& row, std::int32_t number);

// The number in the unit of the row: of a float row what the bits stand for. [any]
double ValueOf(const Row& row, std::int32_t number);

// "0.5", "on", "none: written only", "0; a load takes Cutter Mode". [any]
std::string DefaultText(const Row& row);
// "0.001 to 10 in a turn", "on or off", "up to 63 characters". [any]
std::string RangeText(const Row& row);

// What a person typed, as it stands in the file; or why it cannot be. A number may have its unit
// behind it. [any]
struct Encoded {
  std::string text;
  std::string error;  // empty: good
};
Encoded Encode(const Row& row, std::string_view typed);
// The same of a number in the unit of the row, without a look at the range.
std::string EncodeNumber(const Row& row, double value);

// Whether the number lies in the sensible range of the row. [any]
bool InRange(const Row& row, double value);

}  // namespace k7host
