// The mechanics: where each motor stands, which motor an axis letter drives, switches and probe.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "machine/geometry.h"
#include "machine/surface.h"

namespace k7sim {

// Lengths in inches, positions from the switches. The plate covers `size` from the table home on.
struct TableGeometry {
  Vec3 size{25, 16, 2};           // width and height of the plate, depth of the table
  Vec3 travel{25.5, 16.5, 2.25};  // length of each axis
  double homeX = 0;               // table home
  double homeY = 0;
};

inline constexpr int kRoundMotor = 5;  // turns the round fixture

// Auto: the switch follows the head. Open, Closed: it is held so, wherever the head is.
enum class SwitchForce { Auto, Open, Closed };

// Where the tool is, in inches: X and Y from the table home, Z below the Z switch.
struct ToolPlace {
  double x = 0;
  double y = 0;
  double z = 0;
};

class Mechanics {
 public:
  Mechanics(const TableGeometry& geometry, const Surface& surface);

  // Moves the head by hand, inches from the switches. The board does not notice: its own
  // coordinates stay as they were.
  void PlaceHead(const Vec3& inches);

  // Position in the board's own coordinates, mm.
  const Vec3& Logical() const { return logical_; }

  // Makes the board's coordinate of an axis read `mm`. Nothing moves.
  void Declare(std::size_t axis, double mm) { logical_[axis] = mm; }

  // Turns the motors until the board's coordinates read `logical`.
  void DriveTo(const Vec3& logical);

  // The axis drives this motor from now on: 1, 2, 3, or 5 for the round fixture. Other numbers are
  // ignored.
  void MapAxis(std::size_t axis, int motor);
  bool IsRound(std::size_t axis) const { return motorOf_[axis] == kRoundMotor; }

  // What holds when the board's coordinates read `logical`:
  // where the tool is,
  ToolPlace PlaceAt(const Vec3& logical) const;
  // mm of the linear axis from its switch, whether or not its letter drives it now,
  double LinearMm(std::size_t axis, const Vec3& logical) const;
  // whether the axis is beyond either of its ends; a round fixture has none,
  bool IsBeyondTravel(std::size_t axis, const Vec3& logical) const;
  // and whether a switch or the probe is closed.
  bool SwitchClosed(std::size_t axis, const Vec3& logical) const;
  bool ProbeClosed(const Vec3& logical) const;

  // Distance to the switch of an axis, 0 when it is closed already. Nothing when it would never
  // close: it is held open, or the letter drives the round fixture.
  std::optional<double> MmToSwitch(std::size_t axis) const;
  // Distance down to the touch, 0 when the probe is closed already. Nothing when the end of Z comes
  // first, no plate is below or the probe is held open.
  std::optional<double> MmToTouch() const;
  // Distance down to the end of Z.
  double MmToBottom() const;

  void ForceSwitch(std::size_t axis, SwitchForce force) { switches_[axis] = force; }
  void ForceProbe(SwitchForce force) { probe_ = force; }
  SwitchForce ForceOfSwitch(std::size_t axis) const { return switches_[axis]; }
  SwitchForce ForceOfProbe() const { return probe_; }

  const TableGeometry& Geometry() const { return geometry_; }
  const Surface& PlateSurface() const { return surface_; }
  void SetPlateSurface(const Surface& surface) { surface_ = surface; }

 private:
  TableGeometry geometry_;
  Surface surface_;
  Vec3 logical_{};
  std::array<double, kRoundMotor + 1> motorMm_{};  // by motor number, from its switch
  std::array<int, 3> motorOf_{1, 2, 3};
  std::array<SwitchForce, 3> switches_{};
  SwitchForce probe_ = SwitchForce::Auto;
};

// Forces a switch by its name (x, y, z, probe) to a state by its name (1 closed, 0 open, auto).
// False, and nothing done, when there is no such name.
bool ForceByName(Mechanics& machine, const std::string& name, const std::string& state);

}  // namespace k7sim
