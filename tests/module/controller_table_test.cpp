#include "module/controller_table.h"

#include <gtest/gtest.h>

#include "base/bounded_copy.h"

namespace k7 {
namespace {

ControllerTable MakeTable() {
  ControllerTable table;
  const wchar_t* const ids[] = {L"AAAAAAAAAAAAAAAA", L"BBBBBBBBBBBBBBBB", L"BBBBBBBBBBBBBBBB"};
  for (int i = 0; i < 3; ++i) CopyText(table.entries[i].id, ids[i]);
  return table;
}

TEST(ControllerTable, FindsTheFirstEntryWithExactlyThisIdentity) {
  const ControllerTable table = MakeTable();
  EXPECT_EQ(table.Find(L"AAAAAAAAAAAAAAAA", 3), &table.entries[0]);
  EXPECT_EQ(table.Find(L"BBBBBBBBBBBBBBBB", 3), &table.entries[1]);
}

TEST(ControllerTable, TellsLetterCaseApart) {
  const ControllerTable table = MakeTable();
  EXPECT_EQ(table.Find(L"aAAAAAAAAAAAAAAA", 3), nullptr);
  EXPECT_EQ(table.Find(L"AAAAAAAAAAAAAAA", 3), nullptr);
  EXPECT_EQ(table.Find(L"AAAAAAAAAAAAAAAAA", 3), nullptr);
}

TEST(ControllerTable, LooksOnlyAmongTheEntriesFound) {
  const ControllerTable table = MakeTable();
  EXPECT_EQ(table.Find(L"BBBBBBBBBBBBBBBB", 1), nullptr);
  EXPECT_EQ(table.Find(L"AAAAAAAAAAAAAAAA", 0), nullptr);
  EXPECT_EQ(table.Find(L"", 3), nullptr);
  EXPECT_EQ(table.Find(L"", 50), &table.entries[3]);  // never beyond the table
  EXPECT_EQ(table.Find(L"CCCCCCCCCCCCCCCC", 50), nullptr);
  EXPECT_EQ(table.Find(nullptr, 3), nullptr);
}

TEST(ControllerTable, ClearEmptiesEveryEntry) {
  ControllerTable table = MakeTable();
  CopyText(table.entries[9].name, L"name");
  CopyText(table.entries[9].address, L"address");
  table.entries[9].linkType = kLinkTcp;
  table.Clear();
  for (const ControllerEntry& entry : table.entries) {
    EXPECT_STREQ(entry.id, L"");
    EXPECT_STREQ(entry.name, L"");
    EXPECT_STREQ(entry.address, L"");
    EXPECT_EQ(entry.linkType, kLinkNone);
  }
}

}  // namespace
}  // namespace k7
