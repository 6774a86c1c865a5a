// Every line in both directions, written down as it passes.
#pragma once

#include <fstream>
#include <string>
#include <string_view>

#include "common/clock.h"

namespace k7sim {

enum class TranscriptTimes { Machine, Wire, Off };

class Transcript {
 public:
  explicit Transcript(TranscriptTimes times = TranscriptTimes::Machine) : times_(times) {}

  // Starts a file; without one, nothing is written. False when it cannot be opened.
  bool Open(const std::string& path);

  void SetTime(TimeUs machineUs, TimeUs wireUs);

  // One line a call. `port` names the link when there is more than one, else it is empty.
  //   > line from the host, without its end
  //   < text to the host, its end shown as \r and \n
  //   ~ text that the host did not get
  //   ! what a fault or a person did
  void In(std::string_view port, std::string_view line);
  void Out(std::string_view port, std::string_view text);
  void Lost(std::string_view port, std::string_view text);
  void Note(std::string_view text);

  void Flush() { file_.flush(); }

 private:
  void Write(char mark, std::string_view port, std::string_view text);

  TranscriptTimes times_;
  std::ofstream file_;
  TimeUs machineUs_ = 0;
  TimeUs wireUs_ = 0;
};

// The text with control characters and bytes beyond ASCII as \n, \r or \xNN.
std::string Shown(std::string_view text);

}  // namespace k7sim
