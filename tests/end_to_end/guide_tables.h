// What the test of the guides has to know beside their text: a row for each thing that a reader
// knows by himself.
#pragma once

namespace k7test {

// Commands that are not run here. The first words of one are enough.
struct Elsewhere {
  const char* command;
  const char* reason;
};
inline constexpr Elsewhere kElsewhere[] = {
    {"./k7 test", "this test is a part of it"},
    {"./k7 demo", "a job of a minute; ./k7 package --check runs what it shows"},
    {"./k7 build", "./k7 test builds the same"},
    {"./k7 package", "minutes; CI runs it by itself"},
    {"./k7 bench", "minutes to hours, and what it measures needs a machine that is idle"},
    {"./k7 fuzz-keep", "rewrites the corpus; ./k7 test runs the targets"},
    {"./k7 format", "rewrites the sources; ./k7 test checks the format"},
    {"./k7 hook", "changes the settings of the clone; tests/lint/pre_commit_test.sh runs the hook"},
    {"./k7 screenshots", "minutes; the tests of the dialogs open each of them"},
    {"cmake", "builds; a lint looks for the preset, and ./k7 test goes by the same ones"},
    {"ctest", "needs the build of Visual Studio, on Windows; CI runs it there"},
    {"build/native/bin/k7_pure_tests", "./k7 test runs it"},
    {"K7_UPDATE_DOCS=1", "rewrites a page; the test fails when that would change it"},
    {"python3 tests/simulator/view/page_test.py", "needs a browser; ./k7 test runs it"},
    {"curl", "no package of the project; the test of the page sends the same request"},
    {"pkg-config", "needs the package; ./k7 package --check runs it"},
    {"git commit", "changes the clone; tests/lint/pre_commit_test.sh commits in one of its own"},
    {"mode COM7", "belongs to Windows, and Wine has none"},
};

// What stands for something else in commands that start so. `{id}` is the machine's identity,
// `{port}` a free port.
struct Meant {
  const char* command;
  const char* word;
  const char* means;
};
inline constexpr Meant kMeant[] = {
    {"k7host", "ID", "{id}"},
    {"k7host COMMAND --help", "COMMAND", "engrave"},
    {"k7host COMMAND --tcp", "COMMAND", "info"},
    {"k7host COMMAND --tcp", "HOST:PORT", "127.0.0.1:{port}"},
    {"k7host engrave --resume", "FILE", "drawing.plt.resume"},
    {"k7host engrave --resume", "FILE.plt.resume", "drawing.plt.resume"},
    {"k7host engrave", "FILE", "drawing.plt"},
    {"k7host estimate", "FILE", "drawing.plt"},
    {"k7host doctor", "FILE", "other.ini"},
    {"k7host trace", "FILE", "C:\\Temp\\trace.txt"},
    {"k7host goto", "X", "2"},
    {"k7host goto", "Y", "1.5"},
    {"k7host jog", "VK", "120"},
    {"k7host settings show", "FILE", "other.ini"},
    {"k7host settings", "KEY", "\"Cutter Lift\""},
    {"k7host settings", "VALUE", "0.25"},
    {"k7host settings", "A", "{id}"},
    {"k7host settings", "B", "other.ini"},
    {"k7host settings", "FOLDER", "backup"},
    {"k7sim", "/tmp/machine", "machine"},
    {"ln", "/tmp/machine", "$PWD/machine"},
    {"k7sim", "/tmp/board", "board"},
    {"k7sim", "8080", "{port}"},
    {"k7sim", "50", "max"},
    {"echo", "PATH", "pipe"},
};

// What a page shows of a real computer, and what is so here.
struct OfAComputer {
  const char* shown;
  const char* here;
};
inline constexpr OfAComputer kOfAComputer[] = {
    {"C:\\K7\\k7driver.dll", "...\\k7driver.dll"},    {": 51155 MB free", ": ... MB free"},
    {"opens, USB Serial Port (COM7)", "opens"},       {"after 0.2 ms", "after ... ms"},
    {"0.1 ms, worst 0.4 ms", "... ms, worst ... ms"}, {"doctor: 12 ok", "doctor: ... ok"},
};

// What a person does beside a command that does not end by itself.
enum class Person { CancelsTheDialog, PressesEscape, PressesEnter, Interrupts };
struct Attended {
  const char* command;
  Person person;
  const char* once;  // it has printed this
};
inline constexpr Attended kAttended[] = {
    {"k7host settings", Person::CancelsTheDialog, ""},
    {"k7host settings --before-job", Person::CancelsTheDialog, ""},
    {"k7host settings --read-only", Person::CancelsTheDialog, ""},
    {"k7host dialog", Person::CancelsTheDialog, ""},
    {"k7host setup", Person::CancelsTheDialog, ""},
    {"k7host jog", Person::PressesEscape, "\n"},
    {"k7host spindle on", Person::PressesEnter, "\n"},
    {"k7host spindle full", Person::PressesEnter, "\n"},
    {"k7host switches --watch", Person::Interrupts, "switches: "},
    {"k7host trace FILE --follow", Person::Interrupts, "\n"},
};

}  // namespace k7test
