// Every fault in every phase: each call does what docs/reliability.md says of it, and whatever has
// happened, the release returns and the same process connects to the machine once it is back.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <optional>
#include <sstream>

#include "fault_table.h"
#include "harness.h"
#include "machines.h"

namespace k7test {
namespace {

constexpr char kId[] = "ENDTOENDFAULTS01";
constexpr int kPort = 7;
// A call that has not returned after so long waits for the machine: the driver's own times are 2 s
// and less.
constexpr int kWaitsSeconds = 6;
// After the link has gone a call returns within 3 s; 3 more for a busy machine.
constexpr int kLostSeconds = 3 + 3;

std::vector<std::string> CellsOf(const std::string& row) {
  std::vector<std::string> cells;
  std::istringstream split(row);
  for (std::string cell; std::getline(split, cell, '|');) {
    const std::size_t first = cell.find_first_not_of(' ');
    if (first == cell.npos) continue;
    cells.push_back(cell.substr(first, cell.find_last_not_of(' ') + 1 - first));
  }
  return cells;
}

// What the table in the docs says; nothing: it has no such cell.
std::optional<Outcome> Documented(const std::string& fault, const std::string& phase) {
  std::istringstream lines(ReadFile(Places::Get().source / "docs/reliability.md"));
  std::vector<std::string> heading;
  for (std::string line; std::getline(lines, line);) {
    const std::vector<std::string> cells = CellsOf(line);
    if (cells.empty()) continue;
    if (cells[0] == "What goes wrong") heading = cells;
    if (cells[0] != fault || cells.size() != heading.size()) continue;
    for (std::size_t i = 1; i < cells.size(); ++i) {
      if (heading[i] != phase) continue;
      if (cells[i] == "returns") return Outcome::Returns;
      if (cells[i] == "waits") return Outcome::Waits;
      if (cells[i] == "ends") return Outcome::Ends;
      if (cells[i] == "-") return Outcome::Impossible;
    }
  }
  return std::nullopt;
}

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
  if (const std::size_t at = text.find(what); at != text.npos) text.replace(at, what.size(), by);
  return text;
}

struct Cell {
  const FaultRow* fault;
  const Phase* phase;
};

// A part for every run of the suite: each fault and each phase is in it. `chosen` false: the rest.
std::vector<Cell> Cells(bool chosen) {
  std::vector<Cell> cells;
  std::size_t number = 0;
  for (const FaultRow& fault : kFaults) {
    for (const Phase& phase : kPhases) {
      if ((number % 6 == 0) == chosen) cells.push_back({&fault, &phase});
      ++number;
    }
  }
  return cells;
}

class FaultMatrix : public testing::TestWithParam<Cell> {
 protected:
  static Settings MachineSettings(const std::string& phase) {
    if (phase == "probe" || phase == "home" || phase == "switches" || phase == "ramp") {
      return FullMachine();
    }
    Settings settings = EngraversSettings();
    settings["Engrave Settings/Multi Pass"] = "1";
    settings["Engrave Settings/Max Pass Depth"] = "1008981770";  // 0.01: two passes
    return settings;
  }
  static std::vector<std::string> Table(const std::string& phase) {
    const bool full = phase == "probe" || phase == "home" || phase == "switches" || phase == "ramp";
    return full ? FullTable() : EngraversTable();
  }

  // The fault acts on what comes after this.
  void Arm(Controller& controller) {
    const std::string script =
        Replaced(Replaced(GetParam().fault->script, "TRIGGER", GetParam().phase->trigger),
                 "ENDLESS", std::string(300, 'x'));
    signsOfLife_ = controller.CountHeard("> SmoothieIsConnected");
    controller.Control("fault " + script);
    controller.Control("send fault armed");
    ASSERT_TRUE(controller.WaitForTranscript("fault armed"));
  }

  // The answer of the calls one after the other; nothing: one has not returned by the deadline.
  std::optional<std::string> Call(Controller& controller, Slots& slots, int seconds) {
    std::string answer;
    for (; next_ < GetParam().phase->calls.size(); ++next_) {
      const std::string& call = GetParam().phase->calls[next_];
      if (!told_) slots.Tell(call == "connect" ? "connect " + std::string{kId} : call);
      if (!told_ && call == "settings 0 1") CloseDialog(controller);
      told_ = true;
      answer = slots.Answer(seconds);
      if (answer == "no answer") return std::nullopt;
      told_ = false;
    }
    return answer;
  }

