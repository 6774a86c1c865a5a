#include "common/whole_file.h"

#include <gtest/gtest.h>

#include "tests/simulator/support/content.h"

namespace k7sim {
namespace {

TEST(WholeFile, ReplacesWhatWasThere) {
  const std::string path = testing::TempDir() + "k7sim_whole_file";
  EXPECT_TRUE(WriteWholeFile(path, "a long first content\n"));
  EXPECT_TRUE(WriteWholeFile(path, "short\n"));
  EXPECT_EQ(k7test::Content(path), "short\n");
}

TEST(WholeFile, ThatCannotBeWrittenSaysSo) {
  EXPECT_FALSE(WriteWholeFile("/nonexistent/folder/file", "text"));
}

}  // namespace
}  // namespace k7sim
