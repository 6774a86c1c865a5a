// Puts the bytes of one link together to lines. The three kinds of link do this in different ways.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace k7sim {

enum class WireKind { Usb, Uart, Tcp };

inline constexpr std::size_t kUsbLineLimit = 256;   // a longer line is thrown away
inline constexpr std::size_t kUsbRingBytes = 320;   // the longest line and the free bytes
inline constexpr std::size_t kUsbFreeBytes = 64;    // with fewer free, the host's writes wait
inline constexpr std::size_t kUartRingBytes = 255;  // bytes beyond it are lost
inline constexpr std::size_t kTcpLineLimit = 131;   // a longer line is split
inline constexpr std::size_t kTcpQueuedLines = 20;  // while so many wait, no byte is read
// These act at once, even within a line, and are no part of it.
inline constexpr char kHaltByte = 0x18;
inline constexpr char kStatusByte = '?';
inline constexpr char kHoldByte = '!';
inline constexpr char kResumeByte = '~';

class LineReader {
 public:
  enum class Event { None, Line, Halt, Status, Hold, Resume };

  explicit LineReader(WireKind kind) : kind_(kind) {}

  // Takes one byte. Line: `Line()` holds a line without its end until the next one is complete.
  // Halt, Status, Hold, Resume: the byte was one that acts at once. Empty lines are passed over.
  Event Put(char byte);

  const std::string& Line() const { return line_; }

  // Bytes of the line that is not complete yet.
  std::size_t PendingBytes() const { return pending_.size(); }

  // Bytes that have not become part of a line.
  std::uint64_t LostBytes() const { return lostBytes_; }
  void CountLost(std::uint64_t bytes) { lostBytes_ += bytes; }

  // Forgets the line that is not complete yet.
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
