// Every command that a guide or README shows runs, in the order of its page, and ends as the page
// says. A command that nobody here knows fails, and so does an entry of the tables below that no
// page needs any more.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <fstream>
#include <functional>
#include <list>
#include <memory>
#include <regex>
#include <set>
#include <sstream>

#include "guide_pages.h"
#include "guide_tables.h"
#include "harness.h"

namespace k7test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr char kId[] = "K7DEMONSTRATION1";  // as the pages call their machine

bool StartsWith(const std::string& command, const std::string& words) {
  return command.starts_with(words) &&
         (command.size() == words.size() || command[words.size()] == ' ');
}

bool RunsElsewhere(const std::string& command) {
  return std::any_of(std::begin(kElsewhere), std::end(kElsewhere),
                     [&](const Elsewhere& entry) { return StartsWith(command, entry.command); });
}

const Attended* AttendedOf(const std::string& command) {
  for (const Attended& attended : kAttended) {
    if (command == attended.command) return &attended;
  }
  return nullptr;
}

std::vector<ShownCommand> CommandsOfPage(const std::string& page) {
  return CommandsOf(ReadFile(Places::Get().source / page));
}

// What words mean, `replace` for each word that a row of kMeant knows.
std::string WithMeanings(const std::string& command,
                         const std::function<std::string(const Meant&)>& replace) {
  std::istringstream words(command);
  std::string text;
  for (std::string word; std::getline(words, word, ' ');) {
    for (const Meant& row : kMeant) {
      if (word != row.word || !StartsWith(command, row.command)) continue;
      word = replace(row);
      break;
    }
    text += (text.empty() ? "" : " ") + word;
  }
  return text;
}

// Some commands of a page, one after the other.
struct Stretch {
  std::string page;
  std::size_t number = 0;  // of the page's stretches, from 1
  std::vector<ShownCommand> commands;
};

void PrintTo(const Stretch& stretch, std::ostream* out) {
  *out << stretch.page << ", stretch " << stretch.number;
}

class Guide : public testing::TestWithParam<Stretch> {
 public:
  // What a command needs that its page has not made, or takes as known.
  struct Before {
    const char* command;
    void (Guide::*prepare)();
  };
  static const Before kBefore[7];

 protected:
  Guide() {
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    fs::create_directories(trace_.parent_path());
    fs::remove(trace_);
    fs::remove(port_);
    RemoveAllSettings();
    // Left by a test of the module that ran here before: nobody has installed it.
    fs::remove_all(Places::Get().prefix / "drive_c/Program Files/Penfold Hatch/Cache");
    std::ofstream(folder_ / "drawing.plt")
        << "IN;SP1;PU508,508;PD1524,508;PU1524,1524;PD508,1524;PU508,1016;PD1524,1016;";
    fs::copy_file(folder_ / "drawing.plt", folder_ / "plate.plt");
    fs::copy_file(Places::Get().source / "host/demo.ini", folder_ / "other.ini");
    fs::permissions(folder_ / "other.ini", fs::perms::all);
  }

  ~Guide() override {
    for (Process& simulator : simulators_) {
      simulator.Signal(SIGTERM);
      EXPECT_EQ(simulator.Wait(30), 0) << simulator.ReadAll(1);
    }
    controller_.reset();
    fs::remove(port_);
  }

  // Runs what the page shows, each command that an outline stands for.
  void Run(const ShownCommand& shown) {
    for (const std::string& command : CommandsOfOutline(shown.text)) {
      SCOPED_TRACE(command);
      const std::string meant = WithMeanings(command, [this](const Meant& row) {
        std::string means = std::regex_replace(row.means, std::regex(R"(\{id\})"), id_);
        return std::regex_replace(means, std::regex(R"(\{port\})"), tcpPort_);
      });
      if (StartsWith(command, "k7host")) {
        RunHostHere(command, meant, shown.answer);
      } else if (StartsWith(command, "k7sim")) {
        RunSimulator(meant);
      } else if (StartsWith(command, "./k7")) {
        RunAndExpectSuccess({"sh", "-c", meant}, Places::Get().source);
      } else if (StartsWith(command, "ln") || StartsWith(command, "echo")) {
        RunAndExpectSuccess({"sh", "-c", meant}, folder_);
      } else {
        ADD_FAILURE() << "is not known here: tell this test how to run it, or why it does not";
      }
    }
  }

