// The driver on a real port: how it sets the line, and how it reads it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <termios.h>
#include <unistd.h>

#include "harness.h"

namespace k7test {
namespace {

constexpr char kId[] = "ENDTOENDSERIAL01";
constexpr int kPort = 7;

// A second opening of the controller's pseudo terminal: the settings that the driver made.
class Line {
 public:
  Line()
      : fd_(open((Places::Get().prefix / "dosdevices" / ("com" + std::to_string(kPort))).c_str(),
                 O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {}
  ~Line() { close(fd_); }
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;

  bool IsOpen() const { return fd_ >= 0; }
  termios Settings() const {
    termios settings{};
    EXPECT_EQ(tcgetattr(fd_, &settings), 0);
    return settings;
  }
  void Set(const termios& settings) const { EXPECT_EQ(tcsetattr(fd_, TCSANOW, &settings), 0); }

 private:
  int fd_;
};

// KEEP: what a user has set beside speed, parity and stop bits is left to him.
TEST(SerialPort, IsSetTo115200WithoutParityAndOneStopBitAndKeepsItsFlowControl) {
  for (const bool flowControl : {false, true}) {
    RemoveAllSettings();
    Controller controller(kPort, kId);
    const Line line;
    ASSERT_TRUE(line.IsOpen());
    termios before = line.Settings();
    cfsetispeed(&before, B9600);
    cfsetospeed(&before, B9600);
    before.c_cflag |= CSTOPB | PARODD;
    if (flowControl) {
      before.c_iflag |= IXON | IXOFF;
    } else {
      before.c_iflag &= ~static_cast<tcflag_t>(IXON | IXOFF);
    }
    line.Set(before);

    Slots slots;
    ASSERT_EQ(slots.Ask(std::string("connect ") + kId), "connected");
    const termios now = line.Settings();
    EXPECT_EQ(cfgetispeed(&now), static_cast<speed_t>(B115200));
    EXPECT_EQ(cfgetospeed(&now), static_cast<speed_t>(B115200));
    EXPECT_EQ(now.c_cflag & (PARENB | PARODD), 0u);
    EXPECT_EQ(now.c_cflag & CSTOPB, 0u);
    EXPECT_EQ(now.c_cflag & CSIZE, before.c_cflag & CSIZE);
    EXPECT_EQ(now.c_iflag & (IXON | IXOFF), flowControl ? tcflag_t{IXON | IXOFF} : tcflag_t{0});
    EXPECT_EQ(slots.Ask("release"), "released");
  }
}

// The longest interval between bytes and nothing else: reads return at once with what is there.
TEST(SerialPort, HasTheTimeOutsByWhichReadsReturnAtOnceAndWritesNever) {
  RemoveAllSettings();
  Controller controller(kPort, kId);
  Slots slots;
  ASSERT_EQ(slots.Ask(std::string("connect ") + kId), "connected");
  EXPECT_EQ(slots.Ask("port"), "115200 0 0, time-outs 4294967295 0 0 0 0, events 1");
  EXPECT_EQ(slots.Ask("release"), "released");
}

}  // namespace
}  // namespace k7test
