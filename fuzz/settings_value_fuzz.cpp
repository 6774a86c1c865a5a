// Texts and numbers that a settings file may hold: circumference texts, names of material profiles,
// and pass tables from any bits. Nothing may be undefined, and a table that is made stays bounded.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "job/pass_status.h"
#include "session/pass_table.h"
#include "settings/encodings.h"
#include "settings/profile_name.h"

namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

void ReadText(const std::uint8_t* data, std::size_t size) {
  std::wstring text;
  for (std::size_t i = 0; i < size; ++i) text += static_cast<wchar_t>(data[i]);
  k7::ParseCircumference(text.c_str());
  std::wstring name = text.c_str();
  const std::size_t before = name.size();
  const bool listed = k7::IsProfileFileName(name.c_str());
  k7::CutProfileExtension(name.data());
  Require(std::wstring{name.c_str()}.size() == (listed ? before - 4 : before));
}

void PlanTable(const std::uint8_t* data, std::size_t size) {
  std::int32_t words[6] = {};
  std::memcpy(words, data, size < sizeof words ? size : sizeof words);
  const k7::PassSettings settings{.multiPass = (words[0] & 1) != 0,
                                  .mode = words[1] & 3,
                                  .copies = static_cast<std::uint32_t>(words[2]),
                                  .maxPassDepth = k7::FloatOfBits(words[3]),
                                  .finishPassDepth = k7::FloatOfBits(words[4]),
                                  .engraveDepth = k7::FloatOfBits(words[5])};
  const k7::PassPlan plan = k7::PlanPasses(settings);
  Require(plan.count >= 1);
  if (plan.count > k7::kMostPasses) return;
  const std::unique_ptr<float[]> depths(new float[plan.count]);
  k7::FillPasses(plan, settings.engraveDepth, depths.get());
  Require(k7::BitsOfFloat(depths[plan.count - 1]) == words[5]);
  Require(k7::BitsOfFloat(k7::FloatOfBits(words[3])) == words[3]);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  if (data[0] % 2 == 0) {
    ReadText(data + 1, size - 1);
  } else {
    PlanTable(data + 1, size - 1);
  }
  return 0;
}