 private:
  void RunAndExpectSuccess(const std::vector<std::string>& words, const fs::path& folder) {
    Process process(words, folder);
    const std::string output = process.ReadAll();
    EXPECT_EQ(process.Wait(), 0) << output;
  }

  void RunSimulator(const std::string& command) {
    std::vector<std::string> words = WordsOf(command);
    words[0] = Places::Get().nativePrograms / words[0];
    if (StartsWith(command, "k7sim --help")) return RunAndExpectSuccess(words, folder_);
    if (simulators_.empty()) words.insert(words.end(), {"--control", "pipe"});
    Process& simulator = simulators_.emplace_back(words, folder_);
    EXPECT_THAT(simulator.ReadUntil("ready\n"), HasSubstr("ready\n"));
  }

  // The machine, unless the page has shown how to get one.
  void StartMachine() {
    if (controller_ || !simulators_.empty()) return;
    fs::create_directories(SettingsFile(kId).parent_path());
    fs::copy_file(folder_ / "other.ini", SettingsFile(kId));
    controller_ = std::make_unique<Controller>(
        7, kId,
        std::vector<std::string>{"--table", "7,4.5,2", "--table-home", "1,1", "--surface",
                                 "plane:1.2", "--position", "6,4,0.3", "--tcp", tcpPort_});
  }

  std::vector<std::string> HostWords(const std::string& command) const {
    std::vector<std::string> words = WordsOf(command);
    words[0] = Places::Get().windowsPrograms / "k7host.exe";
    words.insert(words.begin(), "wine");
    return words;
  }

  HostRun RunAlone(const std::string& command) const {
    Process host(HostWords(command), folder_);
    host.CloseInput();
    HostRun run;
    run.output = host.ReadAll();
    run.exitCode = host.Wait();
    std::erase(run.output, '\r');
    return run;
  }

  HostRun RunAttended(const std::string& command, const Attended& attended) {
    const bool keys =
        attended.person == Person::PressesEscape || attended.person == Person::PressesEnter;
    Process host(HostWords(command), folder_, keys ? Talk::Terminal : Talk::Pipes);
    HostRun run;
    if (attended.person == Person::CancelsTheDialog) {
      Slots desk;  // ended with the dialog: it has the driver, and the doctor asks no port then
      const std::string title = controller_ ? "Demonstration machine" : "K7 System Controller";
      desk.Tell("dialog-wait " + title);
      std::string open = "no answer";
      while (open == "no answer" && host.Running()) open = desk.Answer(1);
      if (open == "open") {
        EXPECT_EQ(desk.Ask("dialog-press 2"), "closed");
      }
    } else {
      run.output = host.ReadUntil(attended.once);
      EXPECT_THAT(run.output, HasSubstr(attended.once));
    }
    if (attended.person == Person::Interrupts) host.Signal(SIGINT);
    // A key that comes too early is thrown away.
    for (int i = 0; keys && i < 60 && host.Running(); ++i) {
      host.Write(attended.person == Person::PressesEscape ? "\x1b" : "\r");
      run.output += host.ReadAll(1);
    }
    run.output += host.ReadAll();
    run.exitCode = host.Wait();
    return run;
  }

  // On a busy machine an answer can miss the 200 ms of a search, or take longer than the doctor
  // lets pass; once a program ended there that had not said a word.
  static bool CameTooLate(const std::string& command, const std::string& output) {
    return StartsWith(command, "k7host doctor") || output.empty() ||
           output.find("no controller found") != std::string::npos ||
           output.find("was not found or does not answer") != std::string::npos;
  }

