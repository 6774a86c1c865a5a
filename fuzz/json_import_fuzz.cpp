// Any text as a file of exported settings. What is refused is refused in one line and changes
// nothing; what is taken has no value that the file cannot hold, and taking it again changes
// nothing more.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "settings/listing.h"
#include "settings/settings_json.h"
#include "tests/host/latin1.h"

namespace {

const k7test::Latin1 kPage;
constexpr std::string_view kBefore =
    "; by hand\r\n[Axis X]\r\nScrew Pitch=1056964608\r\n\r\n[Spindle]\r\nHas Spindle=1\r\n"
    "Mine=\"7\"\r\n";

void Require(bool condition) {
  if (!condition) std::abort();
}

void ImportInto(std::string_view json, std::string_view before) {
  k7host::IniText file(before, kPage);
  const std::string error = k7host::ImportSettings(json, file);
  if (!error.empty()) {
    for (const char c : error) Require(static_cast<unsigned char>(c) >= ' ');
    Require(file.Bytes() == before);
    return;
  }
  const std::string once = file.Bytes();
  Require(k7host::IniText(once, kPage).Bytes() == once);
  k7host::ShowLines(file, true);
  Require(k7host::ImportSettings(json, file).empty());
  Require(file.Bytes() == once);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view json(reinterpret_cast<const char*>(data), size);
  ImportInto(json, kBefore);
  ImportInto(json, "");
  ImportInto(json, {"\xFF\xFE", 2});
  return 0;
}
