// The transcript: a file with every line and reply in the order in which they pass.
#pragma once

#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

#include "common/clock.h"

namespace k7sim {

enum class TranscriptTimes { Machine, Wire, Off };

// Is told of each line of the transcript as it passes, whether or not there is a file.
class TranscriptListener {
 public:
  virtual ~TranscriptListener() = default;
  virtual void OnTranscriptLine(TimeUs machineUs, char mark, std::string_view link,
                                std::string_view text) = 0;
};

class Transcript {
 public:
  explicit Transcript(TranscriptTimes times = TranscriptTimes::Machine) : times_(times) {}

  // Starts the file. Without one nothing is written. False when it cannot be opened.
  bool Open(const std::string& path);
  // Writes to standard output instead.
  void OpenStandardOutput() { out_ = &std::cout; }

  // One listener, or null. It stays as long as lines come.
  void SetListener(TranscriptListener* listener) { listener_ = listener; }

  void SetTime(TimeUs machineUs, TimeUs wireUs);

  // Each call writes one line. `link` is the name of the link when there are several, else empty.
  // The line starts, after its time, with a mark:
  //   > In: a line from the host, without its end
  //   < Out: text sent to the host, its line ends as \r and \n
  //   ~ Lost: text that the host did not get
  //   ! Note: what a fault or a control command did, or "error:" and what a line made wrong
  void In(std::string_view link, std::string_view line);
  void Out(std::string_view link, std::string_view text);
  void Lost(std::string_view link, std::string_view text);
  void Note(std::string_view text);

  void Flush() {
    if (out_) out_->flush();
  }

 private:
  void Write(char mark, std::string_view link, std::string_view text);

  TranscriptTimes times_;
  std::ofstream file_;
  TranscriptListener* listener_ = nullptr;
  std::ostream* out_ = nullptr;  // null: nothing is written
  TimeUs machineUs_ = 0;
  TimeUs wireUs_ = 0;
};

// The text, with control characters and bytes beyond ASCII written as \n, \r or \xNN.
std::string Escaped(std::string_view text);

}  // namespace k7sim
