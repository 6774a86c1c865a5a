#include "view/event_text.h"

#include <cmath>
#include <nlohmann/json.hpp>

namespace k7sim {
namespace {

using Json = nlohmann::json;

// Ten times finer than the picture's own numbers, and a third of the text of the full ones.
double Rounded(double inches) {
  constexpr double kParts = 1e5;
  return std::round(inches * kParts) / kParts;
}

}  // namespace

std::string EventText(std::string_view name, std::string_view json) {
  return "event: " + std::string(name) + "\ndata: " + std::string(json) + "\n\n";
}

std::string FrameText(const ViewFrame& frame) {
  Json json = Json::object();
  for (const Stroke& s : frame.strokes) {
    json["strokes"].push_back({Rounded(s.x0), Rounded(s.y0), Rounded(s.x1), Rounded(s.y1),
                               s.depth > 0 ? std::max(Rounded(s.depth), 1e-5) : 0});
  }
  for (const WireLine& line : frame.lines) {
    json["lines"].push_back({line.number, SecondsFromUs(line.machineUs), std::string(1, line.mark),
                             line.link, line.text});
  }
  if (frame.linesPassedOver > 0) json["passedOver"] = frame.linesPassedOver;
  std::string text = json.dump(-1, ' ', false, Json::error_handler_t::replace);
  if (!frame.state.empty()) {
    // The state is JSON already.
    text = "{\"state\":" + frame.state + (text == "{}" ? "}" : "," + text.substr(1));
  }
  std::string events = text == "{}" ? "" : EventText("frame", text);
  if (frame.ended) events += EventText("end", "{}");
  return events;
}

}  // namespace k7sim
