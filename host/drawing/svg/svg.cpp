// Walks through the elements of an SVG file and draws those that are painted.
#include "drawing/svg/svg.h"

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "drawing/svg/matrix.h"
#include "drawing/svg/outline.h"
#include "drawing/svg/scanner.h"
#include "drawing/svg/shapes.h"
#include "drawing/svg/style.h"
#include "drawing/svg/tree.h"
#include "drawing/svg/viewport.h"

namespace k7host {
namespace {

constexpr std::uint32_t kWhite = 0xffffff;
constexpr std::size_t kMostColours = 16;  // of the driver's table

// "use" may make few elements many.
constexpr int kMostElements = 1'000'000;
constexpr int kMostUses = 16;  // within each other

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

class Reader {
 public:
  Reader(const SvgTree& tree, double toleranceInches) : tree_(tree) {
    page_.tolerancePixels = toleranceInches * kPixelsPerInch;
  }

  void Read() {
    const SvgNode root = tree_.Root();
    if (root == nullptr) throw SvgFault{tree_.Text().data(), "not an SVG file: no element in it"};
    if (tree_.Name(root) != "svg") {
      throw SvgFault{root->name(), "not an SVG file: it begins with <" +
                                       std::string(SvgTree::RawName(root).substr(0, 32)) + ">"};
    }
    CollectSheets(root);
    const SvgMatrix matrix = MeasurePage(root);
    SvgStyle style;
    ApplyStyle(root, style);
    if (style.displayed) Children(root, style, matrix);
  }

  Drawing Take() {
    Drawing drawing;
    drawing.strokes = pen_.Take();
    if (!hasPage_) PutOnPage(drawing.strokes);
    drawing.colours = std::move(colours_);
    drawing.notices = std::move(notices_);
    return drawing;
  }

  std::vector<DrawingNotice> TakeNotices() { return std::move(notices_); }

 private:
  void Notice(std::string_view what, std::string_view why, const char* at) {
    if (CountAgain(notices_, what)) return;
    const TextPlace place =
        PlaceInText(tree_.Text(), static_cast<std::size_t>(at - tree_.Text().data()));
    notices_.push_back({std::string(what), std::string(why), 1, place.line, place.column});
  }

  // ------------------------------------------------------------------------------- the page

  SvgMatrix MeasurePage(SvgNode root) {
    const std::optional<SvgBox> view = SvgViewBox(root);
    const auto size = [&](const char* name, double ofView) {
      const std::string_view value = SvgTree::Attribute(root, name);
      if (value.empty() || value == "auto" || Trimmed(value).ends_with('%')) return ofView;
      return SvgLength(value, 0.0);
    };
    SvgBox place;
    place.width = size("width", view ? view->width : 0.0);
    place.height = size("height", view ? view->height : 0.0);
    hasPage_ = place.height > 0.0;
    page_.heightPixels = place.height;
    size_.width = view ? view->width : place.width;
    size_.height = view ? view->height : place.height;
    if (!view || !(place.width > 0.0 && place.height > 0.0)) return {};
    return SvgViewport(*view, place, SvgTree::Attribute(root, "preserveAspectRatio"));
  }

  // A page without a height ends where the drawing does.
  static void PutOnPage(std::vector<Stroke>& strokes) {
    double low = kMaxPlotterUnits;
    for (const Stroke& stroke : strokes) {
      for (const PlotterPoint& point : stroke.points) low = std::min(low, point.y);
    }
    for (Stroke& stroke : strokes) {
      for (PlotterPoint& point : stroke.points) point.y -= low;
    }
  }

  // ---------------------------------------------------------------------------------- style

  void CollectSheets(SvgNode node) {
    for (SvgNode child = node->first_node(); child != nullptr; child = child->next_sibling()) {
      if (child->type() != rapidxml::node_element) continue;
      if (tree_.Name(child) != "style") {
        CollectSheets(child);
        continue;
      }
      for (SvgNode text = child->first_node(); text != nullptr; text = text->next_sibling()) {
        if (text->type() == rapidxml::node_element) continue;
        sheet_.Add({text->value(), text->value_size()}, notice_);
      }
    }
  }

