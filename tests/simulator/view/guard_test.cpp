#include "view/guard.h"

#include <gtest/gtest.h>

namespace k7sim {
namespace {

TEST(Guard, KnowsTheNamesOfThisMachineForItself) {
  for (const char* host :
       {"127.0.0.1", "127.0.0.1:8080", "localhost", "LocalHost:1", "[::1]:8080", "[::1]"}) {
    EXPECT_TRUE(IsLoopbackHost(host)) << host;
  }
  for (const char* host : {"", ":8080", "example.com", "127.0.0.1.example.com",
                           "localhost.example.com:8080", "127.0.0.2", "127.0.0.1:8080:9",
                           "127.0.0.1:", "localhost:80@example.com", "[::1", "::1", "0.0.0.0"}) {
    EXPECT_FALSE(IsLoopbackHost(host)) << host;
  }
}

TEST(Guard, ServesItsOwnPageAndProgramsThatAreNoBrowsers) {
  const char* host = "127.0.0.1:8080";
  EXPECT_TRUE(IsOwnPage({host, "", ""}));
  EXPECT_TRUE(IsOwnPage({host, "http://127.0.0.1:8080", "same-origin"}));
  EXPECT_TRUE(IsOwnPage({host, "", "none"}));  // typed by the user
  for (const char* origin : {"http://example.com", "http://127.0.0.1", "http://127.0.0.1:9090",
                             "https://127.0.0.1:8080", "http://localhost:8080", "null"}) {
    EXPECT_FALSE(IsOwnPage({host, origin, ""})) << origin;
  }
  EXPECT_FALSE(IsOwnPage({host, "", "cross-site"}));
  EXPECT_FALSE(IsOwnPage({host, "", "same-site"}));  // another port of this machine
}

}  // namespace
}  // namespace k7sim
