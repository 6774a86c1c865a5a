#include "controller.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "settings_files.h"

namespace k7test {

namespace fs = std::filesystem;

Controller::Controller(int port, const std::string& id, const std::vector<std::string>& arguments) {
  static int serial = 0;
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  folder_ = Places::Get().prefix / "end-to-end" /
            (std::string(test->test_suite_name()) + "." + test->name()) / std::to_string(++serial);
  fs::remove_all(folder_);
  fs::create_directories(folder_);
  link_ = Places::Get().prefix / "dosdevices" / ("com" + std::to_string(port));
  fs::remove(link_);
  std::vector<std::string> command = {Places::Get().nativePrograms / "k7sim",
                                      "--pty",
                                      link_,
                                      "--transcript",
                                      folder_ / "transcript",
                                      "--transcript-times",
                                      "off",
                                      "--report",
                                      folder_ / "report.json",
                                      "--control",
                                      folder_ / "control"};
  if (!id.empty()) command.insert(command.end(), {"--id", id});
  bool speedGiven = false;
  for (const std::string& argument : arguments) speedGiven |= argument == "--speed";
  if (!speedGiven) command.insert(command.end(), {"--speed", "max"});
  command.insert(command.end(), arguments.begin(), arguments.end());
  process_ = std::make_unique<Process>(command, folder_);
  std::string line;
  while (process_->ReadLine(line, 20) && line != "ready") {
  }
  EXPECT_EQ(line, "ready") << "k7sim did not start";
}

Controller::~Controller() {
  Stop();
  std::error_code ignored;
  fs::remove(link_, ignored);
}

void Controller::Stop() {
  if (stopped_) return;
  stopped_ = true;
  process_->Signal(SIGTERM);
  EXPECT_EQ(process_->Wait(30), 0) << "k7sim did not end cleanly";
  EXPECT_EQ(Report().find("\"allFaultsFired\": false"), std::string::npos)
      << "a fault never fired: " << Report();
}

std::string Controller::WholeTranscript() {
  Stop();
  return ReadFile(folder_ / "transcript");
}

std::string Controller::Transcript() {
  std::istringstream whole(WholeTranscript());
  std::string lines;
  for (std::string line; std::getline(whole, line);) {
    if (line.rfind("> ", 0) == 0) lines += line.substr(2) + "\n";
  }
  return lines;
}

std::string Controller::Report() {
  Stop();
  return ReadFile(folder_ / "report.json");
}

double Controller::Number(const std::string& path) {
  nlohmann::json value = nlohmann::json::parse(Report());
  std::istringstream keys(path);
  for (std::string key; std::getline(keys, key, '.');) {
    value = value.is_array() ? value.at(std::stoul(key)) : value.at(key);
  }
  if (value.is_boolean()) return value.get<bool>() ? 1 : 0;
  return value.get<double>();
}

void Controller::Control(const std::string& command) {
  std::ofstream(folder_ / "control") << command << "\n" << std::flush;
}

bool Controller::HasHeard(const std::string& text) const {
  return CountHeard(text) > 0;
}

int Controller::CountHeard(const std::string& text) const {
  const std::string transcript = ReadFile(folder_ / "transcript");
  int seen = 0;
  for (std::size_t at = transcript.find(text); at != std::string::npos;
       at = transcript.find(text, at + 1)) {
    ++seen;
  }
  return seen;
}

bool Controller::WaitForTranscript(const std::string& text, int times) {
  return WaitFor([&] { return CountHeard(text) >= times; });
}

}  // namespace k7test
