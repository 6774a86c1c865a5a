#include "app/trace_command.h"

#include <windows.h>

#include <filesystem>
#include <fstream>

#include "app/console.h"
#include "app/stop_request.h"
#include "core/text.h"
#include "trace/output.h"

namespace k7host {
namespace {

namespace fs = std::filesystem;

constexpr DWORD kLookMs = 100;  // of a trace that is followed

// A trace file that others may write to and rename meanwhile. Closes itself.
class OpenTraceFile {
 public:
  OpenTraceFile() = default;
  ~OpenTraceFile() { Close(); }
  OpenTraceFile(const OpenTraceFile&) = delete;
  OpenTraceFile& operator=(const OpenTraceFile&) = delete;

  bool Open(const fs::path& path) {
    Close();
    file_ = CreateFileW(path.c_str(), GENERIC_READ,
                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    return file_ != INVALID_HANDLE_VALUE;
  }
  // Appends what there is to `text`; false at the end.
  bool Read(std::string& text) {
    char block[65536];
    DWORD count = 0;
    if (!ReadFile(file_, block, sizeof block, &count, nullptr) || count == 0) return false;
    text.append(block, count);
    return true;
  }
  // Another file has this name now.
  bool IsReplaced(const fs::path& path) const {
    OpenTraceFile named;
    BY_HANDLE_FILE_INFORMATION here{}, there{};
    return named.Open(path) && GetFileInformationByHandle(file_, &here) != FALSE &&
           GetFileInformationByHandle(named.file_, &there) != FALSE &&
           (here.nFileIndexLow != there.nFileIndexLow ||
            here.nFileIndexHigh != there.nFileIndexHigh);
  }

 private:
  void Close() {
    if (file_ != INVALID_HANDLE_VALUE) CloseHandle(file_);
    file_ = INVALID_HANDLE_VALUE;
  }

  HANDLE file_ = INVALID_HANDLE_VALUE;
};

// Takes whole lines off `text` and prints those that are asked for.
class Printer {
 public:
  explicit Printer(const Arguments& arguments) : arguments_(arguments) {}

  void TakeLines(std::string& text, bool last) {
    std::size_t start = 0;
    for (std::size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
      Take(std::string_view(text).substr(start, end - start));
    }
    text.erase(0, start);
    if (last && !text.empty()) Take(text);
  }
  const TraceStory& Story() const { return story_; }

 private:
  void Take(std::string_view line) {
    const auto entry = story_.Take(line);
    if (!entry || arguments_.traceSummary || !arguments_.traceSvg.empty()) return;
    if (arguments_.json) return PrintLine(TraceEntryJson(*entry));
    if (!titled_) PrintLine(TraceTitles());
    titled_ = true;
    // A search finds many; they are one line.
    if (IsMissingPort(entry->record)) {
      ++missingPorts_;
      return;
    }
    if (missingPorts_ > 0) {
      PrintLine(std::string(28, ' ') + "(" + std::to_string(missingPorts_) +
                " ports of a search do not exist)");
    }
    missingPorts_ = 0;
    PrintLine(TraceEntryText(*entry));
  }

  static bool IsMissingPort(const TraceRecord& record) {
    return record.kind == "fail" && record.rest.starts_with("open 2 ");
  }

  const Arguments& arguments_;
  TraceStory story_;
  int missingPorts_ = 0;  // since the last line
  bool titled_ = false;
};

// What stands in the file now; false: it cannot be read.
bool ReadWhole(const fs::path& path, Printer& printer) {
  OpenTraceFile file;
  if (!file.Open(path)) return false;
  std::string text;
  while (file.Read(text)) printer.TakeLines(text, false);
  printer.TakeLines(text, true);
  return true;
}

// Until the user asks to stop.
bool Follow(const fs::path& path, Printer& printer) {
  OpenTraceFile file;
  if (!file.Open(path)) return false;
  std::string text;
  while (!StopRequested()) {
    // Asked before the last look at the old file: what was written before it was renamed is in it.
    const bool replaced = file.IsReplaced(path);
    bool any = false;
    while (file.Read(text)) any = true;
    printer.TakeLines(text, replaced);
    if (replaced) {
      text.clear();
      file.Open(path);
    } else if (!any) {
      WaitForSingleObject(StopEvent(), kLookMs);
    }
  }
  return true;
}

}  // namespace

int RunTrace(const Arguments& arguments) {
  const fs::path path(WideText(arguments.file));
  Printer printer(arguments);
  // The older half first.
  fs::path older = path;
  older += L".1";
  ReadWhole(older, printer);
  if (!(arguments.traceFollow ? Follow(path, printer) : ReadWhole(path, printer))) {
    return Fail(kExitUsage,
                "cannot open " + arguments.file + ": name the file that K7_TRACE or --trace named");
  }
  const TraceSummary summary = printer.Story().Summary();
  if (summary.lines > 0 && summary.lines == summary.unreadable) {
    return Fail(kExitUsage, arguments.file + " is no trace: none of its lines is a record");
  }
  if (arguments.traceSummary) {
    std::string text = arguments.json ? TraceSummaryJson(summary) : TraceSummaryText(summary);
    while (text.ends_with('\n')) text.pop_back();
    PrintLine(text);
  }
  if (arguments.traceSvg.empty()) return kExitOk;
  std::ofstream out(fs::path(WideText(arguments.traceSvg)), std::ios::binary);
  out << TracePicture(printer.Story().Moves());
  out.close();
  if (!out) return Fail(kExitUsage, "cannot write " + arguments.traceSvg);
  Print("picture", arguments.traceSvg);
  return kExitOk;
}

int WantTrace(const std::string& file) {
  if (file.empty()) return kExitOk;
  const std::wstring path = WideText(file);
  // The driver says nothing when it cannot write a trace.
  if (!fs::is_directory(path)) {
    const HANDLE made = CreateFileW(path.c_str(), FILE_APPEND_DATA,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (made == INVALID_HANDLE_VALUE) {
      return Fail(kExitUsage, "--trace " + file + ": cannot be written (error " +
                                  std::to_string(GetLastError()) +
                                  "); name a file in a folder that exists");
    }
    CloseHandle(made);
  }
  SetEnvironmentVariableW(L"K7_TRACE", path.c_str());
  return kExitOk;
}

}  // namespace k7host
