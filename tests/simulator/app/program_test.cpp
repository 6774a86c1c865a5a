// The program on a real pty, a real socket and a real control pipe.
#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <fstream>
#include <string>
#include <vector>

#include "tests/simulator/support/program.h"

namespace k7test {
namespace {

using k7sim::UniqueFd;
using testing::HasSubstr;

TEST(Program, AnswersOnItsPtyEachTimeAHostOpensIt) {
  const std::string link = Folder() + "tty";
  Program program({"--pty", link});
  EXPECT_EQ(program.Output("ready\n"), "pty " + link + "\nready\n");
  for (int i = 0; i < 20; ++i) {
    const UniqueFd port = OpenPort(link);
    EXPECT_EQ(Ask(port.Get(), "SmoothieIsConnected\n", "SmoothieIsConnected\r\n"),
              "Smoothie\r\nok\r\nSmoothieIsConnected\r\n")
        << "opening " << i;
  }
  EXPECT_EQ(program.Stop(), 0);
  struct stat there;
  EXPECT_NE(lstat(link.c_str(), &there), 0) << "the link is still there";
}

// Waits until so many bytes lie unread at a port.
bool WaitForUnread(const UniqueFd& port, const std::string& bytes) {
  int unread = -1;
  const bool there = WaitFor([&] {
    return ioctl(port.Get(), FIONREAD, &unread) == 0 && unread == static_cast<int>(bytes.size());
  });
  if (!there) ADD_FAILURE() << unread << " bytes unread, not " << bytes.size();
  return there;
}

// The simulator is told of a closing a moment after it, and only then drops what was left unread.
// The test therefore waits for the greeting before it reads.
TEST(Program, AHostFindsNothingThatAnEarlierOneLeftUnread) {
  const std::string link = Folder() + "tty", greeting = "Smoothie\r\nok\r\n";
  Program program({"--pty", link});
  program.Output("ready\n");
  {
    const UniqueFd port = OpenPort(link);
    const std::string lines = "config-set sd controller_id ABCDEFGHIJKLMNOP\nG21\n";
    EXPECT_EQ(write(port.Get(), lines.data(), lines.size()), static_cast<ssize_t>(lines.size()));
    WaitForUnread(port, greeting + "sd: controller_id is set to ABCDEFGHIJKLMNOP\r\nok\n");
  }
  const UniqueFd port = OpenPort(link);
  WaitForUnread(port, greeting);
  EXPECT_EQ(Ask(port.Get(), "TableIsHomed\n", "TableIsHomedFALSE\r\n"),
            greeting + "TableIsHomedFALSE\r\n");
}

TEST(Program, PrintsThePathOfItsPty) {
  Program program({"--wire", "uart"});
  const std::string said = program.Output("ready\n");
  ASSERT_THAT(said, testing::StartsWith("pty /dev/pts/"));
  const UniqueFd port = OpenPort(said.substr(4, said.find('\n') - 4));
  EXPECT_EQ(Ask(port.Get(), "M17\n", "\n"), "ok\r\n");
}

TEST(Program, ServesTcpHostsOneAfterTheOther) {
  Program program({"--tcp", "0"});
  const std::string said = program.Output("ready\n");
  ASSERT_THAT(said, testing::StartsWith("tcp "));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(said.substr(4))));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  for (int i = 0; i < 3; ++i) {
    const UniqueFd host(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ASSERT_EQ(connect(host.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(ReadUntil(host.Get(), "\n"), "Smoothie command shell\r\n");
    EXPECT_EQ(Ask(host.Get(), "SmoothieIsConnected\r\n", "\n"), "SmoothieIsConnected\r\n");
  }
}

TEST(Program, WritesPictureTranscriptAndReportWhenItIsStopped) {
  for (const int signal : {SIGINT, SIGTERM}) {
    const std::string folder = Folder();
    Program program({"--pty", folder + "tty", "--speed", "max", "--homed", "--surface", "plane:1",
                     "--picture", folder + "p.svg", "--transcript", folder + "t.txt",
                     "--transcript-times", "off", "--report", folder + "r.json"});
    program.Output("ready\n");
    const UniqueFd port = OpenPort(folder + "tty");
    Ask(port.Get(), "SendBlockMessagesOn\nM42\nG0 F3000\nG0 Z26\nG0 X25.4\nM400\n", "EX\r\nok\r\n");
    Ask(port.Get(), "SendBlockMessagesOff\n", "Off\r\n");
    program.Signal(signal);
    EXPECT_EQ(program.Wait(), 0);
    EXPECT_THAT(Content(folder + "p.svg"), HasSubstr("data-depth=\"0.0236\""));
    EXPECT_THAT(Content(folder + "t.txt"), HasSubstr("> G0 X25.4\n< QX\\r\\n\n< ok\\n\n"));
    EXPECT_THAT(Content(folder + "r.json"), HasSubstr("\"blocks\": 2,"));
    EXPECT_THAT(Content(folder + "r.json"), HasSubstr("\"cutInches\": 1"));
  }
}

TEST(Program, LetsItsTranscriptBeFollowed) {
  const std::string folder = Folder();
  Program program(
      {"--pty", folder + "tty", "--transcript", folder + "t.txt", "--transcript-times", "off"});
  program.Output("ready\n");
  const UniqueFd port = OpenPort(folder + "tty");
  Ask(port.Get(), "G21\n", "ok\n");
  const std::string want = "< Smoothie\\r\\nok\\r\\n\n> G21\n< ok\\n\n";
  EXPECT_TRUE(WaitFor([&] { return Content(folder + "t.txt") == want; }))
      << Content(folder + "t.txt");
}

TEST(Program, KeepsItsIdentityInItsFileAcrossARestart) {
  const std::string folder = Folder();
  const std::vector<std::string> arguments = {"--pty", folder + "tty", "--wire",
                                              "uart",  "--config",     folder + "card"};
  {
    Program program(arguments);
    program.Output("ready\n");
    const UniqueFd port = OpenPort(folder + "tty");
    Ask(port.Get(), "config-set sd controller_id 0123456789ABCDEF\n", "\n");
  }
  Program program(arguments);
  program.Output("ready\n");
  const UniqueFd port = OpenPort(folder + "tty");
  EXPECT_EQ(Ask(port.Get(), "config-get sd controller_id\n", "\n"),
            "sd: controller_id is set to 0123456789ABCDEF\r\n");
}

TEST(Program, TakesCommandsThroughItsPipeWhileItRuns) {
  const std::string folder = Folder();
  Program program(
      {"--pty", folder + "tty", "--control", folder + "control", "--position", "1,1,0.5"});
  program.Output("ready\n");
  const UniqueFd port = OpenPort(folder + "tty");
  EXPECT_THAT(Ask(port.Get(), "M119\n", "Probe: 0\n"), HasSubstr("min_x:0 min_y:0 min_z:0"));
  // Commands are carried out in order: once the text of "send" has come, the switch is closed.
  std::ofstream(folder + "control") << "switch x 1\nsend // done\n";
  EXPECT_THAT(ReadUntil(port.Get(), "// done\r\n"), HasSubstr("// done\r\n"));
  EXPECT_THAT(Ask(port.Get(), "M119\n", "Probe: 0\n"), HasSubstr("min_x:1 min_y:0 min_z:0"));
  std::ofstream(folder + "control") << "quit\n";
  EXPECT_EQ(program.Wait(), 0);
}

TEST(Program, AClosedPtyComesBackAtItsLink) {
  const std::string folder = Folder();
  Program program({"--pty", folder + "tty", "--fault", "match=G21,do=close,ms=50"});
  program.Output("ready\n");
  {
    const UniqueFd port = OpenPort(folder + "tty");
    ReadUntil(port.Get(), "ok\r\n");
    EXPECT_EQ(Ask(port.Get(), "G21\n", "never"), "");  // ends at once, because the link closes
  }
  program.Output("pty " + folder + "tty\n");
  const UniqueFd port = OpenPort(folder + "tty");
  EXPECT_THAT(Ask(port.Get(), "G90\n", "ok\n"), HasSubstr("ok\n"));
}

TEST(Program, EndsWithCodeTwoAndOneLineWhenItCannotStart) {
  Program program({"--pty", "/nonexistent/folder/tty"});
  EXPECT_EQ(program.Output("\n"),
            "k7sim: cannot make /nonexistent/folder/tty: No such file or directory\n");
  EXPECT_EQ(program.Wait(), 2);
}

TEST(Program, SaysBeforeAnythingRunsThatAFileCannotBeWritten) {
  const std::string folder = Folder();
  for (const char* option : {"--picture", "--transcript", "--report", "--config"}) {
    Program program({"--pty", folder + "tty", option, folder + "none/file"});
    EXPECT_THAT(program.Output("\n"),
                testing::MatchesRegex("k7sim: cannot write the .* to .*none/file: there is no "
                                      "folder .*none; make it first, or name another\n"));
    EXPECT_EQ(program.Wait(), 2);
  }
  Program program({"--report", folder});
  EXPECT_THAT(program.Output("\n"), HasSubstr("that is a folder; name a file in it\n"));
  EXPECT_EQ(program.Wait(), 2);
}

TEST(Program, SaysAtItsEndWhatHappened) {
  Program program({"--pty", Folder() + "tty"});
  program.Output("ready\n");
  program.Signal(SIGTERM);
  EXPECT_THAT(
      program.Output("spindle off\n"),
      testing::MatchesRegex("nothing was cut: no moves were sent, 0 errors\n.* 0 lines in, 0 "
                            "replies out\nhead at .*, not homed, spindle off\n"));
  EXPECT_EQ(program.Wait(), 0);
}

// Standard output then holds the file alone; the rest goes to standard error.
TEST(Program, WritesAFileToStandardOutputWhenAsked) {
  const std::string folder = Folder(), out = folder + "out", errors = folder + "errors";
  const std::string command = std::string(K7SIM_PROGRAM " --report - >") + out + " 2>" + errors +
                              " & until grep -qs ready " + errors +
                              "; do sleep 0.02; done; kill -TERM $!; wait $!";
  EXPECT_EQ(std::system(command.c_str()), 0);
  EXPECT_THAT(Content(out), testing::StartsWith("{\n"));
  EXPECT_THAT(Content(out), testing::EndsWith("}\n"));
  EXPECT_THAT(Content(errors), HasSubstr("ready\nnothing was cut"));
}

TEST(Program, WritesToADeviceWithoutReplacingIt) {
  const std::string folder = Folder();
  ASSERT_EQ(mkfifo((folder + "pipe").c_str(), 0600), 0);
  const UniqueFd reader(open((folder + "pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  Program program({"--pty", folder + "tty", "--report", folder + "pipe"});
  program.Output("ready\n");
  program.Signal(SIGTERM);
  program.Wait();
  EXPECT_THAT(ReadUntil(reader.Get(), "never"), testing::StartsWith("{\n"));
  struct stat there;
  EXPECT_EQ(lstat((folder + "pipe").c_str(), &there), 0);
  EXPECT_TRUE(S_ISFIFO(there.st_mode));
}

TEST(Program, LeavesAFileThatIsNoLinkAlone) {
  const std::string path = Folder() + "precious";
  std::ofstream(path) << "text";
  Program program({"--pty", path});
  EXPECT_THAT(program.Output("\n"), HasSubstr("something else is there"));
  EXPECT_EQ(program.Wait(), 2);
  EXPECT_EQ(Content(path), "text");
}

}  // namespace
}  // namespace k7test
