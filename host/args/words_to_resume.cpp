#include "args/words_to_resume.h"

#include <string_view>

namespace k7host {
namespace {

// Options of one run: their words, and the words that follow those that take a value.
constexpr struct {
  std::string_view name;
  bool takesValue;
} kOnceOnly[] = {{"--resume", true},   {"--resume-to", true}, {"--from-stroke", true},
                 {"--no-home", false}, {"--home", false},     {"--settings", false}};

}  // namespace

std::vector<std::string> WordsToResume(const std::vector<std::string>& words) {
  std::vector<std::string> kept;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words[i];
    bool once = false;
    for (const auto& option : kOnceOnly) {
      const bool alone = word == option.name;
      if (!alone && !(option.takesValue && word.starts_with(std::string(option.name) + "=")))
        continue;
      once = true;
      if (alone && option.takesValue) ++i;
      break;
    }
    if (!once) kept.emplace_back(word);
  }
  return kept;
}

}  // namespace k7host
