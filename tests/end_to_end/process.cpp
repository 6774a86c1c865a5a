#include "process.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <utility>

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

// The ends of a program's standard handles: the program's, and ours.
struct Ends {
  int theirs[3] = {-1, -1, -1};
  int input = -1;
  int output = -1;
};

Ends MakePipes() {
  int in[2], out[2];
  if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0) std::abort();
  return {{in[0], out[1], out[1]}, in[1], out[0]};
}

Ends MakeTerminal() {
  winsize size{};
  size.ws_row = 25;
  size.ws_col = 80;
  int ours = -1, theirs = -1;
  if (openpty(&ours, &theirs, nullptr, nullptr, &size) != 0) std::abort();
  fcntl(ours, F_SETFD, FD_CLOEXEC);
  fcntl(theirs, F_SETFD, FD_CLOEXEC);
  return {{theirs, theirs, theirs}, ours, ours};
}

}  // namespace

Process::Process(const std::vector<std::string>& command, const fs::path& workingFolder,
                 Talk talk) {
  signal(SIGPIPE, SIG_IGN);  // a program that has ended must not end its test
  const Ends ends = talk == Talk::Terminal ? MakeTerminal() : MakePipes();
  std::vector<char*> words;
  for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  pid_ = fork();
  if (pid_ == 0) {
    signal(SIGPIPE, SIG_DFL);
    if (talk == Talk::Terminal) {
      setsid();
      ioctl(ends.theirs[0], TIOCSCTTY, 0);
    } else {
      setpgid(0, 0);
    }
    for (int handle = 0; handle < 3; ++handle) dup2(ends.theirs[handle], handle);
    if (chdir(workingFolder.c_str()) != 0) _exit(126);
    execvp(words[0], words.data());
    _exit(127);
  }
  close(ends.theirs[0]);
  if (ends.theirs[1] != ends.theirs[0]) close(ends.theirs[1]);
  input_ = ends.input;
  output_ = ends.output;
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

void Process::Write(const std::string& bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t count = write(input_, bytes.data() + done, bytes.size() - done);
    if (count <= 0) return;
    done += static_cast<std::size_t>(count);
  }
}

void Process::CloseInput() {
  if (input_ >= 0 && input_ != output_) close(input_);
  input_ = -1;
}

bool Process::ReadMore(Deadline end) {
  pollfd wait{output_, POLLIN, 0};
  if (poll(&wait, 1, LeftMs(end)) <= 0) return false;
  char buffer[4096];
  const ssize_t count = read(output_, buffer, sizeof buffer);
  if (count <= 0) return false;
  pending_.append(buffer, static_cast<std::size_t>(count));
  return true;
}

bool Process::ReadLine(std::string& line, int deadlineSeconds) {
  const auto end = After(deadlineSeconds);
  std::size_t at = 0;
  while ((at = pending_.find('\n')) == std::string::npos) {
    if (!ReadMore(end)) return false;
  }
  line = pending_.substr(0, at);
  pending_.erase(0, at + 1);
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return true;
}

std::string Process::ReadUntil(const std::string& text, int deadlineSeconds) {
  const auto end = After(deadlineSeconds);
  std::size_t at = 0;
  while ((at = pending_.find(text)) == std::string::npos) {
    if (!ReadMore(end)) return std::exchange(pending_, {});
  }
  const std::string read = pending_.substr(0, at + text.size());
  pending_.erase(0, read.size());
  return read;
}

std::string Process::ReadAll(int deadlineSeconds) {
  const auto end = After(deadlineSeconds);
  while (ReadMore(end)) {
  }
  return std::exchange(pending_, {});
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

}  // namespace k7test
