// Stroke: everything that one stroke of a drawing has done, to be compared at once.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "support/test_machine.h"

namespace k7test {

struct Stroke {
  std::uint32_t status;
  std::string sent;
  std::vector<int> tags;  // of the job so far
  std::int32_t zMoves;    // of the job so far
  std::uint32_t cutterState;
  bool operator==(const Stroke&) const = default;
};

inline void PrintTo(const Stroke& stroke, std::ostream* out) {
  *out << "status " << stroke.status << ", sent:\n" << stroke.sent << "tags";
  for (const int tag : stroke.tags) *out << ' ' << tag;
  *out << ", " << stroke.zMoves << " along Z, cutter " << stroke.cutterState;
}

// What the stroke that has just returned `status` did.
inline Stroke Made(TestMachine& machine, std::uint32_t status) {
  return {status, machine.Sent(), machine.Tags(), machine->job.zMoveCount,
          machine->tools.cutterState};
}

}  // namespace k7test
