#include "args/arguments.h"
#include "args/tcp_address.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "args/words_to_resume.h"
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
      {"trace f", Command::Trace},
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

TEST(Arguments, DrawingsAreReadAndPlacedAsAsked) {
  const Arguments a = Good(
      "engrave f --tolerance 0.01 --scale 2 --rotate -90 --origin center --offset -1.5,2 "
      "--optimise --preview p.svg --dry-run --frame");
  EXPECT_EQ(a.toleranceInches, 0.01);
  EXPECT_EQ(a.placement.scale, 2.0);
  EXPECT_EQ(a.placement.rotateDegrees, -90.0);
  EXPECT_EQ(a.placement.origin, Origin::Center);
  EXPECT_EQ(a.placement.offsetXInches, -1.5);
  EXPECT_EQ(a.placement.offsetYInches, 2.0);
  EXPECT_TRUE(a.optimise);
  EXPECT_EQ(a.preview, "p.svg");
  EXPECT_TRUE(a.dryRun);
  EXPECT_TRUE(a.frame);
  EXPECT_EQ(Good("estimate f --offset 1,2 --preview p.png").placement.offsetYInches, 2.0);
  EXPECT_EQ(Good("engrave f").toleranceInches, 0.001);
  for (const char* bad : {"--offset 1", "--offset 1,x", "--offset 1,2,3", "--offset nan,1",
                          "--scale 0", "--origin top", "--preview p.gif", "--tolerance 0"}) {
    EXPECT_FALSE(Parse(std::string("engrave f ") + bad).arguments.has_value()) << bad;
  }
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

TEST(Arguments, EveryCommandThatLoadsTheDriverTakesATrace) {
  for (const char* line : {"list", "info", "engrave f", "estimate f", "home", "switches", "jog",
                           "goto 1 2", "spindle on", "spindle ramp up", "settings", "setup"}) {
    EXPECT_EQ(Good(std::string(line) + " --trace a.txt").trace, "a.txt") << line;
  }
  EXPECT_FALSE(Parse("trace f --trace a.txt").arguments.has_value());
}

TEST(Arguments, TraceTakesWhatItIsToShow) {
  const Arguments a = Good("trace a.txt --summary --json --follow");
  EXPECT_EQ(a.file, "a.txt");
  EXPECT_TRUE(a.traceSummary);
  EXPECT_TRUE(a.json);
  EXPECT_TRUE(a.traceFollow);
  EXPECT_EQ(Good("trace a.txt --svg b.svg").traceSvg, "b.svg");
  EXPECT_FALSE(Parse("trace a.txt --svg b.svg --summary").arguments.has_value());
  EXPECT_FALSE(Parse("trace").arguments.has_value());
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

TEST(Arguments, AWrongWordIsNamedWithWhatItWasMeantToBe) {
  constexpr struct {
    const char* line;
    const char* want;
  } kCases[] = {
      {"engarve f", "'engarve' is no command of k7host, did you mean 'engrave'? Commands: list, "},
      {"xyzzy", "'xyzzy' is no command of k7host; commands: list, "},
      {"", "k7host: k7host needs a command: list, info, "},
      {"spindle ramp", "k7host spindle ramp needs a command: up, down"},
      {"engrave f --pases 3", "'--pases' is no option of k7host engrave, did you mean '--passes'?"},
      {"engrave f --id A --hmoe",
       "'--hmoe' is no option of k7host engrave, did you mean '--home'?"},
      {"spindle fll", "'fll' is no command of k7host spindle, did you mean 'full'? Commands: on, "},
      {"spindle ramp dwn", "'dwn' is no command of k7host spindle ramp, did you mean 'down'?"},
      {"jog --direction left", "'left' is no direction: x+, x-, y+, y-, up or down"},
  };
  for (const auto& c : kCases) {
    EXPECT_NE(Parse(c.line).error.find(c.want), std::string::npos) << Parse(c.line).error;
  }
}

TEST(Arguments, EngraveGoesOnFromAFileOrAStroke) {
  EXPECT_EQ(Good("engrave --resume f.resume").resume, "f.resume");
  EXPECT_EQ(Good("engrave f --from-stroke 310").fromStroke, 310u);
  EXPECT_TRUE(Good("engrave f --from-stroke 3 --no-home").noHome);
  EXPECT_EQ(Good("engrave f --resume-to g").resumeTo, "g");
  for (const char* line : {"engrave f --resume g", "engrave --resume g --from-stroke 2",
                           "engrave f --no-home", "engrave f --from-stroke 0"}) {
    EXPECT_EQ(Parse(line).exitCode, kExitUsage) << line;
  }
}

TEST(WordsToResume, LeavesOutWhatIsOfOneRunOnly) {
  const std::vector<std::string> words = {
      "engrave",     "a.plt", "--home",          "--passes",  "2",      "--settings",
      "--resume-to", "g",     "--from-stroke=3", "--no-home", "--batch"};
  EXPECT_EQ(WordsToResume(words),
            (std::vector<std::string>{"engrave", "a.plt", "--passes", "2", "--batch"}));
}

TEST(Arguments, TellsItsVersionBehindEveryCommand) {
  for (const char* line : {"--version", "list --version", "engrave --version",
                           "settings get --version", "spindle ramp up --version"}) {
    const ParsedArguments parsed = Parse(line);
    EXPECT_EQ(parsed.exitCode, kExitOk) << line;
    EXPECT_EQ(parsed.help.substr(0, 7), "k7host ") << line;
  }
}

TEST(Arguments, EveryCommandThatSpeaksToAMachineTakesAnAddress) {
  for (const char* command :
       {"list", "info", "engrave f", "estimate f", "home", "switches", "jog", "goto 1 1",
        "spindle on", "spindle ramp up", "dialog", "settings", "setup"}) {
    EXPECT_EQ(Good(std::string(command) + " --tcp box:2000").tcp, "box:2000") << command;
  }
}

TEST(TcpAddress, IsAHostWithOrWithoutAPort) {
  constexpr struct {
    const char* text;
    const char* host;
    const char* port;
  } kGood[] = {{"box", "box", "23"},      {"10.0.0.7:2000", "10.0.0.7", "2000"},
               {"::1", "::1", "23"},      {"[::1]", "::1", "23"},
               {"[::1]:99", "::1", "99"}, {"box:65535", "box", "65535"}};
  std::string error;
  for (const auto& c : kGood) {
    const auto address = ParseTcpAddress(c.text, error);
    ASSERT_TRUE(address) << c.text;
    EXPECT_EQ(address->host, c.host) << c.text;
    EXPECT_EQ(address->port, c.port) << c.text;
  }
  constexpr const char* kBad[][2] = {{"", "'' is no HOST or HOST:PORT"},
                                     {":23", "':23' is no HOST or HOST:PORT"},
                                     {"[::1]23", "'[::1]23' is no HOST or HOST:PORT"},
                                     {"box:", "'' is no port; expected 1 to 65535"},
                                     {"box:x", "'x' is no port; expected 1 to 65535"},
                                     {"box:0", "'0' is no port; expected 1 to 65535"},
                                     {"box:65536", "'65536' is no port; expected 1 to 65535"}};
  for (const auto& [text, want] : kBad) {
    EXPECT_FALSE(ParseTcpAddress(text, error)) << text;
    EXPECT_EQ(error, want);
  }
  EXPECT_EQ(Parse("home --tcp box:x").exitCode, kExitUsage);
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
