#include "machine/mechanics.h"

#include <algorithm>
#include <map>

namespace k7sim {
namespace {

// The rounding of decimal numbers must not open a switch; this is far less than one motor step.
constexpr double kTouchMm = 1e-4;
// A host's rounding may take a move slightly beyond the end of an axis; that is no mistake.
constexpr double kTravelSlackMm = 0.01;

std::size_t LinearMotor(std::size_t axis) {
  return axis + 1;
}

}  // namespace

Mechanics::Mechanics(const TableGeometry& geometry, const Surface& surface)
    : geometry_(geometry), surface_(surface) {
  surface_.SetExtent(geometry.size[0], geometry.size[1]);
}

void Mechanics::PlaceHead(const Vec3& inches) {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    motorMm_[LinearMotor(axis)] = MmFromInches(inches[axis]);
  }
}

void Mechanics::DriveTo(const Vec3& logical) {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    motorMm_[static_cast<std::size_t>(motorOf_[axis])] += logical[axis] - logical_[axis];
  }
  logical_ = logical;
}

void Mechanics::MapAxis(std::size_t axis, int motor) {
  if ((motor >= 1 && motor <= 3) || motor == kRoundMotor) motorOf_[axis] = motor;
}

double Mechanics::LinearMm(std::size_t axis, const Vec3& logical) const {
  double mm = motorMm_[LinearMotor(axis)];
  for (std::size_t letter = 0; letter < 3; ++letter) {
    if (motorOf_[letter] == static_cast<int>(LinearMotor(axis))) {
      mm += logical[letter] - logical_[letter];
    }
  }
  return mm;
}

ToolPlace Mechanics::PlaceAt(const Vec3& logical) const {
  // What is cut on the round fixture is drawn unrolled: the turning takes the place of the axis.
  const auto along = [&](std::size_t axis, double home) {
    if (!IsRound(axis)) return InchesFromMm(LinearMm(axis, logical)) - home;
    return InchesFromMm(motorMm_[kRoundMotor] + logical[axis] - logical_[axis]);
  };
  return {along(0, geometry_.homeX), along(1, geometry_.homeY), InchesFromMm(LinearMm(2, logical))};
}

bool Mechanics::IsBeyondTravel(std::size_t axis, const Vec3& logical) const {
  if (IsRound(axis)) return false;
  const double mm = LinearMm(axis, logical);
  return mm < -kTravelSlackMm || mm > MmFromInches(geometry_.travel[axis]) + kTravelSlackMm;
}

bool Mechanics::SwitchClosed(std::size_t axis, const Vec3& logical) const {
  if (switches_[axis] != SwitchForce::Auto) return switches_[axis] == SwitchForce::Closed;
  return LinearMm(axis, logical) <= kTouchMm;
}

bool Mechanics::ProbeClosed(const Vec3& logical) const {
  if (probe_ != SwitchForce::Auto) return probe_ == SwitchForce::Closed;
  const ToolPlace place = PlaceAt(logical);
  const auto depth = surface_.DepthAt(place.x, place.y);
  return depth && MmFromInches(place.z) >= MmFromInches(*depth) - kTouchMm;
}

std::optional<double> Mechanics::MmToSwitch(std::size_t axis) const {
  if (switches_[axis] == SwitchForce::Open || IsRound(axis)) return std::nullopt;
  if (SwitchClosed(axis, logical_)) return 0;
  return LinearMm(axis, logical_);
}

double Mechanics::MmToBottom() const {
  return std::max(0.0, MmFromInches(geometry_.travel[2]) - LinearMm(2, logical_));
}

std::optional<double> Mechanics::MmToTouch() const {
  if (probe_ == SwitchForce::Open) return std::nullopt;
  if (ProbeClosed(logical_)) return 0;
  const ToolPlace place = PlaceAt(logical_);
  const auto depth = surface_.DepthAt(place.x, place.y);
  if (!depth || *depth > geometry_.travel[2]) return std::nullopt;
  return MmFromInches(*depth - place.z);
}

bool ForceByName(Mechanics& machine, const std::string& name, const std::string& state) {
  const std::map<std::string, SwitchForce> states = {
      {"1", SwitchForce::Closed}, {"0", SwitchForce::Open}, {"auto", SwitchForce::Auto}};
  const auto force = states.find(state);
  if (force == states.end()) return false;
  if (name == "probe") {
    machine.ForceProbe(force->second);
    return true;
  }
  constexpr std::string_view kNames = "xyz";
  if (name.size() != 1 || kNames.find(name[0]) == kNames.npos) return false;
  machine.ForceSwitch(kNames.find(name[0]), force->second);
  return true;
}

}  // namespace k7sim
