#include "session/load.h"

#include <new>

#include "base/arithmetic.h"
#include "device/module_state.h"
#include "motion/axes.h"
#include "motion/move.h"
#include "motion/position.h"
#include "motion/round_fixture.h"
#include "motion/round_positions.h"
#include "motion/spindle.h"
#include "session/load_rows.h"
#include "session/pass_table.h"
#include "settings/camera_id.h"
#include "settings/encodings.h"
#include "settings/file.h"
#include "settings/keys.h"

namespace k7 {

namespace {

constexpr float kLeastLiftInches = 0.001f;
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
  record.mechanics.roundCircumference = ParseCircumference(text);
  if (file.ReadInt(keys::kAxisRound, keys::kHasRoundAttachment, 0) == 0) {
    hasRoundAttachment = 0;
    record.mechanics.roundAxisMode = kRoundOff;
    return false;
  }
  hasRoundAttachment = 1;
  // KEEP: without a mode, the length of the circumference's text is one: existing files rely on it.
  const auto mode = static_cast<std::uint32_t>(
      file.ReadInt(keys::kAxisRound, keys::kMode, static_cast<std::int32_t>(length)));
  const bool changed = mode != record.mechanics.roundAxisMode;
  record.mechanics.roundAxisMode = mode;
  return changed;
}

void SendStepsPerMm(DeviceState& record) {
  SetAxisStepsPerMm(record.link, record.position, "X",
                    StepsPerInch(record.mechanics, Axis::X) / kMmPerInch);
  SetAxisStepsPerMm(record.link, record.position, "Y",
                    StepsPerInch(record.mechanics, Axis::Y) / kMmPerInch);
  SetAxisStepsPerMm(record.link, record.position, "Z",
                    StepsPerInch(record.mechanics, Axis::Z) / kMmPerInch);
}

void LoadEngraving(DeviceState& record, const SettingsFile& file) {
  LoadRows(record, file, kEngravingRows);
  if (!(record.tools.cutterLift >= kLeastLiftInches)) record.tools.cutterLift = kLeastLiftInches;
  record.passes.passDepth = record.tools.engraveDepth;
  record.tools.engraveDelayMs =
      TruncateToInt32(file.ReadFloat(keys::kEngraveSettings, keys::kEngraveDelay, 0.0f) * 1000.0f);
}

// The cutter's home and the table's surface. Returns the number read for the surface.
std::int32_t LoadHeights(DeviceState& record, const SettingsFile& file) {
  const float perInchZ = StepsPerInch(record.mechanics, Axis::Z);
  record.position.cutterHome =
      InchesToSteps(file.ReadFloat(keys::kAxisZ, keys::kCutterHome, 0.0f), perInchZ);

  const std::uint32_t depthThousandths = static_cast<std::uint32_t>(
      RoundToSteps(static_cast<float>(record.mechanics.tableDepth) * perInchZ));
  const std::int32_t surface = file.ReadInt(keys::kAxisZ, keys::kTableSurface,
                                            static_cast<std::int32_t>(depthThousandths / 1000));
  record.position.tableSurface = surface != 0 ? surface : record.position.cutterHome.Get();
  return surface;
}

void LoadPositions(DeviceState& record, const SettingsFile& file, bool modeChanged) {
  const LoadedPositions loaded{
      .x = file.ReadInt(keys::kCurrentLocation, keys::kXAxis, 0),
      .y = file.ReadInt(keys::kCurrentLocation, keys::kYAxis, 0),
      .round = modeChanged ? 0 : file.ReadInt(keys::kCurrentLocation, keys::kRAxis, 0),
      .tableHomeInches = {file.ReadFloat(keys::kAxisX, keys::kTableHome, 0.0f),
                          file.ReadFloat(keys::kAxisY, keys::kTableHome, 0.0f)}};
  TakeLoadedPositions(record.mechanics, record.position, loaded,
                      hasRoundAttachment != 0 ? record.mechanics.roundAxisMode : kRoundOff);
}

// KEEP: each of these keys defaults to the one before it; files that lack the later keys rely on
// it.
void LoadCutterMode(DeviceState& record, const SettingsFile& file, std::int32_t surface) {
  const std::int32_t type = file.ReadInt(keys::kEngraveSettings, keys::kEngraveType, surface);
  const std::int32_t mode = file.ReadInt(keys::kEngraveSettings, keys::kCutterMode, type);
  record.tools.engraveType = static_cast<std::uint32_t>(type);
  record.tools.cutterMode = static_cast<std::uint32_t>(mode);
  // KEEP: one and no other number, unlike other flags: the modes chain into it.
  if (file.ReadInt(keys::kAxisZ, keys::kAirZ, mode) != 1) return;
  // A pneumatic head falls on the work by itself: no spindle, no depth, no speed of its own.
  record.tools.cutterMode = kCutterAirZ;
  record.tools.engraveType = 0;
  record.tools.cutterDownSpeed = record.tools.cutterUpSpeed = 10.0f;
  record.tools.cutterLift = record.tools.engraveDepth = 0.01f;
  record.position.cutterHome = 0;
}

void LoadSpindle(DeviceState& record, const SettingsFile& file) {
  const std::int32_t offsetBits =
      file.ReadInt(keys::kProx, keys::kSemiAutoOffset, BitsOfFloat(0.5f));
  record.tools.probeOffset = FloatOfBits(offsetBits);
  const float gearRatio = file.ReadFloat(keys::kSpindle, keys::kGearRatio, 3.25f);
  const std::int32_t motorRpm = file.ReadInt(keys::kSpindle, keys::kMotorRpm, 4000);
  record.spindle.spindleMaxRpm = TruncateToInt32(static_cast<double>(gearRatio) * motorRpm + 0.5);
  // KEEP: without a speed the bits of the offset are one: far above any maximum, so full speed.
  std::int32_t rpm = file.ReadInt(keys::kSpindle, keys::kSpindleRpm, offsetBits);
  if (rpm > record.spindle.spindleMaxRpm) rpm = record.spindle.spindleMaxRpm;
  if (rpm < 1) rpm = 1;
  record.spindle.spindleRpm = rpm;
  if (record.spindle.spindleOn != 0)
    SetSpindle(record, kSpindleEngrave);  // a running one takes it at once
}

void LoadAccessories(DeviceState& record, const SettingsFile& file) {
  LoadRows(record, file, kAccessoryRows);
  hasSpindle = record.spindle.spindlePresent;
  record.tools.beadToolOffsetY =
      file.ReadInt(keys::kBraille, keys::kBeadInsertToolY, record.tools.beadToolOffsetX);
  record.tools.diodeOffsetY =
      file.ReadInt(keys::kDiode, keys::kDiodePointerY, record.tools.diodeOffsetX);
}

void LoadCameraId(DeviceState& record, const SettingsFile& file) {
  wchar_t text[kCameraIdCapacity];
  file.ReadText(keys::kSettings, keys::kCameraId, L"", text, kCameraIdCapacity);
  KeepCameraId(record.host, text);
}

void LoadPassTable(DeviceState& record, const SettingsFile& file) {
  const wchar_t* section = keys::kEngraveSettings;
  const PassSettings settings{
      .multiPass = file.ReadInt(section, keys::kMultiPass, 0) != 0,
      .mode = file.ReadInt(section, keys::kMultiPassMode, 0),
      .copies = static_cast<std::uint32_t>(file.ReadInt(section, keys::kMultiPassCopies, 2)),
      .maxPassDepth = file.ReadFloat(section, keys::kMaxPassDepth, 0.0f),
      .finishPassDepth = file.ReadFloat(section, keys::kFinishPassDepth, 0.0f),
      .engraveDepth = record.tools.engraveDepth};
  const PassPlan plan = PlanPasses(settings);
  record.passes.passDepths.reset();
  record.passes.passCount = plan.count;
  if (plan.count > kMostPasses) return;  // as with memory that cannot be had: a count, no table
  record.passes.passDepths.reset(new (std::nothrow) float[plan.count]);
  if (record.passes.passDepths)
    FillPasses(plan, record.tools.engraveDepth, record.passes.passDepths.get());
}

void SendMappingAndPosition(DeviceState& record) {
  SendAxisMapping(record.link, record.mechanics);
  DeclarePosition(record.link, record.position,
                  {.x = record.position.last.x, .y = record.position.last.y});
}

}  // namespace

// The order is the rule: later keys take their defaults from earlier ones, and the lines go out
// between the reads.
void LoadSettings(DeviceState& record) noexcept {
  const SettingsFile file{record.link};
  file.ReadText(keys::kSettings, keys::kFriendlyName, kDefaultFriendlyName,
                record.link.friendlyName, kNameCapacity);
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
