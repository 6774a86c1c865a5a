#include "harness.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace k7test {

namespace fs = std::filesystem;

namespace {

// The identity, now with these settings and nobody else with any.
const std::string& WithSettings(const std::string& id, const Settings& settings) {
  RemoveAllSettings();
  WriteSettings(id, settings);
  return id;
}

}  // namespace

Slots::Slots() : process_({"wine", "k7_slots.exe"}, Places::Get().windowsPrograms) {}

std::string Slots::Ask(const std::string& command, int deadlineSeconds) {
  Tell(command);
  return Answer(deadlineSeconds);
}

std::string Slots::AskUntil(const std::string& wanted, const std::string& command,
                            int deadlineSeconds) {
  std::string answer;
  for (int i = 0; i < 5 && answer != wanted; ++i) answer = Ask(command, deadlineSeconds);
  return answer;
}

void Slots::Tell(const std::string& command) {
  process_.WriteLine(command);
}

std::string Slots::Answer(int deadlineSeconds) {
  std::string answer;
  return process_.ReadLine(answer, deadlineSeconds) ? answer : "no answer";
}

int Slots::Quit() {
  process_.WriteLine("quit");
  return process_.Wait();
}

int Slots::EndedBy(int seconds) {
  return WaitFor([&] { return !process_.Running(); }, seconds) ? process_.Wait() : kRuns;
}

long long Slots::StatusNumber(const std::string& key) const {
  std::ifstream status("/proc/" + std::to_string(process_.Pid()) + "/status");
  for (std::string word; status >> word;) {
    long long number = 0;
    if (word == key && status >> number) return number;
  }
  return 0;
}

FreshController::FreshController(const std::string& id, const Settings& settings,
                                 const std::vector<std::string>& arguments)
    : Controller(7, WithSettings(id, settings), arguments) {}

ConnectedMachine::ConnectedMachine(const std::string& id, const Settings& settings,
                                   const std::vector<std::string>& arguments,
                                   const std::string& window)
    : controller(id, settings, arguments) {
  EXPECT_EQ(slots.AskUntil("connected", "connect " + id), "connected");
  EXPECT_EQ(slots.Ask(window), "done");
}

HostRun RunHost(const std::vector<std::string>& arguments, int deadlineSeconds) {
  std::vector<std::string> command = {"wine", "k7host.exe"};
  command.insert(command.end(), arguments.begin(), arguments.end());
  Process process(command, Places::Get().windowsPrograms);
  process.CloseInput();
  HostRun run;
  run.output = process.ReadAll(deadlineSeconds);
  run.exitCode = process.Wait(10);
  std::erase(run.output, '\r');
  return run;
}

void ExpectGolden(const std::string& name, const std::string& text) {
  const fs::path path = Places::Get().source / "tests/golden" / name;
  if (std::getenv("K7_UPDATE_GOLDEN") != nullptr) {
    std::ofstream(path, std::ios::binary) << text;
    return;
  }
  ASSERT_TRUE(fs::exists(path)) << path << " is missing";
  EXPECT_EQ(text, ReadFile(path)) << "differs from " << path;
}

}  // namespace k7test
