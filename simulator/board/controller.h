// The board: takes lines, moves the machine and replies. It does no input or output and has no
// clock: its owner gives it lines and the machine time, and takes its replies.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "board/arc.h"
#include "board/config_store.h"
#include "board/gcode.h"
#include "board/job_log.h"
#include "board/planner.h"
#include "common/clock.h"
#include "machine/mechanics.h"
#include "machine/recorder.h"

namespace k7sim {

inline constexpr int kAllLinks = -1;  // in place of the number of a link

// Takes the replies. `lineId`: the line that caused the reply, 0 for none.
class ReplySink {
 public:
  virtual ~ReplySink() = default;
  virtual void Reply(int link, std::uint64_t lineId, std::string_view text) = 0;
};

struct MachineSetup {
  TableGeometry geometry;
  Surface surface = Surface(1.75);
  MotionLimits limits;
  ToolKind tool = ToolKind::Spindle;
  bool homed = false;
  bool hardLimits = false;  // a move beyond the end of an axis halts the machine
  // The host is told nothing of a move to where the head is already. True on boards of another
  // kind.
  bool silentZeroMoves = false;
  Vec3 positionInches{};  // of the head at power-on, from the switches
  double homingFeedMmPerSec = 50;
};

// Counts for the report.
struct ControllerCounts {
  std::uint64_t lines = 0;
  std::uint64_t gcodeLines = 0;
  std::uint64_t unknownLines = 0;
  std::uint64_t resends = 0;       // asked for
  std::uint64_t refusedLines = 0;  // while halted
  std::uint64_t flushedLines = 0;  // thrown away by a halt, no reply
  std::uint64_t halts = 0;
  std::uint64_t restarts = 0;
  std::size_t blocks = 0;        // that have ended
  std::size_t deepestQueue = 0;  // most blocks in it at once
};

class Controller final : private BlockListener {
 public:
  Controller(const MachineSetup& setup, ConfigStore& config, ReplySink& sink);

  // Takes one line. A line that has to wait for the queue is kept; any other is carried out now.
  void TakeLine(std::string_view line, std::uint64_t lineId, int link, TimeUs nowUs);

  // Stops at once where the head is. What was queued or waiting is thrown away without a reply.
  void Halt(TimeUs nowUs);
  // Halts, and sends the alarm `text` on all links.
  void Alarm(std::string_view text, TimeUs nowUs);
  // Feed hold: moves stop, and go on at the resume. Homing, probing and pauses that have begun run
  // on.
  void Hold(TimeUs nowUs) { planner_.Hold(nowUs); }
  void ResumeHold(TimeUs nowUs);

  // "<Idle|MPos:...>", the answer to a question mark.
  std::string StatusReport(TimeUs nowUs) const;

  // Power off and on: the head stops where it is, and all that was queued, waiting or set is gone.
  void Restart(TimeUs nowUs);
  void Resume() { state_.halted = false; }

  // Carries out all that is due up to and including `nowUs`, in time order.
  void Advance(TimeUs nowUs);
  // When the next thing is due; kNever while the machine rests.
  TimeUs NextEvent() const;

  // Lines of a link that wait for the queue, and their bytes, each with one for its line end.
  std::size_t WaitingLines(int link) const;
  std::size_t WaitingBytes(int link) const;

  // No motion, and no line that waits.
  bool IsIdle() const { return planner_.IsIdle() && waiting_.empty() && !action_.active; }

  bool IsHalted() const { return state_.halted; }
  // The alarm of the last halt; empty when it had none.
  const std::string& AlarmText() const { return state_.alarm; }
  bool IsHomed() const { return state_.homed; }
  void SetHomed(bool homed) { state_.homed = homed; }
  bool SpindleOn() const { return state_.spindleOn; }
  int SpindleLevel() const { return state_.spindleLevel; }
  bool OutputOn() const { return state_.outputOn; }
  bool MotorsOn() const { return state_.motorsOn; }
  bool BlockMessages() const { return state_.blockMessages; }
  Vec3 PositionMm(TimeUs nowUs) const;  // in the board's own coordinates
  std::size_t QueuedBlocks() const { return planner_.Size(); }
  double FeedMmPerSec() const;  // of the move that runs, on average for homing and probing

  Mechanics& Machine() { return mechanics_; }
  const Mechanics& Machine() const { return mechanics_; }
  const Recorder& Record() const { return recorder_; }
  Recorder& Record() { return recorder_; }
  JobLog& Jobs() { return jobs_; }
  const JobLog& Jobs() const { return jobs_; }
  const ControllerCounts& Counts() const { return counts_; }

