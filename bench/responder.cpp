// k7_responder: the far end of a serial link that does nothing but answer and count. It takes lines
// from a pseudo terminal the way a wire and a board of a stated speed would, answers each like the
// controller, and says on request how many lines came and how long that took.
//
// Standard input takes one command a line: "condition NAME" (counts start afresh; answered "ok"),
// "report" (answered with one line of JSON), end of file (ends).
#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <termios.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>

namespace {

using Ns = std::int64_t;

constexpr Ns kNsPerSecond = 1000000000;
constexpr Ns kNsPerMs = 1000000;

Ns Now() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * kNsPerSecond + now.tv_nsec;
}

// What stands between the sender and the answer to a line.
struct Condition {
  const char* name;
  Ns byteNs;        // a byte's time on the wire, each direction
  Ns turnaroundNs;  // from the taking of a line to the start of its answer
  Ns lineNs;        // from the taking of a line to that of the next
};

constexpr Condition kConditions[] = {
    {"ideal", 0, 0, 0},
    {"115200", 10 * kNsPerSecond / 115200, 0, 0},
    {"1ms", 0, 1 * kNsPerMs, 1 * kNsPerMs},
    {"5ms", 0, 5 * kNsPerMs, 1 * kNsPerMs},
};

// The answers of the controller to the lines that a driver or a sender waits for.
struct AnswerRow {
  std::string_view line;
  std::string_view answer;
};

constexpr AnswerRow kAnswers[] = {
    {"SmoothieIsConnected", "SmoothieIsConnected\r\n"},
    {"config-get sd controller_id", "sd: controller_id is set to BENCHBENCHBENCH0\r\n"},
    {"TableIsHomed", "TableIsHomedTRUE\r\n"},
    {"SendBlockMessagesOn", "SendBlockMessagesOn\r\n"},
    {"SendBlockMessagesOff", "SendBlockMessagesOff\r\n"},
    {"M105", "ok\n"},  // with this question a sender of numbered lines finds out who is there
};

bool IsMove(std::string_view line) {
  const std::size_t at = line.find("G0 ");
  return at != line.npos && line.find_first_of("XYZ", at) != line.npos;
}

// Numbered lines ("N12 G0 X1*45") are answered the way their senders expect.
bool IsNumbered(std::string_view line) {
  return line.size() > 1 && line[0] == 'N' &&
         (line[1] == '-' || std::isdigit(static_cast<unsigned char>(line[1])) != 0);
}

// Works out when each line is taken and when each answer arrives. Does not touch the terminal.
class Board {
 public:
  void SetCondition(const Condition& condition) {
    condition_ = condition;
    lines_ = 0;
    shortest_ = longest_ = 0;
  }

  // Bytes that have been read just now.
  void Take(std::string_view bytes, Ns now) {
    for (const char byte : bytes) {
      inFree_ = std::max(inFree_, now) + condition_.byteNs;
      line_ += byte;
      if (byte != '\n') continue;
      TakeLine(inFree_);
      line_.clear();
    }
  }

  // The answers that have arrived by `now`, taken out.
  std::string Arrived(Ns now) {
    std::string bytes;
    for (; !answers_.empty() && answers_.front().at <= now; answers_.pop_front()) {
      bytes += answers_.front().text;
    }
    return bytes;
  }

  // When the next answer arrives; -1 when none is under way.
  Ns NextArrival() const { return answers_.empty() ? -1 : answers_.front().at; }

  std::string Report() const {
    char text[160];
    std::snprintf(text, sizeof text,
                  "{\"lines\": %ld, \"seconds\": %.9f, \"shortest\": %zu, \"longest\": %zu}",
                  lines_, static_cast<double>(last_ - first_) / static_cast<double>(kNsPerSecond),
                  shortest_, longest_);
    return text;
  }

 private:
  struct Answer {
    Ns at;
    std::string_view text;
  };

  void TakeLine(Ns at) {
    const std::string_view text{line_.data(), line_.size() - 1};
    if (IsMove(text)) {
      at = std::max(at, boardFree_);
      boardFree_ = at + condition_.lineNs;
      Count(at);
      if (IsNumbered(text)) return Say("ok\n", at);
      for (const std::string_view answer : {"QX\r\n", "BX\r\n", "EX\r\n"}) Say(answer, at);
      return;
    }
    if (IsNumbered(text)) return Say("ok\n", at);
    for (const AnswerRow& row : kAnswers) {
      if (row.line == text) return Say(row.answer, at);
    }
  }

