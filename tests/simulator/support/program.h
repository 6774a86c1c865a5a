// Runs k7sim as a program, and opens its ports as a host does.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "tests/simulator/support/content.h"
#include "wire/unique_fd.h"

extern char** environ;

namespace k7test {

inline constexpr int kDeadlineMs = 20'000;

// Reads until the text has come, the deadline has passed or the port has closed. The result is what
// has been read.
inline std::string ReadUntil(int fd, const std::string& wanted, int deadlineMs = kDeadlineMs) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::milliseconds(deadlineMs);
  std::string got;
  while (got.find(wanted) == got.npos) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    pollfd wait = {fd, POLLIN, 0};
    if (left.count() <= 0 || poll(&wait, 1, static_cast<int>(left.count())) <= 0) break;
    char bytes[512];
    const ssize_t count = read(fd, bytes, sizeof bytes);
    if (count <= 0) break;
    got.append(bytes, static_cast<std::size_t>(count));
  }
  return got;
}

class Program {
 public:
  explicit Program(std::vector<std::string> arguments) {
    int out[2];
    EXPECT_EQ(pipe2(out, O_CLOEXEC), 0);
    out_.Reset(out[0]);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, out[1], 1);
    posix_spawn_file_actions_adddup2(&actions, out[1], 2);
    arguments.insert(arguments.begin(), K7SIM_PROGRAM);
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    EXPECT_EQ(posix_spawn(&pid_, K7SIM_PROGRAM, &actions, nullptr, argv.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    close(out[1]);
  }
  ~Program() {
    if (pid_ > 0) Stop();
  }

  std::string Output(const std::string& until) { return ReadUntil(out_.Get(), until); }
  void Signal(int number) const { kill(pid_, number); }
  int Wait() {
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  int Stop() {
    Signal(SIGTERM);
    return Wait();
  }

 private:
  pid_t pid_ = 0;
  k7sim::UniqueFd out_;
};

inline std::string Folder() {
  std::string name = testing::TempDir() + "k7sim_XXXXXX";
  EXPECT_NE(mkdtemp(name.data()), nullptr);
  return name + "/";
}

inline std::string Ask(int fd, const std::string& line, const std::string& until,
                       int deadlineMs = kDeadlineMs) {
  EXPECT_EQ(write(fd, line.data(), line.size()), static_cast<ssize_t>(line.size()));
  return ReadUntil(fd, until, deadlineMs);
}

class Stopwatch {
 public:
  double Seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

template <typename Condition>
bool WaitFor(Condition condition) {
  for (const Stopwatch watch; watch.Seconds() * 1000 < kDeadlineMs;) {
    if (condition()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return false;
}

inline k7sim::UniqueFd OpenPort(const std::string& path) {
  k7sim::UniqueFd fd(open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK));
  EXPECT_TRUE(fd) << path;
  return fd;
}

}  // namespace k7test
