// The switchboard: the device object that the host holds, with its 126 operations.
#pragma once

#include <cstdint>
#include <memory>

#include "device/device_state.h"
#include "k7/driver.h"

namespace k7 {

// The object is two words, the pointer to the operation table and the pointer to the record,
// because hosts may look at them. What a slot does, its units and its value without a record stand
// in k7/surface.h and k7/engraver.h; the function that does the work stands in the folder of its
// subject (docs/operations.md). The order of the slots is the interface: never insert, remove or
// move one.
class Smoothieboard final : public IEngraver {
 public:
  // A device with a fresh record and no link; nothing is sent. Null when memory is short. Ends with
  // DeleteSelf(1). [host]
  static Smoothieboard* Create() noexcept;

  // A device on `record`, which it owns; null makes one without a record, all of whose operations
  // return their neutral values. [host]
  explicit Smoothieboard(std::unique_ptr<DeviceState> record) noexcept;

  // Ends a jog or ramp, detaches a link that is still attached (the link itself stays open) and
  // keeps the position in the settings file. Without a record: nothing. [host]
  ~Smoothieboard();

  Smoothieboard(const Smoothieboard&) = delete;
  Smoothieboard& operator=(const Smoothieboard&) = delete;

  // The state, still the object's own; null without a record. [any]
  DeviceState* Record() noexcept { return record_.get(); }

