// The table of the drawing's colours that the driver's Color Settings dialog shows and changes.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <vector>

#include "drawing/colours.h"
#include "k7/driver.h"

namespace k7host {

// Hands the table to the driver for as long as it lives; on the thread that shows the dialogs.
// [host]
class ColourTable {
 public:
  ColourTable(k7::IEngraver& device, const std::vector<ColourRow>& rows);
  ~ColourTable();
  ColourTable(const ColourTable&) = delete;
  ColourTable& operator=(const ColourTable&) = delete;

  // The rows with what the user has ticked.
  std::vector<ColourRow> Rows() const;

 private:
  // Where the driver looks in the table; the rest of it is the host's own.
  static constexpr std::size_t kColoursAt = 688;  // 0x00BBGGRR
  static constexpr std::size_t kCountsAt = 788;
  static constexpr std::size_t kTicksAt = 884;  // a byte each
  static constexpr std::size_t kRows = 16;

  k7::IEngraver& device_;
  std::vector<ColourRow> rows_;
  DWORD index_ = TLS_OUT_OF_INDEXES;
  alignas(8) std::array<unsigned char, 1024> bytes_{};
};

}  // namespace k7host
