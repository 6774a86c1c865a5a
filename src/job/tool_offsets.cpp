#include "job/tool_offsets.h"

#include <windows.h>

#include "base/arithmetic.h"
#include "base/bounded_copy.h"
#include "device/progress.h"
#include "job/host_helper.h"
#include "motion/axes.h"
#include "motion/strokes.h"
#include "settings/file.h"
#include "settings/schema.h"

namespace k7 {

namespace {

// One accessory: the question to the user, and where its offset is kept.
struct Accessory {
  const wchar_t* question;
  const wchar_t* caption;
  const settings::IntRow& rowX;
  const settings::IntRow& rowY;
  std::int32_t Tools::*offsetX;
  std::int32_t Tools::*offsetY;
};

constexpr Accessory kBeadTool = {
    L"Would you like to set your braille bead insert tool offset?\n\nX: ",
    L"Braille Bead Insert Tool",
    settings::kBeadToolOffsetX,
    settings::kBeadToolOffsetY,
    &Tools::beadToolOffsetX,
    &Tools::beadToolOffsetY,
};

constexpr Accessory kDiodePointerTool = {
    L"Would you like to set your Diode Pointer offset?\n\nX: ",
    L"Diode Pointer",
    settings::kDiodeOffsetX,
    settings::kDiodeOffsetY,
    &Tools::diodeOffsetX,
    &Tools::diodeOffsetY,
};

// From the cutter to `point`, both in thousandths of an inch from the table home.
std::int32_t OffsetTo(const Mechanics& mechanics, const Positions& position, Axis axis,
                      std::uint32_t point) {
  const std::int32_t thousandSteps =
      WrapMultiply(WrapSubtract(position.last[axis], position.tableHome[axis]), 1000);
  const std::int32_t cutter =
      RoundToSteps(static_cast<float>(thousandSteps) / StepsPerInch(mechanics, axis));
  return WrapSubtract(static_cast<std::int32_t>(point), cutter);
}

bool UserAccepts(const NotifyState& notify, const Accessory& accessory, const HostHelper& helper,
                 std::int32_t offsetX, std::int32_t offsetY) {
  wchar_t question[1024] = L"";
  AppendText(question, accessory.question);
  AppendText(question, helper.FormatLength(offsetX).text);
  AppendText(question, L"\nY: ");
  AppendText(question, helper.FormatLength(offsetY).text);
  const TracedStandstill traced{awaited::kUser};
  return MessageBoxW(static_cast<HWND>(notify.ownerWindow.Get()), question, accessory.caption,
                     MB_YESNO) == IDYES;
}

std::uint32_t AskForOffset(DeviceState& record, const Accessory& accessory, std::uint32_t x,
                           std::uint32_t y) {
  if (record.link.connected != 1 || JobOpen(record.job) != 0) return 0;
  const HostHelper helper;
  if (!helper) return 0;
  const std::int32_t offsetX = OffsetTo(record.mechanics, record.position, Axis::X, x);
  const std::int32_t offsetY = OffsetTo(record.mechanics, record.position, Axis::Y, y);
  if (!UserAccepts(record.notify, accessory, helper, offsetX, offsetY)) return 0;
  const SettingsFile file{record.link};
  file.WriteInt(accessory.rowX, offsetX);
  file.WriteInt(accessory.rowY, offsetY);
  record.tools.*accessory.offsetX = offsetX;
  record.tools.*accessory.offsetY = offsetY;
  return 1;
}

std::uint32_t MoveAccessoryTo(DeviceState& record, const Accessory& accessory, std::uint32_t hostX,
                              std::uint32_t hostY) {
  const auto steps = [&](Axis axis, std::int32_t thousandths) {
    return static_cast<std::uint32_t>(RoundToSteps(HostStepsPerInch(record.mechanics, axis) *
                                                   static_cast<float>(thousandths) / 1000.0f));
  };
  return MoveTo(record, hostX - steps(Axis::X, record.tools.*accessory.offsetX),
                hostY - steps(Axis::Y, record.tools.*accessory.offsetY));
}

}  // namespace

std::uint32_t ProposeBeadToolOffset(DeviceState& record, std::uint32_t x,
                                    std::uint32_t y) noexcept {
  return AskForOffset(record, kBeadTool, x, y);
}
std::uint32_t ProposeDiodeOffset(DeviceState& record, std::uint32_t x, std::uint32_t y) noexcept {
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