  void RunHostHere(const std::string& command, const std::string& meant,
                   const std::vector<std::string>& answer) {
    StartMachine();
    for (const Before& before : kBefore) {
      if (StartsWith(command, before.command)) (this->*before.prepare)();
    }
    // An answer that is an error is one of wrong usage or bad input.
    const int exitCode = !answer.empty() && answer[0].starts_with("k7host: ") ? 2 : 0;
    HostRun run;
    for (int i = 0; i < 5; ++i) {
      const Attended* attended = AttendedOf(command);
      run = attended != nullptr ? RunAttended(meant, *attended) : RunAlone(meant);
      if (run.exitCode == exitCode || !CameTooLate(command, run.output)) break;
    }
    if (!sound_.empty()) std::ofstream(SettingsFile(kId), std::ios::binary) << sound_;
    sound_.clear();
    EXPECT_EQ(run.exitCode, exitCode) << run.output;
    ExpectShown(answer, run.output);
    std::smatch listed;
    if (std::regex_search(run.output, listed, std::regex("(^|\n)0\t(\\w+)\t"))) id_ = listed[2];
  }

  static void ExpectShown(const std::vector<std::string>& answer, const std::string& output) {
    std::istringstream lines(output);
    for (std::string shown : answer) {
      for (const OfAComputer& row : kOfAComputer) {
        const std::size_t at = shown.find(row.shown);
        if (at != std::string::npos) shown.replace(at, std::strlen(row.shown), row.here);
      }
      std::string line;
      while (std::getline(lines, line) && !IsShownAs(shown, line)) {
      }
      EXPECT_TRUE(lines) << "no line that is shown as\n"
                         << shown << "\nin its place in\n"
                         << output;
    }
  }

  void HaveABackup() {
    if (!fs::exists(folder_ / "backup")) RunAlone("k7host settings backup backup");
  }
  void HaveAnExport() {
    if (!fs::exists(folder_ / "IN.json")) RunAlone("k7host settings export IN.json");
  }
  void HaveATrace() {
    if (!fs::exists(trace_)) RunAlone("k7host home --trace C:\\Temp\\trace.txt");
  }
  // As a technician leaves them.
  void LetEveryUserWrite() {
    for (const auto& entry : fs::recursive_directory_iterator(SettingsFile(kId).parent_path())) {
      fs::permissions(entry, fs::perms::all);
    }
  }
  // The cable is pulled in the middle of the drawing.
  void BreakOffAJob() {
    controller_->Control("fault reply=EX,nth=12,do=close,ms=100");
    EXPECT_EQ(RunAlone("k7host engrave drawing.plt").exitCode, 3);
  }
  // Somebody has written into the settings by hand.
  void SpoilThePitch() {
    sound_ = ReadFile(SettingsFile(kId));
    Settings settings = ReadSettings(kId);
    settings["Axis X/Screw Pitch"] = "0.5";
    WriteSettings(kId, settings);
  }

  const fs::path folder_ = Places::Get().prefix / "end-to-end/guide";
  const fs::path trace_ = Places::Get().prefix / "drive_c/Temp/trace.txt";
  const fs::path port_ = Places::Get().prefix / "dosdevices/com7";
  const std::string tcpPort_ = std::to_string(20000 + getpid() % 20000);
  std::string id_ = kId;
  std::unique_ptr<Controller> controller_;
  std::list<Process> simulators_;
  std::string sound_;  // the settings before somebody spoiled them
};

const Guide::Before Guide::kBefore[7] = {
    {"k7host settings restore", &Guide::HaveABackup},
    {"k7host settings diff ID backup\\settings.ini", &Guide::HaveABackup},
    {"k7host settings import", &Guide::HaveAnExport},
    {"k7host doctor", &Guide::LetEveryUserWrite},
    {"k7host trace", &Guide::HaveATrace},
    {"k7host engrave --resume", &Guide::BreakOffAJob},
    {"k7host home --id", &Guide::SpoilThePitch},
};

TEST_P(Guide, ShowsCommandsThatRun) {
  for (const ShownCommand& shown : GetParam().commands) Run(shown);
}

