#include "app/transcript.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/simulator/support/content.h"
#include "tests/simulator/support/rig.h"

namespace k7sim {
namespace {

using k7test::Content;
using k7test::Rig;
using k7test::WithFault;

TEST(Transcript, HoldsEveryLineInBothDirections) {
  const std::string path = testing::TempDir() + "k7sim_transcript_test";
  {
    Rig rig(WireKind::Usb, WithFault("match=G90,do=drop"));
    rig.transcript.Open(path);
    rig.Open();
    rig.Send("G21\nG90\n\x18");
  }
  EXPECT_EQ(Content(path),
            "< Smoothie\\r\\nok\\r\\n\n> G21\n< ok\\n\n> G90\n! fault: changed ok\\n\n> \\x18\n");
}

TEST(Transcript, CarriesMachineOrWireTimes) {
  SimulatorSetup setup;
  setup.speed = 50;
  const std::string path = testing::TempDir() + "k7sim_transcript_times_test";
  for (const TranscriptTimes times : {TranscriptTimes::Machine, TranscriptTimes::Wire}) {
    Rig rig(WireKind::Uart, setup, times);
    rig.transcript.Open(path);
    rig.Open();
    rig.now = 20'000;
    rig.Send("G21\n");
    rig.transcript.Flush();
    EXPECT_EQ(Content(path), times == TranscriptTimes::Machine
                                 ? "    1.000000 > G21\n    1.000000 < ok\\n\n"
                                 : "    0.020000 > G21\n    0.020000 < ok\\n\n");
  }
}

}  // namespace
}  // namespace k7sim
