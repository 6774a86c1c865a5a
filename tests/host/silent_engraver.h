// A device whose operations all do nothing and answer as a device without a record does: the ground
// that a recording device of the host's tests stands on.
#pragma once

#include "k7/driver.h"

namespace k7test {

class SilentEngraver : public k7::IEngraver {
 public:
  uint32_t GetInterfaceVersion() noexcept override { return 0; }
  uint32_t GetTableWidthSteps() noexcept override { return 0; }
  uint32_t GetTableHeightSteps() noexcept override { return 0; }
  void Reserved3() noexcept override {}
  bool BeginJob() noexcept override { return true; }
  void Reserved5() noexcept override {}
  uint32_t MoveTo(uint32_t, uint32_t) noexcept override { return 0; }
  uint32_t EngraveTo(uint32_t, uint32_t) noexcept override { return 0; }
  uint32_t ReturnZero8() noexcept override { return 0; }
  void EndJob() noexcept override {}
  void Reserved10() noexcept override {}
  void Reserved11() noexcept override {}
  void SetHostFlag(uint8_t) noexcept override {}
  uint8_t GetHostFlag() noexcept override { return 0; }
  bool ReturnFalse14() noexcept override { return false; }
  void Reserved15() noexcept override {}
  void Reserved16() noexcept override {}
  void Reserved17() noexcept override {}
  bool ReturnFalse18() noexcept override { return false; }
  void Reserved19() noexcept override {}
  void Reserved20() noexcept override {}
  void Reserved21() noexcept override {}
  void Reserved22() noexcept override {}
  uint32_t ReturnZero23() noexcept override { return 0; }
  void Reserved24() noexcept override {}
  bool ReturnFalse25() noexcept override { return false; }
  uint32_t ReturnOne26() noexcept override { return 1; }
  bool ReturnTrue27() noexcept override { return true; }
  void Reserved28() noexcept override {}
  void Reserved29() noexcept override {}
  void Reserved30() noexcept override {}
  void Reserved31() noexcept override {}
  uint32_t ReturnZero32() noexcept override { return 0; }
  uint32_t LowerCutter() noexcept override { return 0; }
  uint32_t LowerCutterContinue() noexcept override { return 0; }
  void Reserved35() noexcept override {}
  int32_t QueryControllerId(wchar_t*, int32_t) noexcept override { return 24; }
  int32_t GetFriendlyName(wchar_t*, int32_t) noexcept override { return 0; }
  void SetFriendlyName(const wchar_t*) noexcept override {}
  int32_t CheckAlive() noexcept override { return 0; }
  int64_t ShowSettingsDialog(k7::WindowHandle, uint32_t, uint32_t, uint64_t,
                             uint32_t) noexcept override {
    return 2;
  }
  void SetConnectNotify(k7::WindowHandle, uint32_t) noexcept override {}
  uint32_t GetTableWidth() noexcept override { return 0; }
  uint32_t GetTableHeight() noexcept override { return 0; }
  float GetXStepsPerUnit() noexcept override { return 0.0f; }
  float GetYStepsPerUnit() noexcept override { return 0.0f; }
  float GetZStepsPerInch() noexcept override { return 0.0f; }
  void EnableMotors(uint8_t) noexcept override {}
  void SetNotifyWindow(k7::WindowHandle, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t,
                       uint32_t) noexcept override {}
  void SetNotifyCallback(k7::NotifyCallback, uint64_t, uint32_t, uint32_t,
                         uint32_t) noexcept override {}
  void SyncCurrentLocation(uint32_t, uint32_t, uint8_t) noexcept override {}
  void GoToAsJob(uint32_t, uint32_t, uint8_t) noexcept override {}
  void GetCurrentPosition(int32_t*, int32_t*) noexcept override {}
  void HomeCutter() noexcept override {}
  void StartJog(uint32_t, uint32_t, uint32_t, uint32_t) noexcept override {}
  void SetPlungeHold(uint8_t) noexcept override {}
  uint32_t HomeTable() noexcept override { return 0; }
  void GetMachinePosition(int32_t*, int32_t*, int32_t*) noexcept override {}
  void GetTableHome(int32_t*, int32_t*, int32_t*) noexcept override {}
  bool FindCutterHome() noexcept override { return false; }
  void Reserved60() noexcept override {}
  void SetSpindle(uint32_t) noexcept override {}
  void ReadSwitches(uint8_t*, uint8_t*, uint8_t*, uint8_t*) noexcept override {}
  bool StartSpindleRamp(int32_t, k7::WindowHandle, uint32_t, uint32_t) noexcept override {
    return false;
  }
  uint32_t GetSpindleValue() noexcept override { return 0; }
  float GetScissors() noexcept override { return -10.0f; }
  uint8_t GetEngraveByColor() noexcept override { return 0; }
  uint8_t HasSpindle() noexcept override { return 0; }
  void SetColorTableIndex(uint32_t) noexcept override {}
  uint32_t GetColorTableIndex() noexcept override { return 0; }
  uint64_t EnsureTableHome(k7::WindowHandle) noexcept override { return 0; }
  uint32_t HasBeadInsertTool() noexcept override { return 0; }
  int32_t GetBeadToolOffsetX() noexcept override { return 0; }
  int32_t GetBeadToolOffsetY() noexcept override { return 0; }
  uint32_t SetBeadToolOffset(uint32_t, uint32_t) noexcept override { return 0; }
  uint32_t MoveBeadToolTo(uint32_t, uint32_t) noexcept override { return 0; }
  void AttachLink(k7::LinkHandle, uint32_t, const wchar_t*) noexcept override {}
  uint8_t IsConnected() noexcept override { return 0; }
  void ResetControllerId() noexcept override {}
  void SendLine(const char*) noexcept override {}
  void LoadSettings() noexcept override {}
  uint32_t GetSettingsFilePath(wchar_t*, int32_t) noexcept override { return 0; }
  int64_t GetCameraId(wchar_t*, int32_t) noexcept override { return 0; }
  void SetCameraId(const wchar_t*) noexcept override {}
  uint32_t ReturnOne84() noexcept override { return 1; }
  uint32_t GetPassCount() noexcept override { return 1; }
  uint32_t StartPass(uint32_t, uint32_t, uint32_t, wchar_t*, int32_t) noexcept override {
    return 0;
  }
  uint32_t IsDiodePointerFitted() noexcept override { return 0; }
  int32_t GetDiodeOffsetX() noexcept override { return 0; }
  int32_t GetDiodeOffsetY() noexcept override { return 0; }
  uint32_t SetDiodeOffset(uint32_t, uint32_t) noexcept override { return 0; }
  uint32_t MoveDiodeTo(uint32_t, uint32_t) noexcept override { return 0; }
  uint32_t GetMaterialLibraryFolder(wchar_t*, int32_t) noexcept override { return 0; }
  uint32_t GetTempHomeLibraryFolder(wchar_t*, int32_t) noexcept override { return 0; }
  uint32_t GetCurrentPass() noexcept override { return 0; }
  uint32_t GetRoundMode() noexcept override { return 0; }
  void SetRoundMode(uint32_t) noexcept override {}
  void SetGridMode(uint32_t) noexcept override {}
  uint32_t GetGridMode() noexcept override { return 0; }
  uint32_t ReturnZero99() noexcept override { return 0; }
  uint32_t ReturnZero100() noexcept override { return 0; }
  uint32_t ReturnZero101() noexcept override { return 0; }
  uint32_t ReturnZero102() noexcept override { return 0; }
  uint32_t ReturnZero103() noexcept override { return 0; }
  uint32_t ReturnZero104() noexcept override { return 0; }
  void Reserved105() noexcept override {}
  bool ReturnTrue106() noexcept override { return true; }
  void Reserved107() noexcept override {}
  bool ReturnFalse108() noexcept override { return false; }
  void Reserved109() noexcept override {}
  bool ReturnTrue110() noexcept override { return true; }
  void Reserved111() noexcept override {}
  uint64_t GetRecordReserved() noexcept override { return 0; }
  void Reserved113() noexcept override {}
  int32_t IsRoundModeActive() noexcept override { return 0; }
  void SetHostText(const wchar_t*) noexcept override {}
  int32_t GetHostText(wchar_t*, int32_t) noexcept override { return 0; }
  uint32_t TravelTo(uint32_t, uint32_t) noexcept override { return 0; }
  int32_t IsAirZ() noexcept override { return 0; }
  uint32_t EstimateJobTime(const uint32_t*, uint32_t) noexcept override { return 0; }
  void SetReaderAlive(uint8_t) noexcept override {}
  uint8_t GetReaderAlive() noexcept override { return 0; }
  uint32_t GetLinkType() noexcept override { return 0; }
  int32_t GetPortName(wchar_t*, int32_t) noexcept override { return 0; }
  k7::LinkHandle GetLinkHandle() noexcept override { return nullptr; }
  void* DeleteSelf(uint32_t) noexcept override { return this; }
};

}  // namespace k7test
