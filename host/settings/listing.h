// Settings files as lines for people: every key with its value, and what differs between two files.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "settings/ini_text.h"
#include "settings/key_text.h"

namespace k7host {

// What a load takes for a key, and where from.
struct Reading {
  bool held = false;  // the file has the key
  std::string value;  // with its unit
};

// Of a key that is missing: its default, or the value of the key that stands in for it. [any]
Reading ReadKey(const IniText& file, const Row& row);

// A line for each key: name, value, default, range, whether the file holds it, and what is wrong
// with it. `all` adds what the key means and how it stands in the file, and lists the keys of the
// file that are none of the driver's. [any]
std::vector<std::string> ShowLines(const IniText& file, bool all);

// "Axis X/Screw Pitch: 0.5 in a turn"; of a missing key with where the value comes from. [any]
std::string GetLine(const IniText& file, const Row& row);

// A line for each key that the two do not hold alike. [any]
std::vector<std::string> DiffLines(const IniText& a, const IniText& b);

}  // namespace k7host
