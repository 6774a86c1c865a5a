// The commands of a plotter file, by subject.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "drawing/hpgl/plotter.h"

namespace k7host {

struct HpglCommand {
  std::string_view name;
  // Reads what stands behind the name and does it; false: a fault, which is noted.
  bool (*carryOut)(HpglPlotter& plotter);
};

// Pens, pages and straight lines: IN DF SP PU PD PA PR PE, PG EC AF AH. [any]
std::span<const HpglCommand> HpglMoveCommands();
// Scaling and rotation: IP SC RO. [any]
std::span<const HpglCommand> HpglScaleCommands();
// Arcs and outlines: AA AR CI EW EA ER RA RR. [any]
std::span<const HpglCommand> HpglFigureCommands();
// Lettering: LB DT SI DI. [any]
std::span<const HpglCommand> HpglLabelCommands();

// Of a command that does not move the pen why it is passed over; none for every other. [any]
std::optional<std::string_view> WhyHpglPassesOver(std::string_view name);

// Passes over what stands behind an escape character: "ESC." and a letter, some of which take
// numbers up to a colon; "ESC%" and other printer commands up to a capital letter; "ESC E"; PJL
// lines behind "ESC%-12345X". False: anything else, which is a fault. [any]
bool ReadHpglEscape(HpglPlotter& plotter);

}  // namespace k7host