  void Count(Ns at) {
    if (lines_++ == 0) {
      first_ = at;
      shortest_ = longest_ = line_.size();
    }
    last_ = at;
    shortest_ = std::min(shortest_, line_.size());
    longest_ = std::max(longest_, line_.size());
  }

  void Say(std::string_view text, Ns at) {
    outFree_ = std::max(outFree_, at + condition_.turnaroundNs) +
               static_cast<Ns>(text.size()) * condition_.byteNs;
    answers_.push_back({outFree_, text});
  }

  Condition condition_ = kConditions[0];
  std::string line_;
  std::deque<Answer> answers_;
  Ns inFree_ = 0, outFree_ = 0;  // when each direction of the wire has carried what it was given
  Ns boardFree_ = 0;             // when the board takes its next line
  long lines_ = 0;
  Ns first_ = 0, last_ = 0;
  std::size_t shortest_ = 0, longest_ = 0;  // of the counted lines, line feed included
};

[[noreturn]] void Fail(const char* what) {
  std::perror(what);
  std::exit(1);
}

// A pseudo terminal in raw mode under the name `link`. Our end; the other end stays open with us so
// that a sender may come and go.
int OpenTerminal(const char* link) {
  const int master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) Fail("k7_responder: pty");
  const char* name = ptsname(master);
  const int other = open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
  termios settings{};
  if (other < 0 || tcgetattr(other, &settings) != 0) Fail("k7_responder: pty");
  cfmakeraw(&settings);
  cfsetspeed(&settings, B115200);
  if (tcsetattr(other, TCSANOW, &settings) != 0) Fail("k7_responder: pty");
  unlink(link);
  if (symlink(name, link) != 0) Fail("k7_responder: link");
  return master;
}

// One command; returns its answer.
std::string Obey(Board& board, std::string_view command) {
  if (command == "report") return board.Report();
  for (const Condition& condition : kConditions) {
    if (command == std::string{"condition "} + condition.name) {
      board.SetCondition(condition);
      return "ok";
    }
  }
  return "unknown command";
}

// The commands that have come; false at the end of the file.
bool ReadCommands(Board& board, std::string& pending) {
  char bytes[256];
  const ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
  if (count <= 0) return false;
  pending.append(bytes, static_cast<std::size_t>(count));
  for (std::size_t end; (end = pending.find('\n')) != pending.npos; pending.erase(0, end + 1)) {
    std::printf("%s\n", Obey(board, std::string_view{pending}.substr(0, end)).c_str());
  }
  std::fflush(stdout);
  return true;
}

void Run(int terminal) {
  Board board;
  std::string commands, unsent;
  for (;;) {
    pollfd polled[2] = {{terminal, POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}};
    if (!unsent.empty()) polled[0].events |= POLLOUT;
    timespec wait{};
    const Ns next = board.NextArrival();
    if (next >= 0) {
      const Ns left = std::max<Ns>(0, next - Now());
      wait = {left / kNsPerSecond, left % kNsPerSecond};
    }
    if (ppoll(polled, 2, next >= 0 ? &wait : nullptr, nullptr) < 0) Fail("k7_responder: poll");
    if (polled[1].revents != 0 && !ReadCommands(board, commands)) return;
    if ((polled[0].revents & POLLIN) != 0) {
      char bytes[4096];
      const ssize_t count = read(terminal, bytes, sizeof bytes);
      if (count > 0) board.Take({bytes, static_cast<std::size_t>(count)}, Now());
    }
    unsent += board.Arrived(Now());
    if (unsent.empty()) continue;
    const ssize_t went = write(terminal, unsent.data(), unsent.size());
    if (went > 0) unsent.erase(0, static_cast<std::size_t>(went));
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: k7_responder LINK\n");
    return 2;
  }
  prctl(PR_SET_TIMERSLACK, 1L);  // a wire does not round its times
  const int terminal = OpenTerminal(argv[1]);
  std::printf("ready\n");
  std::fflush(stdout);
  Run(terminal);
  unlink(argv[1]);
  return 0;
}
