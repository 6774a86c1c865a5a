// The paint of SVG elements: attributes, style attributes and simple style sheets.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace k7host {

enum class SvgPaint : std::uint8_t { None, Colour, Current };

// What an element hands on to those in it.
struct SvgStyle {
  SvgPaint stroke = SvgPaint::None;
  SvgPaint fill = SvgPaint::Colour;
  std::uint32_t strokeRgb = 0;
  std::uint32_t fillRgb = 0;
  std::uint32_t currentRgb = 0;
  bool visible = true;
  bool displayed = true;  // not handed on: an element that is not displayed has nothing in it
};

// Told of something in a style that is not engraved as it stands there.
using SvgStyleNotice =
    std::function<void(std::string_view what, std::string_view why, const char* at)>;

// Applies one property; those without a meaning for the work are ignored. [any]
void ApplyProperty(SvgStyle& style, std::string_view name, std::string_view value,
                   const SvgStyleNotice& notice);

// "name: value; name: value". [any]
void ApplyDeclarations(SvgStyle& style, std::string_view text, const SvgStyleNotice& notice);

// Rules with simple selectors: element, .class, element.class, #id and *.
class SvgStyleSheet {
 public:
  void Add(std::string_view text, const SvgStyleNotice& notice);
  // The rules that hold for an element, the weaker ones first. [any]
  void Apply(SvgStyle& style, std::string_view element, std::string_view classes,
             std::string_view id, const SvgStyleNotice& notice) const;

 private:
  struct Rule {
    std::string_view element;
    std::string_view className;
    std::string_view id;
    std::string_view declarations;
  };
  std::vector<Rule> rules_;
};

}  // namespace k7host