// A page that shows how to start the machine is one stretch; of others each stretch has a machine
// of its own, so that they can run side by side.
std::vector<Stretch> StretchesThatRunSomething() {
  constexpr std::size_t kMostCommands = 3;
  std::vector<Stretch> stretches;
  for (const std::string& page : GuidePages()) {
    std::vector<ShownCommand> commands = CommandsOfPage(page);
    std::erase_if(commands, [](const ShownCommand& shown) { return RunsElsewhere(shown.text); });
    const bool startsMachine =
        std::any_of(commands.begin(), commands.end(), [](const ShownCommand& shown) {
          return StartsWith(shown.text, "k7sim") && !StartsWith(shown.text, "k7sim --help");
        });
    std::size_t number = 0;
    for (const ShownCommand& shown : commands) {
      if (number == 0 || (!startsMachine && stretches.back().commands.size() == kMostCommands)) {
        stretches.push_back({page, ++number, {}});
      }
      stretches.back().commands.push_back(shown);
    }
  }
  return stretches;
}

INSTANTIATE_TEST_SUITE_P(, Guide, testing::ValuesIn(StretchesThatRunSomething()),
                         [](const auto& stretch) {
                           std::string name;
                           for (const char c : stretch.param.page) {
                             name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
                           }
                           return name + "_" + std::to_string(stretch.param.number);
                         });

TEST(GuideTables, HaveNoEntryThatNoPageNeeds) {
  std::set<std::string> needed;
  for (const std::string& page : GuidePages()) {
    for (const ShownCommand& shown : CommandsOfPage(page)) {
      for (const std::string& command : CommandsOfOutline(shown.text)) {
        for (const Elsewhere& row : kElsewhere) {
          if (StartsWith(command, row.command)) needed.insert(row.command);
        }
        for (const Guide::Before& row : Guide::kBefore) {
          if (StartsWith(command, row.command)) needed.insert(row.command);
        }
        if (const Attended* row = AttendedOf(command)) needed.insert(row->command);
        WithMeanings(command, [&](const Meant& row) {
          needed.insert(std::string(row.command) + ": " + row.word);
          return std::string(row.word);
        });
      }
      for (const OfAComputer& row : kOfAComputer) {
        for (const std::string& line : shown.answer) {
          if (line.find(row.shown) != std::string::npos) needed.insert(row.shown);
        }
      }
    }
  }
  for (const Elsewhere& row : kElsewhere) EXPECT_TRUE(needed.count(row.command)) << row.command;
  for (const Attended& row : kAttended) EXPECT_TRUE(needed.count(row.command)) << row.command;
  for (const OfAComputer& row : kOfAComputer) EXPECT_TRUE(needed.count(row.shown)) << row.shown;
  for (const Guide::Before& row : Guide::kBefore) {
    EXPECT_TRUE(needed.count(row.command)) << row.command;
  }
  for (const Meant& row : kMeant) {
    EXPECT_TRUE(needed.count(std::string(row.command) + ": " + row.word))
        << row.command << ": " << row.word;
  }
}

TEST(GuidePages, AreReadAsPeopleReadThem) {
  const std::vector<ShownCommand> commands = CommandsOf(
      "Text with `k7host list`, `k7host`, and `k7host\nhome`.\n\n    > k7host info\n"
      "    id: 7\n\n    k7sim --pty a    # a machine\n\n```\n./k7 demo\nout\n```\n");
  std::vector<std::string> texts;
  for (const ShownCommand& shown : commands) texts.push_back(shown.text);
  EXPECT_THAT(texts, testing::ElementsAre("k7host list", "k7host home", "k7host info",
                                          "k7sim --pty a", "./k7 demo"));
  EXPECT_THAT(commands[2].answer, testing::ElementsAre("id: 7"));
  EXPECT_THAT(CommandsOfOutline("a [--b|--c \"X Y\"] d|e"),
              testing::ElementsAre("a d", "a --b d", "a --c \"X Y\" d", "a e"));
  EXPECT_THAT(WordsOf("a \"b c\" d"), testing::ElementsAre("a", "b c", "d"));
  EXPECT_TRUE(IsShownAs("a ... c", "a b c"));
  EXPECT_FALSE(IsShownAs("a ... c", "a b cd"));
  EXPECT_FALSE(IsShownAs("a", "ab"));
  EXPECT_TRUE(IsShownAs("...b", "aab"));
}

}  // namespace
}  // namespace k7test
