// The exported functions, as a host calls them.
#include <gtest/gtest.h>

#include "base/bounded_copy.h"
#include "module/controller_table.h"

namespace k7 {
namespace {

class Exports : public ::testing::Test {
 protected:
  Exports() { Table().Clear(); }
  ~Exports() override { Table().Clear(); }
};

TEST_F(Exports, ControllerInfoCopiesBothTextsCutToTheSize) {
  CopyText(Table().entries[9].id, L"0123456789ABCDEF");
  CopyText(Table().entries[9].name, L"A name");
  wchar_t id[24] = L"", name[64] = L"";
  GetControllerInfo(9, id, name, 24);
  EXPECT_STREQ(id, L"0123456789ABCDEF");
  EXPECT_STREQ(name, L"A name");
  GetControllerInfo(9, id, name, 4);  // one size for both
  EXPECT_STREQ(id, L"012");
  EXPECT_STREQ(name, L"A n");
  GetControllerInfo(9, nullptr, name, 64);
  GetControllerInfo(9, id, nullptr, 24);
  GetControllerInfo(9, nullptr, nullptr, 24);
  EXPECT_STREQ(id, L"0123456789ABCDEF");
  EXPECT_STREQ(name, L"A name");
}

TEST_F(Exports, ControllerInfoBeyondTheTableLeavesTheBuffers) {
  for (const std::int32_t index : {10, 11, 2147483647, -1, -2147483647 - 1}) {
    wchar_t id[24] = L"id", name[64] = L"name";
    GetControllerInfo(index, id, name, 24);
    EXPECT_STREQ(id, L"id") << index;
    EXPECT_STREQ(name, L"name") << index;
  }
}

TEST_F(Exports, ControllerInfoBeyondTheLastCountGivesEmptyTexts) {
  wchar_t id[24] = L"id", name[64] = L"name";
  GetControllerInfo(3, id, name, 24);
  EXPECT_STREQ(id, L"");
  EXPECT_STREQ(name, L"");
}

TEST_F(Exports, ControllerInfoOfSizeBelowOneCopiesNothing) {
  wchar_t id[24] = L"id", name[64] = L"name";
  for (const std::int32_t size : {0, -1}) GetControllerInfo(0, id, name, size);
  EXPECT_STREQ(id, L"id");
  EXPECT_STREQ(name, L"name");
}

TEST_F(Exports, ConnectIsNullForNullAndTouchesNothing) {
  CopyText(Table().entries[0].id, L"0123456789ABCDEF");
  EXPECT_EQ(ConnectToController(nullptr), nullptr);
  EXPECT_STREQ(Table().entries[0].id, L"0123456789ABCDEF");  // not even a discovery
}

// Every connect looks for controllers afresh: what the table held before does not count.
TEST_F(Exports, ConnectFindsNoControllerThatIsNotThereNow) {
  CopyText(Table().entries[0].id, L"0123456789ABCDEF");
  Table().entries[0].linkType = kLinkTcp;
  EXPECT_EQ(ConnectToController(L"0123456789ABCDEF"), nullptr);
  EXPECT_STRNE(Table().entries[0].id, L"0123456789ABCDEF");
}

TEST_F(Exports, EnumerateFillsTheTableToItsCount) {
  const std::int32_t count = EnumerateControllers();
  ASSERT_GE(count, 0);
  ASSERT_LE(count, 10);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(Table().entries[i].id[0] != L'\0', i < count);
}

TEST_F(Exports, ReleaseIgnoresNull) {
  ReleaseController(nullptr);
}

}  // namespace
}  // namespace k7
