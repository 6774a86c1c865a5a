// What the lines in a trace mean, one by one.
#pragma once

#include <string>
#include <string_view>

namespace k7host {

// What a line means: one that is sent starts with `said`, one that is received has it anywhere.
struct TraceMeaning {
  std::string_view said;
  const char* text;
};

// A line that is answered by a text of its own.
struct TraceQuestion {
  std::string_view start, answer;
  bool machine;  // it has to move for the answer, which takes as long as it takes
};

// Of a line that is sent, without its end; null for the host's own lines. [any]
const TraceMeaning* MeaningOfSent(std::string_view line);

// The question that a line asks; null when it is none. [any]
const TraceQuestion* QuestionIn(std::string_view line);

// Of a line that is received, reports of moves apart; null for one that is passed over. [any]
const TraceMeaning* MeaningOfReceived(std::string_view line);

// "error 5: held by another program, or no right to it"; of an unknown code the code alone. [any]
std::string TraceErrorText(const std::string& code);

}  // namespace k7host
