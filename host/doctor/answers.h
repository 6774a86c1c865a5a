// What a controller says to the doctor's questions.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace k7host {

// Lines that a controller answers at any time and that move nothing.
inline constexpr char kAskSignOfLife[] = "SmoothieIsConnected\n";  // answered with the same text
inline constexpr char kAskIdentity[] = "config-get sd controller_id\n";
inline constexpr char kAskFirmware[] = "version\n";

// Whether a line is the sign of life. [any]
bool IsSignOfLife(std::string_view line);

// The identity in the answer to kAskIdentity; empty: it is another line. [any]
std::string IdentityIn(std::string_view line);
// Whether it is that of a controller to which none has been given yet: zeros.
bool IsNoIdentity(std::string_view identity);

// Bytes of an unknown sender, to be shown: cut when they are many, what is no
// character as "\x07". [any]
std::string ShownBytes(std::string_view bytes, std::size_t most = 60);

// Times of answers in milliseconds. [any]
struct Latency {
  double median = 0;
  double worst = 0;
};
Latency LatencyOf(std::vector<double> answersMs);
// "0.8". [any]
std::string MsText(double ms);

}  // namespace k7host
