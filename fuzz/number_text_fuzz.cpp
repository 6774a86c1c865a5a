// The number text of the lines, its reading back, and the conversions and move lines that use it:
// any number gives well-formed text, and none gives undefined behaviour.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "base/arithmetic.h"
#include "base/number_text.h"
#include "base/parse_number.h"
#include "link/commands.h"
#include "motion/axes.h"
#include "motion/move_plan.h"

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
  const k7::MovePlan plan = k7::PlanMove(record, {.x = x, .y = y, .z = z});
  if (plan.violatesSurface) return;
  const std::string line = plan.line.c_str();
  Require(plan.changed != line.empty());
  if (plan.changed) Require(line.compare(0, 3, "G0 ") == 0 && line.back() == '\n');
  const bool moved = plan.lastX != record.position.last.x || plan.lastY != record.position.last.y ||
                     plan.lastZ != record.position.last.z;
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
  record.position.stepsPerMm.x = input.Take<float>();
  record.position.stepsPerMm.y = single;
  record.position.stepsPerMm.z = record.position.stepsPerMm.x;
  record.mechanics.axis.x.screwPitch = record.mechanics.axis.y.screwPitch =
      record.mechanics.axis.z.screwPitch = input.Take<float>();
  record.mechanics.roundCircumference = single;
  record.mechanics.roundGearRatio = record.mechanics.axis.x.screwPitch;
  record.mechanics.axis.x.motorSteps = record.mechanics.axis.y.motorSteps =
      record.mechanics.axis.z.motorSteps = record.mechanics.motorStepsRound =
          input.Take<std::int32_t>();
  record.mechanics.axis.x.microSteps = record.mechanics.axis.y.microSteps =
      record.mechanics.axis.z.microSteps = record.mechanics.microStepsRound =
          input.Take<std::int32_t>();
  record.mechanics.roundAxisMode = input.Take<std::uint8_t>() % 4;
  record.mechanics.xAxisFactor = record.mechanics.yAxisFactor = input.Take<std::int32_t>();
  record.mechanics.tableWidth = input.Take<std::int32_t>();
  record.position.tableHome.x = record.mechanics.tableWidth;
  record.position.cutterHome = record.mechanics.tableWidth;
  record.position.tableSurface = input.Take<std::int32_t>();
  record.position.last.x = input.Take<std::int32_t>();
  record.passes.passDepth = record.tools.engraveDepth = record.tools.cutterLift = single;
  record.tools.cutterMode = input.Take<std::uint8_t>() % 5;
  const auto host = input.Take<std::uint32_t>();

  CheckText(static_cast<double>(single), 3);
  CheckTruncation(static_cast<double>(k7::StepsPerInch(record.mechanics, k7::Axis::X)));
  k7::TableWidthSteps(record.mechanics);
  k7::TableHeightSteps(record.mechanics);
  const k7::MachinePlace place = k7::MachinePlaceOf(record.mechanics, record.position, host, host);
  CheckPlan(record, place.x, place.y, k7::LiftZ(record));
  CheckPlan(record, static_cast<std::int32_t>(host), 0, k7::PlungeZ(record));
  Require(std::string{k7::FeedLine(k7::FeedText(single).c_str()).c_str()}.back() == '\n');
  Require(std::string{k7::MaxSpeedsLine(single, record.mechanics.axis.x.screwPitch, 0).c_str()}
              .back() == '\n');
  Require(std::string{k7::StepsPerMmLine("X", single).c_str()}.back() == '\n');

  k7::ParseFixed(input.Rest().c_str());
  return 0;
}
