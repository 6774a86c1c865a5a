// A settings file of any bytes, as k7host settings and the doctor take it: it comes back byte for
// byte, everything can be said of it, a key that is set is found again beside all others, and what
// is exported comes back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "settings/key_text.h"
#include "settings/listing.h"
#include "settings/row_text.h"
#include "settings/schema.h"
#include "settings/settings_check.h"
#include "settings/settings_json.h"
#include "tests/host/latin1.h"

namespace {

using k7host::IniEntry;
using k7host::IniText;

const k7test::Latin1 kPage;

void Require(bool condition) {
  if (!condition) std::abort();
}

bool IsOneLine(std::string_view text) {
  return text.find('\n') == std::string_view::npos;
}

void Show(const IniText& file) {
  for (const auto kind : {k7host::SettingsKind::Controller, k7host::SettingsKind::MaterialProfile})
    for (const k7host::SettingsFault& fault : k7host::CheckSettings(file, kind))
      Require(IsOneLine(k7host::FaultText(fault)));
  for (const std::string& line : k7host::ShowLines(file, true)) Require(IsOneLine(line));
  k7host::ShowJson(file, "a.ini", true);
}

// What the file holds beside one key.
std::vector<std::string> Others(const IniText& file, std::string_view section,
                                std::string_view key) {
  std::vector<std::string> others;
  for (const IniEntry& entry : file.Entries()) {
    if (k7host::SameName(entry.section, section) && k7host::SameName(entry.key, key)) continue;
    others.push_back(entry.section + "/" + entry.key + "=" + entry.text);
  }
  return others;
}

// One of the keys, another with each length of the file: all of them take too long.
void SetAKey(const IniText& file, std::size_t size) {
  const k7host::Row* row = k7::settings::kRows[size / 3 % std::size(k7::settings::kRows)];
  const std::string section = k7host::Narrow(row->section), key = k7host::Narrow(row->key);
  IniText changed = file;
  Require(changed.Set(section, key, " 'x\""));
  Require(changed.Find(section, key) == " 'x\"");
  Require(Others(changed, section, key) == Others(file, section, key));
  Require(IniText(changed.Bytes(), kPage).Find(section, key) == " 'x\"");
  for (const std::string& line : k7host::DiffLines(file, changed)) Require(IsOneLine(line));
}

void Carry(const IniText& file) {
  IniText copy = file;
  const std::string error = k7host::ImportSettings(k7host::ExportSettings(file), copy);
  Require(IsOneLine(error));
  if (!error.empty()) return;  // a value that makes no sense
  for (const IniEntry& entry : file.Entries())
    Require(copy.Find(entry.section, entry.key) == file.Find(entry.section, entry.key));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kMost = 512;  // each of the keys is looked for in each of the lines
  if (size > kMost) return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const IniText file(bytes, kPage);
  Require(file.Bytes() == bytes);
  switch (size % 3) {
    case 0:
      Show(file);
      break;
    case 1:
      SetAKey(file, size);
      break;
    default:
      Carry(file);
  }
  return 0;
}
