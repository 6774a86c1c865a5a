// Bytes from one link put together into lines, as the three kinds of link do it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace k7sim {

enum class WireKind { Usb, Uart, Tcp };

inline constexpr std::size_t kUsbLineLimit = 256;   // a longer line is thrown away
inline constexpr std::size_t kUsbRingBytes = 320;   // a whole line and the room kept free
inline constexpr std::size_t kUsbFreeBytes = 64;    // with less the host's writes wait
inline constexpr std::size_t kUartRingBytes = 255;  // what does not fit is lost
inline constexpr std::size_t kTcpLineLimit = 131;   // a longer line becomes two
inline constexpr std::size_t kTcpQueuedLines = 20;  // with that many waiting nothing is read
inline constexpr char kHaltByte = 0x18;             // ^X: acts at once, wherever it stands

class LineReader {
 public:
  enum class Event { None, Line, Halt };

  explicit LineReader(WireKind kind) : kind_(kind) {}

  // Takes one byte. Line: `Line()` holds a line without its end, until the next call.
  // Empty lines are left out.
  Event Put(char byte);

  const std::string& Line() const { return line_; }

  // Bytes of the line under way.
  std::size_t PendingBytes() const { return pending_.size(); }

  // Bytes that never became part of a line.
  std::uint64_t LostBytes() const { return lostBytes_; }
  void CountLost(std::uint64_t bytes) { lostBytes_ += bytes; }

  // The host has gone: the line under way with it.
  void Reset();

 private:
  Event Finish();

  WireKind kind_;
  std::string pending_;
  std::string line_;
  bool discarding_ = false;
  std::uint64_t lostBytes_ = 0;
};

}  // namespace k7sim
