// A child process and what passes between it and a test.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace k7test {

enum class Talk {
  Pipes,     // standard input on one, standard output and errors on another
  Terminal,  // all three on a terminal of its own, as a person has it
};

class Process {
 public:
  Process(const std::vector<std::string>& command, const std::filesystem::path& workingFolder,
          Talk talk = Talk::Pipes);
  ~Process();  // ends it when it still runs
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  // To a program that has ended: nothing happens.
  void Write(const std::string& bytes);
  void WriteLine(const std::string& line) { Write(line + "\n"); }
  void CloseInput();
  // Next line of output without its end; false at the end of output or after the deadline.
  bool ReadLine(std::string& line, int deadlineSeconds = 60);
  // Output up to and including the text; what has come by the deadline or the end without it.
  std::string ReadUntil(const std::string& text, int deadlineSeconds = 60);
  // All the rest of the output, until the program ends or the deadline has passed.
  std::string ReadAll(int deadlineSeconds = 120);
  void Signal(int number);
  // Waits for the end: exit code, or -1 when a signal or the deadline ended it.
  int Wait(int deadlineSeconds = 60);
  bool Running();
  pid_t Pid() const { return pid_; }

 private:
  using Deadline = std::chrono::steady_clock::time_point;
  // Waits for output and adds it to `pending_`; false at its end and after the deadline.
  bool ReadMore(Deadline end);

  pid_t pid_ = -1;
  int input_ = -1;
  int output_ = -1;
  bool ended_ = false;
  int status_ = 0;
  std::string pending_;
};

// Waits until the condition holds; false: it did not within the deadline.
template <typename Condition>
bool WaitFor(Condition condition, int deadlineSeconds = 60) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(deadlineSeconds);
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

}  // namespace k7test
