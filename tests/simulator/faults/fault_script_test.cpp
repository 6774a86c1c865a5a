#include "faults/fault_script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace k7sim {
namespace {

using testing::HasSubstr;

TEST(FaultScript, ReadsAListJsonAndAFile) {
  std::string error;
  auto faults = ParseFaults("match=G28,nth=2,do=delay,ms=500", error);
  ASSERT_TRUE(faults) << error;
  EXPECT_EQ((*faults)[0].trigger, FaultTrigger::Match);
  EXPECT_EQ((*faults)[0].nth, 2u);
  EXPECT_EQ((*faults)[0].action, FaultAction::Delay);
  EXPECT_EQ((*faults)[0].durationUs, 500'000);
  faults = ParseFaults(R"([{"reply":"EX","do":"drop"},{"atMs":10,"do":"halt"}])", error);
  ASSERT_TRUE(faults) << error;
  EXPECT_EQ(faults->size(), 2u);
  const std::string path = testing::TempDir() + "k7sim_faults.json";
  std::ofstream(path) << R"({"faults":[{"line":3,"do":"inject","text":"ALARM: x\n"}]})";
  faults = ParseFaults(path, error);
  ASSERT_TRUE(faults) << error;
  EXPECT_EQ((*faults)[0].text, "ALARM: x\n");
}

TEST(FaultScript, KnowsEveryActionByItsName) {
  for (const char* name : kFaultActionNames) {
    std::string error;
    EXPECT_TRUE(ParseFaults("line=1,text=x,rate=9,do=" + std::string(name), error)) << error;
  }
}

TEST(FaultScript, SaysWhatIsWrong) {
  constexpr struct {
    const char* text;
    const char* want;
  } kCases[] = {
      {"do=drop", "needs exactly one of line, match, reply, atMs"},
      {"line=1,match=G0,do=drop", "needs exactly one of line, match, reply, atMs"},
      {"line=0,do=drop", "bad value for 'line'"},
      {"line=x,do=drop", "bad value for 'line'"},
      {"line=1,do=explode", "bad value for 'do'"},
      {"line=1,when=now,do=drop", "unknown key 'when'"},
      {"line=1,do=inject", "inject needs a text"},
      {"reply=ok,do=ignore", "a reply cannot be ignored"},
      {"reply=ok,do=garble", "a reply cannot be garbled"},
      {"line=1,do=slow-drain", "slow-drain needs a rate"},
      {"line=1,rate=0,do=slow-drain", "bad value for 'rate'"},
      {"line=1,bytes=5000,do=noise", "bad value for 'bytes'"},
      {"line=1,seed=x,do=noise", "bad value for 'seed'"},
      {"line=1,ms=-1,do=delay", "bad value for 'ms'"},
      {"[1]", "not an object"},
      {"{", "not valid JSON"},
      {"/nonexistent", "cannot read /nonexistent"},
  };
  for (const auto& c : kCases) {
    std::string error;
    EXPECT_FALSE(ParseFaults(c.text, error)) << c.text;
    EXPECT_THAT(error, HasSubstr(c.want));
    EXPECT_EQ(error.find('\n'), error.npos);
  }
}

}  // namespace
}  // namespace k7sim
