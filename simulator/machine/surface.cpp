#include "machine/surface.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <fstream>
#include <sstream>

#include "common/number_list.h"

namespace k7sim {
namespace {

// A rounding must not put a cut that ends on the edge of the plate beside it.
constexpr double kEdgeInches = 1e-6;

std::optional<std::vector<std::vector<double>>> ReadMap(const std::string& path,
                                                        std::string& error) {
  std::ifstream file(path);
  if (!file) {
    error = "surface: cannot read the height map " + path;
    return std::nullopt;
  }
  std::vector<std::vector<double>> rows;
  std::string text;
  while (std::getline(file, text)) {
    if (text.empty() || text[0] == '#') continue;
    std::replace(text.begin(), text.end(), ',', ' ');
    std::istringstream line(text);
    std::vector<double> row;
    for (double value = 0; line >> value;) row.push_back(value);
    if (!line.eof() || (!rows.empty() && row.size() != rows[0].size())) {
      error = "surface: row " + std::to_string(rows.size() + 1) + " of " + path +
              " is not a row of numbers as long as the first";
      return std::nullopt;
    }
    if (!row.empty()) rows.push_back(row);
  }
  if (rows.empty()) {
    error = "surface: the height map " + path + " is empty";
    return std::nullopt;
  }
  return rows;
}

}  // namespace

Surface::Surface(double zInches) : z_(zInches) {
  std::ostringstream text;
  text << "plane:" << zInches;
  description_ = text.str();
}

std::optional<Surface> Surface::Parse(std::string_view text, double widthInches,
                                      double heightInches, std::string& error) {
  Surface surface;
  surface.description_ = text;
  surface.SetExtent(widthInches, heightInches);
  if (text == "none") {
    surface.present_ = false;
    return surface;
  }
  const std::size_t colon = text.find(':');
  const std::string_view kind = text.substr(0, colon);
  if (colon != std::string_view::npos && (kind == "plane" || kind == "tilt")) {
    const auto numbers = ParseNumbers(text.substr(colon + 1));
    const std::size_t wanted = kind == "plane" ? 1 : 3;
    if (!numbers || numbers->size() != wanted) {
      error = "surface: " + std::string(kind) + " takes " + std::to_string(wanted) +
              (wanted == 1 ? " number" : " numbers");
      return std::nullopt;
    }
    surface.z_ = (*numbers)[0];
    if (wanted == 3) {
      surface.slopeX_ = (*numbers)[1];
      surface.slopeY_ = (*numbers)[2];
    }
    return surface;
  }
  auto map = ReadMap(std::string(text), error);
  if (!map) return std::nullopt;
  surface.map_ = std::move(*map);
  return surface;
}

void Surface::SetExtent(double widthInches, double heightInches) {
  width_ = widthInches;
  height_ = heightInches;
}

std::optional<double> Surface::DepthAt(double xInches, double yInches) const {
  const bool onWork = xInches >= -kEdgeInches && xInches <= width_ + kEdgeInches &&
                      yInches >= -kEdgeInches && yInches <= height_ + kEdgeInches;
  if (!present_ || !onWork) return std::nullopt;
  if (!map_.empty()) return MapDepthAt(xInches, yInches);
  return z_ + slopeX_ * xInches + slopeY_ * yInches;
}

double Surface::MapDepthAt(double xInches, double yInches) const {
  const std::size_t rows = map_.size();
  const std::size_t columns = map_[0].size();
  const auto place = [](double at, double size, std::size_t points) {
    const double last = static_cast<double>(points - 1);
    return size > 0 ? std::clamp(at / size * last, 0.0, last) : 0.0;
  };
  const double column = place(xInches, width_, columns);
  const double row = place(yInches, height_, rows);
  const auto c = static_cast<std::size_t>(column);
  const auto r = static_cast<std::size_t>(row);
  const std::size_t c1 = std::min(c + 1, columns - 1);
  const std::size_t r1 = std::min(r + 1, rows - 1);
  const double near = std::lerp(map_[r][c], map_[r][c1], column - static_cast<double>(c));
  const double far = std::lerp(map_[r1][c], map_[r1][c1], column - static_cast<double>(c));
  return std::lerp(near, far, row - static_cast<double>(r));
}

}  // namespace k7sim
