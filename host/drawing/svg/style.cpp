// Colours, properties and rules.
#include "drawing/svg/style.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "drawing/svg/scanner.h"

namespace k7host {
namespace {

constexpr struct {
  std::string_view name;
  std::uint32_t rgb;
} kColours[] = {
    {"black", 0x000000},     {"white", 0xffffff},     {"red", 0xff0000},
    {"green", 0x008000},     {"blue", 0x0000ff},      {"yellow", 0xffff00},
    {"cyan", 0x00ffff},      {"aqua", 0x00ffff},      {"magenta", 0xff00ff},
    {"fuchsia", 0xff00ff},   {"gray", 0x808080},      {"grey", 0x808080},
    {"silver", 0xc0c0c0},    {"maroon", 0x800000},    {"olive", 0x808000},
    {"lime", 0x00ff00},      {"teal", 0x008080},      {"navy", 0x000080},
    {"purple", 0x800080},    {"orange", 0xffa500},    {"brown", 0xa52a2a},
    {"pink", 0xffc0cb},      {"gold", 0xffd700},      {"indigo", 0x4b0082},
    {"violet", 0xee82ee},    {"crimson", 0xdc143c},   {"darkred", 0x8b0000},
    {"darkgreen", 0x006400}, {"darkblue", 0x00008b},  {"darkgray", 0xa9a9a9},
    {"darkgrey", 0xa9a9a9},  {"lightgray", 0xd3d3d3}, {"lightgrey", 0xd3d3d3},
    {"steelblue", 0x4682b4}, {"royalblue", 0x4169e1}, {"tomato", 0xff6347},
};

std::string Lower(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return out;
}

int HexDigit(char c) {
  return c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

std::optional<std::uint32_t> HexColour(std::string_view digits) {
  std::uint32_t value = 0;
  for (const char c : digits) {
    if (HexDigit(c) < 0) return std::nullopt;
    value = value << 4 | static_cast<std::uint32_t>(HexDigit(c));
  }
  switch (digits.size()) {
    case 4:  // the last digit is how transparent it is
      value >>= 4;
      [[fallthrough]];
    case 3:
      return (value >> 8) * 0x110000u + (value >> 4 & 15) * 0x1100u + (value & 15) * 0x11u;
    case 8:
      return value >> 8;
    case 6:
      return value;
    default:
      return std::nullopt;
  }
}

std::optional<std::uint32_t> Colour(std::string_view value) {
  const std::string text = Lower(Trimmed(value));
  if (text.starts_with('#')) return HexColour(std::string_view(text).substr(1));
  for (const auto& row : kColours) {
    if (row.name == text) return row.rgb;
  }
  const std::size_t open = text.find('(');
  if (!text.starts_with("rgb") || open == std::string::npos) return std::nullopt;
  std::uint32_t rgb = 0;
  SvgScanner scanner(std::string_view(text).substr(open + 1));
  for (int i = 0; i < 3; ++i) {
    if (scanner.AtEnd() || !scanner.StartsNumber()) return std::nullopt;
    double part = 0.0;
    try {
      part = scanner.Number();
    } catch (const SvgFault&) {
      return std::nullopt;
    }
    if (scanner.Skip('%')) part = part * 255.0 / 100.0;
    rgb = rgb << 8 | static_cast<std::uint32_t>(std::clamp(part, 0.0, 255.0) + 0.5);
  }
  return rgb;
}

void ApplyPaint(SvgPaint& paint, std::uint32_t& rgb, std::string_view value,
                const SvgStyleNotice& notice) {
  if (value == "inherit") return;
  if (value == "none" || value == "transparent") {
    paint = SvgPaint::None;
    return;
  }
  if (value == "currentColor" || value == "currentcolor") {
    paint = SvgPaint::Current;
    return;
  }
  paint = SvgPaint::Colour;
  if (value.starts_with("url(")) {
    notice("gradient or pattern", "taken for black", value.data());
    rgb = 0;
    return;
  }
  if (const auto colour = Colour(value)) {
    rgb = *colour;
    return;
  }
  notice("colour '" + std::string(value.substr(0, 24)) + "'", "taken for black", value.data());
  rgb = 0;
}

}  // namespace

void ApplyProperty(SvgStyle& style, std::string_view name, std::string_view value,
                   const SvgStyleNotice& notice) {
  value = Trimmed(value);
  if (const std::size_t mark = value.find("!important"); mark != std::string_view::npos) {
    value = Trimmed(value.substr(0, mark));
  }
  if (name == "stroke") {
    ApplyPaint(style.stroke, style.strokeRgb, value, notice);
  } else if (name == "fill") {
    ApplyPaint(style.fill, style.fillRgb, value, notice);
  } else if (name == "color") {
    if (const auto colour = Colour(value)) style.currentRgb = *colour;
  } else if (name == "display") {
    style.displayed = value != "none";
  } else if (name == "visibility") {
    if (value != "inherit") style.visible = value == "visible";
  } else if (value == "none" || value.empty()) {
    return;
  } else if (name == "clip-path" || name == "mask") {
    notice(name, "what is behind it is cut whole", value.data());
  } else if (name == "stroke-dasharray") {
    notice(name, "every line is cut whole", value.data());
  } else if (name == "filter" || name == "marker" || name == "marker-start" ||
             name == "marker-mid" || name == "marker-end") {
    notice(name, "not engraved", value.data());
  }
}

void ApplyDeclarations(SvgStyle& style, std::string_view text, const SvgStyleNotice& notice) {
  while (!text.empty()) {
    const std::string_view one = text.substr(0, text.find(';'));
    text.remove_prefix(std::min(text.size(), one.size() + 1));
    const std::size_t colon = one.find(':');
    if (colon == std::string_view::npos) continue;
    ApplyProperty(style, Trimmed(one.substr(0, colon)), one.substr(colon + 1), notice);
  }
}

void SvgStyleSheet::Add(std::string_view text, const SvgStyleNotice& notice) {
  while (true) {
    text = Trimmed(text);
    if (text.starts_with("/*")) {
      const std::size_t end = text.find("*/", 2);
      text.remove_prefix(end == std::string_view::npos ? text.size() : end + 2);
      continue;
    }
    const std::size_t open = text.find('{');
    if (open == std::string_view::npos) return;
    const std::size_t close = std::min(text.find('}', open), text.size());
    std::string_view selectors = text.substr(0, open);
    const std::string_view declarations = text.substr(open + 1, close - open - 1);
    text.remove_prefix(std::min(text.size(), close + 1));
    while (!selectors.empty()) {
      const std::string_view one = selectors.substr(0, selectors.find(','));
      selectors.remove_prefix(std::min(selectors.size(), one.size() + 1));
      const std::string_view selector = Trimmed(one);
      const std::size_t mark = selector.find_first_of(".#");
      Rule rule;
      rule.declarations = declarations;
      rule.element = selector.substr(0, mark);
      if (rule.element == "*") rule.element = {};
      if (mark != std::string_view::npos) {
        (selector[mark] == '.' ? rule.className : rule.id) = selector.substr(mark + 1);
      }
      const std::size_t odd = selector.find_first_of(" >+~:[@\t\r\n");
      const bool second = mark != std::string_view::npos &&
                          selector.find_first_of(".#", mark + 1) != std::string_view::npos;
      if (odd != std::string_view::npos || second || selector.empty()) {
        notice("style rule", "only simple selectors are understood", selectors.data());
        continue;
      }
      rules_.push_back(rule);
    }
  }
}

void SvgStyleSheet::Apply(SvgStyle& style, std::string_view element, std::string_view classes,
                          std::string_view id, const SvgStyleNotice& notice) const {
  const auto isOf = [&](const Rule& rule) {
    if (!rule.element.empty() && rule.element != element) return false;
    if (!rule.id.empty()) return rule.id == id;
    if (rule.className.empty()) return true;
    std::string_view rest = classes;
    while (!(rest = Trimmed(rest)).empty()) {
      const std::string_view one = rest.substr(0, rest.find_first_of(" \t\r\n"));
      if (one == rule.className) return true;
      rest.remove_prefix(one.size());
    }
    return false;
  };
  for (int weight = 0; weight < 3; ++weight) {
    for (const Rule& rule : rules_) {
      const int own = !rule.id.empty() ? 2 : !rule.className.empty() ? 1 : 0;
      if (own == weight && isOf(rule)) ApplyDeclarations(style, rule.declarations, notice);
    }
  }
}

}  // namespace k7host
