#include "doctor/report.h"

#include <gtest/gtest.h>

#include <string>

#include "doctor/answers.h"

namespace k7host {
namespace {

TEST(Doctor, UnderstandsAnswers) {
  EXPECT_TRUE(IsSignOfLife("SmoothieIsConnected"));
  EXPECT_EQ(IdentityIn("sd: controller_id is set to ABCDEF0123456789"), "ABCDEF0123456789");
  EXPECT_EQ(IdentityIn("ok"), "");
  EXPECT_TRUE(IsNoIdentity("0000000000000000"));
  EXPECT_EQ(ShownBytes("Gr\xFF\r\n"), "Gr\\xFF\\r\\n");
  EXPECT_EQ(ShownBytes(std::string(100, 'x')), std::string(60, 'x') + "...");
  const Latency latency = LatencyOf({3.0, 1.0, 2.0});
  EXPECT_EQ(MsText(latency.median), "2.0");
  EXPECT_EQ(MsText(latency.worst), "3.0");
}

TEST(Doctor, TheWorstFindingIsTheExitCode) {
  const Finding ok{Level::Ok, About::Port, "port COM7", "opens", ""};
  const Finding warn{Level::Warn, About::Settings, "settings", "odd", "look at it"};
  const Finding port{Level::Fail, About::Port, "port COM7", "is not there", "plug it in"};
  const Finding value{Level::Fail, About::Settings, "settings", "zero", "set it"};
  EXPECT_EQ(ExitCodeOf({ok}), 0);
  EXPECT_EQ(ExitCodeOf({ok, warn}), 1);
  EXPECT_EQ(ExitCodeOf({ok, port}), 1);
  EXPECT_EQ(ExitCodeOf({value, port}), 2);
  EXPECT_EQ(FindingLine(warn), "warn  settings: odd -> look at it");
  EXPECT_EQ(FindingLine(ok), "ok    port COM7: opens");
  EXPECT_EQ(SummaryText({ok, warn, port, value}), "1 ok, 1 warning, 2 failures");
  EXPECT_NE(ReportJson({ok, warn}).find("\"worst\": \"warn\""), std::string::npos);
}

}  // namespace
}  // namespace k7host
