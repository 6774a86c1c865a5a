// The steps of job_preparation.h, and the settings that they need.
#include "app/job_preparation.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "app/colour_table.h"
#include "app/commands.h"
#include "app/console.h"
#include "core/frame.h"
#include "core/job_estimate.h"
#include "core/motion_time.h"
#include "core/preview.h"
#include "core/text.h"
#include "drawing/colours.h"
#include "drawing/stroke_order.h"

namespace k7host {
namespace {

constexpr std::int32_t kPathCapacity = 520;
constexpr DWORD kLookMs = 50;

// The driver's settings file, read only; a float is kept there as the decimal text of its bits.
class SettingsReader {
 public:
  explicit SettingsReader(const wchar_t* path) : path_(path) {}

  int Whole(const wchar_t* section, const wchar_t* key, int otherwise) const {
    return static_cast<int>(GetPrivateProfileIntW(section, key, otherwise, path_));
  }
  double Float(const wchar_t* key, float otherwise) const {
    return Float(L"Engrave Settings", key, otherwise);
  }
  double Float(const wchar_t* section, const wchar_t* key, float otherwise) const {
    const auto bits = GetPrivateProfileIntW(section, key, std::bit_cast<INT>(otherwise), path_);
    const double value = std::bit_cast<float>(bits);
    return std::isfinite(value) ? value : 0.0;
  }

