// For a build without RapidXML: SVG files are known and refused.
#include "drawing/svg/svg.h"

namespace k7host {

bool LooksLikeXml(std::string_view text) {
  const std::size_t first = text.find_first_not_of("\xef\xbb\xbf \t\r\n");
  return first != std::string_view::npos && text[first] == '<';
}

Drawing ReadSvg(std::string_view, double) {
  Drawing drawing;
  drawing.error =
      DrawingError{1, 1, "this k7host was built without RapidXML, which SVG files need"};
  return drawing;
}

}  // namespace k7host
