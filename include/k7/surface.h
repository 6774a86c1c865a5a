// Slots 0 to 32 of the device's operation table: version and drawing surface. Conventions:
// driver.h.
#pragma once

#include <stdint.h>

namespace k7 {

// Slot 0. The operation table has no overloads and no virtual destructor, so that every compiler
// lays it out in the order written.
class ITessaly {
 public:
  // 0: version of the operation table, 998. Without a record: 0. [any]
  virtual uint32_t GetInterfaceVersion() noexcept = 0;

 protected:
  ~ITessaly() = default;
};

// Slots 1 to 32: the drawing surface.
class ISurface : public ITessaly {
 public:
  // 1: table width in host steps, rounded half up. Without a record: 0. [any]
  virtual uint32_t GetTableWidthSteps() noexcept = 0;
  // 2: table height in host steps, rounded half up. Without a record: 0. [any]
  virtual uint32_t GetTableHeightSteps() noexcept = 0;
  // 3: placeholder, does nothing. [any]
  virtual void Reserved3() noexcept = 0;
  // 4: begins a job: switches the job output and the controller's progress reports on and arms the
  // first move. Waits, without bound, until the controller has confirmed. Result: false when the
  // proximity switch is already closed in cutter modes 2 and 3 (the user has been told and the job
  // must not be sent), else true. Without a record or a connection: true, nothing sent. [host]
  virtual bool BeginJob() noexcept = 0;
  // 5: placeholder, does nothing. [any]
  virtual void Reserved5() noexcept = 0;
  // 6: travels to (x, y) host steps with the cutter up, lifting it first when it is down; waits
  // while 32 lines are outstanding. Result: a kStatus number; the first travel of a job answers
  // kStatusOneShot or kStatusArmed in cutter modes 1 and 3. Without a record, a connection or an
  // open job: 0. [host]
  virtual uint32_t MoveTo(uint32_t xSteps, uint32_t ySteps) noexcept = 0;
  // 7: cuts to (x, y) host steps, plunging first when the cutter is up; waits while 32 lines are
  // outstanding. A cut to the present position does nothing. Result: a kStatus number; after
  // kStatusProbed the cutter is up and the cut was not made. Without a record, a connection or an
  // open job: 0. [host]
  virtual uint32_t EngraveTo(uint32_t xSteps, uint32_t ySteps) noexcept = 0;
  // 8: placeholder, returns 0. [any]
  virtual uint32_t ReturnZero8() noexcept = 0;
  // 9: ends a job: waits until every move has been carried out (without bound; with air Z for about
  // 5 s plus the engrave delay), then switches progress reports and job output off. Without a
  // record or a connection: nothing. [host]
  virtual void EndJob() noexcept = 0;
  // 10: placeholder, does nothing. [any]
  virtual void Reserved10() noexcept = 0;
  // 11: placeholder, does nothing. [any]
  virtual void Reserved11() noexcept = 0;
  // 12: keeps a byte for the host. Without a record: nothing. [any]
  virtual void SetHostFlag(uint8_t flag) noexcept = 0;
  // 13: the byte kept by SetHostFlag; 0 until set and without a record. [any]
  virtual uint8_t GetHostFlag() noexcept = 0;
  // 14: placeholder, returns false. [any]
  virtual bool ReturnFalse14() noexcept = 0;
  // 15 to 17: placeholders, do nothing. [any]
  virtual void Reserved15() noexcept = 0;
  virtual void Reserved16() noexcept = 0;
  virtual void Reserved17() noexcept = 0;
  // 18: placeholder, returns false. [any]
  virtual bool ReturnFalse18() noexcept = 0;
  // 19 to 22: placeholders, do nothing. [any]
  virtual void Reserved19() noexcept = 0;
  virtual void Reserved20() noexcept = 0;
  virtual void Reserved21() noexcept = 0;
  virtual void Reserved22() noexcept = 0;
  // 23: placeholder, returns 0. [any]
  virtual uint32_t ReturnZero23() noexcept = 0;
  // 24: placeholder, does nothing. [any]
  virtual void Reserved24() noexcept = 0;
  // 25: placeholder, returns false. [any]
  virtual bool ReturnFalse25() noexcept = 0;
  // 26: placeholder, returns 1. [any]
  virtual uint32_t ReturnOne26() noexcept = 0;
  // 27: placeholder, returns true. [any]
  virtual bool ReturnTrue27() noexcept = 0;
  // 28 to 31: placeholders, do nothing. [any]
  virtual void Reserved28() noexcept = 0;
  virtual void Reserved29() noexcept = 0;
  virtual void Reserved30() noexcept = 0;
  virtual void Reserved31() noexcept = 0;
  // 32: placeholder, returns 0. [any]
  virtual uint32_t ReturnZero32() noexcept = 0;

 protected:
  ~ISurface() = default;
};

}  // namespace k7
