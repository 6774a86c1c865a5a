// The built-in lettering: single strokes for the printable characters of ASCII.
#pragma once

#include <vector>

namespace k7host {

// A point of a letter. The cell of a capital is 8 wide and 12 high; (0, 0) is its lower left corner
// on the base line, small letters are 8 high and reach down to -4.
struct GlyphPoint {
  int x = 0;
  int y = 0;
};

inline constexpr int kGlyphWidth = 8;
inline constexpr int kGlyphHeight = 12;

using GlyphStroke = std::vector<GlyphPoint>;

// True for the characters from space to "~". [any]
bool HasGlyph(char c);

// The strokes of a character, each of two points or more; none for a space and for a character
// without a glyph. [any]
std::vector<GlyphStroke> GlyphStrokes(char c);

}  // namespace k7host
