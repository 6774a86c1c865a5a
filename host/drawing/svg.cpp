// Walks through the elements of an SVG file and draws those that are painted.
#include "drawing/svg.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "drawing/svg_matrix.h"
#include "drawing/svg_outline.h"
#include "drawing/svg_scanner.h"
#include "drawing/svg_style.h"
#include "drawing/svg_tree.h"

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

struct Box {
  double x = 0.0;
  double y = 0.0;
  double width = 0.0;
  double height = 0.0;
};

std::optional<Box> ViewBox(SvgNode node) {
  const std::string_view value = SvgTree::Attribute(node, "viewBox");
  if (value.empty()) return std::nullopt;
  SvgScanner scanner(value);
  Box box;
  box.x = scanner.Number();
  box.y = scanner.Number();
  box.width = scanner.Number();
  box.height = scanner.Number();
  if (!(box.width > 0.0 && box.height > 0.0))
    throw SvgFault{value.data(), "viewBox without a size"};
  return box;
}

// Lays the view box over a place on the page as preserveAspectRatio wants it.
SvgMatrix Viewport(const Box& view, const Box& place, std::string_view aspect) {
  double sx = place.width / view.width;
  double sy = place.height / view.height;
  double x = place.x;
  double y = place.y;
  if (!aspect.starts_with("none")) {
    const double scale =
        aspect.find("slice") != std::string_view::npos ? std::max(sx, sy) : std::min(sx, sy);
    const auto share = [&](std::string_view low, std::string_view high) {
      return aspect.find(low) != std::string_view::npos    ? 0.0
             : aspect.find(high) != std::string_view::npos ? 1.0
                                                           : 0.5;
    };
    x += (place.width - view.width * scale) * share("xMin", "xMax");
    y += (place.height - view.height * scale) * share("YMin", "YMax");
    sx = sy = scale;
  }
  return {sx, 0, 0, sy, x - view.x * sx, y - view.y * sy};
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
    const std::optional<Box> view = ViewBox(root);
    const auto size = [&](const char* name, double ofView) {
      const std::string_view value = SvgTree::Attribute(root, name);
      if (value.empty() || value == "auto" || Trimmed(value).ends_with('%')) return ofView;
      return SvgLength(value, 0.0);
    };
    Box place;
    place.width = size("width", view ? view->width : 0.0);
    place.height = size("height", view ? view->height : 0.0);
    hasPage_ = place.height > 0.0;
    page_.heightPixels = place.height;
    width_ = view ? view->width : place.width;
    height_ = view ? view->height : place.height;
    if (!view || !(place.width > 0.0 && place.height > 0.0)) return {};
    return Viewport(*view, place, SvgTree::Attribute(root, "preserveAspectRatio"));
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

  double Length(SvgNode node, std::string_view name, double whole, double otherwise = 0.0) {
    const std::string_view value = SvgTree::Attribute(node, name);
    if (value.empty() || value == "auto") return otherwise;
    return SvgLength(value, whole);
  }
  double X(SvgNode node, std::string_view name) { return Length(node, name, width_); }
  double Y(SvgNode node, std::string_view name) { return Length(node, name, height_); }

  // A picture within the picture, or a symbol. `size` stands for width and height that it lacks.
  void Nested(SvgNode node, const SvgStyle& style, const SvgMatrix& matrix, const Box& size) {
    const std::optional<Box> view = ViewBox(node);
    const Box place{X(node, "x"), Y(node, "y"),
                    size.width > 0.0 ? size.width : Length(node, "width", width_, width_),
                    size.height > 0.0 ? size.height : Length(node, "height", height_, height_)};
    SvgMatrix inner{1, 0, 0, 1, place.x, place.y};
    const std::pair<double, double> outer{width_, height_};
    if (view && place.width > 0.0 && place.height > 0.0) {
      inner = Viewport(*view, place, SvgTree::Attribute(node, "preserveAspectRatio"));
    }
    width_ = view ? view->width : place.width;
    height_ = view ? view->height : place.height;
    Children(node, style, matrix.After(inner));
    std::tie(width_, height_) = outer;
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
    const SvgMatrix moved = matrix.After({1, 0, 0, 1, X(node, "x"), Y(node, "y")});
    if (IsOneOf(tree_.Name(target), {"symbol", "svg"})) {
      SvgStyle own = style;
      ApplyStyle(target, own);
      if (own.displayed) {
        Nested(target, own, moved, {0, 0, X(node, "width"), Y(node, "height")});
      }
    } else {
      Element(target, style, moved);
    }
    --uses_;
  }

  // --------------------------------------------------------------------------------- shapes

  // False for an element that is no shape.
  bool Shape(SvgNode node, std::string_view name, const SvgStyle& style, const SvgMatrix& matrix) {
    if (!IsOneOf(name, {"path", "rect", "circle", "ellipse", "line", "polyline", "polygon"})) {
      return false;
    }
    if (!TakePen(node, style, name != "line")) return true;
    SvgOutline outline(pen_, page_, matrix, node->name());
    if (name == "path") {
      DrawPath(SvgTree::Attribute(node, "d"), outline);
    } else if (name == "rect") {
      Rectangle(node, outline);
    } else if (name == "circle") {
      const double r = Length(node, "r", std::hypot(width_, height_) / std::sqrt(2.0));
      Ellipse(X(node, "cx"), Y(node, "cy"), r, r, outline);
    } else if (name == "ellipse") {
      Ellipse(X(node, "cx"), Y(node, "cy"), X(node, "rx"), Y(node, "ry"), outline);
    } else if (name == "line") {
      outline.Move({X(node, "x1"), Y(node, "y1")});
      outline.Line({X(node, "x2"), Y(node, "y2")});
    } else {
      Polygon(SvgTree::Attribute(node, "points"), name == "polygon", outline);
    }
    outline.End();
    return true;
  }

  static void Polygon(std::string_view points, bool closed, SvgOutline& outline) {
    SvgScanner scanner(points);
    bool begun = false;
    while (!scanner.AtEnd()) {
      outline.SetPlace(scanner.At());
      const double x = scanner.Number();
      const double y = scanner.Number();
      if (begun) {
        outline.Line({x, y});
      } else {
        outline.Move({x, y});
      }
      begun = true;
    }
    if (begun && closed) outline.Close();
  }

  static void Ellipse(double cx, double cy, double rx, double ry, SvgOutline& outline) {
    if (!(rx > 0.0 && ry > 0.0)) return;
    outline.Move({cx + rx, cy});
    outline.Arc(rx, ry, 0.0, false, true, {cx - rx, cy});
    outline.Arc(rx, ry, 0.0, false, true, {cx + rx, cy});
  }

  void Rectangle(SvgNode node, SvgOutline& outline) {
    const double x = X(node, "x");
    const double y = Y(node, "y");
    const double width = X(node, "width");
    const double height = Y(node, "height");
    if (!(width > 0.0 && height > 0.0)) return;
    double rx = Length(node, "rx", width_, -1.0);
    double ry = Length(node, "ry", height_, -1.0);
    if (rx < 0.0) rx = std::max(ry, 0.0);
    if (ry < 0.0) ry = rx;
    rx = std::min(rx, width / 2.0);
    ry = std::min(ry, height / 2.0);
    outline.Move({x + rx, y});
    outline.Line({x + width - rx, y});
    const bool round = rx > 0.0 && ry > 0.0;
    const auto corner = [&](double toX, double toY) {
      if (round) outline.Arc(rx, ry, 0.0, false, true, {toX, toY});
    };
    corner(x + width, y + ry);
    outline.Line({x + width, y + height - ry});
    corner(x + width - rx, y + height);
    outline.Line({x + rx, y + height});
    corner(x, y + height - ry);
    outline.Line({x, y + ry});
    corner(x + rx, y);
    outline.Close();
  }

  const SvgTree& tree_;
  const SvgStyleNotice notice_ = [this](std::string_view what, std::string_view why,
                                        const char* at) { Notice(what, why, at); };
  SvgPage page_;
  bool hasPage_ = false;
  double width_ = 0.0;  // of the viewport, for percentages
  double height_ = 0.0;
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
