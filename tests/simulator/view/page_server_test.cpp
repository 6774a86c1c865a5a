// The page's server in the program, on real sockets. What the page itself does is page_test.py's.
#include "view/page_server.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/simulator/support/program.h"
#include "view/page.h"

namespace k7test {
namespace {

using k7sim::UniqueFd;

constexpr const char* kFine = "HTTP/1.1 200 OK";

// k7sim with a page, and requests to it.
struct Viewed {
  explicit Viewed(std::vector<std::string> arguments = {})
      : program(With(std::move(arguments))), output(program.Output("ready\n")) {
    const std::size_t at = output.find("view http://127.0.0.1:");
    if (at == output.npos) return;
    port = std::atoi(output.c_str() + at + 22);
  }
  static std::vector<std::string> With(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--view", "0", "--speed", "max"});
    return arguments;
  }

  // A connection on which this has been sent. A small `room` lets little be on its way to it.
  UniqueFd Connect(const std::string& text, int room = 0) const {
    UniqueFd fd(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (room > 0) setsockopt(fd.Get(), SOL_SOCKET, SO_RCVBUF, &room, sizeof room);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(connect(fd.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(write(fd.Get(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
    return fd;
  }
  std::string Host() const { return "127.0.0.1:" + std::to_string(port); }
  std::string Get(const std::string& path) const {
    return "GET " + path + " HTTP/1.1\r\nHost: " + Host() + "\r\n\r\n";
  }
  std::string Post(const std::string& body, const std::string& header = "") const {
    return "POST /control HTTP/1.1\r\nHost: " + Host() + "\r\n" + header +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
  }
  // The whole reply.
  std::string Ask(const std::string& request) const {
    const UniqueFd fd = Connect(request);
    return ReadUntil(fd.Get(), "\n no such text \n");
  }

  Program program;
  std::string output;
  int port = 0;
};

std::string Status(const std::string& reply) {
  return reply.substr(0, reply.find("\r\n"));
}

TEST(PageServer, ServesThePageThatIsPartOfTheProgram) {
  const Viewed viewed;
  ASSERT_NE(viewed.port, 0) << viewed.output;
  const std::string reply = viewed.Ask(viewed.Get("/"));
  EXPECT_EQ(Status(reply), kFine);
  EXPECT_TRUE(reply.ends_with(k7sim::kPage));
  EXPECT_NE(reply.find("frame-ancestors 'none'"), reply.npos);
  EXPECT_EQ(Status(viewed.Ask(viewed.Get("/etc/passwd"))), "HTTP/1.1 404 Not Found");
}

TEST(PageServer, TellsWhatTheMachineIsAndDoes) {
  const Viewed viewed;
  const UniqueFd browser = viewed.Connect(viewed.Get("/events"));
  const std::string first = ReadUntil(browser.Get(), "\"faults\":");
  EXPECT_NE(first.find("event: hello\ndata: {\"run\":"), first.npos) << first;
  EXPECT_NE(first.find("\"verb\":\"switch\""), first.npos);
  EXPECT_NE(first.find("event: frame\ndata: {\"state\":{"), first.npos);
  EXPECT_EQ(Status(viewed.Ask(viewed.Post("halt ALARM: by hand"))), kFine);
  EXPECT_NE(ReadUntil(browser.Get(), "\"alarm\":\"ALARM: by hand\"").find("\"halted\":true"),
            std::string::npos);
}

TEST(PageServer, SaysWhatIsWrongWithACommand) {
  const Viewed viewed;
  const std::string reply = viewed.Ask(viewed.Post("switch q 1"));
  EXPECT_EQ(Status(reply), "HTTP/1.1 400 Bad Request");
  EXPECT_NE(reply.find("switch takes x, y, z or probe"), reply.npos);
  EXPECT_EQ(Status(viewed.Ask(viewed.Post("halt\nresume"))), "HTTP/1.1 400 Bad Request");
  EXPECT_EQ(Status(viewed.Ask(viewed.Post(std::string(5000, 'x')))),
            "HTTP/1.1 413 Payload Too Large");
}

TEST(PageServer, RefusesForeignNamesAndForeignPages) {
  const Viewed viewed;
  const std::string forbidden = "HTTP/1.1 403 Forbidden";
  EXPECT_EQ(Status(viewed.Ask("GET / HTTP/1.1\r\nHost: example.com\r\n\r\n")), forbidden);
  EXPECT_EQ(Status(viewed.Ask("GET / HTTP/1.1\r\n\r\n")), forbidden);
  EXPECT_EQ(Status(viewed.Ask("GET /events HTTP/1.1\r\nHost: " + viewed.Host() +
                              "\r\nSec-Fetch-Site: cross-site\r\n\r\n")),
            forbidden);
  for (const char* header : {"Origin: http://example.com\r\n", "Origin: null\r\n",
                             "Sec-Fetch-Site: cross-site\r\n", "Host: 127.0.0.1\r\n"}) {
    EXPECT_EQ(Status(viewed.Ask(viewed.Post("quit", header))), forbidden) << header;
  }
  // Another page may have a link to this one.
  EXPECT_EQ(Status(viewed.Ask("GET / HTTP/1.1\r\nHost: " + viewed.Host() +
                              "\r\nSec-Fetch-Site: cross-site\r\n\r\n")),
            kFine);
  EXPECT_EQ(Status(viewed.Ask(viewed.Post("resume", "Origin: http://" + viewed.Host() + "\r\n"))),
            kFine);
}

TEST(PageServer, HasRoomForSomeBrowsersAndForTheNextWhenOneGoes) {
  const Viewed viewed;
  std::vector<UniqueFd> browsers;
  for (std::size_t i = 0; i < k7sim::Exchange::kMostBrowsers; ++i) {
    browsers.push_back(viewed.Connect(viewed.Get("/events")));
    EXPECT_NE(ReadUntil(browsers.back().Get(), "event: hello").find("200 OK"), std::string::npos);
  }
  EXPECT_EQ(Status(viewed.Ask(viewed.Get("/events"))), "HTTP/1.1 503 Service Unavailable");
  EXPECT_EQ(Status(viewed.Ask(viewed.Post("resume"))), kFine);
  browsers.pop_back();
  // The server notices it with the next that it has to tell.
  EXPECT_TRUE(WaitFor([&] {
    const UniqueFd next = viewed.Connect(viewed.Get("/events"));
    return ReadUntil(next.Get(), "\r\n").starts_with("HTTP/1.1 200");
  }));
}

TEST(PageServer, SurvivesBrowsersThatTakeNothingOrNeverFinishARequest) {
  const std::string folder = Folder();
  Viewed viewed({"--pty", folder + "board"});
  const UniqueFd stuck = viewed.Connect(viewed.Get("/events"), 1024);
  const UniqueFd half = viewed.Connect("POST /control HTTP/1.1\r\nHost: ");
  const UniqueFd reader = viewed.Connect(viewed.Get("/events"));
  const UniqueFd host = OpenPort(folder + "board");
  // Far more than can be on its way to a browser that takes nothing.
  for (int round = 0; round < 20; ++round) {
    const std::string mark = "round" + std::to_string(round);
    std::string lines;
    for (int i = 0; i < 100; ++i) lines += std::string(200, 'x') + "\n";
    lines += mark + "\n";
    for (std::size_t sent = 0; sent < lines.size();) {
      pollfd room = {host.Get(), POLLOUT, 0};
      ASSERT_EQ(poll(&room, 1, kDeadlineMs), 1);
      const ssize_t count = write(host.Get(), lines.data() + sent, lines.size() - sent);
      ASSERT_GT(count, 0);
      sent += static_cast<std::size_t>(count);
    }
    ASSERT_NE(ReadUntil(reader.Get(), mark).find(mark), std::string::npos);
    ASSERT_EQ(Status(viewed.Ask(viewed.Post("resume"))), kFine);
  }
  const Stopwatch watch;
  EXPECT_EQ(viewed.program.Stop(), 0);
  EXPECT_LT(watch.Seconds(), 10);  // two at most, on a machine with nothing else to do
  EXPECT_NE(ReadUntil(reader.Get(), "event: end").find("event: end"), std::string::npos);
}

TEST(PageServer, SharesItsPortWithNoOther) {
  const Viewed viewed;
  Program second({"--view", std::to_string(viewed.port)});
  EXPECT_NE(second.Output("\n").find("cannot listen on port " + std::to_string(viewed.port)),
            std::string::npos);
  EXPECT_EQ(second.Wait(), 2);
}

TEST(PageServer, EndsTheProgramWhenThePageAsksForIt) {
  Viewed viewed;
  EXPECT_EQ(Status(viewed.Ask(viewed.Post("quit"))), kFine);
  EXPECT_EQ(viewed.program.Wait(), 0);
}

}  // namespace
}  // namespace k7test
