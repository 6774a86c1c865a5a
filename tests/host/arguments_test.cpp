#include "args/arguments.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "k7/driver.h"

namespace k7host {
namespace {

ParsedArguments Parse(const std::string& line) {
  std::istringstream in(line);
  std::vector<std::string> words;
  for (std::string word; in >> word;) words.push_back(word);
  return ParseArguments(words);
}

Arguments Good(const std::string& line) {
  const ParsedArguments parsed = Parse(line);
  EXPECT_TRUE(parsed.arguments.has_value()) << line << ": " << parsed.error;
  return parsed.arguments.value_or(Arguments{});
}

TEST(Arguments, KnowsEveryCommand) {
  constexpr struct {
    const char* line;
    Command want;
  } kCases[] = {
      {"list", Command::List},
      {"info", Command::Info},
      {"engrave f", Command::Engrave},
      {"estimate f", Command::Estimate},
      {"home", Command::Home},
      {"switches", Command::Switches},
      {"jog", Command::Jog},
      {"goto 1 2", Command::GoTo},
      {"spindle on", Command::Spindle},
      {"settings", Command::Settings},
      {"settings --before-job", Command::Settings},
      {"dialog --read-only", Command::Settings},
      {"settings show", Command::SettingsFile},
      {"doctor", Command::Doctor},
      {"setup", Command::Setup},
  };
  for (const auto& c : kCases) EXPECT_EQ(Good(c.line).command, c.want) << c.line;
}

TEST(Arguments, EngraveTakesItsOptions) {
  const Arguments a = Good("engrave a.plt --id 0123456789ABCDEF --passes 3 --home --spindle");
  EXPECT_EQ(a.file, "a.plt");
  EXPECT_EQ(a.id, "0123456789ABCDEF");
  EXPECT_EQ(a.passes, 3u);
  EXPECT_TRUE(a.home);
  EXPECT_TRUE(a.spindle);
  EXPECT_FALSE(a.batch);
  EXPECT_EQ(a.runKind, k7::kRunEngraving);
  EXPECT_EQ(Good("engrave f --grid").runKind, k7::kRunGrid);
  EXPECT_EQ(Good("engrave f --braille-drill").runKind, k7::kRunBrailleDrill);
  EXPECT_EQ(Good("engrave --braille-bead f").runKind, k7::kRunBrailleBeadInsert);
  EXPECT_TRUE(Good("engrave f --settings").showSettings);
  EXPECT_TRUE(Good("engrave f --batch").batch);
}

TEST(Arguments, JogTakesADirectionAndAKey) {
  EXPECT_FALSE(Good("jog").direction.has_value());
  const Arguments a = Good("jog --direction x+ --key 39 --slow");
  EXPECT_EQ(a.direction, k7::kJogXPlus);
  EXPECT_EQ(a.key, 39u);
  EXPECT_TRUE(a.slow);
  EXPECT_EQ(Good("jog --direction x-").direction, k7::kJogXMinus);
  EXPECT_EQ(Good("jog --direction y+").direction, k7::kJogYPlus);
  EXPECT_EQ(Good("jog --direction y-").direction, k7::kJogYMinus);
  EXPECT_EQ(Good("jog --direction up").direction, k7::kJogZUp);
  EXPECT_EQ(Good("jog --direction down").direction, k7::kJogZDown);
}

TEST(Arguments, SpindleTakesAnAction) {
  EXPECT_EQ(Good("spindle on --seconds 2.5").seconds, 2.5);
  EXPECT_EQ(Good("spindle on").spindleAction, SpindleAction::On);
  EXPECT_EQ(Good("spindle full").spindleAction, SpindleAction::Full);
  EXPECT_EQ(Good("spindle off --id A").spindleAction, SpindleAction::Off);
  EXPECT_EQ(Good("spindle ramp up --key 38").spindleAction, SpindleAction::RampUp);
  EXPECT_EQ(Good("spindle ramp down").spindleAction, SpindleAction::RampDown);
}

TEST(Arguments, GotoAndInfoTakePositions) {
  const Arguments a = Good("goto 1.5 2 --id A");
  EXPECT_EQ(a.xInches, 1.5);
  EXPECT_EQ(a.yInches, 2.0);
  EXPECT_EQ(a.id, "A");
  EXPECT_EQ(Good("info 0123456789ABCDEF").id, "0123456789ABCDEF");
  EXPECT_TRUE(Good("switches --watch").watch);
  EXPECT_TRUE(Good("settings --before-job").beforeJob);
  EXPECT_TRUE(Good("settings --read-only").readOnly);
}

TEST(Arguments, WrongUsageIsOneLineAndExitCodeTwo) {
  constexpr const char* kBad[] = {
      "",
      "bogus",
      "list extra",
      "engrave",
      "engrave f g",
      "engrave f --passes 0",
      "engrave f --passes x",
      "engrave f --passes 99999999999",
      "engrave f --grid --braille-drill",
      "engrave f --grid --braille-bead",
      "engrave f --braille-drill --braille-bead",
      "jog --direction q",
      "jog --key 3",
      "jog --direction x+ --key 255",
      "goto",
      "goto 1",
      "goto -1 2",
      "goto nan 1",
      "goto inf 1",
      "goto 1 2 3",
      "goto 1x 2",
      "spindle",
      "spindle ramp",
      "spindle warm",
      "spindle on --seconds 0",
      "estimate",
      "settings --bogus",
  };
  for (const char* line : kBad) {
    const ParsedArguments parsed = Parse(line);
    EXPECT_FALSE(parsed.arguments.has_value()) << line;
    EXPECT_EQ(parsed.exitCode, kExitUsage) << line;
    EXPECT_EQ(parsed.error.substr(0, 8), "k7host: ") << line;
    EXPECT_EQ(parsed.error.find('\n'), std::string::npos) << parsed.error;
    EXPECT_EQ(parsed.help, "") << line;
  }
}

std::size_t LongestLine(const std::string& text) {
  std::size_t longest = 0;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) longest = std::max(longest, line.size());
  return longest;
}

TEST(Arguments, SettingsTakeAKeyAValueAndWhose) {
  const SettingsArguments set = Good("settings set Axis/Key -500 --id AB").settings;
  EXPECT_EQ(set.action, SettingsAction::Set);
  EXPECT_EQ(set.key, "Axis/Key");
  EXPECT_EQ(set.value, "-500");
  EXPECT_EQ(set.id, "AB");
  const SettingsArguments show = Good("settings show AB --all --json").settings;
  EXPECT_EQ(show.which, "AB");
  EXPECT_TRUE(show.all);
  EXPECT_TRUE(show.json);
  EXPECT_EQ(Good("settings --id AB get Key").settings.id, "AB");
  EXPECT_EQ(Good("settings diff A b.ini").settings.other, "b.ini");
  EXPECT_EQ(Good("settings export - --file a.ini").settings.file, "a.ini");
  EXPECT_EQ(Good("doctor --port COM7").doctor.port, "COM7");
  for (const char* wrong : {"settings set Key", "settings get", "settings get Key --id A --file b",
                            "settings show A --id B", "settings frobnicate",
                            "doctor --id A --port COM7", "settings backup"}) {
    EXPECT_FALSE(Parse(wrong).arguments.has_value()) << wrong;
  }
}

TEST(Arguments, EveryCommandHasHelp) {
  constexpr const char* kCommands[] = {"",
                                       "list",
                                       "info",
                                       "engrave",
                                       "estimate",
                                       "home",
                                       "switches",
                                       "jog",
                                       "goto",
                                       "spindle",
                                       "spindle on",
                                       "spindle full",
                                       "spindle off",
                                       "spindle ramp",
                                       "spindle ramp up",
                                       "spindle ramp down",
                                       "settings",
                                       "settings show",
                                       "settings get",
                                       "settings set",
                                       "settings diff",
                                       "settings export",
                                       "settings import",
                                       "settings backup",
                                       "settings restore",
                                       "dialog",
                                       "doctor",
                                       "setup"};
  for (const std::string command : kCommands) {
    const ParsedArguments parsed = Parse(command + " --help");
    EXPECT_FALSE(parsed.arguments.has_value()) << command;
    EXPECT_EQ(parsed.exitCode, kExitOk) << command;
    EXPECT_NE(parsed.help.find("Usage: k7host" + (command.empty() ? "" : " " + command)),
              std::string::npos)
        << parsed.help;
    EXPECT_LE(LongestLine(parsed.help), 100u) << parsed.help;
  }
  EXPECT_NE(Parse("--help").help.find("Exit codes: 0 done, 1"), std::string::npos);
  const std::string all = Parse("--help-all").help;
  for (const char* option : {"--braille-bead", "--direction", "--seconds", "--before-job"}) {
    EXPECT_NE(all.find(option), std::string::npos) << option;
  }
  const std::string spindle = Parse("spindle --help-all").help;
  EXPECT_EQ(spindle.find("Usage: k7host engrave"), std::string::npos);
  EXPECT_NE(spindle.find("Usage: k7host spindle ramp up"), std::string::npos) << spindle;
}

}  // namespace
}  // namespace k7host
