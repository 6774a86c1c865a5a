// TraceCapture: a trace for the life of one test, and what it says.
#pragma once

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

#include "base/trace.h"

namespace k7test {

class TraceCapture {
 public:
  // The trace goes to a file of that name in a folder of its own.
  explicit TraceCapture(const std::wstring& name = L"trace.txt") {
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
    path_ = folder_ / name;
    k7::BeginTrace(path_.c_str());
  }
  ~TraceCapture() {
    k7::EndTrace();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  TraceCapture(const TraceCapture&) = delete;
  TraceCapture& operator=(const TraceCapture&) = delete;

  const std::filesystem::path& Folder() const { return folder_; }
  const std::filesystem::path& Path() const { return path_; }

  static std::string ReadAll(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  }

  // "role kind rest" of every record so far but the header; numbers with a decimal point are "#".
  std::vector<std::string> Records() const {
    static const std::regex line{
        R"( *\d+\.\d{6} \d+ (\w+):\d+ +(?:-|[0-9a-f]+) +(\w+)(?: +(.*))?)"};
    static const std::regex fraction{R"(\d+\.\d{6})"};
    std::vector<std::string> records;
    std::ifstream in(path_, std::ios::binary);
    for (std::string text; std::getline(in, text);) {
      std::smatch parts;
      if (!std::regex_match(text, parts, line)) {
        records.push_back("not a record: " + text);
        continue;
      }
      if (parts[2] == "trace") continue;
      const std::string rest = parts[2] == "send" || parts[2] == "recv"
                                   ? parts[3].str()
                                   : std::regex_replace(parts[3].str(), fraction, "#");
      records.push_back(parts[1].str() + " " + parts[2].str() + (rest.empty() ? "" : " " + rest));
    }
    return records;
  }

  // Those of these kinds, "send|recv".
  std::vector<std::string> Of(const std::string& kinds) const {
    std::vector<std::string> found;
    const std::regex wanted{"\\w+ (" + kinds + ")( .*)?"};
    for (const std::string& record : Records()) {
      if (std::regex_match(record, wanted)) found.push_back(record);
    }
    return found;
  }

 private:
  const std::filesystem::path folder_ =
      std::filesystem::temp_directory_path() /
      (L"k7trace \u00e4\u6df1 " + std::to_wstring(GetCurrentProcessId()));
  std::filesystem::path path_;
};

}  // namespace k7test
