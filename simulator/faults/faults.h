// Carries out the faults: looks at every line, every reply and the time, and says what goes wrong.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "common/clock.h"
#include "faults/fault_script.h"

namespace k7sim {

// A piece of a reply on its way out.
struct OutputPiece {
  std::string text;
  TimeUs delayUs = 0;      // from now
  bool overtaken = false;  // what comes meanwhile goes first; else it waits behind
};

// What a fault does on the spot; the owner carries it out in order.
struct FaultEvent {
  FaultAction action = FaultAction::Inject;
  std::string text;
  TimeUs durationUs = 0;
};

class Faults {
 public:
  void Add(const Fault& fault) { states_.push_back({fault, 0, 0}); }

  // A line has arrived. Events to carry out before it is handled; `ignore` when it is to be lost.
  std::vector<FaultEvent> OnLine(std::uint64_t lineId, std::string_view line, TimeUs nowUs,
                                 bool& ignore);

  // A reply is about to go. What goes instead; events that the reply sets off come back in
  // `events`, to be carried out after it.
  std::vector<OutputPiece> OnReply(std::uint64_t lineId, std::string_view reply, TimeUs nowUs,
                                   std::vector<FaultEvent>& events);

  // Events whose time has come.
  std::vector<FaultEvent> OnTime(TimeUs nowUs);
  // When the next is due; kNever when none is.
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
    std::uint64_t fired = 0;  // times it did something
  };

  bool Counts(State& state);
  void Apply(State& state, std::vector<OutputPiece>& pieces);
  void ApplyArmed(std::uint64_t lineId, std::vector<OutputPiece>& pieces);

  std::vector<State> states_;
  std::map<std::uint64_t, std::vector<std::size_t>> armed_;  // line id: faults on its replies
};

}  // namespace k7sim
