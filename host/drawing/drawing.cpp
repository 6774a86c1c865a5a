// Texts and places of drawing.h.
#include "drawing/drawing.h"

namespace k7host {

std::string DrawingErrorText(std::string_view file, const DrawingError& error) {
  return std::string(file) + ":" + std::to_string(error.line) + ":" + std::to_string(error.column) +
         ": " + error.message;
}

std::string NoticeText(const DrawingNotice& notice) {
  return std::to_string(notice.line) + ":" + std::to_string(notice.column) + ": " + notice.what +
         " passed over" +
         (notice.count > 1 ? " (" + std::to_string(notice.count) + " times)" : std::string()) +
         ": " + notice.why;
}

bool CountAgain(std::vector<DrawingNotice>& notices, std::string_view what) {
  for (DrawingNotice& notice : notices) {
    if (notice.what != what) continue;
    ++notice.count;
    return true;
  }
  return false;
}

TextPlace PlaceInText(std::string_view text, std::size_t at) {
  TextPlace place;
  for (const char c : text.substr(0, at)) {
    if (c == '\n') {
      ++place.line;
      place.column = 1;
    } else {
      ++place.column;
    }
  }
  return place;
}

}  // namespace k7host
