#include "job/pass_status.h"

#include <charconv>

#include "base/bounded_copy.h"
#include "base/format_decimal.h"

namespace k7 {

namespace {

// The longest line: the words, two whole numbers, a depth of up to 32 digits and a suffix.
constexpr int kLineCapacity = 128;
constexpr int kDepthDecimals = 3;

struct RunSuffix {
  std::uint32_t kind;
  const wchar_t* text;
};

constexpr RunSuffix kSuffixes[] = {
    {kRunGrid, L" - GRID"},
    {kRunBrailleDrill, L" - BRAILLE DRILL"},
    {kRunBrailleBeadInsert, L" - BRAILLE BEAD INSERT"},
};

void AppendNumber(wchar_t (&line)[kLineCapacity], std::uint32_t number) {
  char digits[12];
  const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, number);
  wchar_t text[12] = {};
  for (int i = 0; digits + i != end.ptr; ++i) text[i] = static_cast<wchar_t>(digits[i]);
  AppendText(line, text);
}

}  // namespace

void WritePassStatus(const PassStatus& status, wchar_t* buffer, std::int32_t size) noexcept {
  wchar_t line[kLineCapacity] = L"Pass ";
  AppendNumber(line, status.pass);
  AppendText(line, L" of ");
  AppendNumber(line, status.count);
  AppendText(line, L" - ");
  if (status.airZ) {
    AppendText(line, L"Air Z");
  } else {
    wchar_t depth[48];
    FormatDecimal(status.depthInches, depth, static_cast<int>(sizeof depth / sizeof *depth),
                  kDepthDecimals);
    AppendText(line, depth);
  }
  for (const RunSuffix& suffix : kSuffixes) {
    if (suffix.kind == status.runKind) AppendText(line, suffix.text);
  }
  CopyText(buffer, size, line);
}

}  // namespace k7
