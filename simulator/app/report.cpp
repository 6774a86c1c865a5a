#include "app/report.h"

#include <nlohmann/json.hpp>

namespace k7sim {
namespace {

using Json = nlohmann::ordered_json;

Json Point(const ToolPlace& place) {
  return {{"x", place.x}, {"y", place.y}, {"z", place.z}};
}

Json Jobs(const JobLog& log) {
  Json jobs = Json::array();
  for (const JobRecord& job : log.Records()) {
    jobs.push_back({{"ended", job.ended},
                    {"blocks", job.blocks},
                    {"startSeconds", SecondsFromUs(job.startUs)},
                    {"simulatedSeconds", job.simulatedSeconds},
                    {"plannedSeconds", job.plannedSeconds},
                    {"motionSeconds", job.motionSeconds},
                    {"cutInches", job.distances.cutInches},
                    {"travelInches", job.distances.travelInches}});
  }
  return jobs;
}

Json Mistakes(const Recorder& record) {
  Json errors = {{"total", record.MistakeTotal()}};
  for (std::size_t i = 0; i < kMistakeKinds; ++i) {
    errors[kMistakeNames[i]] = record.MistakeCount(static_cast<Mistake>(i));
  }
  Json first = Json::array();
  for (const MistakeRecord& mistake : record.FirstMistakes()) {
    first.push_back({{"error", kMistakeNames[static_cast<std::size_t>(mistake.kind)]},
                     {"what", mistake.what},
                     {"line", mistake.line},
                     {"seconds", SecondsFromUs(mistake.atUs)},
                     {"command", mistake.command}});
  }
  errors["first"] = first;
  return errors;
}

}  // namespace

std::string WriteReport(Simulator& simulator) {
  Controller& board = simulator.Board();
  board.Jobs().Settle();
  const Recorder& record = board.Record();
  const ControllerCounts& counts = board.Counts();
  const Vec3 at = board.PositionMm(simulator.MachineNow());
  Json report;
  report["machineSeconds"] = SecondsFromUs(simulator.MachineNow());
  report["lines"] = {{"received", simulator.LinesReceived()},
                     {"gcode", counts.gcodeLines},
                     {"unknown", counts.unknownLines},
                     {"resendsAskedFor", counts.resends},
                     {"refusedWhileHalted", counts.refusedLines},
                     {"flushedByHalt", counts.flushedLines},
                     {"replies", simulator.RepliesSent()},
                     {"repliesLost", simulator.RepliesLost()},
                     {"inputBytesLost", simulator.LostInputBytes()},
                     {"outputBytesDropped", simulator.LostOutputBytes()}};
  report["blocks"] = counts.blocks;
  report["deepestQueue"] = counts.deepestQueue;
  report["cutInches"] = record.CutInches();
  report["travelInches"] = record.TravelInches();
  report["depthInches"] = record.HasCut() ? Json{{"shallowest", record.ShallowestInches()},
                                                 {"deepest", record.DeepestInches()}}
                                          : Json(nullptr);
  report["jobs"] = Jobs(board.Jobs());
  report["spindle"] = {{"on", board.SpindleOn()}, {"level", board.SpindleLevel()}};
  report["outputOn"] = board.OutputOn();
  report["motorsOn"] = board.MotorsOn();
  report["homed"] = board.IsHomed();
  report["halted"] = board.IsHalted();
  report["halts"] = counts.halts;
  report["restarts"] = counts.restarts;
  report["positionInches"] = Point(board.Machine().PlaceAt(at));
  report["controllerMm"] = {{"x", at[0]}, {"y", at[1]}, {"z", at[2]}};
  report["surface"] = board.Machine().PlateSurface().Description();
  report["errors"] = Mistakes(record);
  Json faults = Json::array();
  for (const auto& outcome : simulator.FaultsOf().Outcomes()) {
    faults.push_back({{"fault", outcome.source}, {"fired", outcome.fired}});
  }
  report["faults"] = faults;
  report["allFaultsFired"] = simulator.FaultsOf().AllFired();
  return report.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace k7sim
