#include "link/reply.h"

namespace k7 {

namespace {

// The 0 or 1 right behind `name`, wherever that stands in the report.
std::optional<std::uint8_t> SwitchBehind(std::string_view report, std::string_view name) noexcept {
  const std::size_t at = report.find(name);
  if (at == std::string_view::npos) return std::nullopt;
  const std::string_view value = report.substr(at + name.size(), 1);
  if (value == "0") return std::uint8_t{0};
  if (value == "1") return std::uint8_t{1};
  return std::nullopt;
}

}  // namespace

std::optional<SwitchReport> ReadSwitches(std::string_view report) noexcept {
  const auto x = SwitchBehind(report, "min_x:");
  const auto y = SwitchBehind(report, "min_y:");
  const auto z = SwitchBehind(report, "min_z:");
  const auto probe = SwitchBehind(report, "Probe: ");
  if (!x || !y || !z || !probe) return std::nullopt;
  return SwitchReport{*x, *y, *z, *probe};
}

}  // namespace k7
