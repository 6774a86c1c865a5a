#include "settings/load.h"

#include <new>

#include "device/module_state.h"
#include "motion/position.h"
#include "motion/round_fixture.h"
#include "motion/spindle.h"
#include "motion/steps_per_mm.h"
#include "motion/units.h"
#include "settings/camera_id.h"
#include "settings/load_plan/pass_table.h"
#include "settings/load_plan/rows.h"
#include "settings/settings_file.h"
#include "settings/settings_keys.h"
#include "settings/settings_values.h"

namespace k7 {

namespace {

constexpr float kLeastLiftInches = 0.001f;
constexpr float kMmPerInch = 25.4f;
constexpr int kCircumferenceCapacity = 2048;

template <std::size_t kCount>
void LoadRows(DeviceState& record, const SettingsFile& file, const LoadRow (&rows)[kCount]) {
  for (const LoadRow& row : rows) {
    row.store(record, file.ReadInt(row.section, row.key, row.otherwise));
  }
}

// Returns whether a fixture is fitted and its mode is another one than before this load.
bool LoadRoundMode(DeviceState& record, const SettingsFile& file) {
  wchar_t text[kCircumferenceCapacity];
  const std::uint32_t length =
      file.ReadText(keys::kAxisRound, keys::kCircumference, L"", text, kCircumferenceCapacity);
  record.roundCircumference = ParseCircumference(text);
  if (file.ReadInt(keys::kAxisRound, keys::kHasRoundAttachment, 0) == 0) {
    hasRoundAttachment = 0;
    record.roundAxisMode = kRoundOff;
    return false;
  }
  hasRoundAttachment = 1;
  // KEEP: without a mode, the length of the circumference's text is one: existing files rely on it.
  const auto mode = static_cast<std::uint32_t>(
      file.ReadInt(keys::kAxisRound, keys::kMode, static_cast<std::int32_t>(length)));
  const bool changed = mode != record.roundAxisMode;
  record.roundAxisMode = mode;
  return changed;
}

void SendStepsPerMm(DeviceState& record) {
  SetAxisStepsPerMm(record, "X", StepsPerInchX(record) / kMmPerInch);
  SetAxisStepsPerMm(record, "Y", StepsPerInchY(record) / kMmPerInch);
  SetAxisStepsPerMm(record, "Z", StepsPerInchZ(record) / kMmPerInch);
}

void LoadEngraving(DeviceState& record, const SettingsFile& file) {
  LoadRows(record, file, kEngravingRows);
  if (!(record.cutterLift >= kLeastLiftInches)) record.cutterLift = kLeastLiftInches;
  record.passDepth = record.engraveDepth;
  record.engraveDelayMs =
      TruncateToInt32(file.ReadFloat(keys::kEngraveSettings, keys::kEngraveDelay, 0.0f) * 1000.0f);
}

// Home positions and the table's surface. Returns the number read for the surface.
std::int32_t LoadHeights(DeviceState& record, const SettingsFile& file) {
  record.tableHomeX =
      InchesToSteps(file.ReadFloat(keys::kAxisX, keys::kTableHome, 0.0f), StepsPerInchX(record));
  record.tableHomeY =
      InchesToSteps(file.ReadFloat(keys::kAxisY, keys::kTableHome, 0.0f), StepsPerInchY(record));
  const float perInchZ = StepsPerInchZ(record);
  record.cutterHome =
      InchesToSteps(file.ReadFloat(keys::kAxisZ, keys::kCutterHome, 0.0f), perInchZ);

  const std::uint32_t depthThousandths =
      static_cast<std::uint32_t>(RoundToSteps(static_cast<float>(record.tableDepth) * perInchZ));
  const std::int32_t surface = file.ReadInt(keys::kAxisZ, keys::kTableSurface,
                                            static_cast<std::int32_t>(depthThousandths / 1000));
  record.tableSurface = surface != 0 ? surface : record.cutterHome.Get();
  return surface;
}

// KEEP: the home of a replaced axis is put aside in the steps in which it was computed, which are
// the fixture's, beside a resolution that is the screw's.
void LoadPositions(DeviceState& record, const SettingsFile& file, bool modeChanged) {
  const std::int32_t x = file.ReadInt(keys::kCurrentLocation, keys::kXAxis, 0);
  const std::int32_t y = file.ReadInt(keys::kCurrentLocation, keys::kYAxis, 0);
  const std::int32_t round =
      modeChanged ? 0 : file.ReadInt(keys::kCurrentLocation, keys::kRAxis, 0);
  const std::uint32_t mode = hasRoundAttachment != 0 ? record.roundAxisMode : kRoundOff;
  if (mode == kRoundReplacesX) {
    record.lastX = round;
    record.lastY = y;
    record.parkedPosition = x;
    record.tableHomeRound = record.tableHomeX;
    record.tableHomeX = 0;
    record.roundStepsPerInch = LinearStepsPerInchX(record);
  } else if (mode == kRoundReplacesY) {
    record.lastX = x;
    record.lastY = round;
    record.parkedPosition = y;
    record.tableHomeRound = record.tableHomeY;
    record.tableHomeY = 0;
    record.roundStepsPerInch = LinearStepsPerInchY(record);
  } else if (mode == kRoundOff) {
    record.lastX = x;
    record.lastY = y;
  }  // KEEP: with an unknown mode the live position stays as it is.
  record.savedPositionX = x;
  record.savedPositionY = y;
}

// KEEP: each of these keys defaults to the one before it; files that lack the later keys rely on
// it.
void LoadCutterMode(DeviceState& record, const SettingsFile& file, std::int32_t surface) {
  const std::int32_t type = file.ReadInt(keys::kEngraveSettings, keys::kEngraveType, surface);
  const std::int32_t mode = file.ReadInt(keys::kEngraveSettings, keys::kCutterMode, type);
  record.engraveType = static_cast<std::uint32_t>(type);
  record.cutterMode = static_cast<std::uint32_t>(mode);
  // KEEP: one and no other number, unlike other flags: the modes chain into it.
  if (file.ReadInt(keys::kAxisZ, keys::kAirZ, mode) != 1) return;
  // A pneumatic head falls on the work by itself: no spindle, no depth, no speed of its own.
  record.cutterMode = kCutterAirZ;
  record.engraveType = 0;
  record.cutterDownSpeed = record.cutterUpSpeed = 10.0f;
  record.cutterLift = record.engraveDepth = 0.01f;
  record.cutterHome = 0;
}

void LoadSpindle(DeviceState& record, const SettingsFile& file) {
  const std::int32_t offsetBits =
      file.ReadInt(keys::kProx, keys::kSemiAutoOffset, BitsOfFloat(0.5f));
  record.probeOffset = FloatOfBits(offsetBits);
  const float gearRatio = file.ReadFloat(keys::kSpindle, keys::kGearRatio, 3.25f);
  const std::int32_t motorRpm = file.ReadInt(keys::kSpindle, keys::kMotorRpm, 4000);
  record.spindleMaxRpm = TruncateToInt32(static_cast<double>(gearRatio) * motorRpm + 0.5);
  // KEEP: without a speed the bits of the offset are one: far above any maximum, so full speed.
  std::int32_t rpm = file.ReadInt(keys::kSpindle, keys::kSpindleRpm, offsetBits);
  if (rpm > record.spindleMaxRpm) rpm = record.spindleMaxRpm;
  if (rpm < 1) rpm = 1;
  record.spindleRpm = rpm;
  if (record.spindleOn != 0) SetSpindle(record, kSpindleEngrave);  // a running one takes it at once
}

void LoadAccessories(DeviceState& record, const SettingsFile& file) {
  LoadRows(record, file, kAccessoryRows);
  hasSpindle = record.spindlePresent;
  record.beadToolOffsetY =
      file.ReadInt(keys::kBraille, keys::kBeadInsertToolY, record.beadToolOffsetX);
  record.diodeOffsetY = file.ReadInt(keys::kDiode, keys::kDiodePointerY, record.diodeOffsetX);
}

void LoadCameraId(DeviceState& record, const SettingsFile& file) {
  wchar_t text[kCameraIdCapacity];
  file.ReadText(keys::kSettings, keys::kCameraId, L"", text, kCameraIdCapacity);
  KeepCameraId(record, text);
}

void LoadPassTable(DeviceState& record, const SettingsFile& file) {
  const wchar_t* section = keys::kEngraveSettings;
  const PassSettings settings{
      .multiPass = file.ReadInt(section, keys::kMultiPass, 0) != 0,
      .mode = file.ReadInt(section, keys::kMultiPassMode, 0),
      .copies = static_cast<std::uint32_t>(file.ReadInt(section, keys::kMultiPassCopies, 2)),
      .maxPassDepth = file.ReadFloat(section, keys::kMaxPassDepth, 0.0f),
      .finishPassDepth = file.ReadFloat(section, keys::kFinishPassDepth, 0.0f),
      .engraveDepth = record.engraveDepth};
  const PassPlan plan = PlanPasses(settings);
  record.passDepths.reset();
  record.passCount = plan.count;
  if (plan.count > kMostPasses) return;  // as with memory that cannot be had: a count, no table
  record.passDepths.reset(new (std::nothrow) float[plan.count]);
  if (record.passDepths) FillPasses(plan, record.engraveDepth, record.passDepths.get());
}

void SendMappingAndPosition(DeviceState& record) {
  SendAxisMapping(record);
  const std::int32_t x = record.lastX;
  const std::int32_t y = record.lastY;
  SetPosition(record, &x, &y, nullptr);
}

}  // namespace

// The order is the rule: later keys take their defaults from earlier ones, and the lines go out
// between the reads.
void LoadSettings(DeviceState& record) noexcept {
  const SettingsFile file{record};
  file.ReadText(keys::kSettings, keys::kFriendlyName, kDefaultFriendlyName, record.friendlyName,
                kNameCapacity);
  LoadRows(record, file, kAxisRows);
  const bool modeChanged = LoadRoundMode(record, file);
  LoadRows(record, file, kTableRows);
  SendStepsPerMm(record);
  LoadEngraving(record, file);
  const std::int32_t surface = LoadHeights(record, file);
  LoadRows(record, file, kFactorRows);
  LoadPositions(record, file, modeChanged);
  LoadCutterMode(record, file, surface);
  LoadSpindle(record, file);
  LoadAccessories(record, file);
  LoadCameraId(record, file);
  LoadPassTable(record, file);
  SendMappingAndPosition(record);
}

}  // namespace k7