  std::uint32_t GetInterfaceVersion() noexcept override;
  std::uint32_t GetTableWidthSteps() noexcept override;
  std::uint32_t GetTableHeightSteps() noexcept override;
  void Reserved3() noexcept override { DoNothing(); }
  bool BeginJob() noexcept override;
  void Reserved5() noexcept override { DoNothing(); }
  std::uint32_t MoveTo(std::uint32_t xSteps, std::uint32_t ySteps) noexcept override;
  std::uint32_t EngraveTo(std::uint32_t xSteps, std::uint32_t ySteps) noexcept override;
  std::uint32_t ReturnZero8() noexcept override { return Zero(); }
  void EndJob() noexcept override;
  void Reserved10() noexcept override { DoNothing(); }
  void Reserved11() noexcept override { DoNothing(); }
  void SetHostFlag(std::uint8_t flag) noexcept override;
  std::uint8_t GetHostFlag() noexcept override;
  bool ReturnFalse14() noexcept override { return False(); }
  void Reserved15() noexcept override { DoNothing(); }
  void Reserved16() noexcept override { DoNothing(); }
  void Reserved17() noexcept override { DoNothing(); }
  bool ReturnFalse18() noexcept override { return False(); }
  void Reserved19() noexcept override { DoNothing(); }
  void Reserved20() noexcept override { DoNothing(); }
  void Reserved21() noexcept override { DoNothing(); }
  void Reserved22() noexcept override { DoNothing(); }
  std::uint32_t ReturnZero23() noexcept override { return Zero(); }
  void Reserved24() noexcept override { DoNothing(); }
  bool ReturnFalse25() noexcept override { return False(); }
  std::uint32_t ReturnOne26() noexcept override { return One(); }
  bool ReturnTrue27() noexcept override { return One() == 1; }
  void Reserved28() noexcept override { DoNothing(); }
  void Reserved29() noexcept override { DoNothing(); }
  void Reserved30() noexcept override { DoNothing(); }
  void Reserved31() noexcept override { DoNothing(); }
  std::uint32_t ReturnZero32() noexcept override { return Zero(); }
  std::uint32_t LowerCutter() noexcept override;
  std::uint32_t LowerCutterContinue() noexcept override;
  void Reserved35() noexcept override { DoNothing(); }
  std::int32_t QueryControllerId(wchar_t* buffer, std::int32_t size) noexcept override;
  std::int32_t GetFriendlyName(wchar_t* buffer, std::int32_t size) noexcept override;
  void SetFriendlyName(const wchar_t* name) noexcept override;
  std::int32_t CheckAlive() noexcept override;
  std::int64_t ShowSettingsDialog(WindowHandle parent, std::uint32_t mode, std::uint32_t allowRun,
                                  std::uint64_t initParam,
                                  std::uint32_t showGrid) noexcept override;
  void SetConnectNotify(WindowHandle window, std::uint32_t message) noexcept override;
  std::uint32_t GetTableWidth() noexcept override;
  std::uint32_t GetTableHeight() noexcept override;
  float GetXStepsPerUnit() noexcept override;
  float GetYStepsPerUnit() noexcept override;
  float GetZStepsPerInch() noexcept override;
  void EnableMotors(std::uint8_t on) noexcept override;
  void SetNotifyWindow(WindowHandle window, std::uint32_t msgQueued, std::uint32_t msgStarted,
                       std::uint32_t msgFinished, std::uint32_t msgPosition,
                       std::uint32_t msgSurface, std::uint32_t msgJogZ) noexcept override;
  void SetNotifyCallback(NotifyCallback callback, std::uint64_t context, std::uint32_t msgQueued,
                         std::uint32_t msgStarted, std::uint32_t msgFinished) noexcept override;
  void SyncCurrentLocation(std::uint32_t xSteps, std::uint32_t ySteps,
                           std::uint8_t flag) noexcept override;
  void GoToAsJob(std::uint32_t xSteps, std::uint32_t ySteps,
                 std::uint8_t roundFlag) noexcept override;
  void GetCurrentPosition(std::int32_t* x, std::int32_t* y) noexcept override;
  void HomeCutter() noexcept override;
  void StartJog(std::uint32_t direction, std::uint32_t speedMode, std::uint32_t key,
                std::uint32_t endMessage) noexcept override;
  void SetPlungeHold(std::uint8_t hold) noexcept override;
  std::uint32_t HomeTable() noexcept override;
  void GetMachinePosition(std::int32_t* x, std::int32_t* y, std::int32_t* round) noexcept override;
  void GetTableHome(std::int32_t* x, std::int32_t* y, std::int32_t* third) noexcept override;
  bool FindCutterHome() noexcept override;
  void Reserved60() noexcept override { DoNothing(); }
  void SetSpindle(std::uint32_t command) noexcept override;
  void ReadSwitches(std::uint8_t* x, std::uint8_t* y, std::uint8_t* z,
                    std::uint8_t* prox) noexcept override;
  bool StartSpindleRamp(std::int32_t direction, WindowHandle window, std::uint32_t message,
                        std::uint32_t key) noexcept override;
  std::uint32_t GetSpindleValue() noexcept override;
  float GetScissors() noexcept override;
  std::uint8_t GetEngraveByColor() noexcept override;
  std::uint8_t HasSpindle() noexcept override;
  void SetColorTableIndex(std::uint32_t tlsIndex) noexcept override;
  std::uint32_t GetColorTableIndex() noexcept override;
  std::uint64_t EnsureTableHome(WindowHandle window) noexcept override;
  std::uint32_t HasBeadInsertTool() noexcept override;
  std::int32_t GetBeadToolOffsetX() noexcept override;
  std::int32_t GetBeadToolOffsetY() noexcept override;
  std::uint32_t SetBeadToolOffset(std::uint32_t x, std::uint32_t y) noexcept override;
  std::uint32_t MoveBeadToolTo(std::uint32_t xSteps, std::uint32_t ySteps) noexcept override;
  void AttachLink(LinkHandle link, std::uint32_t linkType,
                  const wchar_t* portName) noexcept override;
  std::uint8_t IsConnected() noexcept override;
  void ResetControllerId() noexcept override;
  void SendLine(const char* line) noexcept override;
  void LoadSettings() noexcept override;
  std::uint32_t GetSettingsFilePath(wchar_t* buffer, std::int32_t size) noexcept override;
  std::int64_t GetCameraId(wchar_t* buffer, std::int32_t size) noexcept override;
  void SetCameraId(const wchar_t* text) noexcept override;
  std::uint32_t ReturnOne84() noexcept override { return One(); }
  std::uint32_t GetPassCount() noexcept override;
  std::uint32_t StartPass(std::uint32_t pass, std::uint32_t xSteps, std::uint32_t ySteps,
                          wchar_t* status, std::int32_t size) noexcept override;
  std::uint32_t IsDiodePointerFitted() noexcept override;
  std::int32_t GetDiodeOffsetX() noexcept override;
  std::int32_t GetDiodeOffsetY() noexcept override;
  std::uint32_t SetDiodeOffset(std::uint32_t x, std::uint32_t y) noexcept override;
  std::uint32_t MoveDiodeTo(std::uint32_t xSteps, std::uint32_t ySteps) noexcept override;
  std::uint32_t GetMaterialLibraryFolder(wchar_t* buffer, std::int32_t size) noexcept override;
  std::uint32_t GetTempHomeLibraryFolder(wchar_t* buffer, std::int32_t size) noexcept override;
  std::uint32_t GetCurrentPass() noexcept override;
  std::uint32_t GetRoundMode() noexcept override;
  void SetRoundMode(std::uint32_t mode) noexcept override;
  void SetGridMode(std::uint32_t mode) noexcept override;
  std::uint32_t GetGridMode() noexcept override;
  std::uint32_t ReturnZero99() noexcept override { return Zero(); }
  std::uint32_t ReturnZero100() noexcept override { return Zero(); }
  std::uint32_t ReturnZero101() noexcept override { return Zero(); }
  std::uint32_t ReturnZero102() noexcept override { return Zero(); }
  std::uint32_t ReturnZero103() noexcept override { return Zero(); }
  std::uint32_t ReturnZero104() noexcept override { return Zero(); }
  void Reserved105() noexcept override { DoNothing(); }
  bool ReturnTrue106() noexcept override { return One() == 1; }
  void Reserved107() noexcept override { DoNothing(); }
  bool ReturnFalse108() noexcept override { return False(); }
  void Reserved109() noexcept override { DoNothing(); }
  bool ReturnTrue110() noexcept override { return One() == 1; }
  void Reserved111() noexcept override { DoNothing(); }
  std::uint64_t GetRecordReserved() noexcept override;
  void Reserved113() noexcept override { DoNothing(); }
  std::int32_t IsRoundModeActive() noexcept override;
  void SetHostText(const wchar_t* text) noexcept override;
  std::int32_t GetHostText(wchar_t* buffer, std::int32_t size) noexcept override;
  std::uint32_t TravelTo(std::uint32_t xSteps, std::uint32_t ySteps) noexcept override;
  std::int32_t IsAirZ() noexcept override;
  std::uint32_t EstimateJobTime(const std::uint32_t* triples,
                                std::uint32_t count) noexcept override;
  void SetReaderAlive(std::uint8_t alive) noexcept override;
  std::uint8_t GetReaderAlive() noexcept override;
  std::uint32_t GetLinkType() noexcept override;
  std::int32_t GetPortName(wchar_t* buffer, std::int32_t size) noexcept override;
  LinkHandle GetLinkHandle() noexcept override;
  void* DeleteSelf(std::uint32_t flags) noexcept override;

 private:
  // The bodies that the placeholder slots share.
  static void DoNothing() noexcept {}
  static std::uint32_t Zero() noexcept { return 0; }
  static bool False() noexcept { return false; }
  static std::uint32_t One() noexcept { return 1; }

  std::unique_ptr<DeviceState> record_;
};

static_assert(sizeof(Smoothieboard) == 2 * sizeof(void*));

}  // namespace k7
