#include "job/tool_offsets.h"

#include <windows.h>

#include "device/bounded_copy.h"
#include "device/polling.h"
#include "job/host_helper.h"
#include "motion/strokes.h"
#include "motion/units.h"
#include "settings/settings_file.h"
#include "settings/settings_keys.h"

namespace k7 {

namespace {

// One accessory: what the user is asked, where its offset stands.
struct Accessory {
  const wchar_t* question;
  const wchar_t* caption;
  const wchar_t* section;
  const wchar_t* keyX;
  const wchar_t* keyY;
  std::int32_t DeviceState::*offsetX;
  std::int32_t DeviceState::*offsetY;
};

constexpr Accessory kBeadTool = {
    L"Would you like to set your braille bead insert tool offset?\n\nX: ",
    L"Braille Bead Insert Tool",
    keys::kBraille,
    keys::kBeadInsertToolX,
    keys::kBeadInsertToolY,
    &DeviceState::beadToolOffsetX,
    &DeviceState::beadToolOffsetY,
};

constexpr Accessory kDiodePointerTool = {
    L"Would you like to set your Diode Pointer offset?\n\nX: ",
    L"Diode Pointer",
    keys::kDiode,
    keys::kDiodePointerX,
    keys::kDiodePointerY,
    &DeviceState::diodeOffsetX,
    &DeviceState::diodeOffsetY,
};

// From the cutter, at `last` steps, to `place`, in thousandths of an inch from the home.
std::int32_t OffsetTo(std::uint32_t place, std::int32_t last, std::int32_t home,
                      float stepsPerInch) {
  const std::int32_t thousandSteps = WrapMultiply(WrapSubtract(last, home), 1000);
  const std::int32_t cutter = RoundToSteps(static_cast<float>(thousandSteps) / stepsPerInch);
  return WrapSubtract(static_cast<std::int32_t>(place), cutter);
}

bool UserAccepts(const DeviceState& record, const Accessory& accessory, const HostHelper& helper,
                 std::int32_t offsetX, std::int32_t offsetY) {
  wchar_t question[1024] = L"";
  AppendText(question, accessory.question);
  AppendText(question, helper.FormatLength(offsetX).text);
  AppendText(question, L"\nY: ");
  AppendText(question, helper.FormatLength(offsetY).text);
  return MessageBoxW(static_cast<HWND>(record.ownerWindow.Get()), question, accessory.caption,
                     MB_YESNO) == IDYES;
}

std::uint32_t AskForOffset(DeviceState& record, const Accessory& accessory, std::uint32_t x,
                           std::uint32_t y) {
  if (record.connected != 1 || JobOpen(record) != 0) return 0;
  const HostHelper helper;
  if (!helper) return 0;
  const std::int32_t offsetX = OffsetTo(x, record.lastX, record.tableHomeX, StepsPerInchX(record));
  const std::int32_t offsetY = OffsetTo(y, record.lastY, record.tableHomeY, StepsPerInchY(record));
  if (!UserAccepts(record, accessory, helper, offsetX, offsetY)) return 0;
  const SettingsFile file{record};
  file.WriteInt(accessory.section, accessory.keyX, offsetX);
  file.WriteInt(accessory.section, accessory.keyY, offsetY);
  record.*accessory.offsetX = offsetX;
  record.*accessory.offsetY = offsetY;
  return 1;
}

std::uint32_t MoveAccessoryTo(DeviceState& record, const Accessory& accessory, std::uint32_t hostX,
                              std::uint32_t hostY) {
  const auto steps = [](float perInch, std::int32_t thousandths) {
    return static_cast<std::uint32_t>(
        RoundToSteps(perInch * static_cast<float>(thousandths) / 1000.0f));
  };
  return MoveTo(record, hostX - steps(HostStepsPerInchX(record), record.*accessory.offsetX),
                hostY - steps(HostStepsPerInchY(record), record.*accessory.offsetY));
}

}  // namespace

std::uint32_t SetBeadToolOffset(DeviceState& record, std::uint32_t x, std::uint32_t y) noexcept {
  return AskForOffset(record, kBeadTool, x, y);
}
std::uint32_t SetDiodeOffset(DeviceState& record, std::uint32_t x, std::uint32_t y) noexcept {
  return AskForOffset(record, kDiodePointerTool, x, y);
}
std::uint32_t MoveBeadToolTo(DeviceState& record, std::uint32_t hostX,
                             std::uint32_t hostY) noexcept {
  return MoveAccessoryTo(record, kBeadTool, hostX, hostY);
}
std::uint32_t MoveDiodeTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept {
  return MoveAccessoryTo(record, kDiodePointerTool, hostX, hostY);
}

}  // namespace k7