  // The user cancels once the dialog has asked for a sign of life, unless it closes first: a dialog
  // on a machine that does not answer ends by itself, on a busy desk before anybody has seen it.
  void CloseDialog(Controller& controller) {
    if (desk_.Ask("dialog-wait K7 System Controller") != "open") return;
    EXPECT_TRUE(
        WaitFor([&] { return controller.CountHeard("> SmoothieIsConnected") > signsOfLife_; }, 20));
    desk_.Ask("dialog-press 2");
  }

  Slots desk_;
  int signsOfLife_ = 0;  // heard when the fault was armed
  std::size_t next_ = 0;
  bool told_ = false;
};

TEST_P(FaultMatrix, EndsAsTheTableSays) {
  const auto& [fault, phase] = GetParam();
  const std::optional<Outcome> documented = Documented(fault->name, phase->name);
  const char* const record = std::getenv("K7_RECORD_FAULTS");
  ASSERT_TRUE(documented || record) << "not in docs/reliability.md";
  if (documented == Outcome::Impossible && record == nullptr) return;

  std::optional<Controller> controller;
  RemoveAllSettings();
  WriteSettings(kId, MachineSettings(phase->name));
  controller.emplace(kPort, kId, Table(phase->name));
  Slots slots;
  const std::string name = phase->name;
  if (name != "search") {
    ASSERT_EQ(slots.AskUntil("1", "enumerate"), "1");
  }
  if (name != "search" && name != "connect") {
    ASSERT_EQ(slots.AskUntil("connected", std::string{"connect "} + kId), "connected");
    ASSERT_EQ(slots.Ask("window"), "done");
  }
  if (name == "probe" || name == "home") slots.Ask("home");
  if (name == "dialog") desk_.Ask("dialog-enabled 2");  // it has found its display by then
  for (const std::string& command : phase->leadIn) slots.Ask(command);

  Arm(*controller);
  const bool mayWait = record != nullptr || documented != Outcome::Returns;
  const std::optional<std::string> answer = Call(*controller, slots, mayWait ? kWaitsSeconds : 60);
  Outcome outcome = answer ? Outcome::Returns : Outcome::Waits;
  // A call may have returned before the bytes that end the process have come.
  const int exitCode = slots.EndedBy(documented == Outcome::Ends ? 20 : answer ? 0 : 1);
  controller->Stop();  // the cable is pulled
  if (exitCode != Slots::kRuns) {
    EXPECT_NE(exitCode, 0);
    outcome = Outcome::Ends;
  } else if (!answer) {
    EXPECT_TRUE(Call(*controller, slots, kLostSeconds)) << "not even after the link has gone";
  }
  if (record != nullptr) {
    constexpr const char* kWords[] = {"returns", "waits", "ends", "-"};
    std::ofstream(record, std::ios::app)
        << fault->name << "|" << phase->name << "|" << kWords[static_cast<int>(outcome)] << "|"
        << answer.value_or("") << "\n";
  } else {
    EXPECT_EQ(outcome, *documented);
  }
  if (outcome == Outcome::Ends) return;

  if (name != "search" && name != "release") {
    slots.Tell("release");
    EXPECT_NE(slots.Answer(10), "no answer");
  }
  controller.reset();
  controller.emplace(kPort, kId, EngraversTable());
  EXPECT_EQ(slots.AskUntil("connected", std::string{"connect "} + kId), "connected");
  EXPECT_EQ(slots.Ask("release"), "released");
  EXPECT_EQ(slots.Quit(), 0);
}

std::string TitleOf(const testing::TestParamInfo<Cell>& cell) {
  return std::string{cell.param.fault->title} + "_" + cell.param.phase->title;
}
INSTANTIATE_TEST_SUITE_P(Chosen, FaultMatrix, testing::ValuesIn(Cells(true)), TitleOf);
INSTANTIATE_TEST_SUITE_P(Rest, FaultMatrix, testing::ValuesIn(Cells(false)), TitleOf);

}  // namespace
}  // namespace k7test
