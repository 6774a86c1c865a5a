// What the records of a trace tell when they are read one after the other: where the head stands,
// which moves are outstanding, what was cut, what was waited for.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "trace/place.h"
#include "trace/record.h"

namespace k7host {

// One record with what it means.
struct TraceEntry {
  TraceRecord record;
  std::int64_t deltaUs = 0;  // since the record before it of the same process
  std::string meaning;
  std::string tag;      // of the move that is sent or reported; empty: none
  int outstanding = 0;  // moves sent on this link that have not begun
  TracePlace place;     // where the head stands when all that was sent is carried out
};

// One straight move, in the order of sending.
struct TraceMove {
  TracePlace from, to;
  double feedInchesPerMinute = 0.0;  // 0: not known
  bool cut = false;                  // with the cutter down
};

// A wait, or a message that the host kept; `us` so far for one that has not ended.
struct TraceWait {
  std::int64_t atUs = 0;  // when it began
  std::int64_t us = 0;
  std::string what;
  bool ended = false;
};

// A line that was answered late, or never.
struct TraceAnswer {
  std::int64_t atUs = 0;  // when the line was sent
  std::int64_t us = 0;    // until the answer
  std::string line;       // without its end
  bool never = false;
};

struct TraceSummary {
  std::int64_t lines = 0;       // of the trace
  std::int64_t unreadable = 0;  // of them
  std::int64_t lost = 0;        // records that could not be written
  std::int64_t sent = 0, received = 0;
  std::int64_t spanUs = 0;       // from the first line on a link to the last, of each process
  std::int64_t busiestSent = 0;  // lines sent in the busiest second
  std::int64_t jobs = 0;
  std::vector<TraceWait> waits;      // longest first
  std::vector<TraceWait> kept;       // messages, longest first
  std::vector<TraceAnswer> answers;  // late ones and missing ones, in order
  std::map<double, double> feeds;    // inches a minute; inches cut or travelled at it
  double cutInches = 0.0, travelInches = 0.0;
  std::int64_t cuts = 0, plunges = 0;
  std::vector<std::string> failures;  // in order, at most kMostFailures
  std::int64_t failureCount = 0;
};
inline constexpr std::size_t kMostFailures = 50;
inline constexpr std::int64_t kLateUs = 1000000;

// Reads a trace line by line. [any]
class TraceStory {
 public:
  // Takes the next line, without its end. Nothing when it is no record.
  std::optional<TraceEntry> Take(std::string_view line);

  const std::vector<TraceMove>& Moves() const { return moves_; }
  // Of everything so far; what has not ended is counted up to the last record.
  TraceSummary Summary() const;

 private:
  struct Move {
    std::string line, tag;
    std::int64_t sentUs = 0;
  };
  struct Question {
    std::string line, answer;
    std::int64_t sentUs = 0;
    bool machine =
        false;  // the machine has to move for the answer, which takes as long as it takes
  };
  struct Link {
    TracePlace place;
    double feed = 0.0;
    bool down = false;
    bool reports = false;    // block messages are on
    std::deque<Move> moves;  // of the job, that have not ended
    std::size_t queued = 0;  // of them
    std::size_t begun = 0;
    std::vector<Question> questions;
  };
  struct Thread {
    std::optional<TraceWait> wait, message;
  };

  void TakeSent(Link& link, TraceEntry& entry);
  void TakeMove(Link& link, TraceEntry& entry, const std::string& line);
  void TakeReceived(Link& link, TraceEntry& entry);
  void TakeOther(TraceEntry& entry);
  void EndLink(Link& link, std::int64_t us);
  void NoteAnswer(const std::string& line, std::int64_t sentUs, std::int64_t us, bool machine);
  void NoteTime(const TraceRecord& record);
  void NoteFailure(const TraceRecord& record, std::string text);
  static void AddUnanswered(const Link& link, std::int64_t us, std::vector<TraceAnswer>& answers);

  TraceSummary summary_;
  std::vector<TraceMove> moves_;
  std::map<std::pair<std::uint32_t, std::string>, Link> links_;
  std::map<std::pair<std::uint32_t, std::uint32_t>, Thread> threads_;
  std::map<std::uint32_t, std::int64_t> lastUs_;          // by process
  std::map<std::uint32_t, std::int64_t> lastLineUs_;      // of its lines on a link
  std::pair<std::uint32_t, std::int64_t> second_{0, -1};  // of the process, the second at hand
  std::int64_t sentInSecond_ = 0;
};

}  // namespace k7host
