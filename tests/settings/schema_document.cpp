// The table of keys in docs/settings_file.md is the schema, row by row. With K7_UPDATE_DOCS set in
// the environment the test writes it afresh instead.
#include <gtest/gtest.h>

#include <charconv>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "settings/row_text.h"
#include "settings/schema.h"

namespace k7::settings {
namespace {

using k7host::NameOf;
using k7host::Narrow;

constexpr char kDocument[] = K7_DOCS "/settings_file.md";
constexpr char kBegin[] = "<!-- keys: from src/settings/schema.h -->\n";
constexpr char kEnd[] = "<!-- end of keys -->\n";

std::string Number(double number) {
  char text[64];
  const std::to_chars_result end =
      std::to_chars(text, text + sizeof text, number, std::chars_format::fixed);
  return {text, end.ptr};
}

std::string Kind(Encoding encoding) {
  switch (encoding) {
    case Encoding::Int:
      return "int";
    case Encoding::Flag:
      return "flag";
    case Encoding::Float:
      return "float";
    case Encoding::Text:
      return "text";
  }
  return "";
}

std::string Default(const Row& row) {
  if (IsWrittenOnly(row)) return "written only";
  if (row.encoding == Encoding::Text) return Narrow(row.text);
  std::string text = row.otherwise ? Number(*row.otherwise) : "";
  for (const Override& other : row.overrides) {
    if (other.reader == Reader::Any) continue;
    if (!text.empty()) text += "; ";
    text += std::string{NameOf(other.reader)} + ": ";
    text +=
        other.standIn != nullptr ? "*" + std::string{other.standIn} + "*" : Number(other.number);
  }
  return text;
}

std::string Sensible(const Row& row) {
  if (row.encoding == Encoding::Flag) return "0 or 1";
  if (row.encoding == Encoding::Text) return "up to " + Number(row.range.most) + " characters";
  if (row.range.least == row.range.most) return Number(row.range.least);
  return Number(row.range.least) + " to " + Number(row.range.most);
}

std::string Table() {
  std::string table =
      "| Section | Key | Kind | Unit | Default | Sensible | Meaning |\n"
      "|---|---|---|---|---|---|---|\n";
  std::string before;
  for (const Row* row : kRows) {
    const std::string section = Narrow(row->section);
    table += section == before ? "|" : "| " + section;
    before = section;
    for (const std::string& cell : {Narrow(row->key), Kind(row->encoding), std::string{row->unit},
                                    Default(*row), Sensible(*row), std::string{row->meaning}}) {
      table += cell.empty() ? " |" : " | " + cell;
    }
    table += " |\n";
  }
  return table;
}

TEST(SettingsDocument, TheTableOfKeysIsTheSchema) {
  std::ifstream in{kDocument, std::ios::binary};
  const std::string document{std::istreambuf_iterator<char>{in}, {}};
  const std::size_t begin = document.find(kBegin);
  ASSERT_NE(begin, std::string::npos) << kDocument << " has no line " << kBegin;
  const std::size_t first = begin + sizeof kBegin - 1;
  const std::size_t last = document.find(kEnd, first);
  ASSERT_NE(last, std::string::npos) << kDocument << " has no line " << kEnd;

  const std::string table = Table();
  if (std::getenv("K7_UPDATE_DOCS") != nullptr) {
    std::ofstream out{kDocument, std::ios::binary | std::ios::trunc};
    out << document.substr(0, first) << table << document.substr(last);
    return;
  }
  EXPECT_EQ(document.substr(first, last - first), table)
      << "K7_UPDATE_DOCS=1 build/native/bin/k7_pure_tests --gtest_filter='SettingsDocument.*' "
         "writes it afresh; it should be:\n"
      << table;
}

}  // namespace
}  // namespace k7::settings
