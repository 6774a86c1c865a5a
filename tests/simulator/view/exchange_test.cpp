#include "view/exchange.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace k7sim {
namespace {

using namespace std::chrono_literals;

std::vector<WireLine> Lines(std::uint64_t first, std::uint64_t last) {
  std::vector<WireLine> lines;
  for (std::uint64_t i = first; i <= last; ++i) lines.push_back({i, 0, '>', "", "G0"});
  return lines;
}

bool IsAwake(const Exchange& exchange) {
  pollfd wait = {exchange.WakeFd(), POLLIN, 0};
  return poll(&wait, 1, 0) == 1;
}

TEST(Exchange, TellsEachBrowserWhatItHasNotSeen) {
  Exchange exchange;
  ViewPlace one;
  exchange.Publish("{1}", {{0, 0, 1, 0, 0.1}}, Lines(1, 2));
  ViewFrame frame = exchange.Wait(one, 0ms);
  EXPECT_EQ(frame.state, "{1}");
  EXPECT_EQ(frame.strokes.size(), 1u);
  EXPECT_EQ(frame.lines.size(), 2u);
  EXPECT_TRUE(exchange.Wait(one, 0ms).IsEmpty());

  exchange.Publish("{1}", {{0, 0, 1, 0, 0.1}, {1, 0, 2, 0, 0.1}}, {});
  frame = exchange.Wait(one, 0ms);
  EXPECT_EQ(frame.state, "");
  ASSERT_EQ(frame.strokes.size(), 1u);
  EXPECT_EQ(frame.strokes[0].x0, 1);

  ViewPlace late;
  EXPECT_EQ(exchange.Wait(late, 0ms).strokes.size(), 2u);
}

TEST(Exchange, KeepsAsManyLinesAsItSaysAndCountsThoseThatASlowBrowserMissed) {
  Exchange exchange;
  ViewPlace slow;
  exchange.Publish("{}", {}, Lines(1, 10));
  exchange.Wait(slow, 0ms);
  exchange.Publish("{}", {}, Lines(11, 10 + Exchange::kKeptLines + 7));
  const ViewFrame frame = exchange.Wait(slow, 0ms);
  EXPECT_EQ(frame.lines.size(), Exchange::kKeptLines);
  EXPECT_EQ(frame.linesPassedOver, 7u);
  ViewPlace late;
  EXPECT_EQ(exchange.Wait(late, 0ms).linesPassedOver, 0u);
}

TEST(Exchange, GivesALongDrawingInPartsAndTheEndAfterTheLast) {
  Exchange exchange;
  exchange.Publish("{}", std::vector<Stroke>(Exchange::kFrameStrokes + 1), {});
  exchange.End();
  ViewPlace place;
  ViewFrame frame = exchange.Wait(place, 0ms);
  EXPECT_EQ(frame.strokes.size(), Exchange::kFrameStrokes);
  EXPECT_FALSE(frame.ended);
  frame = exchange.Wait(place, 0ms);
  EXPECT_EQ(frame.strokes.size(), 1u);
  EXPECT_TRUE(frame.ended);
}

TEST(Exchange, WakesTheLoopForABrowserAndForACommand) {
  Exchange exchange;
  EXPECT_FALSE(exchange.HasBrowsers());
  EXPECT_FALSE(IsAwake(exchange));
  EXPECT_TRUE(exchange.Join());
  EXPECT_TRUE(exchange.HasBrowsers());
  EXPECT_TRUE(IsAwake(exchange));
  exchange.ClearWake();
  EXPECT_FALSE(IsAwake(exchange));
  for (std::size_t i = 1; i < Exchange::kMostBrowsers; ++i) EXPECT_TRUE(exchange.Join());
  EXPECT_FALSE(exchange.Join());
  exchange.Leave();
  EXPECT_TRUE(exchange.Join());

  exchange.ClearWake();
  ViewCommand command{"halt", false, false, {}};
  AskResult result = AskResult::Busy;
  std::thread browser([&] { result = exchange.Ask(command); });
  std::shared_ptr<ViewCommand> taken;
  while (!(taken = exchange.TakeCommand())) std::this_thread::yield();
  EXPECT_TRUE(IsAwake(exchange));
  EXPECT_EQ(taken->line, "halt");
  exchange.Answer(*taken, false, "no");
  browser.join();
  EXPECT_EQ(result, AskResult::Answered);
  EXPECT_FALSE(command.good);
  EXPECT_EQ(command.message, "no");
}

TEST(Exchange, LetsNoBrowserWaitBeyondTheEnd) {
  Exchange exchange;
  ViewCommand command{"halt", false, false, {}};
  AskResult result = AskResult::Busy;
  std::thread asks([&] { result = exchange.Ask(command); });
  std::thread looks([&] {
    ViewPlace place;
    while (!exchange.Wait(place, 1h).ended) continue;
  });
  while (!IsAwake(exchange)) std::this_thread::yield();
  exchange.End();
  asks.join();
  looks.join();
  EXPECT_EQ(result, AskResult::Ended);
  EXPECT_EQ(exchange.Ask(command), AskResult::Ended);
}

}  // namespace
}  // namespace k7sim
