#include "app/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>

#include "app/output_paths.h"
#include "common/nearest_word.h"
#include "common/number_list.h"
#include "k7_version.h"

namespace k7sim {
namespace {

constexpr const char* kAbout =
    "A simulated engraving machine: controller, motors, switches and a plate to engrave.\n"
    "Serves a pty (default) and, when asked, a TCP port, until SIGINT, SIGTERM or 'quit' on the\n"
    "control pipe. Prints 'pty PATH', 'tcp PORT', 'view ADDRESS' and 'ready' when hosts may "
    "connect.\n"
    "Exit codes: 0 stopped as asked, 2 wrong usage, or a port or a file could not be used.";

// The options as texts, before they are checked and turned into the setup.
struct Raw {
  std::string speed = "1";
  std::string wire = "usb";
  std::string tool = "spindle";
  std::string table = "25,16,2";
  std::string travel;
  std::string tableHome = "0,0";
  std::string position = "0,0,0";
  std::string surface = "plane:1.75";
  std::string id;
  std::string times = "machine";
  std::string corner = "bottom-left";
  std::vector<std::string> faults;
  std::vector<std::string> switches;
};

std::string ReadGeometry(const Raw& raw, MachineSetup& machine) {
  if (!ParseTriple(raw.table, machine.geometry.size) || machine.geometry.size[0] <= 0 ||
      machine.geometry.size[1] <= 0 || machine.geometry.size[2] <= 0 ||
      machine.geometry.size[0] > 1000 || machine.geometry.size[1] > 1000) {
    return "--table takes three lengths in inches above 0, as 25,16,2";
  }
  const auto home = ParseNumbers(raw.tableHome);
  if (!home || home->size() != 2) return "--table-home takes two lengths in inches, as 0.5,0.5";
  machine.geometry.homeX = (*home)[0];
  machine.geometry.homeY = (*home)[1];
  constexpr Vec3 kSpare = {0.5, 0.5, 0.25};  // inches that the axes reach beyond the table
  for (std::size_t i = 0; i < 3; ++i) machine.geometry.travel[i] = machine.geometry.size[i];
  machine.geometry.travel[0] += machine.geometry.homeX;
  machine.geometry.travel[1] += machine.geometry.homeY;
  for (std::size_t i = 0; i < 3; ++i) machine.geometry.travel[i] += kSpare[i];
  if (!raw.travel.empty() && !ParseTriple(raw.travel, machine.geometry.travel)) {
    return "--travel takes three lengths in inches, as 25.5,16.5,2.25";
  }
  if (!ParseTriple(raw.position, machine.positionInches)) {
    return "--position takes three lengths in inches, as 1,1,0.5";
  }
  std::string error;
  const auto surface =
      Surface::Parse(raw.surface, machine.geometry.size[0], machine.geometry.size[1], error);
  if (!surface) return error;
  machine.surface = *surface;
  return {};
}

std::string ReadRest(const Raw& raw, Options& options) {
  if (raw.speed != "max") {
    const auto speed = ParseNumbers(raw.speed);
    if (!speed || speed->size() != 1 || (*speed)[0] <= 0 || (*speed)[0] > 1e6) {
      return "--speed takes a factor above 0, or max";
    }
    options.setup.speed = (*speed)[0];
  } else {
    options.setup.speed = 0;
  }
  if (!raw.id.empty()) {
    if (raw.id.size() > 64 || raw.id.find_first_of(" \t\r\n#") != std::string::npos) {
      return "--id takes one word of up to 64 characters";
    }
    options.setup.id = raw.id;
  }
  for (const std::string& text : raw.faults) {
    std::string error;
    const auto faults = ParseFaults(text, error);
    if (!faults) return error;
    options.setup.faults.insert(options.setup.faults.end(), faults->begin(), faults->end());
  }
  Mechanics probe(options.setup.machine.geometry, options.setup.machine.surface);
  for (const std::string& text : raw.switches) {
    const std::size_t equals = text.find('=');
    const std::string name = text.substr(0, equals);
    const std::string state = equals == std::string::npos ? "" : text.substr(equals + 1);
    if (!ForceByName(probe, name, state)) {
      return "--switch takes x, y, z or probe, then =1, =0 or =auto: " + text;
    }
    options.switches.emplace_back(name, state);
  }
  options.ptyWire = raw.wire == "uart"  ? WireKind::Uart
                    : raw.wire == "tcp" ? WireKind::Tcp
                                        : WireKind::Usb;
  options.setup.machine.tool = raw.tool == "air" ? ToolKind::Air : ToolKind::Spindle;
  options.corner = raw.corner == "top-left" ? HomeCorner::TopLeft : HomeCorner::BottomLeft;
  options.transcriptTimes = raw.times == "off"    ? TranscriptTimes::Off
                            : raw.times == "wire" ? TranscriptTimes::Wire
                                                  : TranscriptTimes::Machine;
  int toOutput = 0;
  for (const std::string* path :
       {&options.picturePath, &options.transcriptPath, &options.reportPath}) {
    toOutput += *path == kStandardOutput ? 1 : 0;
  }
  if (toOutput > 1) return "only one of --picture, --transcript and --report can be -";
  return {};
}

// Takes one of these words.
CLI::Validator Choice(const std::vector<std::string>& words) {
  CLI::Validator choice("");
  choice.operation([words](std::string& text) {
    if (std::find(words.begin(), words.end(), text) != words.end()) return std::string();
    std::string all;
    for (const std::string& word : words) {
      all += (all.empty() ? "" : &word == &words.back() ? " or " : ", ") + word;
    }
    return "takes " + all + ", not '" + text + "'" + DidYouMean(text, words);
  });
  return choice;
}

// What is wrong with a word that is no option.
std::string UnknownWord(const CLI::App& app) {
  const std::string word = app.remaining().empty() ? "" : app.remaining().front();
  const std::string name = word.substr(0, word.find('='));
  if (!name.starts_with('-')) return "unexpected word '" + word + "'; each option starts with --";
  std::vector<std::string> known;
  for (const CLI::Option* option : app.get_options()) known.push_back(option->get_lnames()[0]);
  const std::string nearest =
      NearestWord(name.substr(std::min(name.size(), std::size_t{2})), known);
  return "unknown option " + name + (nearest.empty() ? "" : "; did you mean --" + nearest + "?") +
         " (--help lists all)";
}

// Prints one line; the parser's own messages may have several.
int Fail(std::string text) {
  for (char& c : text) {
    if (c == '\n') c = ' ';
  }
  std::cerr << "k7sim: " << text << "\n";
  return 2;
}

}  // namespace

std::optional<Options> ParseOptions(int argc, const char* const* argv, int& exitCode) {
  Options options;
  Raw raw;
  MachineSetup& machine = options.setup.machine;
  CLI::App app(kAbout, "k7sim");
  app.set_version_flag("--version", K7_VERSION, "Print the version and exit");

  auto* pty = app.add_option("--pty", options.ptyLink, "Make PATH a symbolic link to the pty");
  pty->type_name("PATH");
  auto* tcp = app.add_option("--tcp", options.tcpPort,
                             "Serve this TCP port on the loopback (0: any free one)");
  tcp->check(CLI::Range(0, 65535).description(""))->type_name("PORT");
  app.add_option("--wire", raw.wire, "What the pty behaves like: usb, uart or tcp")
      ->check(Choice({"usb", "uart", "tcp"}))
      ->capture_default_str()
      ->type_name("usb|uart|tcp");
  app.add_option("--baud", options.setup.baud, "Carry bytes at this baud rate (pty as usb or uart)")
      ->check(CLI::Range(300.0, 1e9).description(""))
      ->type_name("BAUD");
  app.add_option("--speed", raw.speed, "Machine seconds in a second; max: as fast as possible")
      ->capture_default_str()
      ->type_name("FACTOR|max");
  app.add_option("--config", options.setup.configPath, "File with the board's own settings")
      ->type_name("FILE");
  app.add_option("--id", raw.id, "Identity of the board, replaces the one in its settings")
      ->type_name("ID");

  app.add_option("--table", raw.table, "Plate: width, height, depth in inches")
      ->capture_default_str()
      ->type_name("W,H,D");
  app.add_option("--table-home", raw.tableHome,
                 "Corner of the plate, X and Y inches from the switches")
      ->capture_default_str()
      ->type_name("X,Y");
  app.add_option("--travel", raw.travel,
                 "Length of each axis in inches (default: a little\nmore than the table's)")
      ->type_name("X,Y,Z");
  app.add_option("--surface", raw.surface,
                 "Surface of the plate: plane:Z, tilt:Z,DX,DY, none,\nor a height-map file (inches "
                 "below the Z switch)")
      ->capture_default_str()
      ->type_name("WORK");
  app.add_option("--tool", raw.tool, "What cuts: spindle or air")
      ->check(Choice({"spindle", "air"}))
      ->capture_default_str()
      ->type_name("spindle|air");
  app.add_option("--position", raw.position, "Head at power-on, inches from the switches")
      ->capture_default_str()
      ->type_name("X,Y,Z");
  app.add_flag("--homed", machine.homed, "The table counts as homed from the start");
  app.add_flag("--hard-limits", machine.hardLimits,
               "A move beyond the end of an axis halts the machine");
  app.add_flag("--silent-zero-moves", machine.silentZeroMoves,
               "Do not tell the host of a move that moves nothing,\nas boards of another kind do");
  app.add_option("--switch", raw.switches, "Hold a switch (x, y, z, probe) closed (1) or open (0)")
      ->allow_extra_args(false)
      ->type_name("NAME=STATE");

  app.add_option("--fault", raw.faults,
                 "What goes wrong: 'match=G28,do=withhold', JSON, or a file with JSON.\n"
                 "When: line=N, match=TEXT, reply=TEXT or atMs=N; from the nth=N\n"
                 "time on, count=N times (0: always). do=ignore, garble, drop,\n"
                 "withhold, delay, duplicate, corrupt, fragment, noise, inject, halt,\n"
                 "silent, close, half-open, slow-drain or reboot, with ms=N, text=TEXT,\n"
                 "rate=N, bytes=N and seed=N where they apply")
      ->allow_extra_args(false)
      ->type_name("FAULT");
  app.add_option("--control", options.controlPath, "Make a pipe for commands ('help' lists them)")
      ->type_name("PATH");

  auto* view = app.add_option("--view", options.viewPort,
                              "Show the machine on a page for a browser, on this port of\n"
                              "the loopback (0: any free one)");
  view->check(CLI::Range(0, 65535).description(""))->type_name("PORT");

  app.add_option(
         "--picture", options.picturePath,
         "Draw the plate into this SVG file at the end\n(-: standard output, for one of the "
         "files)")
      ->type_name("FILE.svg");
  app.add_option("--picture-home", raw.corner,
                 "Corner that the table home is in: bottom-left, top-left")
      ->check(Choice({"bottom-left", "top-left"}))
      ->capture_default_str()
      ->type_name("CORNER");
  app.add_option("--transcript", options.transcriptPath, "Write every line in both directions")
      ->type_name("FILE");
  app.add_option("--transcript-times", raw.times, "Times in it: machine, wire or off")
      ->check(Choice({"machine", "wire", "off"}))
      ->capture_default_str()
      ->type_name("machine|wire|off");
  app.add_option("--report", options.reportPath, "Write what happened as JSON at the end")
      ->type_name("FILE.json");

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    std::cout << app.help();
    exitCode = 0;
    return std::nullopt;
  } catch (const CLI::CallForVersion&) {
    std::cout << "k7sim " K7_VERSION "\n";
    exitCode = 0;
    return std::nullopt;
  } catch (const CLI::ExtrasError&) {
    exitCode = Fail(UnknownWord(app));
    return std::nullopt;
  } catch (const CLI::ParseError& error) {
    exitCode = Fail(error.what());
    return std::nullopt;
  }
  options.tcp = tcp->count() > 0;
  options.pty = pty->count() > 0 || !options.tcp;
  options.view = view->count() > 0;
  std::string error = ReadGeometry(raw, machine);
  if (error.empty()) error = ReadRest(raw, options);
  if (!error.empty()) {
    exitCode = Fail(error);
    return std::nullopt;
  }
  return options;
}

}  // namespace k7sim
