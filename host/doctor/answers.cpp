#include "doctor/answers.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace k7host {
namespace {

constexpr std::string_view kSignOfLife = "SmoothieIsConnected";
constexpr std::string_view kIdentityIs = "controller_id is set to ";

}  // namespace

bool IsSignOfLife(std::string_view line) {
  return line.find(kSignOfLife) != std::string_view::npos;
}

std::string IdentityIn(std::string_view line) {
  const std::size_t at = line.find(kIdentityIs);
  if (at == std::string_view::npos) return "";
  line.remove_prefix(at + kIdentityIs.size());
  return std::string(line.substr(0, line.find_first_of(" \r\n")));
}

bool IsNoIdentity(std::string_view identity) {
  return identity.find_first_not_of('0') == std::string_view::npos;
}

std::string ShownBytes(std::string_view bytes, std::size_t most) {
  std::string shown;
  for (const char c : bytes) {
    if (shown.size() >= most) return shown + "...";
    if (c >= ' ' && c < 0x7F) {
      shown += c;
    } else if (c == '\n') {
      shown += "\\n";
    } else if (c == '\r') {
      shown += "\\r";
    } else {
      constexpr char kHex[] = "0123456789ABCDEF";
      const auto byte = static_cast<std::uint8_t>(c);
      shown += std::string("\\x") + kHex[byte >> 4] + kHex[byte & 15];
    }
  }
  return shown;
}

Latency LatencyOf(std::vector<double> answersMs) {
  if (answersMs.empty()) return {};
  std::sort(answersMs.begin(), answersMs.end());
  return {answersMs[answersMs.size() / 2], answersMs.back()};
}

std::string MsText(double ms) {
  char text[32];
  const std::to_chars_result end =
      std::to_chars(text, text + sizeof text, ms, std::chars_format::fixed, 1);
  return {text, end.ptr};
}

}  // namespace k7host
