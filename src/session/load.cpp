#include "session/load.h"

#include <new>
#include <span>

#include "base/arithmetic.h"
#include "device/module_state.h"
#include "motion/axes.h"
#include "motion/move.h"
#include "motion/position.h"
#include "motion/round_fixture.h"
#include "motion/round_positions.h"
#include "motion/spindle.h"
#include "session/pass_table.h"
#include "settings/camera_id.h"
#include "settings/encodings.h"
#include "settings/file.h"
#include "settings/schema.h"

namespace k7 {

using namespace settings;  // the rows, all over this file

namespace {

constexpr float kLeastLiftInches = 0.001f;
constexpr int kCircumferenceCapacity = static_cast<int>(kCircumference.range.most) + 1;

// The keys that go from the file straight into the fields that their rows name, in the order in
// which they are read. What depends on another key is read between these groups.
constexpr const Row* kAxisRows[] = {
    &kMotorStepsX, &kMicroStepsX,  &kScrewPitchX,  &kLimitSwitchX,    &kMotorStepsY,
    &kMicroStepsY, &kScrewPitchY,  &kLimitSwitchY, &kMotorStepsZ,     &kMicroStepsZ,
    &kScrewPitchZ, &kLimitSwitchZ, &kProxSwitch,   &kRoundMotorSteps, &kRoundMicroSteps};
constexpr const Row* kTableRows[] = {&kRoundGearRatio, &kTableWidth,   &kTableHeight,
                                     &kTableDepth,     &kJogFastSpeed, &kJogSlowSpeed};
constexpr const Row* kEngravingRows[] = {&kCutterLift,      &kEngraveDepth,  &kTraverseSpeed,
                                         &kCutterDownSpeed, &kCutterUpSpeed, &kEngraveSpeed,
                                         &kGridSpeed};
constexpr const Row* kFactorRows[] = {&kXAxisFactor, &kYAxisFactor};
constexpr const Row* kAccessoryRows[] = {&kEngraveByColor, &kDontLowerAirZ, &kHasSpindle,
                                         &kBeadInsertTool, &kScissors,      &kBeadToolOffsetX,
                                         &kDiodePointer,   &kDiodeOffsetX};

void LoadRows(DeviceState& record, const SettingsFile& file, std::span<const Row* const> rows) {
  for (const Row* row : rows) row->fill(record, file.ReadNumber(*row, Reader::Load));
}

// Returns whether a fixture is fitted and its mode is another one than before this load.
bool LoadRoundMode(DeviceState& record, const SettingsFile& file) {
  wchar_t text[kCircumferenceCapacity];
  const std::uint32_t length = file.ReadText(kCircumference, text, kCircumferenceCapacity);
  record.mechanics.roundCircumference = ParseCircumference(text);
  if (!file.ReadFlag(kHasRoundAttachment, Reader::Load)) {
    hasRoundAttachment = 0;
    record.mechanics.roundAxisMode = kRoundOff;
    return false;
  }
  hasRoundAttachment = 1;
  const auto mode =
      static_cast<std::uint32_t>(file.ReadChained(kRoundMode, static_cast<std::int32_t>(length)));
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
      TruncateToInt32(file.ReadFloat(kEngraveDelay, Reader::Load) * 1000.0f);
}

// The cutter's home and the table's surface. Returns the number read for the surface.
std::int32_t LoadHeights(DeviceState& record, const SettingsFile& file) {
  const float perInchZ = StepsPerInch(record.mechanics, Axis::Z);
  record.position.cutterHome = InchesToSteps(file.ReadFloat(kCutterHome, Reader::Load), perInchZ);

  const std::uint32_t depthThousandths = static_cast<std::uint32_t>(
      RoundToSteps(static_cast<float>(record.mechanics.tableDepth) * perInchZ));
  const std::int32_t surface =
      file.ReadChained(kTableSurface, static_cast<std::int32_t>(depthThousandths / 1000));
  record.position.tableSurface = surface != 0 ? surface : record.position.cutterHome.Get();
  return surface;
}

void LoadPositions(DeviceState& record, const SettingsFile& file, bool modeChanged) {
  const LoadedPositions loaded{
      .x = file.ReadInt(kLocationX, Reader::Load),
      .y = file.ReadInt(kLocationY, Reader::Load),
      .round = modeChanged ? 0 : file.ReadInt(kLocationRound, Reader::Load),
      .tableHomeInches = {file.ReadFloat(kTableHomeX, Reader::Load),
                          file.ReadFloat(kTableHomeY, Reader::Load)}};
  TakeLoadedPositions(record.mechanics, record.position, loaded,
                      hasRoundAttachment != 0 ? record.mechanics.roundAxisMode : kRoundOff);
}

// A missing key takes the number of the key before it; the rows of these keys say why.
void LoadCutterMode(DeviceState& record, const SettingsFile& file, std::int32_t surface) {
  const std::int32_t type = file.ReadChained(kEngraveType, surface);
  const std::int32_t mode = file.ReadChained(kCutterMode, type);
  record.tools.engraveType = static_cast<std::uint32_t>(type);
  record.tools.cutterMode = static_cast<std::uint32_t>(mode);
  // KEEP: 1 and no other number, unlike other flags. Where the key is missing the number is a
  // cutter mode, and only mode 1 may make the machine one with an air head.
  if (file.ReadChained(kAirZ, mode) != 1) return;
  // A pneumatic head is either up or down. What is set for a motor along Z, its depths and speeds
  // and a spindle below it, means nothing to it: fixed values keep that out of moves and times.
  record.tools.cutterMode = kCutterAirZ;
  record.tools.engraveType = 0;
  record.tools.cutterDownSpeed = record.tools.cutterUpSpeed = 10.0f;
  record.tools.cutterLift = record.tools.engraveDepth = 0.01f;
  record.position.cutterHome = 0;
}

void LoadSpindle(DeviceState& record, const SettingsFile& file) {
  const std::int32_t offsetBits = file.ReadNumber(kSemiAutoOffset, Reader::Load);
  record.tools.probeOffset = FloatOfBits(offsetBits);
  const float gearRatio = file.ReadFloat(kSpindleGearRatio, Reader::Load);
  const std::int32_t motorRpm = file.ReadInt(kMotorRpm, Reader::Load);
  record.spindle.spindleMaxRpm = TruncateToInt32(static_cast<double>(gearRatio) * motorRpm + 0.5);
  std::int32_t rpm = file.ReadChained(kSpindleRpm, offsetBits);
  if (rpm > record.spindle.spindleMaxRpm) rpm = record.spindle.spindleMaxRpm;
  if (rpm < 1) rpm = 1;
  record.spindle.spindleRpm = rpm;
  if (record.spindle.spindleOn != 0)
    SetSpindle(record, kSpindleEngrave);  // a spindle that runs takes its new speed at once
}

void LoadAccessories(DeviceState& record, const SettingsFile& file) {
  LoadRows(record, file, kAccessoryRows);
  hasSpindle = record.spindle.spindlePresent;
  record.tools.beadToolOffsetY = file.ReadChained(kBeadToolOffsetY, record.tools.beadToolOffsetX);
  record.tools.diodeOffsetY = file.ReadChained(kDiodeOffsetY, record.tools.diodeOffsetX);
}

void LoadCameraId(DeviceState& record, const SettingsFile& file) {
  wchar_t text[kCameraIdCapacity];
  file.ReadText(kCameraId, text, kCameraIdCapacity);
  KeepCameraId(record.host, text);
}

void LoadPassTable(DeviceState& record, const SettingsFile& file) {
  const PassPlan plan = PlanPasses(
      {.multiPass = file.ReadFlag(kMultiPass, Reader::Load),
       .mode = file.ReadInt(kMultiPassMode, Reader::Load),
       .copies = static_cast<std::uint32_t>(file.ReadInt(kMultiPassCopies, Reader::Load)),
       .maxPassDepth = file.ReadFloat(kMaxPassDepth, Reader::Load),
       .finishPassDepth = file.ReadFloat(kFinishPassDepth, Reader::Load),
       .engraveDepth = record.tools.engraveDepth});
  record.passes.passDepths.reset();
  record.passes.passCount = plan.count;
  // A count without a table, as where there is no memory for one.
  if (plan.count > kMostPasses) return;
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
  file.TraceLoad();
  file.ReadText(kFriendlyName, record.link.friendlyName, kNameCapacity);
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
