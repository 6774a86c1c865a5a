#include "app/server.h"

#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <time.h>

#include <algorithm>
#include <iostream>

#include "app/control.h"
#include "app/output_paths.h"
#include "app/report.h"
#include "app/summary.h"
#include "common/whole_file.h"
#include "machine/picture.h"
#include "wire/pty_port.h"
#include "wire/system_error.h"
#include "wire/tcp_port.h"

namespace k7sim {
namespace {

TimeUs SteadyUs() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<TimeUs>(now.tv_sec) * kUsPerSecond + now.tv_nsec / 1000;
}

}  // namespace

Server::Server(const Options& options)
    : options_(options),
      transcript_(options.transcriptTimes),
      simulator_(options.setup, transcript_) {
  for (const auto& [name, state] : options_.switches) {
    ForceByName(simulator_.Board().Machine(), name, state);
  }
}

Server::~Server() = default;

TimeUs Server::WireNow() const {
  return SteadyUs() - startUs_;
}

bool Server::Start(std::string& error) {
  sigset_t stop;
  sigemptyset(&stop);
  sigaddset(&stop, SIGINT);
  sigaddset(&stop, SIGTERM);
  sigprocmask(SIG_BLOCK, &stop, nullptr);
  // The program that started this one may no longer read what is printed; that must not end it.
  signal(SIGPIPE, SIG_IGN);
  signals_.Reset(signalfd(-1, &stop, SFD_NONBLOCK | SFD_CLOEXEC));
  if (!CheckOutput("picture", options_.picturePath, error) ||
      !CheckOutput("report", options_.reportPath, error) ||
      !CheckOutput("transcript", options_.transcriptPath, error) ||
      !CheckOutput("board's settings", options_.setup.configPath, error)) {
    return false;
  }
  if (options_.transcriptPath == kStandardOutput) {
    transcript_.OpenStandardOutput();
  } else if (!options_.transcriptPath.empty() && !transcript_.Open(options_.transcriptPath)) {
    return FailBySystem(error, "cannot write the transcript to " + options_.transcriptPath);
  }
  if (options_.pty) {
    links_.push_back({std::make_unique<PtyPort>(options_.ptyLink),
                      simulator_.AddLink(options_.ptyWire, "pty"), kNever});
  }
  if (options_.tcp) {
    links_.push_back({std::make_unique<TcpPort>(options_.tcpPort),
                      simulator_.AddLink(WireKind::Tcp, "tcp"), kNever});
  }
  for (Link& link : links_) {
    if (!link.port->Open(error)) return false;
  }
  if (!options_.controlPath.empty() && !control_.Open(options_.controlPath, error)) return false;
  if (options_.view) {
    std::vector<std::pair<int, std::string>> names;
    if (options_.pty) names.emplace_back(links_.front().number, "pty");
    if (options_.tcp) names.emplace_back(links_.back().number, "tcp");
    view_ = std::make_unique<ViewFeed>(options_, simulator_, std::move(names));
    if (!view_->Open(error)) return false;
    transcript_.SetListener(view_.get());
  }
  startUs_ = SteadyUs();
  for (Link& link : links_) Say() << link.port->Where() << "\n";
  if (view_) Say() << view_->Where() << "\n";
  Say() << "ready" << std::endl;
  return true;
}

std::ostream& Server::Say() const {
  const bool taken = options_.picturePath == kStandardOutput ||
                     options_.reportPath == kStandardOutput ||
                     options_.transcriptPath == kStandardOutput;
  return taken ? std::cerr : std::cout;
}

bool Server::TakeSignal() const {
  signalfd_siginfo signal{};
  return read(signals_.Get(), &signal, sizeof signal) > 0;
}

bool Server::Run(std::string& error) {
  bool quit = false;
  while (!quit && !TakeSignal()) {
    ServeAll();
    simulator_.Run(WireNow());
    CloseAndReopen(WireNow());
    ServeControl(quit);
    if (!quit) Wait(WireNow());
  }
  // What hosts had sent when the end came is part of the transcript. A host that goes on sending is
  // not waited for.
  constexpr int kMostRounds = 1000;
  for (int round = 0; round < kMostRounds && ServeAll(); ++round) simulator_.Run(WireNow());
  const bool written = WriteFiles(error);
  if (view_) view_->End(WireNow());
  Say() << Summary(simulator_) << std::flush;
  return written;
}

bool Server::ServeAll() {
  bool received = false;
  for (Link& link : links_) received = Serve(link) || received;
  return received;
}

