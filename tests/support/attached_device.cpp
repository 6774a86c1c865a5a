#include "support/attached_device.h"

#include "base/bounded_copy.h"

namespace k7test {

void GiveDefaults(k7::DeviceState& record) {
  record.mechanics.axis.x.motorSteps = record.mechanics.axis.y.motorSteps =
      record.mechanics.axis.z.motorSteps = record.mechanics.motorStepsRound = 200;
  record.mechanics.axis.x.microSteps = record.mechanics.axis.y.microSteps =
      record.mechanics.axis.z.microSteps = record.mechanics.microStepsRound = 10;
  record.mechanics.axis.x.screwPitch = record.mechanics.axis.y.screwPitch =
      record.mechanics.axis.z.screwPitch = 0.5f;
  record.mechanics.roundGearRatio = 20.0f;
  record.position.stepsPerMm.x = record.position.stepsPerMm.y = record.position.stepsPerMm.z =
      4000.0f / 25.4f;
  record.mechanics.tableWidth = 25000;
  record.mechanics.tableHeight = 16000;
  record.mechanics.tableDepth = 2000;
  record.jog.jogFast = 5000;
  record.jog.jogSlow = 250;
  record.tools.cutterLift = 0.125f;
  record.tools.engraveDepth = record.passes.passDepth = 0.0625f;
  record.tools.traverseSpeed = record.tools.cutterDownSpeed = record.tools.cutterUpSpeed = 1.0f;
  record.tools.engraveSpeed = record.tools.gridSpeed = 1.0f;
  record.position.cutterHome = 4000;
  record.position.tableSurface = 8000;
  record.passes.passCount = 1;
  record.passes.passDepths.reset(new float[1]{0.0625f});
  record.spindle.spindleMaxRpm = 13000;
  record.spindle.spindleRpm = 13000;
}

}  // namespace k7test
