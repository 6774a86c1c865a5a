// The faults at work: what they make of each line, of each reply, and at their times.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "common/clock.h"
#include "faults/fault_script.h"

namespace k7sim {

// A reply on its way to the host, or a part of one.
struct OutputPiece {
  std::string text;
  TimeUs delayUs = 0;      // from now
  bool overtaken = false;  // replies that come meanwhile leave first; false: they wait
};

// What a fault does at once. The owner carries it out.
struct FaultEvent {
  FaultAction action = FaultAction::Inject;
  std::string text;
  TimeUs durationUs = 0;
  double bytesPerSecond = 0;
};

// What becomes of a line on its way to the board.
struct LineFate {
  bool lost = false;
  bool garbled = false;
};

class Faults {
 public:
  void Add(const Fault& fault);

  // A line has arrived. The result is what to carry out before the board takes it, as `fate` says.
  std::vector<FaultEvent> OnLine(std::uint64_t lineId, std::string_view line, TimeUs nowUs,
                                 LineFate& fate);

  // A reply is about to leave. The result is what leaves in its place. What is to be carried out
  // after it is appended to `events`.
  std::vector<OutputPiece> OnReply(std::uint64_t lineId, std::string_view reply, TimeUs nowUs,
                                   std::vector<FaultEvent>& events);

  // What is to be carried out because its time has come.
  std::vector<FaultEvent> OnTime(TimeUs nowUs);
  // When the next such time comes; kNever when none does.
  TimeUs NextTime() const;

  struct Outcome {
    std::string source;
    std::uint64_t fired = 0;
  };
  std::vector<Outcome> Outcomes() const;
  bool AllFired() const;

 private:
  struct State {
    Fault fault;
    std::uint64_t seen = 0;   // occurrences of the trigger
    std::uint64_t fired = 0;  // times it has done something
    std::minstd_rand random;  // the same bytes for the same seed, with every compiler
  };

  bool Counts(State& state);
  void Apply(State& state, std::vector<OutputPiece>& pieces);
  void ApplyArmed(std::uint64_t lineId, std::vector<OutputPiece>& pieces);

  std::vector<State> states_;
  // By line: the faults that act on its replies, as indexes into `states_`.
  std::map<std::uint64_t, std::vector<std::size_t>> armed_;
};

// The line with one bit wrong, in its middle. It stays a line.
std::string Garbled(std::string line);

}  // namespace k7sim