  void ApplyStyle(SvgNode node, SvgStyle& style) {
    style.displayed = true;
    constexpr std::string_view kAttributes[] = {"color",        "stroke",     "fill",
                                                "display",      "visibility", "filter",
                                                "clip-path",    "mask",       "stroke-dasharray",
                                                "marker-start", "marker-mid", "marker-end"};
    for (const std::string_view name : kAttributes) {
      const std::string_view value = SvgTree::Attribute(node, name);
      if (!value.empty()) ApplyProperty(style, name, value, notice_);
    }
    sheet_.Apply(style, tree_.Name(node), SvgTree::Attribute(node, "class"),
                 SvgTree::Attribute(node, "id"), notice_);
    ApplyDeclarations(style, SvgTree::Attribute(node, "style"), notice_);
  }

  // Takes the pen for the paint of a shape; false: there is nothing to cut.
  bool TakePen(SvgNode node, const SvgStyle& style, bool hasArea) {
    if (!style.visible) return false;
    const bool strokes = style.stroke != SvgPaint::None;
    if (!strokes && (style.fill == SvgPaint::None || !hasArea)) return false;
    const SvgPaint paint = strokes ? style.stroke : style.fill;
    const std::uint32_t rgb = paint == SvgPaint::Current ? style.currentRgb
                              : strokes                  ? style.strokeRgb
                                                         : style.fillRgb;
    if (rgb == kWhite) {
      Notice("white shape", "white is the material", node->name());
      return false;
    }
    if (!strokes) Notice("fill", "the outline of the shape is cut in its colour", node->name());
    pen_.Select(PenFor(rgb, node));
    return true;
  }

  int PenFor(std::uint32_t rgb, SvgNode node) {
    for (const PenColour& known : colours_) {
      if (known.rgb == rgb) return known.pen;
    }
    if (colours_.size() < kMostColours) {
      colours_.push_back({static_cast<int>(colours_.size()) + 1, rgb});
      return colours_.back().pen;
    }
    Notice("colour beyond the sixteenth", "cut with the nearest of the others", node->name());
    const auto distance = [rgb](const PenColour& other) {
      int sum = 0;
      for (int shift = 0; shift <= 16; shift += 8) {
        const int d =
            static_cast<int>(rgb >> shift & 255) - static_cast<int>(other.rgb >> shift & 255);
        sum += d * d;
      }
      return sum;
    };
    return std::min_element(
               colours_.begin(), colours_.end(),
               [&](const PenColour& a, const PenColour& b) { return distance(a) < distance(b); })
        ->pen;
  }

  // ------------------------------------------------------------------------------- elements

  void Children(SvgNode node, const SvgStyle& style, const SvgMatrix& matrix) {
    for (SvgNode child = node->first_node(); child != nullptr; child = child->next_sibling()) {
      if (child->type() == rapidxml::node_element) Element(child, style, matrix);
    }
  }

  void Element(SvgNode node, const SvgStyle& parent, const SvgMatrix& outer) {
    const std::string_view name = tree_.Name(node);
    if (name.find(':') != std::string_view::npos) return;  // of another vocabulary
    if (IsOneOf(name, {"defs", "symbol", "title", "desc", "metadata", "style", "script",
                       "linearGradient", "radialGradient", "pattern", "clipPath", "mask", "marker",
                       "filter", "view", "cursor", "font", "font-face", "color-profile"})) {
      return;
    }
    if (++elements_ > kMostElements) throw SvgFault{node->name(), "too many elements"};
    SvgStyle style = parent;
    ApplyStyle(node, style);
    if (!style.displayed) return;
    const SvgMatrix matrix = outer.After(ParseTransform(SvgTree::Attribute(node, "transform")));
    if (IsOneOf(name, {"g", "a"})) return Children(node, style, matrix);
    if (name == "switch") return Switch(node, style, matrix);
    if (name == "svg") return Nested(node, style, matrix, {});
    if (name == "use") return Use(node, style, matrix);
    if (IsOneOf(name, {"text", "flowRoot", "foreignObject"})) return Text(node, style);
    if (Shape(node, name, style, matrix)) return;
    Notice("<" + std::string(name.substr(0, 32)) + ">", "not engraved", node->name());
  }

  void Text(SvgNode node, const SvgStyle& style) {
    if (!style.visible || !SvgTree::HasText(node)) return;
    throw SvgFault{node->name(),
                   "text is not converted to paths: in the drawing program select it and choose "
                   "\"Object to Path\" or \"Convert to Curves\", then save again"};
  }

