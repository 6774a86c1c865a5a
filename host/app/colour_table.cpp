// Layout and life of the colour table.
#include "app/colour_table.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace k7host {
namespace {

std::uint32_t WindowsColour(std::uint32_t rgb) {
  return (rgb & 0xff) << 16 | (rgb & 0xff00) | rgb >> 16;
}

}  // namespace

ColourTable::ColourTable(k7::IEngraver& device, const std::vector<ColourRow>& rows)
    : device_(device), rows_(rows) {
  // 0 stands for no table, so an index of 0 is of no use; its slot stays taken.
  index_ = TlsAlloc();
  if (index_ == 0) index_ = TlsAlloc();
  if (index_ == TLS_OUT_OF_INDEXES) return;
  for (std::size_t i = 0; i < std::min(kRows, rows_.size()); ++i) {
    const std::uint32_t colour = WindowsColour(rows_[i].rgb);
    std::memcpy(&bytes_[kColoursAt + 4 * i], &colour, 4);
    std::memcpy(&bytes_[kCountsAt + 4 * i], &rows_[i].strokes, 4);
    bytes_[kTicksAt + i] = rows_[i].cut ? 1 : 0;
  }
  TlsSetValue(index_, bytes_.data());
  device_.SetColorTableIndex(index_);
}

ColourTable::~ColourTable() {
  if (index_ == TLS_OUT_OF_INDEXES) return;
  device_.SetColorTableIndex(0);
  TlsFree(index_);
}

std::vector<ColourRow> ColourTable::Rows() const {
  std::vector<ColourRow> rows = rows_;
  if (index_ == TLS_OUT_OF_INDEXES) return rows;
  for (std::size_t i = 0; i < std::min(kRows, rows.size()); ++i) {
    rows[i].cut = bytes_[kTicksAt + i] != 0;
  }
  return rows;
}

}  // namespace k7host
