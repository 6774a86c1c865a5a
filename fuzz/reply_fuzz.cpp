// Any bytes from a controller, in pieces of any size, are assembled to lines and read.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/parse_number.h"
#include "link/line_assembler.h"
#include "link/reply.h"

namespace {

using Step = k7::LineAssembler::Step;

void Check(bool holds) {
  if (!holds) std::abort();
}

void ReadLine(std::string_view line) {
  Check(line.size() < k7::LineAssembler::kLimit);
  Check(line.find('\0') == std::string_view::npos);
  const k7::Reply reply = k7::FindReply(line);
  Check((reply.kind == k7::ReplyKind::Unknown) == reply.from.empty());
  k7::ParseWhole(reply.after);
  const k7::IdentityText identity = k7::ReadIdentity(line);
  Check(identity.text[16] == L'\0');
  if (const auto switches = k7::ReadSwitches(reply.from)) {
    Check((switches->x | switches->y | switches->z | switches->probe) <= 1);
  }
}

}  // namespace

// Two bytes a read: what the read did, and the byte that it brought.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  k7::LineAssembler assembler;
  Step step = assembler.Begin();
  for (std::size_t i = 0; i + 1 < size; i += 2) {
    const unsigned what = data[i] % 16;
    const bool run = what != 15;
    if (step == Step::Read) {
      *assembler.Target() = static_cast<char>(data[i + 1]);
      if (what == 0) {
        step = assembler.Failed(run);
      } else if (what == 1) {
        step = assembler.Completed(0, run);
      } else if (what < 6) {
        step = assembler.Pending(run);
      } else {
        step = assembler.Completed(1, run);
      }
    } else {
      Check(assembler.IsReadOutstanding());
      *assembler.Target() = static_cast<char>(data[i + 1]);
      if (what == 0) {
        step = assembler.Failed(run);
      } else if (what == 1) {
        step = assembler.WaitCompleted(0, run);
      } else if (what < 4) {
        step = assembler.StillPending(run);
      } else {
        step = assembler.WaitCompleted(1, run);
      }
    }
    if (step == Step::Fatal) return 0;  // the process would have ended
    if (step == Step::Line) {
      ReadLine(assembler.Line());
      step = assembler.Begin();
    }
  }
  return 0;
}
