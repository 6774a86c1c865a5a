// The commands that are passed over.
#include "drawing/hpgl/commands.h"

namespace k7host {
namespace {

constexpr std::string_view kSpeed = "speeds and forces come from the engrave settings";
constexpr std::string_view kLine = "every line is cut as one whole line of the cutter's width";
constexpr std::string_view kOutput = "the file gets no answer";
constexpr std::string_view kLetters = "letters are those built in";

// Commands that do not move the pen. In alphabetical order.
constexpr struct {
  std::string_view name;
  std::string_view why;
} kPassedOver[] = {
    {"AC", kHpglFill},    {"AS", kSpeed},       {"BP", kHpglPage},    {"CA", kLetters},
    {"CC", kHpglPlotter}, {"CR", kLine},        {"CS", kLetters},     {"FS", kSpeed},
    {"FT", kHpglFill},    {"LA", kLine},        {"LT", kLine},        {"MC", kLine},
    {"MT", kHpglPlotter}, {"NP", kLine},        {"OA", kOutput},      {"OC", kOutput},
    {"OD", kOutput},      {"OE", kOutput},      {"OF", kOutput},      {"OH", kOutput},
    {"OI", kOutput},      {"OO", kOutput},      {"OP", kOutput},      {"OS", kOutput},
    {"OW", kOutput},      {"PC", kLine},        {"PP", kHpglPlotter}, {"PS", kHpglPage},
    {"PT", kHpglFill},    {"PW", kLine},        {"QL", kHpglPlotter}, {"SA", kLetters},
    {"SS", kLetters},     {"ST", kHpglPlotter}, {"TR", kLine},        {"UL", kLine},
    {"VS", kSpeed},       {"WU", kLine},
};

}  // namespace

std::optional<std::string_view> WhyHpglPassesOver(std::string_view name) {
  for (const auto& row : kPassedOver) {
    if (row.name == name) return row.why;
  }
  return std::nullopt;
}

}  // namespace k7host
