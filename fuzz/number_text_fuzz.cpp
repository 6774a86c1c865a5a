// The number text of the lines, its reading back, and the conversions and move lines that use it:
// any number gives well-formed text, and none gives undefined behaviour.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "motion/line_text.h"
#include "motion/move_plan.h"
#include "motion/number_text.h"
#include "motion/units.h"

namespace {

void Require(bool held) {
  if (!held) std::abort();
}

// Takes values off the front of the input; zero once it has run out.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  template <typename T>
  T Take() {
    T value{};
    const std::size_t count = size_ < sizeof value ? size_ : sizeof value;
    if (count != 0) std::memcpy(&value, data_, count);
    data_ += count;
    size_ -= count;
    return value;
  }
  std::string Rest() const { return {reinterpret_cast<const char*>(data_), size_}; }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
};

std::size_t DigitsAt(const std::string& text, std::size_t at) {
  std::size_t count = 0;
  while (at + count < text.size() && text[at + count] >= '0' && text[at + count] <= '9') ++count;
  return count;
}

void CheckText(double value, int decimals) {
  const std::string text = k7::FormatFixed(value, decimals).c_str();
  const auto places = static_cast<std::size_t>(decimals < 1 ? 1 : decimals > 9 ? 9 : decimals);
  const bool negative = std::isfinite(value) && value < 0;
  const std::size_t start = negative ? 1 : 0;
  Require(negative == (text[0] == '-'));
  const std::size_t whole = DigitsAt(text, start);
  Require(whole >= 1 && text[start + whole] == '.');
  const std::size_t fraction = DigitsAt(text, start + whole + 1);
  Require(fraction == places || fraction == places + 1);
  Require(start + whole + 1 + fraction == text.size());

  const double back = k7::ParseFixed(text.c_str());
  Require(back == std::strtod(text.c_str(), nullptr));
  // Some fractions are written wrong on purpose, but the text is never off by 1 or more.
  if (std::isfinite(value) && std::fabs(value) < 1e15) Require(std::fabs(back - value) < 1.0);
}

void CheckTruncation(double value) {
  const std::int32_t steps = k7::TruncateToInt32(value);
  if (std::isnan(value)) {
    Require(steps == 0);
  } else if (std::fabs(value) < 2147483648.0) {
    Require(steps == static_cast<std::int64_t>(value));
  } else {
    Require(steps == (value > 0 ? INT32_MAX : INT32_MIN));
  }
}

void CheckPlan(const k7::DeviceState& record, std::int32_t x, std::int32_t y, std::int32_t z) {
  const k7::MovePlan plan = k7::PlanMove(record, &x, &y, &z);
  if (plan.violatesSurface) return;
  const std::string line = plan.line;
  Require(line.compare(0, 2, "G0") == 0 && line.back() == '\n' && line.size() < 180);
  Require(plan.changed == (line.size() > 3));
  const bool moved =
      plan.lastX != record.lastX || plan.lastY != record.lastY || plan.lastZ != record.lastZ;
  Require(plan.changed == moved);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input{data, size};
  const auto value = input.Take<double>();
  const int decimals = input.Take<std::int8_t>();
  CheckText(value, decimals);
  CheckTruncation(value);

  k7::DeviceState record;
  const auto single = input.Take<float>();
  record.stepsPerMmX = input.Take<float>();
  record.stepsPerMmY = single;
  record.stepsPerMmZ = record.stepsPerMmX;
  record.screwPitchX = record.screwPitchY = record.screwPitchZ = input.Take<float>();
  record.roundCircumference = single;
  record.roundGearRatio = record.screwPitchX;
  record.motorStepsX = record.motorStepsY = record.motorStepsZ = record.motorStepsRound =
      input.Take<std::int32_t>();
  record.microStepsX = record.microStepsY = record.microStepsZ = record.microStepsRound =
      input.Take<std::int32_t>();
  record.roundAxisMode = input.Take<std::uint8_t>() % 4;
  record.xAxisFactor = record.yAxisFactor = input.Take<std::int32_t>();
  record.tableWidth = input.Take<std::int32_t>();
  record.tableHomeX = record.tableWidth;
  record.cutterHome = record.tableWidth;
  record.tableSurface = input.Take<std::int32_t>();
  record.lastX = input.Take<std::int32_t>();
  record.passDepth = record.engraveDepth = record.cutterLift = single;
  record.cutterMode = input.Take<std::uint8_t>() % 5;
  const auto host = input.Take<std::uint32_t>();

  CheckText(static_cast<double>(single), 3);
  CheckTruncation(static_cast<double>(k7::StepsPerInchX(record)));
  k7::TableWidthSteps(record);
  k7::TableHeightSteps(record);
  CheckPlan(record, k7::MachineX(record, host), k7::MachineY(record, host), k7::LiftZ(record));
  CheckPlan(record, static_cast<std::int32_t>(host), 0, k7::PlungeZ(record));
  Require(std::string{k7::FeedLine(k7::FeedText(single).c_str()).c_str()}.back() == '\n');
  Require(std::string{k7::MaxSpeedsLine(single, record.screwPitchX, 0).c_str()}.back() == '\n');
  Require(std::string{k7::StepsPerMmLine("X", single).c_str()}.back() == '\n');

  k7::ParseFixed(input.Rest().c_str());
  return 0;
}
