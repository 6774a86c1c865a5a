#include "app/transcript.h"

#include <cstdio>

namespace k7sim {

std::string Escaped(std::string_view text) {
  std::string out;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\n') {
      out += "\\n";
    } else if (c == '\r') {
      out += "\\r";
    } else if (byte < 0x20 || byte >= 0x7f) {
      char code[8];
      std::snprintf(code, sizeof code, "\\x%02x", byte);
      out += code;
    } else {
      out += c;
    }
  }
  return out;
}

bool Transcript::Open(const std::string& path) {
  file_.open(path, std::ios::trunc | std::ios::binary);
  out_ = file_.is_open() ? &file_ : nullptr;
  return out_ != nullptr;
}

void Transcript::SetTime(TimeUs machineUs, TimeUs wireUs) {
  machineUs_ = machineUs;
  wireUs_ = wireUs;
}

void Transcript::In(std::string_view link, std::string_view line) {
  Write('>', link, line);
}
void Transcript::Out(std::string_view link, std::string_view text) {
  Write('<', link, text);
}
void Transcript::Lost(std::string_view link, std::string_view text) {
  Write('~', link, text);
}
void Transcript::Note(std::string_view text) {
  Write('!', {}, text);
}

void Transcript::Write(char mark, std::string_view link, std::string_view text) {
  if (listener_) listener_->OnTranscriptLine(machineUs_, mark, link, text);
  if (!out_) return;
  if (times_ != TranscriptTimes::Off) {
    const TimeUs us = times_ == TranscriptTimes::Machine ? machineUs_ : wireUs_;
    char time[32];
    std::snprintf(time, sizeof time, "%12.6f ", SecondsFromUs(us));
    *out_ << time;
  }
  *out_ << mark << ' ';
  if (!link.empty()) *out_ << link << ' ';
  *out_ << Escaped(text) << '\n';
}

}  // namespace k7sim
