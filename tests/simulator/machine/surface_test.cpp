#include "machine/surface.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace k7sim {
namespace {

TEST(Surface, ReadsAHeightMapBetweenItsPoints) {
  const std::string path = testing::TempDir() + "k7sim_height_map.txt";
  std::ofstream(path) << "# two rows, Y 0 first\n1.0, 2.0\n3.0 4.0\n";
  std::string error;
  const auto surface = Surface::Parse(path, 10, 10, error);
  ASSERT_TRUE(surface) << error;
  EXPECT_DOUBLE_EQ(*surface->DepthAt(0, 0), 1);
  EXPECT_DOUBLE_EQ(*surface->DepthAt(10, 0), 2);
  EXPECT_DOUBLE_EQ(*surface->DepthAt(0, 10), 3);
  EXPECT_DOUBLE_EQ(*surface->DepthAt(5, 5), 2.5);
  EXPECT_FALSE(surface->DepthAt(10.1, 5));
  EXPECT_FALSE(surface->IsLevel());
}

TEST(Surface, SaysWhatIsWrongWithItsDescription) {
  std::string error;
  EXPECT_FALSE(Surface::Parse("plane:high", 25, 16, error));
  EXPECT_EQ(error, "surface: plane takes 1 number");
  EXPECT_FALSE(Surface::Parse("tilt:1,2", 25, 16, error));
  EXPECT_EQ(error, "surface: tilt takes 3 numbers");
  EXPECT_FALSE(Surface::Parse("/nonexistent/map", 25, 16, error));
  EXPECT_EQ(error, "surface: cannot read the height map /nonexistent/map");
}

}  // namespace
}  // namespace k7sim
