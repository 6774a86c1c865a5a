#include "job/planner_model.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace k7::planner {

namespace {

constexpr float kStraight = 0.999999f;  // cosine above which two directions count as one

}  // namespace

float CornerSpeed(float cosine) noexcept {
  if (cosine > kStraight) return std::numeric_limits<float>::infinity();
  if (cosine < -kStraight) return 0.0f;
  // The planner rounds the corner by an arc that stays within the junction deviation, and limits
  // the speed by the centripetal acceleration on that arc.
  const float sineHalf = std::sqrt((1.0f + cosine) / 2.0f);
  return std::sqrt(kAccelerationInches * kJunctionDeviationInches * sineHalf / (1.0f - sineHalf));
}

float Reachable(float entry, float inches) noexcept {
  return std::sqrt(entry * entry + 2.0f * kAccelerationInches * inches);
}

float PieceSeconds(float inches, float entry, float top, float exit) noexcept {
  if (!(top > 0.0f)) return 0.0f;
  const float twice = 2.0f * kAccelerationInches;
  const float ramps = (2.0f * top * top - entry * entry - exit * exit) / twice;
  float peak = top;
  float cruise = inches - ramps;
  if (cruise < 0.0f) {
    // Too short for the top speed: the ramps meet below it.
    cruise = 0.0f;
    peak = std::sqrt((twice * inches + entry * entry + exit * exit) / 2.0f);
    peak = std::max({peak, entry, exit});
  }
  return (2.0f * peak - entry - exit) / kAccelerationInches + cruise / peak;
}

}  // namespace k7::planner
