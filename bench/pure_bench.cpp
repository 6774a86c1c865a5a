// Time that the driver takes to make number texts, for lines and for dialogs, and to read one back.
#include <benchmark/benchmark.h>

#include "base/format_decimal.h"
#include "base/number_text.h"
#include "base/parse_number.h"
#include "motion/axes.h"

namespace {

void FormatOnePosition(benchmark::State& state) {
  double value = 12.345678;
  for (auto _ : state) {
    benchmark::DoNotOptimize(k7::FormatFixed(value, 6));
    value += 0.001;
  }
}
BENCHMARK(FormatOnePosition);

void ReadOnePositionBack(benchmark::State& state) {
  const k7::NumberText text = k7::FormatFixed(123.456789, 6);
  for (auto _ : state) benchmark::DoNotOptimize(k7::ParseFixed(text.c_str()));
}
BENCHMARK(ReadOnePositionBack);

void FormatOneDialogNumber(benchmark::State& state) {
  wchar_t text[32];
  for (auto _ : state) {
    k7::FormatDecimal(0.0625f, text, 32, 4);
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK(FormatOneDialogNumber);

}  // namespace
