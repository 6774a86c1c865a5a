#include "faults/faults.h"

#include <algorithm>

namespace k7sim {
namespace {

constexpr TimeUs kFragmentPauseUs = 20'000;

FaultEvent EventOf(const Fault& fault) {
  return {fault.action, fault.text, fault.durationUs, fault.bytesPerSecond};
}

// Changes the first character that is no blank or line end, so that the reply stays one line.
std::string Corrupted(std::string text) {
  const auto at = std::find_if(text.begin(), text.end(), [](char c) { return c > ' '; });
  if (at != text.end()) *at = *at == '?' ? '!' : '?';
  return text;
}

}  // namespace

std::string Garbled(std::string line) {
  if (!line.empty()) line[line.size() / 2] = static_cast<char>(line[line.size() / 2] ^ 1);
  return line;
}

void Faults::Add(const Fault& fault) {
  states_.push_back({fault, 0, 0, std::minstd_rand(static_cast<std::uint32_t>(fault.seed))});
}

// Counts an occurrence of the trigger. True when the fault acts on it.
bool Faults::Counts(State& state) {
  ++state.seen;
  const Fault& fault = state.fault;
  return state.seen >= fault.nth && (fault.count == 0 || state.seen - fault.nth < fault.count);
}

std::vector<FaultEvent> Faults::OnLine(std::uint64_t lineId, std::string_view line, TimeUs nowUs,
                                       LineFate& fate) {
  std::vector<FaultEvent> events;
  for (std::size_t i = 0; i < states_.size(); ++i) {
    State& state = states_[i];
    const Fault& fault = state.fault;
    const bool hit =
        (fault.trigger == FaultTrigger::Line && fault.line == lineId) ||
        (fault.trigger == FaultTrigger::Match && line.find(fault.match) != line.npos) ||
        (fault.trigger == FaultTrigger::Time && fault.IsAboutLines() && fault.atUs <= nowUs);
    if (!hit || !Counts(state)) continue;
    if (fault.IsAboutReplies()) {
      armed_[lineId].push_back(i);
      continue;
    }
    ++state.fired;
    if (fault.action == FaultAction::Ignore) {
      fate.lost = true;
    } else if (fault.action == FaultAction::Garble) {
      fate.garbled = true;
    } else {
      events.push_back(EventOf(fault));
    }
  }
  return events;
}

void Faults::Apply(State& state, std::vector<OutputPiece>& pieces) {
  const Fault& fault = state.fault;
  if (pieces.empty()) return;
  ++state.fired;
  switch (fault.action) {
    case FaultAction::Drop:
    case FaultAction::Withhold:
      pieces.clear();
      break;
    case FaultAction::Delay:
      for (OutputPiece& piece : pieces) {
        piece.delayUs += fault.durationUs;
        piece.overtaken = true;
      }
      break;
    case FaultAction::Duplicate: {
      const std::vector<OutputPiece> again = pieces;
      pieces.insert(pieces.end(), again.begin(), again.end());
      break;
    }
    case FaultAction::Corrupt:
      pieces.front().text = Corrupted(pieces.front().text);
      break;
    case FaultAction::Fragment: {
      OutputPiece rest = pieces.front();
      const std::size_t half = (rest.text.size() + 1) / 2;
      rest.text.erase(0, half);
      rest.delayUs += fault.durationUs > 0 ? fault.durationUs : kFragmentPauseUs;
      pieces.front().text.resize(half);
      pieces.insert(pieces.begin() + 1, rest);
      break;
    }
    case FaultAction::Noise: {
      OutputPiece noise = pieces.back();
      noise.text.clear();
      for (std::uint64_t i = 0; i < fault.bytes; ++i) {
        noise.text += static_cast<char>(state.random() >> 8 & 0xff);
      }
      pieces.push_back(noise);
      break;
    }
    default:
      break;
  }
}

void Faults::ApplyArmed(std::uint64_t lineId, std::vector<OutputPiece>& pieces) {
  const auto armed = armed_.find(lineId);
  if (armed == armed_.end()) return;
  std::vector<std::size_t> kept;
  for (const std::size_t i : armed->second) {
    Apply(states_[i], pieces);
    // A lost or corrupted reply is one reply. The other faults act on every reply to the line.
    const FaultAction action = states_[i].fault.action;
    if (action != FaultAction::Drop && action != FaultAction::Corrupt) kept.push_back(i);
  }
  armed->second = kept;
  if (kept.empty()) armed_.erase(armed);
}

std::vector<OutputPiece> Faults::OnReply(std::uint64_t lineId, std::string_view reply, TimeUs nowUs,
                                         std::vector<FaultEvent>& events) {
  std::vector<OutputPiece> pieces = {{std::string(reply), 0, false}};
  ApplyArmed(lineId, pieces);
  for (std::size_t i = 0; i < states_.size(); ++i) {
    State& state = states_[i];
    const Fault& fault = state.fault;
    const bool hit =
        (fault.trigger == FaultTrigger::Reply && reply.find(fault.match) != reply.npos) ||
        (fault.trigger == FaultTrigger::Time && fault.IsAboutReplies() && fault.atUs <= nowUs);
    if (!hit || !Counts(state)) continue;
    if (!fault.IsAboutReplies()) {
      ++state.fired;
      events.push_back(EventOf(fault));
      continue;
    }
    const bool withheld = fault.action == FaultAction::Withhold && !pieces.empty();
    Apply(state, pieces);
    if (withheld && lineId != 0) armed_[lineId].push_back(i);
  }
  return pieces;
}

std::vector<FaultEvent> Faults::OnTime(TimeUs nowUs) {
  std::vector<FaultEvent> events;
  for (State& state : states_) {
    if (!state.fault.ActsAtItsTime() || state.fired > 0 || state.fault.atUs > nowUs) continue;
    ++state.fired;
    events.push_back(EventOf(state.fault));
  }
  return events;
}

TimeUs Faults::NextTime() const {
  TimeUs next = kNever;
  for (const State& state : states_) {
    if (state.fault.ActsAtItsTime() && state.fired == 0) {
      next = std::min(next, state.fault.atUs);
    }
  }
  return next;
}

std::vector<Faults::Outcome> Faults::Outcomes() const {
  std::vector<Outcome> outcomes;
  for (const State& state : states_) outcomes.push_back({state.fault.source, state.fired});
  return outcomes;
}

bool Faults::AllFired() const {
  return std::all_of(states_.begin(), states_.end(),
                     [](const State& state) { return state.fired > 0; });
}

}  // namespace k7sim
