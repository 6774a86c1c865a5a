// Time that the driver takes to make number texts, for lines and for dialogs, to read one back, and
// to estimate how long a drawing will take.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "base/format_decimal.h"
#include "base/number_text.h"
#include "base/parse_number.h"
#include "job/time_estimate.h"

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

// A drawing of so many points: short cuts that turn at each, as letters do, and a travel every
// eighth.
void EstimateADrawing(benchmark::State& state) {
  const auto count = static_cast<std::uint32_t>(state.range(0));
  std::vector<std::uint32_t> triples;
  triples.reserve(std::size_t{3} * count);
  std::uint32_t random = 1;
  const auto next = [&random] { return (random = random * 1664525u + 1013904223u) >> 8; };
  for (std::uint32_t i = 0; i < count; ++i) {
    triples.insert(triples.end(), {next() % 40000u, next() % 40000u, i % 8 == 0 ? 1u : 2u});
  }
  k7::Mechanics mechanics;
  for (k7::AxisMechanics* const axis : {&mechanics.axis.x, &mechanics.axis.y}) {
    axis->motorSteps = 200;
    axis->microSteps = 10;
    axis->screwPitch = 0.5f;
  }
  mechanics.xAxisFactor = mechanics.yAxisFactor = 1;
  k7::Tools tools;
  tools.traverseSpeed = tools.engraveSpeed = 1.0f;
  if (k7::EstimateJobTime(mechanics, tools, triples.data(), count) == 0) {
    state.SkipWithError("no estimate");
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(k7::EstimateJobTime(mechanics, tools, triples.data(), count));
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(EstimateADrawing)
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

}  // namespace
