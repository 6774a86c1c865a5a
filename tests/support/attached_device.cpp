#include "support/attached_device.h"

#include "device/bounded_copy.h"

namespace k7test {

void GiveDefaults(k7::DeviceState& record) {
  record.motorStepsX = record.motorStepsY = record.motorStepsZ = record.motorStepsRound = 200;
  record.microStepsX = record.microStepsY = record.microStepsZ = record.microStepsRound = 10;
  record.screwPitchX = record.screwPitchY = record.screwPitchZ = 0.5f;
  record.roundGearRatio = 20.0f;
  record.stepsPerMmX = record.stepsPerMmY = record.stepsPerMmZ = 4000.0f / 25.4f;
  record.tableWidth = 25000;
  record.tableHeight = 16000;
  record.tableDepth = 2000;
  record.jogFast = 5000;
  record.jogSlow = 250;
  record.cutterLift = 0.125f;
  record.engraveDepth = record.passDepth = 0.0625f;
  record.traverseSpeed = record.cutterDownSpeed = record.cutterUpSpeed = 1.0f;
  record.engraveSpeed = record.gridSpeed = 1.0f;
  record.cutterHome = 4000;
  record.tableSurface = 8000;
  record.passCount = 1;
  record.passDepths.reset(new float[1]{0.0625f});
  record.spindleMaxRpm = 13000;
  record.spindleRpm = 13000;
}

}  // namespace k7test
