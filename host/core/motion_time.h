// How long the machine takes for a job: the way of the head with every lift and plunge, by a model
// of the controller's motion queue.
#pragma once

#include <cstdint>
#include <vector>

#include "core/job_plan.h"

namespace k7host {

// What the settings say about the speed of a job.
struct JobSpeeds {
  double travel = 1.0;        // in/s
  double engrave = 1.0;       // in/s
  double grid = 1.0;          // in/s, in place of the engraving speed in a grid run
  double cutterUp = 1.0;      // in/s
  double cutterDown = 1.0;    // in/s
  double liftInches = 0.125;  // above the work
  double dwellSeconds = 0.0;  // after each plunge
  std::vector<double> passDepthsInches = {0.0625};
  bool spindle = false;  // one is fitted, and runs while the cutter is down
};

// The motion queue of the controller: it knows the moves that it holds, takes each corner at the
// speed that the corner allows, and comes to a standstill where it runs empty.
class MotionQueue {
 public:
  // `startSeconds`: how long it waits for more moves before it begins with fewer than it can hold.
  explicit MotionQueue(double startSeconds) : startSeconds_(startSeconds) {}

  // Moves in a straight line; no move when the head is there already.
  void Go(double xInches, double yInches, double zInches, double inchesPerSecond);
  // Waits until everything has been carried out.
  void Drain();
  void Wait(double seconds);
  double Seconds() const { return seconds_; }

 private:
  struct Block {
    double way[3] = {};  // inches
    double length = 0.0;
    double speed = 0.0;
    double highestEntry = 0.0;  // what the corner before it allows
    double entry = 0.0;
  };
  void Begin();
  void Replan();
  static double Corner(const Block& before, const Block& after);

  double startSeconds_;
  std::vector<Block> blocks_;  // the first one may be running
  bool running_ = false;
  double exit_ = 0.0;  // of the running block
  double at_[3] = {};
  double seconds_ = 0.0;
};

// Seconds for the moves of one pass as the driver estimates them: from standstill to standstill
// between lifts and plunges, which take no time. [any]
double RunSeconds(const JobPlan& plan, const Table& table, const JobSpeeds& speeds,
                  bool endsAtTableHome);

// Where the head stands before a job, inches from the table home.
struct HeadPlace {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;  // from the work, downwards: a lifted cutter has less than 0
};

struct JobSeconds {
  double all = 0.0;
  double dwells = 0.0;   // of them, with the head standing still after plunges
  double spindle = 0.0;  // of them, for the spindle to spin up and down
};

// Seconds for a whole job that begins at `start`: the first `passes` passes and the travel back.
// Probing is not in it, because it depends on where the surface is. [any]
JobSeconds WholeJobSeconds(const JobPlan& plan, const Table& table, const JobSpeeds& speeds,
                           std::uint32_t passes, bool gridRun, const HeadPlace& start);

}  // namespace k7host