bool Server::Serve(Link& link) {
  // The bytes are read before the events are taken, and used after them. The host that wrote them
  // has opened the port before, so the opening is among the events. When it follows another host,
  // the replies to it are not thrown away with what that one has left unread.
  std::string bytes;
  if (simulator_.WantsBytes(link.number)) bytes = link.port->Read(simulator_.ReadLimit());
  for (const bool opened : link.port->TakeEvents()) {
    if (opened) {
      simulator_.HostOpened(link.number, WireNow());
    } else {
      simulator_.HostClosed(link.number);
      link.port->DropUnread();
    }
  }
  if (!bytes.empty()) simulator_.Receive(link.number, bytes, WireNow());
  const std::string_view ready = simulator_.Ready(link.number, WireNow());
  if (!ready.empty()) {
    simulator_.Sent(link.number, link.port->Write(ready), WireNow());
  }
  return !bytes.empty();
}

bool Server::RunControl(const std::string& line, bool& quit, std::string& message) {
  const ControlResult result = RunControlLine(line, simulator_, WireNow(), message);
  transcript_.Note("control: " + line);
  if (result == ControlResult::Quit) quit = true;
  if (result == ControlResult::WriteFiles) return WriteFiles(message);
  return result != ControlResult::Bad;
}

void Server::ServeControl(bool& quit) {
  for (std::string line; control_.TakeLine(line);) {
    std::string message;
    if (!RunControl(line, quit, message)) {
      std::cerr << "k7sim: control: " << message << "\n";
    } else if (!message.empty()) {
      Say() << message << std::flush;
    }
  }
  if (!view_) return;
  view_->Serve([&](const std::string& line,
                   std::string& message) { return RunControl(line, quit, message); },
               WireNow());
}

void Server::CloseAndReopen(TimeUs nowUs) {
  for (const CloseRequest& request : simulator_.TakeCloseRequests()) {
    for (Link& link : links_) {
      simulator_.HostClosed(link.number);
      link.port->Close();
      link.reopenUs = request.reopenUs == kNever ? kNever : nowUs + request.reopenUs;
    }
  }
  for (Link& link : links_) {
    if (link.reopenUs > nowUs) continue;
    link.reopenUs = kNever;
    std::string error;
    if (link.port->Open(error)) {
      Say() << link.port->Where() << std::endl;
    } else {
      std::cerr << "k7sim: " << error << "\n";
    }
  }
}

void Server::Wait(TimeUs nowUs) {
  std::vector<pollfd> fds = {{signals_.Get(), POLLIN, 0}, {control_.Fd(), POLLIN, 0}};
  TimeUs due = simulator_.NextDue(nowUs);
  for (const Link& link : links_) {
    for (const int fd : link.port->EventFds()) fds.push_back({fd, POLLIN, 0});
    short wanted = simulator_.WantsBytes(link.number) ? POLLIN : 0;
    if (!simulator_.Ready(link.number, nowUs).empty()) wanted |= POLLOUT;
    if (wanted != 0) fds.push_back({link.port->DataFd(), wanted, 0});
    due = std::min(due, link.reopenUs);
  }
  if (view_) {
    fds.push_back({view_->WakeFd(), POLLIN, 0});
    due = std::min(due, view_->NextDue());
  }
  const TimeUs waitUs = due == kNever ? kNever : std::max<TimeUs>(0, due - nowUs);
  timespec time{};
  time.tv_sec = static_cast<time_t>(waitUs == kNever ? 0 : waitUs / kUsPerSecond);
  time.tv_nsec = static_cast<long>(waitUs == kNever ? 0 : waitUs % kUsPerSecond * 1000);
  // Before a pause all lines are written, so that the transcript can be followed.
  if (waitUs > 0) transcript_.Flush();
  const int woken = ppoll(fds.data(), fds.size(), waitUs == kNever ? nullptr : &time, nullptr);
  // On an unbounded clock the machine moves on whenever no host has sent anything.
  if (woken == 0) simulator_.JumpAhead(nowUs);
}

bool Server::WriteFiles(std::string& error) {
  transcript_.Flush();
  const Recorder& record = simulator_.Board().Record();
  bool written = true;
  const auto write = [&](const std::string& path, const std::string& content) {
    if (path == kStandardOutput) {
      std::cout << content << std::flush;
    } else if (!WriteWholeFile(path, content)) {
      written = FailBySystem(error, "cannot write " + path);
    }
  };
  if (!options_.picturePath.empty()) {
    write(options_.picturePath,
          DrawPicture(record.Strokes(), options_.setup.machine.geometry, options_.corner));
  }
  if (!options_.reportPath.empty()) write(options_.reportPath, WriteReport(simulator_));
  return written;
}

}  // namespace k7sim
