// The settings dialog's fields that show one float of the file and are saved as typed.
#pragma once

#include "settings/schema.h"
#include "ui/resource_ids.h"

namespace k7 {

struct EngraveField {
  int control;
  const settings::FloatRow& row;
};

// In the order in which they are read and written.
inline constexpr EngraveField kEngraveFields[] = {
    {IDC_CS_CUTTER_LIFT, settings::kCutterLift},
    {IDC_CS_ENGRAVE_DEPTH, settings::kEngraveDepth},
    {IDC_CS_TRAVERSE_SPEED, settings::kTraverseSpeed},
    {IDC_CS_CUTTER_DOWN_SPEED, settings::kCutterDownSpeed},
    {IDC_CS_CUTTER_UP_SPEED, settings::kCutterUpSpeed},
    {IDC_CS_ENGRAVE_SPEED, settings::kEngraveSpeed},
    {IDC_CS_GRID_SPEED, settings::kGridSpeed},
};

}  // namespace k7
