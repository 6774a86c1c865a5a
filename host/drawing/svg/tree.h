// The elements of an SVG file, by the XML parser RapidXML, each with its place in the text.
#pragma once

#include <cstddef>
#include <map>
#include <rapidxml/rapidxml.hpp>
#include <string>
#include <string_view>

#include "drawing/svg/scanner.h"

namespace k7host {

using SvgNode = const rapidxml::xml_node<char>*;

// Thrown when the text is no XML; its own text is gone by then, so it names the byte.
struct SvgUnreadable {
  std::size_t at = 0;
  std::string message;
};

// [any]
class SvgTree {
 public:
  // Throws SvgUnreadable when the text is no XML, or nested too deeply.
  explicit SvgTree(std::string_view text);
  SvgTree(const SvgTree&) = delete;
  SvgTree& operator=(const SvgTree&) = delete;

  const std::string& Text() const { return text_; }

  // The root element; null without one.
  SvgNode Root() const;
  // The element with this id; null without one.
  SvgNode Find(std::string_view id) const;

  // The name without the prefix of SVG's own names. Names of other vocabularies keep theirs.
  std::string_view Name(SvgNode node) const;

  static std::string_view RawName(SvgNode node) { return {node->name(), node->name_size()}; }
  // Empty when there is none.
  static std::string_view Attribute(SvgNode node, std::string_view name);
  // True when there are characters other than blanks in the element or below it.
  static bool HasText(SvgNode node);

 private:
  void CheckDepth() const;
  void Index(SvgNode node);

  std::string text_;  // ends with a null character, as the parser wants it
  rapidxml::xml_document<char> document_;
  std::string_view prefix_;  // with its colon
  std::map<std::string_view, SvgNode> ids_;
};

}  // namespace k7host
