// The keys that go from a settings file straight into a field of the record, as tables: section,
// key, default as it would stand in the file, field. Keys whose default or effect depends on
// another key are read by the load itself, between these tables.
#pragma once

#include <cstdint>

#include "device/device_state.h"
#include "settings/encodings.h"
#include "settings/keys.h"

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
  kField(record) = value;
}
template <auto kField>
void StoreFloat(DeviceState& record, std::int32_t bits) {
  kField(record) = FloatOfBits(bits);
}
template <auto kField>
void StoreFlag(DeviceState& record, std::int32_t value) {
  if (value != 0) {
    kField(record) = 1;
  } else {
    kField(record) = 0;
  }
}

using D = DeviceState;

inline constexpr LoadRow kAxisRows[] = {{keys::kAxisX, keys::kMotorSteps, 200, StoreInt < [
                                         ](D& r) -> auto& {return r.mechanics.axis.x.motorSteps;
}  // namespace k7
>
}
, {keys::kAxisX, keys::kMicroSteps, 10,
   StoreInt < [](D& r) -> auto& {return r.mechanics.axis.x.microSteps;
}
>
}
, {keys::kAxisX, keys::kScrewPitch, BitsOfFloat(0.5f),
   StoreFloat < [](D& r) -> auto& {return r.mechanics.axis.x.screwPitch;
}
>
}
, {keys::kAxisX, keys::kLimitSwitch, 0,
   StoreFlag < [](D& r) -> auto& {return r.mechanics.axis.x.limitSwitch;
}
>
}
, {keys::kAxisY, keys::kMotorSteps, 200,
   StoreInt < [](D& r) -> auto& {return r.mechanics.axis.y.motorSteps;
}
>
}
, {keys::kAxisY, keys::kMicroSteps, 10,
   StoreInt < [](D& r) -> auto& {return r.mechanics.axis.y.microSteps;
}
>
}
, {keys::kAxisY, keys::kScrewPitch, BitsOfFloat(0.5f),
   StoreFloat < [](D& r) -> auto& {return r.mechanics.axis.y.screwPitch;
}
>
}
, {keys::kAxisY, keys::kLimitSwitch, 0,
   StoreFlag < [](D& r) -> auto& {return r.mechanics.axis.y.limitSwitch;
}
>
}
, {keys::kAxisZ, keys::kMotorSteps, 200,
   StoreInt < [](D& r) -> auto& {return r.mechanics.axis.z.motorSteps;
}
>
}
, {keys::kAxisZ, keys::kMicroSteps, 10,
   StoreInt < [](D& r) -> auto& {return r.mechanics.axis.z.microSteps;
}
>
}
, {keys::kAxisZ, keys::kScrewPitch, BitsOfFloat(0.5f),
   StoreFloat < [](D& r) -> auto& {return r.mechanics.axis.z.screwPitch;
}
>
}
, {keys::kAxisZ, keys::kLimitSwitch, 0,
   StoreFlag < [](D& r) -> auto& {return r.mechanics.axis.z.limitSwitch;
}
>
}
, {keys::kAxisZ, keys::kProxSwitch, 0, StoreFlag < [](D& r) -> auto& {return r.mechanics.proxSwitch;
}
>
}
, {keys::kAxisRound, keys::kMotorSteps, 200,
   StoreInt < [](D& r) -> auto& {return r.mechanics.motorStepsRound;
}
>
}
, {keys::kAxisRound, keys::kMicroSteps, 10,
   StoreInt < [](D& r) -> auto& {return r.mechanics.microStepsRound;
}
>
}
,
}
;

