#include "harness.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

namespace k7test {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

Clock::time_point After(int seconds) {
  return Clock::now() + std::chrono::seconds(seconds);
}

int LeftMs(Clock::time_point end) {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
  return left.count() > 0 ? static_cast<int>(left.count()) : 0;
}

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string Required(const char* name) {
  const char* value = std::getenv(name);
  if (value == nullptr) {
    std::fprintf(stderr, "%s is not set: run these tests through ./k7 test\n", name);
    std::abort();
  }
  return value;
}

fs::path ControllersFolder() {
  return Places::Get().prefix / "drive_c/ProgramData/Penfold Hatch/Veltrana/Controllers";
}

template <typename Condition>
bool WaitFor(Condition condition, int seconds = 60) {
  const auto end = After(seconds);
  while (!condition()) {
    if (Clock::now() >= end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

}  // namespace

// ------------------------------------------------------------------------------------- Process

Process::Process(const std::vector<std::string>& command, const fs::path& workingFolder) {
  int in[2], out[2];
  if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0) std::abort();
  std::vector<char*> words;
  for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  pid_ = fork();
  if (pid_ == 0) {
    setpgid(0, 0);
    dup2(in[0], STDIN_FILENO);
    dup2(out[1], STDOUT_FILENO);
    dup2(out[1], STDERR_FILENO);
    if (chdir(workingFolder.c_str()) != 0) _exit(126);
    execvp(words[0], words.data());
    _exit(127);
  }
  close(in[0]);
  close(out[1]);
  input_ = in[1];
  output_ = out[0];
}

Process::~Process() {
  CloseInput();
  if (Running()) {
    Signal(SIGTERM);
    Wait(10);
  }
  if (Running()) {
    kill(-pid_, SIGKILL);
    Wait(10);
  }
  close(output_);
}

void Process::WriteLine(const std::string& line) {
  const std::string bytes = line + "\n";
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t count = write(input_, bytes.data() + done, bytes.size() - done);
    if (count <= 0) return;
    done += static_cast<std::size_t>(count);
  }
}

void Process::CloseInput() {
  if (input_ >= 0) close(input_);
  input_ = -1;
}

bool Process::ReadLine(std::string& line, int deadlineSeconds) {
  const auto end = After(deadlineSeconds);
  for (;;) {
    if (const std::size_t at = pending_.find('\n'); at != std::string::npos) {
      line = pending_.substr(0, at);
      pending_.erase(0, at + 1);
      if (!line.empty() && line.back() == '\r') line.pop_back();
      return true;
    }
    pollfd wait{output_, POLLIN, 0};
    if (poll(&wait, 1, LeftMs(end)) <= 0) return false;
    char buffer[4096];
    const ssize_t count = read(output_, buffer, sizeof buffer);
    if (count <= 0) return false;
    pending_.append(buffer, static_cast<std::size_t>(count));
  }
}

std::string Process::ReadAll(int deadlineSeconds) {
  std::string all, line;
  const auto end = After(deadlineSeconds);
  while (ReadLine(line, LeftMs(end) / 1000 + 1)) all += line + "\n";
  return all + pending_;
}

void Process::Signal(int number) {
  if (Running()) kill(pid_, number);
}

bool Process::Running() {
  if (!ended_) ended_ = waitpid(pid_, &status_, WNOHANG) == pid_;
  return !ended_;
}

int Process::Wait(int deadlineSeconds) {
  if (!WaitFor([this] { return !Running(); }, deadlineSeconds)) return -1;
  return WIFEXITED(status_) ? WEXITSTATUS(status_) : -1;
}

// -------------------------------------------------------------------------------------- Places

const Places& Places::Get() {
  static const Places places{Required("K7_BIN_WINDOWS"), Required("K7_BIN_NATIVE"),
                             Required("K7_SOURCE"), Required("WINEPREFIX")};
  return places;
}

// ------------------------------------------------------------------------------------ settings

fs::path SettingsFile(const std::string& id) {
  return ControllersFolder() / (id + ".ini");
}

void WriteSettings(const std::string& id, const Settings& settings) {
  std::map<std::string, std::string> sections;
  for (const auto& [path, value] : settings) {
    const std::size_t slash = path.find('/');
    sections[path.substr(0, slash)] += path.substr(slash + 1) + "=" + value + "\r\n";
  }
  fs::create_directories(ControllersFolder());
  std::ofstream file(SettingsFile(id), std::ios::binary | std::ios::trunc);
  for (const auto& [section, keys] : sections) file << "[" << section << "]\r\n" << keys;
}

Settings ReadSettings(const std::string& id) {
  Settings settings;
  std::istringstream file(ReadFile(SettingsFile(id)));
  std::string section;
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty() && line.front() == '[') {
      section = line.substr(1, line.find(']') - 1);
    } else if (const std::size_t equals = line.find('='); equals != std::string::npos) {
      settings[section + "/" + line.substr(0, equals)] = line.substr(equals + 1);
    }
  }
  return settings;
}

void RemoveAllSettings() {
  fs::remove_all(ControllersFolder());
}

// ---------------------------------------------------------------------------------- Controller

Controller::Controller(int port, const std::string& id, std::vector<std::string> arguments) {
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

bool Controller::AllFaultsFired() {
  return Number("allFaultsFired") == 1;
}

void Controller::Control(const std::string& command) {
  std::ofstream(folder_ / "control") << command << "\n" << std::flush;
}

bool Controller::Running() {
  return process_->Running();
}

bool Controller::WaitForTranscript(const std::string& text) {
  return WaitFor([&] { return ReadFile(folder_ / "transcript").find(text) != std::string::npos; });
}

// --------------------------------------------------------------------------------------- Slots

Slots::Slots() : process_({"wine", "k7_slots.exe"}, Places::Get().windowsPrograms) {}

Slots::~Slots() = default;

std::string Slots::Ask(const std::string& command, int deadlineSeconds) {
  process_.WriteLine(command);
  std::string answer;
  return process_.ReadLine(answer, deadlineSeconds) ? answer : "no answer";
}

void Slots::Tell(const std::string& command) {
  process_.WriteLine(command);
}

int Slots::Quit() {
  process_.WriteLine("quit");
  return process_.Wait();
}

long long Slots::ResidentKiB() const {
  std::ifstream status("/proc/" + std::to_string(process_.Pid()) + "/status");
  for (std::string word; status >> word;) {
    long long kiB = 0;
    if (word == "VmRSS:" && status >> kiB) return kiB;
  }
  return 0;
}

// ---------------------------------------------------------------------------------------- host

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

std::string WindowsPath(const fs::path& path) {
  return "Z:" + path.string();
}

// -------------------------------------------------------------------------------------- golden

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
