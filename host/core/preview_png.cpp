// The PNG writer of preview.h: lines drawn into a bitmap, compressed by stb.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

#include "core/preview.h"
#include "core/preview_colours.h"

namespace k7host {
namespace {

constexpr int kLongerSide = 2000;
constexpr int kMargin = 20;
constexpr std::uint32_t kTravel = 0xb0b0b0;
constexpr std::uint32_t kTable = 0x000000;
constexpr std::uint32_t kExtent = 0x008000;

// A bitmap of 3 bytes a pixel, white.
class Bitmap {
 public:
  Bitmap(int width, int height)
      : width_(width),
        height_(height),
        bytes_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3, 0xff) {}

  void Line(double x0, double y0, double x1, double y1, std::uint32_t rgb, int thick) {
    const int steps = static_cast<int>(std::ceil(std::max(std::fabs(x1 - x0), std::fabs(y1 - y0))));
    for (int i = 0; i <= steps; ++i) {
      const double t = steps == 0 ? 0.0 : static_cast<double>(i) / steps;
      const int x = static_cast<int>(std::lround(x0 + (x1 - x0) * t));
      const int y = static_cast<int>(std::lround(y0 + (y1 - y0) * t));
      for (int dy = 0; dy < thick; ++dy) {
        for (int dx = 0; dx < thick; ++dx) Set(x + dx, y + dy, rgb);
      }
    }
  }

  void Rectangle(double x0, double y0, double x1, double y1, std::uint32_t rgb) {
    Line(x0, y0, x1, y0, rgb, 1);
    Line(x1, y0, x1, y1, rgb, 1);
    Line(x1, y1, x0, y1, rgb, 1);
    Line(x0, y1, x0, y0, rgb, 1);
  }

  std::string Png() const {
    std::string out;
    const auto append = [](void* context, void* data, int size) {
      static_cast<std::string*>(context)->append(static_cast<const char*>(data),
                                                 static_cast<std::size_t>(size));
    };
    stbi_write_png_to_func(append, &out, width_, height_, 3, bytes_.data(), width_ * 3);
    return out;
  }

 private:
  void Set(int x, int y, std::uint32_t rgb) {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return;
    const std::size_t at = (static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                            static_cast<std::size_t>(x)) *
                           3;
    bytes_[at] = static_cast<std::uint8_t>(rgb >> 16);
    bytes_[at + 1] = static_cast<std::uint8_t>(rgb >> 8);
    bytes_[at + 2] = static_cast<std::uint8_t>(rgb);
  }

  int width_;
  int height_;
  std::vector<std::uint8_t> bytes_;
};

}  // namespace

std::string PreviewPng(const JobPlan& plan, const Table& table) {
  const double width = table.widthSteps / table.xStepsPerInch;
  const double height = table.heightSteps / table.yStepsPerInch;
  const double longer = std::max(width, height);
  if (!(longer > 0.0)) return {};
  const double scale = (kLongerSide - 2 * kMargin) / longer;
  const auto x = [&](std::uint32_t steps) { return kMargin + steps / table.xStepsPerInch * scale; };
  const auto y = [&](std::uint32_t steps) {
    return kMargin + (height - steps / table.yStepsPerInch) * scale;
  };
  Bitmap bitmap(static_cast<int>(std::ceil(width * scale)) + 2 * kMargin,
                static_cast<int>(std::ceil(height * scale)) + 2 * kMargin);
  bitmap.Rectangle(x(plan.minXSteps), y(plan.maxYSteps), x(plan.maxXSteps), y(plan.minYSteps),
                   kExtent);
  // Travels first, so that no cut lies hidden under one.
  for (const bool travels : {true, false}) {
    std::uint32_t stroke = 0;
    Move here;
    for (const Move& move : plan.moves) {
      const bool isTravel = move.kind == MoveKind::Travel;
      if (isTravel == travels) {
        const std::uint32_t rgb =
            isTravel ? kTravel : StrokeColour(stroke, plan.strokes + plan.dots);
        bitmap.Line(x(here.xSteps), y(here.ySteps), x(move.xSteps), y(move.ySteps), rgb,
                    isTravel ? 1 : 2);
      }
      if (move.endsStroke) ++stroke;
      here = move;
    }
  }
  bitmap.Rectangle(x(0), y(table.heightSteps), x(table.widthSteps), y(0), kTable);
  return bitmap.Png();
}

}  // namespace k7host
