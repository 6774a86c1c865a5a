// Settings that make no sense, as far as a host sees them through the driver.
#pragma once

#include <cstdint>
#include <string>

#include "core/scaling.h"

namespace k7host {

// What is wrong with the machine's table, with the section and the keys of the settings file that
// it comes from; empty when it can be worked with. [any]
std::string TableProblem(const Table& table);

// No job takes so long: a speed is zero or next to it.
inline constexpr std::uint32_t kLongestJobSeconds = 10u * 365 * 24 * 3600;

// A number with three decimals; "unknown" for one that no machine can have. [any]
std::string SaneText(double number);

}  // namespace k7host
