// The switchboard. A slot tests the record and then makes one call, or reads or writes one field of
// the record; the decisions are made in the functions that it calls. tests/lint/operations.py holds
// the slots to that form.
#include "module/smoothieboard.h"

#include <new>
#include <utility>

#include "job/go_to.h"
#include "job/job.h"
#include "job/jog.h"
#include "job/passes.h"
#include "job/time_estimate.h"
#include "job/tool_offsets.h"
#include "job/travel.h"
#include "link/link.h"
#include "motion/axes.h"
#include "motion/cutter.h"
#include "motion/cutter_mode.h"
#include "motion/homing.h"
#include "motion/move.h"
#include "motion/position.h"
#include "motion/round_fixture.h"
#include "motion/spindle.h"
#include "motion/spindle_ramp.h"
#include "motion/strokes.h"
#include "session/attachment.h"
#include "session/host_values.h"
#include "session/identity.h"
#include "session/library_folders.h"
#include "session/load.h"
#include "settings/camera_id.h"
#include "settings/paths.h"
#include "ui/settings/settings_dialog.h"
#include "ui/table_home.h"

namespace k7 {

Smoothieboard* Smoothieboard::Create() noexcept {
  std::unique_ptr<DeviceState> record{new (std::nothrow) DeviceState};
  if (record == nullptr) return nullptr;
  return new (std::nothrow) Smoothieboard{std::move(record)};
}

Smoothieboard::Smoothieboard(std::unique_ptr<DeviceState> record) noexcept
    : record_(std::move(record)) {}

Smoothieboard::~Smoothieboard() {
  if (record_) EndSession(*record_);
}

void* Smoothieboard::DeleteSelf(std::uint32_t flags) noexcept {
  void* const self = this;
  if ((flags & 1) != 0) {
    delete this;
  } else {
    this->~Smoothieboard();
  }
  return self;
}

std::uint32_t Smoothieboard::GetInterfaceVersion() noexcept {
  return record_ ? record_->host.interfaceVersion : 0;
}

std::uint32_t Smoothieboard::GetTableWidthSteps() noexcept {
  return record_ ? TableWidthSteps(record_->mechanics) : 0;
}

std::uint32_t Smoothieboard::GetTableHeightSteps() noexcept {
  return record_ ? TableHeightSteps(record_->mechanics) : 0;
}

bool Smoothieboard::BeginJob() noexcept {
  return record_ ? k7::BeginJob(*record_) : true;
}

std::uint32_t Smoothieboard::MoveTo(std::uint32_t xSteps, std::uint32_t ySteps) noexcept {
  return record_ ? k7::MoveTo(*record_, xSteps, ySteps) : 0;
}

std::uint32_t Smoothieboard::EngraveTo(std::uint32_t xSteps, std::uint32_t ySteps) noexcept {
  return record_ ? k7::EngraveTo(*record_, xSteps, ySteps) : 0;
}

void Smoothieboard::EndJob() noexcept {
  if (record_) k7::EndJob(*record_);
}

void Smoothieboard::SetHostFlag(std::uint8_t flag) noexcept {
  if (record_) record_->host.hostFlag = flag;
}

std::uint8_t Smoothieboard::GetHostFlag() noexcept {
  return record_ ? record_->host.hostFlag : std::uint8_t{0};
}

std::uint32_t Smoothieboard::LowerCutter() noexcept {
  return record_ ? k7::LowerCutter(*record_) : 0;
}

std::uint32_t Smoothieboard::LowerCutterContinue() noexcept {
  return record_ ? k7::LowerCutterContinue(*record_) : 0;
}

std::int32_t Smoothieboard::QueryControllerId(wchar_t* buffer, std::int32_t size) noexcept {
  return record_ ? SettleIdentity(*record_, buffer, size) : kIdCapacity;
}

std::int32_t Smoothieboard::GetFriendlyName(wchar_t* buffer, std::int32_t size) noexcept {
  return record_ ? CopyFriendlyName(record_->link, buffer, size) : size;
}

void Smoothieboard::SetFriendlyName(const wchar_t* name) noexcept {
  if (record_) RenameController(record_->link, name);
}

std::int32_t Smoothieboard::CheckAlive() noexcept {
  return record_ ? k7::CheckAlive(record_->link) : 0;
}

std::int64_t Smoothieboard::ShowSettingsDialog(WindowHandle parent, std::uint32_t mode,
                                               std::uint32_t allowRun, std::uint64_t initParam,
                                               std::uint32_t showGrid) noexcept {
  return record_ ? k7::ShowSettingsDialog(*record_, parent, mode, allowRun, initParam, showGrid)
                 : kSettingsCancelled;
}

void Smoothieboard::SetConnectNotify(WindowHandle window, std::uint32_t message) noexcept {
  if (record_) NotifyOfConnection(record_->notify, window, message);
}

std::uint32_t Smoothieboard::GetTableWidth() noexcept {
  return record_ ? static_cast<std::uint32_t>(record_->mechanics.tableWidth) : 0;
}

std::uint32_t Smoothieboard::GetTableHeight() noexcept {
  return record_ ? static_cast<std::uint32_t>(record_->mechanics.tableHeight) : 0;
}

float Smoothieboard::GetXStepsPerUnit() noexcept {
  return record_ ? HostStepsPerInch(record_->mechanics, Axis::X) : 0.0f;
}

float Smoothieboard::GetYStepsPerUnit() noexcept {
  return record_ ? HostStepsPerInch(record_->mechanics, Axis::Y) : 0.0f;
}

float Smoothieboard::GetZStepsPerInch() noexcept {
  return record_ ? StepsPerInch(record_->mechanics, Axis::Z) : 0.0f;
}

void Smoothieboard::EnableMotors(std::uint8_t on) noexcept {
  if (record_) SetMotorPower(record_->link, on);
}

void Smoothieboard::SetNotifyWindow(WindowHandle window, std::uint32_t msgQueued,
                                    std::uint32_t msgStarted, std::uint32_t msgFinished,
                                    std::uint32_t msgPosition, std::uint32_t msgSurface,
                                    std::uint32_t msgJogZ) noexcept {
  if (record_)
    NotifyByWindow(record_->notify, window,
                   {msgQueued, msgStarted, msgFinished, msgPosition, msgSurface, msgJogZ});
}

void Smoothieboard::SetNotifyCallback(NotifyCallback callback, std::uint64_t context,
                                      std::uint32_t msgQueued, std::uint32_t msgStarted,
                                      std::uint32_t msgFinished) noexcept {
  if (record_)
    NotifyByCallback(record_->notify, callback, {context, msgQueued, msgStarted, msgFinished});
}

void Smoothieboard::SyncCurrentLocation(std::uint32_t xSteps, std::uint32_t ySteps,
                                        std::uint8_t) noexcept {
  if (record_) GoTo(*record_, xSteps, ySteps);
}

void Smoothieboard::GoToAsJob(std::uint32_t xSteps, std::uint32_t ySteps,
                              std::uint8_t roundFlag) noexcept {
  if (record_) k7::GoToAsJob(*record_, xSteps, ySteps, roundFlag);
}

void Smoothieboard::GetCurrentPosition(std::int32_t* x, std::int32_t* y) noexcept {
  if (record_) ReportPosition(*record_, x, y);
}

void Smoothieboard::HomeCutter() noexcept {
  if (record_) ReportSurface(record_->notify, record_->position);
}

void Smoothieboard::StartJog(std::uint32_t direction, std::uint32_t speedMode, std::uint32_t key,
                             std::uint32_t endMessage) noexcept {
  if (record_) k7::StartJog(*record_, direction, speedMode, key, endMessage);
}

void Smoothieboard::SetPlungeHold(std::uint8_t hold) noexcept {
  if (record_) DrainAndSetHold(record_->job, record_->link, hold);
}

std::uint32_t Smoothieboard::HomeTable() noexcept {
  if (record_) HomeToSwitches(*record_);
  return 0;
}

void Smoothieboard::GetMachinePosition(std::int32_t* x, std::int32_t* y,
                                       std::int32_t* round) noexcept {
  if (record_) GetPositionFromHome(*record_, x, y, round);
}

void Smoothieboard::GetTableHome(std::int32_t* x, std::int32_t* y, std::int32_t* third) noexcept {
  if (record_) GetDisplayPosition(record_->mechanics, record_->position, x, y, third);
}

bool Smoothieboard::FindCutterHome() noexcept {
  return record_ && SetCutterHomeHere(*record_);
}

void Smoothieboard::SetSpindle(std::uint32_t command) noexcept {
  if (record_) k7::SetSpindle(*record_, command);
}

void Smoothieboard::ReadSwitches(std::uint8_t* x, std::uint8_t* y, std::uint8_t* z,
                                 std::uint8_t* prox) noexcept {
  if (record_) QuerySwitches(*record_, x, y, z, prox);
}

bool Smoothieboard::StartSpindleRamp(std::int32_t direction, WindowHandle window,
                                     std::uint32_t message, std::uint32_t key) noexcept {
  return record_ && k7::StartSpindleRamp(*record_, direction, window, message, key);
}

std::uint32_t Smoothieboard::GetSpindleValue() noexcept {
  return record_ ? CommandedRpm(record_->spindle) : 0;
}

float Smoothieboard::GetScissors() noexcept {
  return record_ ? record_->host.scissors : -10.0f;
}

std::uint8_t Smoothieboard::GetEngraveByColor() noexcept {
  return record_ ? record_->host.engraveByColor : std::uint8_t{0};
}

std::uint8_t Smoothieboard::HasSpindle() noexcept {
  return record_ ? record_->spindle.spindlePresent : std::uint8_t{0};
}

void Smoothieboard::SetColorTableIndex(std::uint32_t tlsIndex) noexcept {
  if (record_) record_->host.hostColorTlsIndex = tlsIndex;
}

std::uint32_t Smoothieboard::GetColorTableIndex() noexcept {
  return record_ ? record_->host.hostColorTlsIndex : 0;
}

std::uint64_t Smoothieboard::EnsureTableHome(WindowHandle window) noexcept {
  return record_ ? k7::EnsureTableHome(*record_, window) : 0;
}

std::uint32_t Smoothieboard::HasBeadInsertTool() noexcept {
  return record_ ? record_->tools.beadInsertTool : 0;
}

std::int32_t Smoothieboard::GetBeadToolOffsetX() noexcept {
  return record_ ? record_->tools.beadToolOffsetX : 0;
}

std::int32_t Smoothieboard::GetBeadToolOffsetY() noexcept {
  return record_ ? record_->tools.beadToolOffsetY : 0;
}

std::uint32_t Smoothieboard::SetBeadToolOffset(std::uint32_t x, std::uint32_t y) noexcept {
  return record_ ? ProposeBeadToolOffset(*record_, x, y) : 0;
}

std::uint32_t Smoothieboard::MoveBeadToolTo(std::uint32_t xSteps, std::uint32_t ySteps) noexcept {
  return record_ ? k7::MoveBeadToolTo(*record_, xSteps, ySteps) : 0;
}

void Smoothieboard::AttachLink(LinkHandle link, std::uint32_t linkType,
                               const wchar_t* portName) noexcept {
  if (record_) ExchangeLink(*record_, link, linkType, portName);
}

std::uint8_t Smoothieboard::IsConnected() noexcept {
  return record_ ? record_->link.connected.Get() : std::uint8_t{0};
}

void Smoothieboard::ResetControllerId() noexcept {
  if (record_) ForgetIdentity(record_->link);
}

void Smoothieboard::SendLine(const char* line) noexcept {
  if (record_) k7::SendLine(record_->link, line);
}

void Smoothieboard::LoadSettings() noexcept {
  if (record_) k7::LoadSettings(*record_);
}

std::uint32_t Smoothieboard::GetSettingsFilePath(wchar_t* buffer, std::int32_t size) noexcept {
  return record_ ? k7::GetSettingsFilePath(record_->link, buffer, size) : 0;
}

std::int64_t Smoothieboard::GetCameraId(wchar_t* buffer, std::int32_t size) noexcept {
  return record_ ? k7::GetCameraId(record_->host, buffer, size) : 0;
}

void Smoothieboard::SetCameraId(const wchar_t* text) noexcept {
  if (record_) k7::SetCameraId(*record_, text);
}

std::uint32_t Smoothieboard::GetPassCount() noexcept {
  return record_ ? record_->passes.passCount : 1;
}

std::uint32_t Smoothieboard::StartPass(std::uint32_t pass, std::uint32_t xSteps,
                                       std::uint32_t ySteps, wchar_t* status,
                                       std::int32_t size) noexcept {
  return record_ ? k7::StartPass(*record_, pass, xSteps, ySteps, status, size) : 0;
}

std::uint32_t Smoothieboard::IsDiodePointerFitted() noexcept {
  return record_ ? record_->tools.diodePointer : 0;
}

std::int32_t Smoothieboard::GetDiodeOffsetX() noexcept {
  return record_ ? record_->tools.diodeOffsetX : 0;
}

std::int32_t Smoothieboard::GetDiodeOffsetY() noexcept {
  return record_ ? record_->tools.diodeOffsetY : 0;
}

std::uint32_t Smoothieboard::SetDiodeOffset(std::uint32_t x, std::uint32_t y) noexcept {
  return record_ ? ProposeDiodeOffset(*record_, x, y) : 0;
}

std::uint32_t Smoothieboard::MoveDiodeTo(std::uint32_t xSteps, std::uint32_t ySteps) noexcept {
  return record_ ? k7::MoveDiodeTo(*record_, xSteps, ySteps) : 0;
}

std::uint32_t Smoothieboard::GetMaterialLibraryFolder(wchar_t* buffer, std::int32_t size) noexcept {
  return record_ ? k7::GetMaterialLibraryFolder(*record_, buffer, size) : 0;
}

std::uint32_t Smoothieboard::GetTempHomeLibraryFolder(wchar_t* buffer, std::int32_t size) noexcept {
  return record_ ? k7::GetTempHomeLibraryFolder(*record_, buffer, size) : 0;
}

std::uint32_t Smoothieboard::GetCurrentPass() noexcept {
  return record_ ? record_->passes.currentPass : 0;
}

std::uint32_t Smoothieboard::GetRoundMode() noexcept {
  return record_ ? ConfiguredRoundMode(record_->mechanics) : kRoundOff;
}

void Smoothieboard::SetRoundMode(std::uint32_t mode) noexcept {
  if (record_) KeepRoundMode(record_->mechanics, mode);
}

void Smoothieboard::SetGridMode(std::uint32_t mode) noexcept {
  if (record_) record_->host.gridMode = mode;
}

std::uint32_t Smoothieboard::GetGridMode() noexcept {
  return record_ ? record_->host.gridMode : 0;
}

std::uint64_t Smoothieboard::GetRecordReserved() noexcept {
  return record_ ? record_->host.reservedWord : 0;
}

std::int32_t Smoothieboard::IsRoundModeActive() noexcept {
  return record_ && IsRoundFixtureActive(record_->mechanics) ? 1 : 0;
}

void Smoothieboard::SetHostText(const wchar_t* text) noexcept {
  if (record_) KeepHostText(record_->host, text);
}

std::int32_t Smoothieboard::GetHostText(wchar_t* buffer, std::int32_t size) noexcept {
  return record_ ? CopyHostText(record_->host, buffer, size) : size;
}

std::uint32_t Smoothieboard::TravelTo(std::uint32_t xSteps, std::uint32_t ySteps) noexcept {
  return record_ ? k7::TravelTo(*record_, xSteps, ySteps) : 0;
}

std::int32_t Smoothieboard::IsAirZ() noexcept {
  return record_ && HasPneumaticHead(record_->tools) ? 1 : 0;
}

std::uint32_t Smoothieboard::EstimateJobTime(const std::uint32_t* triples,
                                             std::uint32_t count) noexcept {
  return record_ ? k7::EstimateJobTime(record_->mechanics, record_->tools, triples, count) : 0;
}

void Smoothieboard::SetReaderAlive(std::uint8_t alive) noexcept {
  if (record_) record_->link.readerAlive = alive;
}

std::uint8_t Smoothieboard::GetReaderAlive() noexcept {
  return record_ ? record_->link.readerAlive.Get() : std::uint8_t{0};
}

std::uint32_t Smoothieboard::GetLinkType() noexcept {
  return record_ ? record_->link.linkType.Get() : kLinkNone;
}

std::int32_t Smoothieboard::GetPortName(wchar_t* buffer, std::int32_t size) noexcept {
  return record_ ? CopyPortName(record_->link, buffer, size) : 0;
}

LinkHandle Smoothieboard::GetLinkHandle() noexcept {
  return record_ ? record_->link.linkHandle.Get() : nullptr;
}

}  // namespace k7
