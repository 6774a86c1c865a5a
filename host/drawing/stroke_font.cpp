// The letters, each point as two characters: x as a digit, y as a letter of which "e" is the base
// line, "m" the height of small letters and "q" that of capitals. A blank lifts the pen.
#include "drawing/stroke_font.h"

#include <cstddef>
#include <string_view>

namespace k7host {
namespace {

constexpr char kFirst = ' ';
constexpr char kLast = '~';
constexpr char kBaseLine = 'e';

// In the order of ASCII.
constexpr std::string_view kGlyphs[] = {
    "",                                            // space
    "4q4i 4f4e",                                   // !
    "3q3n 5q5n",                                   // "
    "2e3q 5e6q 0i7i 1m8m",                         // #
    "8n6o2o0n0l2k6k8j8h6g2g0h 4q4e",               // $
    "0e8q 1q0p0o1n2n3o3p2q1q 6h5g5f6e7e8f8g7h6h",  // %
    "8e2n2p3q4q5p5n0i0g2e4e8i",                    // &
    "4q4n",                                        // '
    "6q4o3l3h4e6c",                                // (
    "2q4o5l5h4e2c",                                // )
    "4o4g 1m7i 1i7m",                              // *
    "4o4g 0k8k",                                   // +
    "4f4e3c",                                      // ,
    "1k7k",                                        // -
    "4f4e",                                        // .
    "0e8q",                                        // /
    "3e1g1o3q5q7o7g5e3e",                          // 0
    "2o4q4e 2e6e",                                 // 1
    "0o2q6q8o8m0e8e",                              // 2
    "0o2q6q8o8m6k3k 6k8i8g6e2e0g",                 // 3
    "6e6q0i8i",                                    // 4
    "8q1q0l2m6m8k8g6e2e0g",                        // 5
    "8o6q2q0o0g2e6e8g8i6k2k0i",                    // 6
    "0q8q3e",                                      // 7
    "2k0m0o2q6q8o8m6k2k0i0g2e6e8g8i6k",            // 8
    "8k6i2i0k0o2q6q8o8g6e2e0g",                    // 9
    "4m4l 4f4e",                                   // :
    "4m4l 4f4e3c",                                 // ;
    "7o1k7g",                                      // <
    "1m7m 1i7i",                                   // =
    "1o7k1g",                                      // >
    "1o3q6q8o8m4j4h 4f4e",                         // ?
    "6i6m4n2m2i4h6i8i8o6q2q0o0g2e7e",              // @
    "0e4q8e 1h7h",                                 // A
    "0e0q6q8o8m6k8i8g6e0e 0k6k",                   // B
    "8o6q2q0o0g2e6e8g",                            // C
    "0e0q5q8n8h5e0e",                              // D
    "8q0q0e8e 0k6k",                               // E
    "8q0q0e 0k6k",                                 // F
    "8o6q2q0o0g2e6e8g8k5k",                        // G
    "0e0q 8e8q 0k8k",                              // H
    "2e6e 2q6q 4e4q",                              // I
    "7q7g5e2e0g",                                  // J
    "0e0q 8q0j 2l8e",                              // K
    "0q0e8e",                                      // L
    "0e0q4j8q8e",                                  // M
    "0e0q8e8q",                                    // N
    "2e0g0o2q6q8o8g6e2e",                          // O
    "0e0q6q8o8m6k0k",                              // P
    "2e0g0o2q6q8o8g6e2e 5h8e",                     // Q
    "0e0q6q8o8m6k0k 4k8e",                         // R
    "8o6q2q0o0m2k6k8i8g6e2e0g",                    // S
    "0q8q 4q4e",                                   // T
    "0q0g2e6e8g8q",                                // U
    "0q4e8q",                                      // V
    "0q2e4l6e8q",                                  // W
    "0e8q 0q8e",                                   // X
    "0q4k8q 4k4e",                                 // Y
    "0q8q0e8e",                                    // Z
    "6q3q3c6c",                                    // [
    "0q8e",                                        // backslash
    "2q5q5c2c",                                    // ]
    "1m4q7m",                                      // ^
    "0c8c",                                        // _
    "3q5o",                                        // `
    "7m7e 7k5m2m0k0g2e5e7g",                       // a
    "0q0e 0k2m5m7k7g5e2e0g",                       // b
    "7k5m2m0k0g2e5e7g",                            // c
    "7q7e 7k5m2m0k0g2e5e7g",                       // d
    "0i7i7k5m2m0k0g2e5e7f",                        // e
    "6p5q4q3o3e 1m6m",                             // f
    "7m7c5a2a0b 7k5m2m0k0g2e5e7g",                 // g
    "0q0e 0k2m5m7k7e",                             // h
    "2m4m4e 2e6e 4p4q",                            // i
    "3m5m5c3a1a0b 5p5q",                           // j
    "0q0e 6m0i 2j7e",                              // k
    "2q4q4e 2e6e",                                 // l
    "0m0e 0l1m3m4l4e 4l5m7m8l8e",                  // m
    "0m0e 0k2m5m7k7e",                             // n
    "2e0g0k2m5m7k7g5e2e",                          // o
    "0m0a 0k2m5m7k7g5e2e0g",                       // p
    "7m7a 7k5m2m0k0g2e5e7g",                       // q
    "1m1e 1k3m5m7l",                               // r
    "7l5m2m0l0j1i6i7h7f5e2e0f",                    // s
    "3q3g5e6e7f 1m6m",                             // t
    "0m0g2e5e7g 7m7e",                             // u
    "0m4e8m",                                      // v
    "0m2e4k6e8m",                                  // w
    "0e7m 0m7e",                                   // x
    "0m4e 8m2a0a",                                 // y
    "0m7m0e7e",                                    // z
    "6q5q4p4l3k4j4d5c6c",                          // {
    "4q4c",                                        // |
    "2q3q4p4l5k4j4d3c2c",                          // }
    "0j1l3l5j7j8l",                                // ~
};
static_assert(sizeof kGlyphs / sizeof kGlyphs[0] == kLast - kFirst + 1);

}  // namespace

bool HasGlyph(char c) {
  return c >= kFirst && c <= kLast;
}

std::vector<GlyphStroke> GlyphStrokes(char c) {
  std::vector<GlyphStroke> strokes;
  if (!HasGlyph(c)) return strokes;
  const std::string_view text = kGlyphs[c - kFirst];
  bool lifted = true;
  for (std::size_t i = 0; i < text.size();) {
    if (text[i] == ' ') {
      lifted = true;
      ++i;
      continue;
    }
    if (lifted) strokes.emplace_back();
    lifted = false;
    strokes.back().push_back({text[i] - '0', text[i + 1] - kBaseLine});
    i += 2;
  }
  return strokes;
}

}  // namespace k7host
