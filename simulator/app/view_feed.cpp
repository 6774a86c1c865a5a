#include "app/view_feed.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <random>

#include "app/control.h"
#include "app/summary.h"

namespace k7sim {
namespace {

using Json = nlohmann::ordered_json;

constexpr TimeUs kBetweenFramesUs = 50'000;   // 20 frames a second
constexpr std::size_t kLineCharacters = 300;  // the page shows that much of a line
constexpr std::size_t kShownMistakes = 3;

const char* NameOf(SwitchForce force) {
  return force == SwitchForce::Closed ? "1" : force == SwitchForce::Open ? "0" : "auto";
}

Json Place(const ToolPlace& place) {
  return {{"x", place.x}, {"y", place.y}, {"z", place.z}};
}

std::string FirstLine(const std::string& text) {
  return text.substr(0, text.find_first_of("\r\n"));
}

// What does not change while the simulator runs.
std::string Hello(const Options& options) {
  const TableGeometry& table = options.setup.machine.geometry;
  Json commands = Json::array();
  for (const ControlCommand& command : ControlCommands()) {
    commands.push_back(
        {{"verb", command.verb}, {"arguments", command.arguments}, {"help", command.help}});
  }
  return Json{{"run", std::random_device()()},
              {"table", {{"width", table.size[0]}, {"height", table.size[1]}}},
              {"homeX", table.homeX},
              {"homeY", table.homeY},
              {"homeAtTop", options.corner == HomeCorner::TopLeft},
              {"speed", options.setup.speed},
              {"queueRoom", options.setup.machine.limits.usableBlocks},
              {"commands", commands},
              {"faultActions", kFaultActionNames}}
      .dump();
}

}  // namespace

ViewFeed::ViewFeed(const Options& options, Simulator& simulator,
                   std::vector<std::pair<int, std::string>> links)
    : options_(options),
      simulator_(simulator),
      links_(std::move(links)),
      server_(exchange_, Hello(options)) {}

ViewFeed::~ViewFeed() {
  exchange_->End();
}

void ViewFeed::OnTranscriptLine(TimeUs machineUs, char mark, std::string_view link,
                                std::string_view text) {
  lines_.push_back(
      {++lineCount_, machineUs, mark, std::string(link), Escaped(text.substr(0, kLineCharacters))});
  if (lines_.size() > Exchange::kKeptLines) lines_.pop_front();
}

void ViewFeed::Serve(const RunLine& run, TimeUs nowUs) {
  exchange_->ClearWake();
  while (const auto command = exchange_->TakeCommand()) {
    std::string message;
    const bool good = run(command->line, message);
    exchange_->Answer(*command, good, message);
  }
  if (exchange_->HasBrowsers() && nowUs >= NextDue()) Publish(nowUs);
}

TimeUs ViewFeed::NextDue() const {
  if (!exchange_->HasBrowsers()) return kNever;
  return toldUs_ < 0 ? 0 : toldUs_ + kBetweenFramesUs;
}

void ViewFeed::End(TimeUs nowUs) {
  summary_ = Summary(simulator_);
  Publish(nowUs);
  exchange_->End();
}

void ViewFeed::Publish(TimeUs nowUs) {
  std::vector<WireLine> lines(std::make_move_iterator(lines_.begin()),
                              std::make_move_iterator(lines_.end()));
  lines_.clear();
  exchange_->Publish(State(), simulator_.Board().Record().Strokes(), std::move(lines));
  toldUs_ = nowUs;
}

std::string ViewFeed::State() const {
  const Controller& board = simulator_.Board();
  const Mechanics& machine = board.Machine();
  const Recorder& record = board.Record();
  const TimeUs now = simulator_.MachineNow();
  const Vec3 at = board.PositionMm(now);
  const ToolPlace place = machine.PlaceAt(at);
  Json state;
  state["seconds"] = SecondsFromUs(now);
  state["lines"] = simulator_.LinesReceived();
  state["replies"] = simulator_.RepliesSent();
  Json links = Json::array();
  std::size_t waiting = 0;
  for (const auto& [number, name] : links_) {
    links.push_back({{"name", name}, {"open", simulator_.IsOpen(number)}});
    waiting += board.WaitingLines(number);
  }
  state["links"] = links;
  state["moving"] = !board.IsIdle();
  state["head"] = Place(place);
  // Where the stroke began that is not among the strokes yet.
  state["from"] = Place(machine.PlaceAt(machine.Logical()));
  state["depth"] = std::max(0.0, record.DepthAt(place, machine, board.SpindleOn()));
  state["feedMmPerSec"] = board.FeedMmPerSec();
  state["queued"] = board.QueuedBlocks();
  state["waiting"] = waiting;
  state["homed"] = board.IsHomed();
  state["halted"] = board.IsHalted();
  state["alarm"] = board.IsHalted() ? FirstLine(board.AlarmText()) : "";
  state["spindle"] = {{"on", board.SpindleOn()}, {"level", board.SpindleLevel()}};
  state["output"] = board.OutputOn();
  state["motors"] = board.MotorsOn();
  Json switches = Json::array();
  constexpr const char* kNames[] = {"x", "y", "z"};
  for (std::size_t axis = 0; axis < std::size(kNames); ++axis) {
    switches.push_back({{"name", kNames[axis]},
                        {"closed", machine.SwitchClosed(axis, at)},
                        {"held", NameOf(machine.ForceOfSwitch(axis))}});
  }
  switches.push_back({{"name", "probe"},
                      {"closed", machine.ProbeClosed(at)},
                      {"held", NameOf(machine.ForceOfProbe())}});
  state["switches"] = switches;
  state["surface"] = machine.PlateSurface().Description();
  state["cutInches"] = record.CutInches();
  state["deepest"] = record.HasCut() ? record.DeepestInches() : 0.0;
  Json first = Json::array();
  for (const MistakeRecord& mistake : record.FirstMistakes()) {
    if (first.size() == kShownMistakes) break;
    first.push_back(mistake.what +
                    (mistake.line > 0 ? " (line " + std::to_string(mistake.line) + ")" : ""));
  }
  state["errors"] = {{"total", record.MistakeTotal()}, {"first", first}};
  Json faults = Json::array();
  for (const auto& outcome : simulator_.FaultsOf().Outcomes()) {
    faults.push_back({{"fault", outcome.source}, {"fired", outcome.fired}});
  }
  state["faults"] = faults;
  if (!summary_.empty()) state["summary"] = summary_;
  return state.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace k7sim
