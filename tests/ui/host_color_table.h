// The host's table of a job's colours, laid out by the byte as a host does.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace k7test {

class HostColorTable {
 public:
  using Bytes = std::array<unsigned char, 1024>;

  // Sixteen entries that are not in use.
  HostColorTable() {
    while (index_ == 0) index_ = TlsAlloc();  // 0 means none
    bytes_.fill(0xA5);
    for (int i = 0; i < 16; ++i) Set(i, 0, 0, 0);
  }
  ~HostColorTable() { TlsFree(index_); }
  HostColorTable(const HostColorTable&) = delete;
  HostColorTable& operator=(const HostColorTable&) = delete;

  // The index of thread-local storage where the host keeps the table of a thread.
  DWORD Index() const { return index_; }
  // Makes it the table of the calling thread.
  void Bind() { TlsSetValue(index_, bytes_.data()); }

  void Set(int entry, std::uint32_t color, std::int32_t useCount, std::uint8_t flag) {
    const auto i = static_cast<std::size_t>(entry);
    std::memcpy(&bytes_[688 + 4 * i], &color, 4);
    std::memcpy(&bytes_[788 + 4 * i], &useCount, 4);
    bytes_[884 + i] = flag;
  }
  int Flag(int entry) const { return bytes_[884 + static_cast<std::size_t>(entry)]; }

  // All of it, with what lies between and behind the arrays.
  const Bytes& AsLaidOut() const { return bytes_; }

 private:
  DWORD index_ = 0;
  Bytes bytes_;
};

}  // namespace k7test
