#include "core/watch.h"

#include <gtest/gtest.h>

#include <vector>

namespace k7host {
namespace {

struct TextCase {
  Silence silence;
  const char* want;
};

TEST(SilenceText, SaysWhatIsMissingAndWhatToDo) {
  const TextCase kCases[] = {
      {{Waiting::Moves, 4800, 4800, false, 28, 0, 1, 309, 885},
       "no word from the machine for 5 s, 28 lines outstanding, stroke 310 of 885 - Ctrl-C to stop "
       "waiting"},
      {{Waiting::JobEnd, 10000, 10000, true, 1, 0, 1, 885, 885},
       "no word from the machine for 10 s, 1 line outstanding, stroke 885 of 885 - Ctrl-C again to "
       "end at once"},
      {{Waiting::JobStart, 5000, 5000, false, 0, 0, 0, 0, 3},
       "no word from the machine for 5 s, waiting to begin the job - Ctrl-C to stop waiting"},
      {{Waiting::Homing, 5000, 5000, false, 0, 0, 0, 0, 0},
       "no word from the machine for 5 s, homing - Ctrl-C to stop waiting"},
      {{Waiting::Search, 5000, 5000, false, 0, 0, 0, 0, 0},
       "searching the serial ports for 5 s - Ctrl-C to stop waiting"},
      // A machine that answers and does not get on.
      {{Waiting::Moves, 200, 5000, false, 32, 12, 0, 9, 30},
       "the machine answers, but has reported nothing done for 5 s, 32 lines outstanding, stroke "
       "10 "
       "of 30: it takes no moves, as after an alarm or a halt - Ctrl-C to stop waiting"},
      {{Waiting::JobEnd, 200, 5000, false, 1, 0, 1, 30, 30},
       "the machine answers, but has reported nothing done for 5 s, 1 line outstanding, stroke 30 "
       "of "
       "30: a long stroke, a halt, or a report that was lost - Ctrl-C to stop waiting"},
      {{Waiting::Plunge, 200, 5000, false, 0, 0, 0, 0, 30},
       "the machine answers, but has reported nothing done for 5 s, 0 lines outstanding, stroke 1 "
       "of "
       "30: the probe may have missed the surface - Ctrl-C to stop waiting"},
      {{Waiting::Homing, 200, 5000, false, 0, 0, 0, 0, 0},
       "the machine answers, but has reported nothing done for 5 s, homing - Ctrl-C to stop "
       "waiting"},
  };
  for (const TextCase& c : kCases) EXPECT_EQ(SilenceText(c.silence), c.want);
}

TEST(SilenceText, AGoToThatBringsNothingIsExplained) {
  const std::string text = SilenceText({Waiting::GoTo, 200, 5000, false, 0, 0, 0, 0, 0});
  EXPECT_NE(text.find("home the machine (k7host home), then go again"), std::string::npos) << text;
}

TEST(StopText, TellsWhatComesFirstAndThatASecondPressEndsAtOnce) {
  for (const Waiting waiting :
       {Waiting::JobStart, Waiting::Moves, Waiting::Plunge, Waiting::JobEnd}) {
    EXPECT_EQ(StopText(waiting).substr(0, 30), "stopping after this stroke ...");
  }
  EXPECT_EQ(StopText(Waiting::Homing),
            "stopping when this is done ... (Ctrl-C again ends at once)");
  EXPECT_EQ(StopText(Waiting::Nothing), "");
  EXPECT_EQ(StopText(Waiting::Search), "");
}

TEST(SilenceClock, SpeaksWithinFiveSecondsThenAtEachDoubling) {
  SilenceClock clock;
  std::vector<std::uint64_t> spoken;
  for (std::uint64_t ms = 0; ms <= 90000; ms += 100) {
    if (clock.IsDue(ms)) spoken.push_back(ms);
  }
  EXPECT_EQ(spoken, (std::vector<std::uint64_t>{4700, 10000, 20000, 40000, 80000}));
  EXPECT_TRUE(clock.HasSpoken());
  EXPECT_FALSE(clock.IsDue(100));  // the machine goes on
  EXPECT_FALSE(clock.HasSpoken());
  EXPECT_TRUE(clock.IsDue(4800));
}

}  // namespace
}  // namespace k7host