inline constexpr LoadRow kTableRows[] = {
    {keys::kAxisRound, keys::kGearRatio, BitsOfFloat(20.0f),
     StoreFloat < [](D& r) -> auto& {return r.mechanics.roundGearRatio;
}
>
}
, {keys::kTableSize, keys::kWidth, 25000,
   StoreInt < [](D& r) -> auto& {return r.mechanics.tableWidth;
}
>
}
, {keys::kTableSize, keys::kHeight, 16000,
   StoreInt < [](D& r) -> auto& {return r.mechanics.tableHeight;
}
>
}
, {keys::kTableSize, keys::kDepth, 2000,
   StoreInt < [](D& r) -> auto& {return r.mechanics.tableDepth;
}
>
}
, {keys::kJogSpeed, keys::kFast, 5000, StoreInt < [](D& r) -> auto& {return r.jog.jogFast;
}
>
}
, {keys::kJogSpeed, keys::kSlow, 250, StoreInt < [](D& r) -> auto& {return r.jog.jogSlow;
}
>
}
,
}
;

inline constexpr LoadRow kEngravingRows[] = {
    {keys::kEngraveSettings, keys::kCutterLift, BitsOfFloat(0.125f),
     StoreFloat < [](D& r) -> auto& {return r.tools.cutterLift;
}
>
}
, {keys::kEngraveSettings, keys::kEngraveDepth, BitsOfFloat(0.0625f),
   StoreFloat < [](D& r) -> auto& {return r.tools.engraveDepth;
}
>
}
, {keys::kEngraveSettings, keys::kTraverseSpeed, BitsOfFloat(1.0f),
   StoreFloat < [](D& r) -> auto& {return r.tools.traverseSpeed;
}
>
}
, {keys::kEngraveSettings, keys::kCutterDownSpeed, BitsOfFloat(1.0f),
   StoreFloat < [](D& r) -> auto& {return r.tools.cutterDownSpeed;
}
>
}
, {keys::kEngraveSettings, keys::kCutterUpSpeed, BitsOfFloat(1.0f),
   StoreFloat < [](D& r) -> auto& {return r.tools.cutterUpSpeed;
}
>
}
, {keys::kEngraveSettings, keys::kEngraveSpeed, BitsOfFloat(1.0f),
   StoreFloat < [](D& r) -> auto& {return r.tools.engraveSpeed;
}
>
}
, {keys::kEngraveSettings, keys::kGridSpeed, BitsOfFloat(1.0f),
   StoreFloat < [](D& r) -> auto& {return r.tools.gridSpeed;
}
>
}
,
}
;

inline constexpr LoadRow kFactorRows[] = {
    {keys::kEngraveSettings, keys::kXAxisFactor, 1,
     StoreInt < [](D& r) -> auto& {return r.mechanics.xAxisFactor;
}
>
}
, {keys::kEngraveSettings, keys::kYAxisFactor, 1,
   StoreInt < [](D& r) -> auto& {return r.mechanics.yAxisFactor;
}
>
}
,
}
;

inline constexpr LoadRow kAccessoryRows[] = {
    {keys::kEngraveSettings, keys::kEngraveByColor, 0,
     StoreFlag < [](D& r) -> auto& {return r.host.engraveByColor;
}
>
}
, {keys::kEngraveSettings, keys::kDontLowerAirZ, 0,
   StoreFlag < [](D& r) -> auto& {return r.tools.dontLowerAirZ;
}
>
}
, {keys::kSpindle, keys::kHasSpindle, 0,
   StoreFlag < [](D& r) -> auto& {return r.spindle.spindlePresent;
}
>
}
, {keys::kBraille, keys::kBeadInsertTool, 0,
   StoreFlag < [](D& r) -> auto& {return r.tools.beadInsertTool;
}
>
}
, {keys::kSettings, keys::kScissors, BitsOfFloat(1.0f),
   StoreFloat < [](D& r) -> auto& {return r.host.scissors;
}
>
}
, {keys::kBraille, keys::kBeadInsertToolX, 0,
   StoreInt < [](D& r) -> auto& {return r.tools.beadToolOffsetX;
}
>
}
, {keys::kDiode, keys::kDiodePointer, 0, StoreFlag < [](D& r) -> auto& {return r.tools.diodePointer;
}
>
}
, {keys::kDiode, keys::kDiodePointerX, 0, StoreInt < [](D& r) -> auto& {return r.tools.diodeOffsetX;
}
>
}
,
}
;

}  // namespace k7