  // The first that needs nothing special.
  void Switch(SvgNode node, const SvgStyle& style, const SvgMatrix& matrix) {
    for (SvgNode child = node->first_node(); child != nullptr; child = child->next_sibling()) {
      if (child->type() != rapidxml::node_element) continue;
      if (!SvgTree::Attribute(child, "requiredExtensions").empty()) continue;
      if (!SvgTree::Attribute(child, "systemLanguage").empty()) continue;
      return Element(child, style, matrix);
    }
  }

  // A picture within the picture, or a symbol. `size` stands for width and height that it lacks.
  void Nested(SvgNode node, const SvgStyle& style, const SvgMatrix& matrix, const SvgBox& size) {
    const std::optional<SvgBox> view = SvgViewBox(node);
    const SvgBox place{
        size_.X(node, "x"), size_.Y(node, "y"),
        size.width > 0.0 ? size.width : SvgLengthOf(node, "width", size_.width, size_.width),
        size.height > 0.0 ? size.height : SvgLengthOf(node, "height", size_.height, size_.height)};
    SvgMatrix inner{1, 0, 0, 1, place.x, place.y};
    const SvgSize outer = size_;
    if (view && place.width > 0.0 && place.height > 0.0) {
      inner = SvgViewport(*view, place, SvgTree::Attribute(node, "preserveAspectRatio"));
    }
    size_.width = view ? view->width : place.width;
    size_.height = view ? view->height : place.height;
    Children(node, style, matrix.After(inner));
    size_ = outer;
  }

  void Use(SvgNode node, const SvgStyle& style, const SvgMatrix& matrix) {
    std::string_view link = SvgTree::Attribute(node, "href");
    if (link.empty()) link = SvgTree::Attribute(node, "xlink:href");
    const SvgNode target = link.starts_with('#') ? tree_.Find(link.substr(1)) : nullptr;
    if (target == nullptr) {
      throw SvgFault{node->name(),
                     "use of '" + std::string(link.substr(0, 64)) + "', which is not in the file"};
    }
    if (uses_ == kMostUses) throw SvgFault{node->name(), "uses within each other without end"};
    ++uses_;
    const SvgMatrix moved = matrix.After({1, 0, 0, 1, size_.X(node, "x"), size_.Y(node, "y")});
    if (IsOneOf(tree_.Name(target), {"symbol", "svg"})) {
      SvgStyle own = style;
      ApplyStyle(target, own);
      if (own.displayed) {
        Nested(target, own, moved, {0, 0, size_.X(node, "width"), size_.Y(node, "height")});
      }
    } else {
      Element(target, style, moved);
    }
    --uses_;
  }

  // --------------------------------------------------------------------------------- shapes

  // False for an element that is no shape.
  bool Shape(SvgNode node, std::string_view name, const SvgStyle& style, const SvgMatrix& matrix) {
    if (!IsSvgShape(name)) return false;
    if (!TakePen(node, style, name != "line")) return true;
    SvgOutline outline(pen_, page_, matrix, node->name());
    DrawSvgShape(node, name, size_, outline);
    outline.End();
    return true;
  }

  const SvgTree& tree_;
  const SvgStyleNotice notice_ = [this](std::string_view what, std::string_view why,
                                        const char* at) { Notice(what, why, at); };
  SvgPage page_;
  bool hasPage_ = false;
  SvgSize size_;  // of the viewport, for percentages
  SvgStyleSheet sheet_;
  Pen pen_;
  std::vector<PenColour> colours_;
  std::vector<DrawingNotice> notices_;
  int elements_ = 0;
  int uses_ = 0;
};

}  // namespace

bool LooksLikeXml(std::string_view text) {
  if (text.starts_with("\xef\xbb\xbf")) text.remove_prefix(3);
  return Trimmed(text).starts_with('<');
}

Drawing ReadSvg(std::string_view text, double toleranceInches) {
  Drawing drawing;
  const auto fail = [&](const char* at, const char* base, std::string message) {
    const TextPlace place = PlaceInText(text, static_cast<std::size_t>(at - base));
    drawing = {};
    drawing.error = DrawingError{place.line, place.column, std::move(message)};
  };
  try {
    SvgTree tree(text);
    Reader reader(tree, toleranceInches);
    try {
      reader.Read();
      drawing = reader.Take();
    } catch (SvgFault& fault) {
      fail(fault.at, tree.Text().data(), std::move(fault.message));
      drawing.notices = reader.TakeNotices();
    }
  } catch (SvgUnreadable& fault) {
    fail(text.data() + fault.at, text.data(), std::move(fault.message));
  }
  return drawing;
}

}  // namespace k7host
