// The iron: where each motor stands, which motor an axis letter drives, switches and probe.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "machine/geometry.h"
#include "machine/surface.h"

namespace k7sim {

// All lengths in inches, measured from the switches. A plate of `size` lies at the table home.
struct TableGeometry {
  Vec3 size{25, 16, 2};
  Vec3 travel{25.5, 16.5, 2.25};  // length of each axis
  double homeX = 0;
  double homeY = 0;
};

inline constexpr int kRoundMotor = 5;

// A switch as wired, or held open or closed by hand.
enum class SwitchForce { Auto, Open, Closed };

// Where the tool is: inches over the plate from the table home, and inches below the Z switch.
struct ToolPlace {
  double x = 0;
  double y = 0;
  double z = 0;
};

class Mechanics {
 public:
  Mechanics(const TableGeometry& geometry, const Surface& surface);

  // Puts the head somewhere by hand, inches from the switches; what the controller believes of its
  // own position does not change.
  void Shove(const Vec3& inches);

  // Position in the controller's own coordinates, mm.
  const Vec3& Logical() const { return logical_; }

  // Declares the present position of an axis to be `mm`. Nothing moves.
  void Declare(std::size_t axis, double mm) { logical_[axis] = mm; }

  // Turns the motors until the controller's coordinates read `logical`.
  void DriveTo(const Vec3& logical);

  // Which motor each of X, Y, Z drives: 1, 2, 3, or 5 for the round fixture.
  void MapAxis(std::size_t axis, int motor);
  bool IsRound(std::size_t axis) const { return motorOf_[axis] == kRoundMotor; }

  // Places that would hold if the controller's coordinates read `logical`.
  ToolPlace PlaceAt(const Vec3& logical) const;
  // Linear axis position from its switch, mm, whether or not its letter drives it now.
  double LinearMm(std::size_t axis, const Vec3& logical) const;
  // Beyond either end of a linear axis.
  bool IsBeyondTravel(std::size_t axis, const Vec3& logical) const;

  bool SwitchClosed(std::size_t axis, const Vec3& logical) const;
  bool ProbeClosed(const Vec3& logical) const;

  // Way to the switch of an axis in mm, 0 when it is closed already; nothing when it would never
  // be found: held open by hand, or the letter drives the round fixture.
  std::optional<double> WayToSwitch(std::size_t axis) const;
  // Way down to the touch in mm; nothing when the end of Z comes first.
  std::optional<double> WayToTouch() const;
  // Way down to the end of Z in mm.
  double WayToBottom() const;

  void ForceSwitch(std::size_t axis, SwitchForce force) { switches_[axis] = force; }
  void ForceProbe(SwitchForce force) { probe_ = force; }

  const TableGeometry& Geometry() const { return geometry_; }
  const Surface& Work() const { return surface_; }
  void SetWork(const Surface& surface) { surface_ = surface; }

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