 private:
  // A line that waits, with the feed, unit and mode that held when it arrived.
  struct Waiting {
    Gcode code;
    std::uint64_t lineId = 0;
    int link = 0;
    std::string text;
    std::size_t bytes = 0;
    double feedMmPerMin = 0;
    double mmPerUnit = 1;
    bool absolute = true;
    bool machine = false;  // its coordinates are those of the machine (G53)
    ArcPlane plane = kPlaneXy;
    bool answers = true;  // the ok to its line is due with this command
  };
  // Homing, probing or a pause. No line that waits is started before it ends.
  struct Action {
    bool active = false;
    Waiting line;
    TimeUs beganUs = 0;
    TimeUs endsUs = 0;
    Vec3 from{};
    Vec3 to{};
    std::size_t axis = 0;  // the axis that is homed
    bool found = false;    // the switch or the surface is within reach
  };

  // What the board knows only while it is powered: a restart makes it afresh.
  struct State {
    bool halted = false;
    std::string alarm;  // of the last halt; empty: it had none
    bool homed = false;
    bool spindleOn = false;
    int spindleLevel = 0;
    bool outputOn = false;
    TimeUs outputOnUs = kNever;  // when M106 came; a job that opens after it starts then
    bool motorsOn = true;
    bool blockMessages = false;
    bool absolute = true;
    int motion = 0;  // G0 to G3, what words without a command go on with
    ArcPlane plane = kPlaneXy;
    std::array<Vec3, 6> workOffsetsMm{};  // of G54 to G59
    std::size_t work = 0;                 // which of them holds
    long lineNumber = 0;                  // of the last line that had one
    double mmPerUnit = 1;
    double seekMmPerMin = 4000;
    double feedMmPerMin = 4000;
    std::array<double, 3> maxMmPerMin{30480, 30480, 30480};
    std::array<double, 3> stepsPerMm{80, 80, 80};
  };

  void OnBlockBegun(const Block& block, TimeUs nowUs) override;
  void OnBlockEnded(const Block& block, double seconds, TimeUs nowUs) override;
  void OnNothingMoved(const Block& block, TimeUs nowUs) override;

  void StopMotion(TimeUs nowUs);

  // Lines of words (controller_shell.cpp).
  void TakeWords(std::string_view line, std::uint64_t lineId, int link, TimeUs nowUs);
  void TakeConfigLine(std::string_view line, std::uint64_t lineId, int link);

  // G-code (controller_gcode.cpp).
  void TakeGcodeLine(std::string_view line, std::uint64_t lineId, int link, TimeUs nowUs);
  bool TakeNumber(const NumberedLine& line, std::uint64_t lineId, int link);
  void TakeGcode(const Gcode& code, Waiting line, TimeUs nowUs);
  bool TakeMachineCode(const Waiting& line);
  void TakeDollarLine(std::string_view line, std::uint64_t lineId, int link, TimeUs nowUs);
  void Ok(const Waiting& line);
  const Vec3& WorkOffset() const { return state_.workOffsetsMm[state_.work]; }
  std::string SwitchReport(TimeUs nowUs) const;
  std::string PositionReport(TimeUs nowUs) const;

  // Motion (controller_motion.cpp).
  void StartWaiting(TimeUs nowUs);
  bool StartMove(const Waiting& line, TimeUs nowUs);
  Vec3 EndOf(const Waiting& line) const;
  std::optional<Arc> ArcOf(const Waiting& line, const Vec3& to) const;
  void PushBlock(const Waiting& line, const Vec3& to, bool first, bool last, TimeUs nowUs);
  void SelectWork(const Waiting& line);
  void StartAction(const Waiting& line, TimeUs nowUs);
  void StartHoming(std::size_t axis, TimeUs nowUs);
  void StartProbe(TimeUs nowUs);
  void FinishAction(TimeUs nowUs);
  void Declare(const Waiting& line);
  void MapAxes(const Waiting& line);
  void SetActionMove(const Vec3& to, double feedMmPerSec, TimeUs nowUs);

  MachineSetup setup_;
  ConfigStore& config_;
  ReplySink& sink_;
  Mechanics mechanics_;
  Planner planner_;
  Recorder recorder_;
  JobLog jobs_;
  ControllerCounts counts_;

  std::deque<Waiting> waiting_;  // in the order in which they arrived
  // What has been made of the line at the front so far, when it is an arc with more chords than the
  // queue had room for.
  std::optional<Arc> arc_;
  std::size_t arcChord_ = 0;
  Action action_;
  Vec3 target_{};        // end of the last move taken, in the board's coordinates
  bool drained_ = true;  // the queue had to be empty since the last block

  State state_;
  std::string pendingAlarm_;  // of an axis end, sent once the block has ended; empty: none
};

}  // namespace k7sim
