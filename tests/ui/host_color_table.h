// The host's table of a job's colours, laid out by the byte as a host does.
#pragma once

#include <windows.h>

#include <cstdint>
#include <cstring>

namespace k7test {

class HostColorTable {
 public:
  static constexpr int kEntries = 16;

  HostColorTable() {
    while (index_ == 0) index_ = TlsAlloc();  // 0 means none
    std::memset(bytes_, 0xA5, sizeof bytes_);
    for (int i = 0; i < kEntries; ++i) Set(i, 0, 0, 0);
  }
  ~HostColorTable() { TlsFree(index_); }
  HostColorTable(const HostColorTable&) = delete;
  HostColorTable& operator=(const HostColorTable&) = delete;

  // The index of thread-local storage where the host keeps the table of a thread.
  DWORD Index() const { return index_; }
  // Makes it the table of the calling thread.
  void Bind() { TlsSetValue(index_, bytes_); }

  void Set(int entry, std::uint32_t color, std::int32_t useCount, std::uint8_t flag) {
    std::memcpy(bytes_ + 688 + 4 * entry, &color, 4);
    std::memcpy(bytes_ + 788 + 4 * entry, &useCount, 4);
    bytes_[884 + entry] = flag;
  }
  int Flag(int entry) const { return bytes_[884 + entry]; }

  static constexpr int kSize = 1024;
  const unsigned char* Bytes() const { return bytes_; }

 private:
  DWORD index_ = 0;
  unsigned char bytes_[kSize];
};

}  // namespace k7test
