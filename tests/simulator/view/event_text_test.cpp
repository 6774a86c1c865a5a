#include "view/event_text.h"

#include <gtest/gtest.h>

namespace k7sim {
namespace {

TEST(EventText, HoldsWhatIsNew) {
  ViewFrame frame;
  EXPECT_EQ(FrameText(frame), "");
  frame.state = R"({"homed":true})";
  EXPECT_EQ(FrameText(frame), "event: frame\ndata: {\"state\":{\"homed\":true}}\n\n");
  frame.strokes = {{0, 0.1234567, 1, 2, 0.03}, {1, 2, 3, 4, 0}};
  frame.lines = {{7, 1'500'000, '<', "tcp", "a \"b\"\\n"}};
  frame.linesPassedOver = 3;
  EXPECT_EQ(FrameText(frame),
            "event: frame\ndata: {\"state\":{\"homed\":true},"
            "\"lines\":[[7,1.5,\"<\",\"tcp\",\"a \\\"b\\\"\\\\n\"]],\"passedOver\":3,"
            "\"strokes\":[[0.0,0.12346,1.0,2.0,0.03],[1.0,2.0,3.0,4.0,0.0]]}\n\n");
}

TEST(EventText, TellsTheEndAfterAllElse) {
  ViewFrame frame;
  frame.ended = true;
  EXPECT_EQ(FrameText(frame), "event: end\ndata: {}\n\n");
  frame.state = "{}";
  EXPECT_EQ(FrameText(frame), "event: frame\ndata: {\"state\":{}}\n\nevent: end\ndata: {}\n\n");
}

TEST(EventText, NeverMakesATravelOfAShallowCut) {
  ViewFrame frame;
  frame.strokes = {{0, 0, 1, 0, 1e-6}};
  EXPECT_NE(FrameText(frame).find("1e-05"), std::string::npos);
}

}  // namespace
}  // namespace k7sim
