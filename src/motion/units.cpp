#include "motion/units.h"

namespace k7 {

std::int32_t TruncateToInt32(double) noexcept {
  return {};
}
std::int32_t RoundToSteps(float) noexcept {
  return {};
}
float StepsPerInchX(const DeviceState&) noexcept {
  return {};
}
float StepsPerInchY(const DeviceState&) noexcept {
  return {};
}
float StepsPerInchZ(const DeviceState&) noexcept {
  return {};
}
float LinearStepsPerInchX(const DeviceState&) noexcept {
  return {};
}
float LinearStepsPerInchY(const DeviceState&) noexcept {
  return {};
}
float RoundStepsPerInch(const DeviceState&) noexcept {
  return {};
}
float HostStepsPerInchX(const DeviceState&) noexcept {
  return {};
}
float HostStepsPerInchY(const DeviceState&) noexcept {
  return {};
}
std::uint32_t TableWidthSteps(const DeviceState&) noexcept {
  return {};
}
std::uint32_t TableHeightSteps(const DeviceState&) noexcept {
  return {};
}
std::int32_t MachineX(const DeviceState&, std::uint32_t) noexcept {
  return {};
}
std::int32_t MachineY(const DeviceState&, std::uint32_t) noexcept {
  return {};
}
std::int32_t InchesToSteps(float, float) noexcept {
  return {};
}
std::int32_t LiftZ(const DeviceState&) noexcept {
  return {};
}
std::int32_t PlungeZ(const DeviceState&) noexcept {
  return {};
}
float SpeedToFeed(float) noexcept {
  return {};
}

}  // namespace k7
