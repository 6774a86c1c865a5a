// Settings files as texts, for the tests of what reads and mends them.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

#include "latin1.h"
#include "settings/ini_text.h"
#include "settings/key_text.h"

namespace k7host {

// The file of these bytes, in that code page.
inline IniText Ini(std::string_view bytes) {
  static const k7test::Latin1 page;
  return {bytes, page};
}

inline const Row& Key(const char* name) {
  const KeyFound found = FindKey(name);
  EXPECT_NE(found.row, nullptr) << name;
  return *found.row;
}

// A float as it stands in a file.
inline std::string Bits(float value) {
  return std::to_string(std::bit_cast<std::int32_t>(value));
}

}  // namespace k7host