 private:
  const wchar_t* path_;
};

// Depth of each pass, by the rules that the driver has made its passes by.
std::vector<double> PassDepths(const SettingsReader& settings, std::uint32_t passes) {
  const double depth = settings.Float(L"Engrave Depth", 0.0625f);
  const double finish = settings.Float(L"Finish Pass Depth", 0.0f);
  const bool steps = settings.Whole(L"Engrave Settings", L"Multi Pass Mode", 0) == 0;
  const std::uint32_t rough = finish != 0.0 && passes > 1 ? passes - 1 : passes;
  std::vector<double> depths;
  for (std::uint32_t pass = 1; pass <= passes; ++pass) {
    const bool last = pass == passes || !steps;
    depths.push_back(last ? depth : (depth - finish) / rough * pass);
  }
  return depths;
}

struct MachineNow {
  JobSpeeds speeds;
  HeadPlace head;
};

// Where the head stands, as the driver knows it.
HeadPlace HeadNow(Session& session, double cutterHomeInches) {
  std::int32_t x = 0;
  std::int32_t y = 0;
  session.Device().GetMachinePosition(&x, &y, nullptr);
  HeadPlace head{x / 1000.0, y / 1000.0, 0.0};
  const double stepsPerInch = session.Device().GetZStepsPerInch();
  session.Window().Clear();
  session.Device().HomeCutter();  // reports Z and moves nothing
  session.Window().Wait(0);
  const std::optional<std::int32_t> z = session.Window().Reports().zSteps;
  if (z && stepsPerInch > 0.0) head.z = *z / stepsPerInch - cutterHomeInches;
  return head;
}

// None when the file is not there, because then nothing is known of the machine's speeds.
std::optional<MachineNow> ReadMachine(Session& session, bool homesFirst) {
  k7::IEngraver& device = session.Device();
  wchar_t path[kPathCapacity] = {};
  device.GetSettingsFilePath(path, kPathCapacity);
  if (path[0] == L'\0' || GetFileAttributesW(path) == INVALID_FILE_ATTRIBUTES) return std::nullopt;
  const SettingsReader settings(path);
  JobSpeeds speeds;
  speeds.travel = settings.Float(L"Traverse Speed", 1.0f);
  speeds.engrave = settings.Float(L"Engrave Speed", 1.0f);
  speeds.grid = settings.Float(L"Grid Speed", 1.0f);
  speeds.cutterUp = settings.Float(L"Cutter Up Speed", 1.0f);
  speeds.cutterDown = settings.Float(L"Cutter Down Speed", 1.0f);
  speeds.liftInches = std::max(settings.Float(L"Cutter Lift", 0.125f), 0.001);
  speeds.dwellSeconds = std::max(settings.Float(L"Engrave Delay", 0.0f), 0.0);
  speeds.passDepthsInches = PassDepths(settings, std::max(device.GetPassCount(), 1u));
  speeds.spindle =
      device.HasSpindle() != 0 && settings.Whole(L"Engrave Settings", L"Engrave Type", 0) != 0;
  const double home = settings.Float(L"Axis Z", L"Cutter Home", 0.0f);
  if (!homesFirst) return MachineNow{speeds, HeadNow(session, home)};
  // At the switches.
  const HeadPlace zero{-settings.Float(L"Axis X", L"Table Home", 0.0f),
                       -settings.Float(L"Axis Y", L"Table Home", 0.0f), -home};
  return MachineNow{speeds, zero};
}

std::string SecondsText(std::uint32_t seconds) {
  return std::to_string(seconds) + " s";
}

}  // namespace

std::int64_t ShowSettingsWithColours(Session& session, Drawing& drawing) {
  const ColourTable table(session.Device(), ColoursOf(drawing));
  const std::int64_t result = ShowSettings(session, true, true);
  if (session.Device().GetEngraveByColor() != 0) CutByColour(drawing.strokes, table.Rows());
  return result;
}

void ArrangeStrokes(Session& session, const Arguments& arguments, Drawing& drawing) {
  if (session.Device().GetEngraveByColor() != 0) {
    CutByColour(drawing.strokes, ColoursOf(drawing));
  }
  if (!arguments.optimise || drawing.strokes.empty()) return;
  const TravelSaved saved = OptimiseOrder(drawing.strokes);
  Print("optimise", "travel " + InchesText(saved.afterInches) + " instead of " +
                        InchesText(saved.beforeInches) + " inches a pass, " +
                        InchesText(saved.beforeInches - saved.afterInches) + " saved");
}

std::uint32_t EstimateAndPrint(Session& session, const JobPlan& plan, const Table& table,
                               const JobOptions& options, bool homesFirst,
                               std::uint32_t runSeconds) {
  std::uint32_t seconds = runSeconds;
  const std::optional<MachineNow> machine = ReadMachine(session, homesFirst);
  if (seconds == 0 || !machine) {
    Print("estimate",
          seconds == 0 ? "unknown" : SecondsText(seconds) + " (" + DurationText(seconds) + ")");
    return seconds;
  }
  const WholeEstimate whole =
      AddLiftsAndDwells(seconds, plan, table, machine->speeds, options.passes,
                        options.runKind == k7::kRunGrid, machine->head);
  seconds = whole.all;
  const std::uint32_t rest = whole.dwells + whole.spindle;
  const std::uint32_t moving = whole.all - std::min(whole.all, rest);
  Print("estimate", SecondsText(seconds) + " (" + DurationText(seconds) + ")");
  Print("parts", "travels and cuts " + SecondsText(whole.runs) +
                     " by the driver, lifts and plunges " +
                     SecondsText(moving - std::min(moving, whole.runs)) + ", dwells " +
                     SecondsText(whole.dwells) + ", spindle " + SecondsText(whole.spindle));
  return seconds;
}

int WritePreview(const Arguments& arguments, const JobPlan& plan, const Table& table) {
  const std::string& file = arguments.preview;
  if (file.empty()) return kExitOk;
  const bool png = file.ends_with(".png");
  const std::string picture = png ? PreviewPng(plan, table) : PreviewSvg(plan, table);
  if (picture.empty()) {
    return Fail(kExitUsage,
                "no PNG previews: this k7host was built without stb; name an .svg file");
  }
  std::ofstream out(std::filesystem::path(WideText(file)), std::ios::binary);
  out << picture;
  out.close();
  if (!out) return Fail(kExitUsage, "cannot write " + file);
  Print("preview", file);
  return kExitOk;
}

int ShowFrame(Session& session, const JobPlan& plan, JobObserver& observer) {
  const FrameResult frame = DriveFrame(session.Device(), plan, observer);
  if (frame.end != JobEnd::Done) return Fail(kExitMachine, JobEndText(frame.end));
  if (frame.manualCutter) {
    if (observer.OnManualCutter()) return kExitOk;
    return Fail(kExitMachine, JobEndText(JobEnd::Stopped));
  }
  if (ConsoleInput() == nullptr) {
    Print("frame", "driven");
    return kExitOk;
  }
  Print("frame", "driven; Enter engraves, Esc ends");
  while (!observer.StopRequested()) {
    session.Window().Wait(kLookMs);
    const WORD key = TakeKey(nullptr);
    if (key == VK_RETURN) return kExitOk;
    if (key == VK_ESCAPE) break;
  }
  return Fail(kExitMachine, JobEndText(JobEnd::Stopped));
}

}  // namespace k7host
