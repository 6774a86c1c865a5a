#include "wire/pty_port.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <termios.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "wire/system_error.h"

namespace k7sim {
namespace {

// Makes the terminal pass all bytes unchanged in both directions.
bool MakeRaw(int fd) {
  termios settings{};
  if (tcgetattr(fd, &settings) != 0) return false;
  cfmakeraw(&settings);
  cfsetspeed(&settings, B115200);
  return tcsetattr(fd, TCSANOW, &settings) == 0;
}

}  // namespace

PtyPort::~PtyPort() {
  Close();
}

bool PtyPort::Open(std::string& error) {
  master_.Reset(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  if (!master_ || grantpt(master_.Get()) != 0 || unlockpt(master_.Get()) != 0) {
    return FailBySystem(error, "cannot make a pty");
  }
  std::array<char, 64> name{};
  if (ptsname_r(master_.Get(), name.data(), name.size()) != 0) {
    return FailBySystem(error, "cannot name the pty");
  }
  path_ = name.data();
  kept_.Reset(open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (!kept_ || !MakeRaw(kept_.Get())) return FailBySystem(error, "cannot open " + path_);
  watch_.Reset(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  if (!watch_ || inotify_add_watch(watch_.Get(), path_.c_str(), IN_OPEN | IN_CLOSE) < 0) {
    return FailBySystem(error, "cannot watch " + path_);
  }
  opened_ = 0;
  return MakeSymlink(error);
}

bool PtyPort::MakeSymlink(std::string& error) {
  if (symlink_.empty()) return true;
  struct stat there {};
  if (lstat(symlink_.c_str(), &there) == 0) {
    // A symbolic link counts as one that an earlier run has left. Anything else is kept.
    if (!S_ISLNK(there.st_mode)) {
      error = "cannot make the link " + symlink_ + ": something else is there";
      return false;
    }
    unlink(symlink_.c_str());
  }
  if (symlink(path_.c_str(), symlink_.c_str()) != 0) {
    return FailBySystem(error, "cannot make " + symlink_);
  }
  return true;
}

void PtyPort::Close() {
  if (!master_) return;
  if (!symlink_.empty()) {
    std::array<char, 64> target{};
    const ssize_t length = readlink(symlink_.c_str(), target.data(), target.size() - 1);
    if (length > 0 && path_ == target.data()) unlink(symlink_.c_str());
  }
  watch_.Reset();
  kept_.Reset();
  master_.Reset();
}

std::vector<bool> PtyPort::TakeEvents() {
  std::vector<bool> changes;
  alignas(inotify_event) std::array<char, 4096> buffer{};
  for (;;) {
    const ssize_t got = watch_ ? read(watch_.Get(), buffer.data(), buffer.size()) : 0;
    if (got <= 0) break;
    for (std::size_t at = 0; at < static_cast<std::size_t>(got);) {
      inotify_event event{};
      std::memcpy(&event, buffer.data() + at, sizeof event);
      at += sizeof event + event.len;
      if (event.mask & IN_OPEN) {
        if (opened_++ == 0) changes.push_back(true);
      } else if (event.mask & IN_CLOSE) {
        opened_ = std::max(0, opened_ - 1);
        if (opened_ == 0) changes.push_back(false);
      }
    }
  }
  return changes;
}

std::string PtyPort::Read(std::size_t limit) {
  std::string bytes(limit, '\0');
  const ssize_t got = master_ ? read(master_.Get(), bytes.data(), limit) : -1;
  bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
  return bytes;
}

std::size_t PtyPort::Write(std::string_view bytes) {
  const ssize_t went = master_ ? write(master_.Get(), bytes.data(), bytes.size()) : -1;
  return went > 0 ? static_cast<std::size_t>(went) : 0;
}

void PtyPort::DropUnread() {
  if (!kept_) return;
  tcflush(kept_.Get(), TCIFLUSH);
  // The last host may have changed the settings of the terminal; the next one must not find them.
  MakeRaw(kept_.Get());
}

}  // namespace k7sim
