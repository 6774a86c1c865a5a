// What the tests of a load stand on: a record without a link, a settings file of its own, and
// tables of what a file gives the record.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "device/module_state.h"
#include "session/load.h"
#include "settings/encodings.h"
#include "support/controller_id.h"
#include "support/key_file.h"

namespace k7 {

// One key as it stands in a file.
struct Entry {
  const wchar_t* section;
  const wchar_t* key;
  std::wstring text;
};
inline Entry Whole(const wchar_t* section, const wchar_t* key, std::int32_t value) {
  return {section, key, std::to_wstring(value)};
}
// A float is the decimal text of its bits.
inline Entry Real(const wchar_t* section, const wchar_t* key, float value) {
  return Whole(section, key, BitsOfFloat(value));
}

// A field of the record, by name and by value.
struct Field {
  const char* name;
  double (*read)(const DeviceState& record);
  double want;
};
#define K7_FIELD(field, want)                                            \
  Field {                                                                \
#field, [](const DeviceState& r) -> double { return r.field; }, want \
  }

// One rule: what a load of a file with these keys leaves in the record.
struct LoadCase {
  const char* name;
  std::vector<Entry> file;
  std::vector<Field> want;
};
inline void PrintTo(const LoadCase& c, std::ostream* out) {
  *out << c.name;
}
// Names a test after its case: without blanks and points, which GoogleTest does not take.
template <typename Case>
std::string NameOfCase(const testing::TestParamInfo<Case>& test) {
  std::string name = test.param.name;
  std::erase(name, ' ');
  std::replace(name.begin(), name.end(), '.', '_');
  return name;
}

class LoadTest : public testing::Test {
 protected:
  LoadTest() : file_((record_.link.controllerId.Set(id_.c_str()), record_.link)) {}
  ~LoadTest() override {
    std::filesystem::remove(file_.Path());
    hasRoundAttachment = 0;
    hasSpindle = 0;
  }

  // Writes the keys beside those that are there, and loads.
  void Load(const std::vector<Entry>& entries = {}) {
    for (const Entry& e : entries) file_.WriteText(e.section, e.key, e.text.c_str());
    LoadSettings(record_);
  }
  void Expect(const std::vector<Field>& fields) const {
    for (const Field& field : fields) EXPECT_EQ(field.read(record_), field.want) << field.name;
  }
  std::vector<float> Passes() const {
    if (!record_.passes.passDepths) return {};
    return {record_.passes.passDepths.get(),
            record_.passes.passDepths.get() + record_.passes.passCount};
  }

  const std::wstring id_ = k7test::FreshControllerId();
  DeviceState record_;
  const k7test::KeyFile file_;
};

// A suite of this class runs a table of cases.
class LoadCaseTest : public LoadTest, public testing::WithParamInterface<LoadCase> {
 protected:
  void Check() {
    Load(GetParam().file);
    Expect(GetParam().want);
  }
};

}  // namespace k7
