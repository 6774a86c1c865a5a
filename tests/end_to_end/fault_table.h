// The table of docs/reliability.md: what becomes of a call when something goes wrong while it runs.
#pragma once

#include <string>
#include <vector>

namespace k7test {

// What a call does.
enum class Outcome {
  Returns,    // by itself
  Waits,      // until the machine speaks again or the link is lost: a silent machine is waited for
  Ends,       // the process: 256 bytes without a line end are no controller's
  Impossible  // this fault meets nothing here
};

// A fault as k7sim takes it; TRIGGER stands for what it is to act on.
struct FaultRow {
  const char* name;   // first column of the table
  const char* title;  // of the test
  const char* script;
};

// Calls that the machine has to answer. The fault is armed after the lead-in.
struct Phase {
  const char* name;                 // heading of the table's column
  const char* title;                // of the test
  std::vector<std::string> leadIn;  // commands of k7_slots, after connecting
  const char* trigger;              // a line that the calls send, for TRIGGER
  std::vector<std::string> calls;   // commands of k7_slots, one after the other
};

// The noise has no zero and no line end in it: those cut a line, and where they fall is chance.
inline constexpr FaultRow kFaults[] = {
    {"a line is lost", "LostLine", "match=TRIGGER,do=ignore"},
    {"a line is garbled", "GarbledLine", "match=TRIGGER,do=garble"},
    {"an answer is lost", "LostAnswer", "match=TRIGGER,do=drop"},
    {"all answers to a line are withheld", "Withheld", "match=TRIGGER,do=withhold"},
    {"answers come 0.7 s late", "Late", "match=TRIGGER,do=delay,ms=700"},
    {"answers come twice", "Twice", "match=TRIGGER,do=duplicate"},
    {"an answer has a wrong character", "Corrupt", "match=TRIGGER,do=corrupt"},
    {"answers come in two parts, 0.1 s apart", "Fragmented", "match=TRIGGER,do=fragment,ms=100"},
    {"random bytes follow an answer", "Noise", "match=TRIGGER,do=noise,bytes=40,seed=24"},
    {"a line comes that nobody asked for", "Unasked",
     R"(match=TRIGGER,do=inject,text=ALARM: Hard limit +X\n)"},
    {"the machine halts", "Halted", "match=TRIGGER,do=halt,text=ALARM: Hard limit +X"},
    {"the board restarts", "Restarted",
     R"(match=TRIGGER,do=reboot,ms=300,text=Smoothie\r\nok\r\n)"},
    {"the board reads 300 bytes a second", "SlowDrain", "match=TRIGGER,do=slow-drain,rate=300"},
    {"nothing is sent any more", "Silent", "match=TRIGGER,do=silent"},
    {"nothing is read or sent any more", "HalfOpen", "match=TRIGGER,do=half-open"},
    {"the line is closed", "Closed", "match=TRIGGER,do=close"},
    {"256 bytes come without a line end", "Endless", "match=TRIGGER,do=inject,text=ENDLESS"},
};

inline const Phase kPhases[] = {
    {"search", "Search", {}, "SmoothieIsConnected", {"enumerate"}},
    {"connect", "Connect", {}, "SmoothieIsConnected", {"connect"}},
    {"home", "Home", {}, "G28 Z0", {"home"}},
    {"switches", "Switches", {}, "M119", {"switches"}},
    {"probe",
     "Probe",
     {"begin", "pass 1 4000 4000", "move 4000 4000"},
     "G30",
     {"engrave 8000 4000"}},
    {"first stroke", "FirstStroke", {"begin", "pass 1 4000 4000"}, "G0", {"move 4000 4000"}},
    {"middle", "Middle", {"begin", "pass 1 4000 4000", "strokes 2 1"}, "G0", {"strokes 15 2"}},
    {"pass change",
     "PassChange",
     {"begin", "pass 1 4000 4000"},
     "G0 X",
     {"strokes 2 1", "pass 2 4000 4000"}},
    {"end of job", "EndOfJob", {"begin", "pass 1 4000 4000"}, "G0 X", {"strokes 2 1", "end"}},
    {"jog", "Jog", {}, "G0 X", {"jog 2 1 300"}},
    {"ramp", "Ramp", {"spindle 1"}, "M44", {"ramp 0 1000"}},
    {"dialog", "Dialog", {}, "SmoothieIsConnected", {"settings 0 1"}},
    {"release", "Release", {}, "M18", {"release"}},
};

}  // namespace k7test
