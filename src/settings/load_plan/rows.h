// The keys that go from a settings file straight into a field of the record, as tables: section,
// key, default as it would stand in the file, field. Keys whose default or effect depends on
// another key are read by the load itself, between these tables.
#pragma once

#include <cstdint>

#include "device/device_state.h"
#include "settings/settings_keys.h"
#include "settings/settings_values.h"

namespace k7 {

// One key. `store` puts the number of the file into the field: as it is, as a float's bits, or as a
// flag (anything but 0 is 1).
struct LoadRow {
  const wchar_t* section;
  const wchar_t* key;
  std::int32_t otherwise;
  void (*store)(DeviceState& record, std::int32_t value);
};

template <auto kField>
void StoreInt(DeviceState& record, std::int32_t value) {
  record.*kField = value;
}
template <auto kField>
void StoreFloat(DeviceState& record, std::int32_t bits) {
  record.*kField = FloatOfBits(bits);
}
template <auto kField>
void StoreFlag(DeviceState& record, std::int32_t value) {
  if (value != 0) {
    record.*kField = 1;
  } else {
    record.*kField = 0;
  }
}

using D = DeviceState;

inline constexpr LoadRow kAxisRows[] = {
    {keys::kAxisX, keys::kMotorSteps, 200, StoreInt<&D::motorStepsX>},
    {keys::kAxisX, keys::kMicroSteps, 10, StoreInt<&D::microStepsX>},
    {keys::kAxisX, keys::kScrewPitch, BitsOfFloat(0.5f), StoreFloat<&D::screwPitchX>},
    {keys::kAxisX, keys::kLimitSwitch, 0, StoreFlag<&D::limitSwitchX>},
    {keys::kAxisY, keys::kMotorSteps, 200, StoreInt<&D::motorStepsY>},
    {keys::kAxisY, keys::kMicroSteps, 10, StoreInt<&D::microStepsY>},
    {keys::kAxisY, keys::kScrewPitch, BitsOfFloat(0.5f), StoreFloat<&D::screwPitchY>},
    {keys::kAxisY, keys::kLimitSwitch, 0, StoreFlag<&D::limitSwitchY>},
    {keys::kAxisZ, keys::kMotorSteps, 200, StoreInt<&D::motorStepsZ>},
    {keys::kAxisZ, keys::kMicroSteps, 10, StoreInt<&D::microStepsZ>},
    {keys::kAxisZ, keys::kScrewPitch, BitsOfFloat(0.5f), StoreFloat<&D::screwPitchZ>},
    {keys::kAxisZ, keys::kLimitSwitch, 0, StoreFlag<&D::limitSwitchZ>},
    {keys::kAxisZ, keys::kProxSwitch, 0, StoreFlag<&D::proxSwitch>},
    {keys::kAxisRound, keys::kMotorSteps, 200, StoreInt<&D::motorStepsRound>},
    {keys::kAxisRound, keys::kMicroSteps, 10, StoreInt<&D::microStepsRound>},
};

inline constexpr LoadRow kTableRows[] = {
    {keys::kAxisRound, keys::kGearRatio, BitsOfFloat(20.0f), StoreFloat<&D::roundGearRatio>},
    {keys::kTableSize, keys::kWidth, 25000, StoreInt<&D::tableWidth>},
    {keys::kTableSize, keys::kHeight, 16000, StoreInt<&D::tableHeight>},
    {keys::kTableSize, keys::kDepth, 2000, StoreInt<&D::tableDepth>},
    {keys::kJogSpeed, keys::kFast, 5000, StoreInt<&D::jogFast>},
    {keys::kJogSpeed, keys::kSlow, 250, StoreInt<&D::jogSlow>},
};

inline constexpr LoadRow kEngravingRows[] = {
    {keys::kEngraveSettings, keys::kCutterLift, BitsOfFloat(0.125f), StoreFloat<&D::cutterLift>},
    {keys::kEngraveSettings, keys::kEngraveDepth, BitsOfFloat(0.0625f),
     StoreFloat<&D::engraveDepth>},
    {keys::kEngraveSettings, keys::kTraverseSpeed, BitsOfFloat(1.0f),
     StoreFloat<&D::traverseSpeed>},
    {keys::kEngraveSettings, keys::kCutterDownSpeed, BitsOfFloat(1.0f),
     StoreFloat<&D::cutterDownSpeed>},
    {keys::kEngraveSettings, keys::kCutterUpSpeed, BitsOfFloat(1.0f),
     StoreFloat<&D::cutterUpSpeed>},
    {keys::kEngraveSettings, keys::kEngraveSpeed, BitsOfFloat(1.0f), StoreFloat<&D::engraveSpeed>},
    {keys::kEngraveSettings, keys::kGridSpeed, BitsOfFloat(1.0f), StoreFloat<&D::gridSpeed>},
};

inline constexpr LoadRow kFactorRows[] = {
    {keys::kEngraveSettings, keys::kXAxisFactor, 1, StoreInt<&D::xAxisFactor>},
    {keys::kEngraveSettings, keys::kYAxisFactor, 1, StoreInt<&D::yAxisFactor>},
};

inline constexpr LoadRow kAccessoryRows[] = {
    {keys::kEngraveSettings, keys::kEngraveByColor, 0, StoreFlag<&D::engraveByColor>},
    {keys::kEngraveSettings, keys::kDontLowerAirZ, 0, StoreFlag<&D::dontLowerAirZ>},
    {keys::kSpindle, keys::kHasSpindle, 0, StoreFlag<&D::spindlePresent>},
    {keys::kBraille, keys::kBeadInsertTool, 0, StoreFlag<&D::beadInsertTool>},
    {keys::kSettings, keys::kScissors, BitsOfFloat(1.0f), StoreFloat<&D::scissors>},
    {keys::kBraille, keys::kBeadInsertToolX, 0, StoreInt<&D::beadToolOffsetX>},
    {keys::kDiode, keys::kDiodePointer, 0, StoreFlag<&D::diodePointer>},
    {keys::kDiode, keys::kDiodePointerX, 0, StoreInt<&D::diodeOffsetX>},
};

}  // namespace k7
