// The host's SVG reader on any bytes; what it accepts must make a plan that keeps to the table.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/job_plan.h"
#include "drawing/svg/svg.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const k7host::Drawing drawing = k7host::ReadSvg(text);
  if (drawing.error) {
    if (!drawing.strokes.empty() || drawing.error->line < 1 || drawing.error->column < 1 ||
        drawing.error->message.empty()) {
      std::abort();
    }
    return 0;
  }
  for (const k7host::Stroke& stroke : drawing.strokes) {
    if (stroke.points.empty() || stroke.pen < 1 || stroke.pen > 16) std::abort();
  }
  const k7host::Table table{4000.0, 2000.0, 100000, 32000};
  const k7host::PlanResult result = k7host::BuildPlan(drawing.strokes, table);
  if (result.error.empty() == result.plan.moves.empty()) std::abort();
  return 0;
}
