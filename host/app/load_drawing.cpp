// Reading of drawing files.
#include "app/load_drawing.h"

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "app/console.h"
#include "core/text.h"
#include "drawing/hpgl/hpgl.h"
#include "drawing/placement.h"
#include "drawing/svg/svg.h"

namespace k7host {
namespace {

constexpr std::size_t kLargestFile = std::size_t{256} << 20;

}  // namespace

int LoadDrawing(const Arguments& arguments, Drawing& drawing) {
  const std::string& file = arguments.file;
  std::ifstream in(std::filesystem::path(WideText(file)), std::ios::binary);
  // The path of a Unix file, typed in the shell from which Wine was started.
  const bool unixPath = file.starts_with("/");
  if (!in && unixPath) in.open(std::filesystem::path(WideText("Z:" + file)), std::ios::binary);
  if (!in) {
    return Fail(kExitUsage,
                "cannot open " + file +
                    (unixPath ? ", nor Z:" + file + ", as Wine names a Unix file" : ""));
  }
  std::string text;
  std::vector<char> block(65536);
  while (text.size() <= kLargestFile && in) {
    in.read(block.data(), static_cast<std::streamsize>(block.size()));
    text.append(block.data(), static_cast<std::size_t>(in.gcount()));
  }
  if (in.bad() || text.size() > kLargestFile) return Fail(kExitUsage, "cannot read " + file);
  // Of the work, not of the drawing that is scaled to it.
  const double tolerance = arguments.toleranceInches / arguments.placement.scale;
  drawing = LooksLikeXml(text) ? ReadSvg(text, tolerance) : ReadHpgl(text, tolerance);
  if (drawing.error) return FailLine(kExitUsage, DrawingErrorText(file, *drawing.error));
  for (const DrawingNotice& notice : drawing.notices) {
    Print("notice", file + ":" + NoticeText(notice));
  }
  Place(drawing.strokes, arguments.placement);
  return kExitOk;
}

}  // namespace k7host
