// The surface of the plate: how deep it lies at each place, for the probe and for the depth of
// cuts.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace k7sim {

// Places are in inches from the table home, depths in inches below the Z switch.
class Surface {
 public:
  // A level plate at `zInches`.
  explicit Surface(double zInches = 1.75);

  // Reads what `--surface` takes:
  //   none                     no plate is on the table, a probe touches nothing
  //   plane:Z                  level at Z inches
  //   tilt:Z,DX,DY             Z at the table home, deeper by DX and DY inches for each inch
  //   a file name              a height map: rows of numbers, the first row at Y 0, columns along
  //                            X, spread over the plate, linear between its points
  // Nothing, with a reason in `error`, when the text is none of these.
  static std::optional<Surface> Parse(std::string_view text, double widthInches,
                                      double heightInches, std::string& error);

  // Depth of the surface; nothing where there is no plate.
  std::optional<double> DepthAt(double xInches, double yInches) const;

  // The plate covers this rectangle from the table home.
  void SetExtent(double widthInches, double heightInches);

  // True when every place has the same depth, so that the ends of a straight cut tell its depths.
  // False for every height map.
  bool IsLevel() const { return map_.empty() && slopeX_ == 0 && slopeY_ == 0; }

  // The text that the surface was read from, for the report.
  const std::string& Description() const { return description_; }

 private:
  double MapDepthAt(double xInches, double yInches) const;

  bool present_ = true;
  double z_ = 0;
  double slopeX_ = 0;
  double slopeY_ = 0;
  double width_ = 25;
  double height_ = 16;
  std::vector<std::vector<double>> map_;
  std::string description_;
};

}  // namespace k7sim
