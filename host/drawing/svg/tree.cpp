// Parsing, and what the parser itself does not check.
#include "drawing/svg/tree.h"

namespace k7host {
namespace {

// The parser calls itself for each level.
constexpr int kDeepest = 256;

}  // namespace

SvgTree::SvgTree(std::string_view text) : text_(text) {
  if (const std::size_t zero = text_.find('\0'); zero != std::string::npos) {
    throw SvgUnreadable{zero, "unexpected byte 0x00"};
  }
  CheckDepth();
  try {
    constexpr int kFlags = rapidxml::parse_non_destructive | rapidxml::parse_validate_closing_tags;
    document_.parse<kFlags>(text_.data());
  } catch (const rapidxml::parse_error& error) {
    throw SvgUnreadable{static_cast<std::size_t>(error.where<char>() - text_.data()),
                        std::string("not well-formed XML: ") + error.what()};
  }
  const SvgNode root = Root();
  if (root == nullptr) return;
  const std::string_view name = RawName(root);
  if (const std::size_t colon = name.find(':'); colon != std::string_view::npos) {
    prefix_ = name.substr(0, colon + 1);
  }
  Index(root);
}

SvgNode SvgTree::Root() const {
  for (SvgNode node = document_.first_node(); node != nullptr; node = node->next_sibling()) {
    if (node->type() == rapidxml::node_element) return node;
  }
  return nullptr;
}

SvgNode SvgTree::Find(std::string_view id) const {
  const auto found = ids_.find(id);
  return found == ids_.end() ? nullptr : found->second;
}

std::string_view SvgTree::Name(SvgNode node) const {
  std::string_view name = RawName(node);
  if (name.starts_with(prefix_)) name.remove_prefix(prefix_.size());
  return name;
}

std::string_view SvgTree::Attribute(SvgNode node, std::string_view name) {
  const auto* found = node->first_attribute(name.data(), name.size());
  if (found == nullptr) return {};
  return {found->value(), found->value_size()};
}

bool SvgTree::HasText(SvgNode node) {
  for (SvgNode child = node->first_node(); child != nullptr; child = child->next_sibling()) {
    if (child->type() == rapidxml::node_element) {
      if (HasText(child)) return true;
    } else if (!Trimmed({child->value(), child->value_size()}).empty()) {
      return true;
    }
  }
  return false;
}

void SvgTree::Index(SvgNode node) {
  if (const std::string_view id = Attribute(node, "id"); !id.empty()) ids_.emplace(id, node);
  for (SvgNode child = node->first_node(); child != nullptr; child = child->next_sibling()) {
    if (child->type() == rapidxml::node_element) Index(child);
  }
}

// Counts open elements by the parser's own rules, without building anything.
void SvgTree::CheckDepth() const {
  const std::string_view text = text_;
  int depth = 0;
  std::size_t at = 0;
  const auto skipPast = [&](std::string_view end) {
    const std::size_t found = text.find(end, at);
    at = found == std::string_view::npos ? text.size() : found + end.size();
  };
  while ((at = text.find('<', at)) != std::string_view::npos) {
    const std::size_t start = at;
    const std::string_view rest = text.substr(at);
    if (rest.starts_with("<!--")) {
      skipPast("-->");
    } else if (rest.starts_with("<![CDATA[")) {
      skipPast("]]>");
    } else if (rest.starts_with("<?")) {
      skipPast("?>");
    } else if (rest.starts_with("<!") || rest.starts_with("</")) {
      if (rest[1] == '/') --depth;
      int brackets = 0;
      for (++at; at < text.size() && (text[at] != '>' || brackets > 0); ++at) {
        if (text[at] == '[' && rest[1] == '!') ++brackets;
        if (text[at] == ']' && rest[1] == '!') --brackets;
      }
    } else {
      char quote = '\0';
      for (++at; at < text.size() && (quote != '\0' || text[at] != '>'); ++at) {
        if (quote != '\0') {
          if (text[at] == quote) quote = '\0';
        } else if (text[at] == '"' || text[at] == '\'') {
          quote = text[at];
        }
      }
      if (at < text.size() && text[at - 1] != '/') ++depth;
      if (depth > kDeepest) throw SvgUnreadable{start, "elements are nested too deeply"};
    }
  }
}

}  // namespace k7host
