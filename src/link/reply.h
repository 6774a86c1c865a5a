// What the controller's lines mean: the table of replies and what is read out of them. Pure.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace k7 {

enum class ReplyKind : std::uint8_t {
  Unknown,
  Queued,            // a block has entered the controller's queue
  Begun,             // a block has begun to move
  Ended,             // a block has ended
  BlockMessagesOn,   // the three above are on from now
  BlockMessagesOff,  // and off
  Connected,         // sign of life
  NotHomed,
  Homed,
  LimitX,  // an axis has found its switch; a number of machine steps follows
  LimitY,
  LimitZ,
  ProbeMissed,
  Probe,  // the probe has touched; a number of machine steps follows
  Identity,
  Switches,  // state of all switches
  StepPinX,  // this and the rest: reports of settings and position; recognised, nothing to do
  StepPinY,
  StepEnableX,
  StepEnableY,
  Position,
};

struct ReplyRow {
  std::string_view text;
  ReplyKind kind;
};

// Order is the rule: the first of these texts that stands anywhere in the line decides. The line
// end is part of some texts, so that a fragment of a line is not taken for it.
inline constexpr ReplyRow kReplies[] = {
    {"QX\r\n", ReplyKind::Queued},
    {"BX\r\n", ReplyKind::Begun},
    {"EX\r\n", ReplyKind::Ended},
    {"SendBlockMessagesOn\r\n", ReplyKind::BlockMessagesOn},
    {"SendBlockMessagesOff\r\n", ReplyKind::BlockMessagesOff},
    {"SmoothieIsConnected\r\n", ReplyKind::Connected},
    {"TableIsHomedFALSE\r\n", ReplyKind::NotHomed},
    {"TableIsHomedTRUE\r\n", ReplyKind::Homed},
    {"X_Limit", ReplyKind::LimitX},
    {"Y_Limit", ReplyKind::LimitY},
    {"Z_Limit", ReplyKind::LimitZ},
    {"ZProbe not triggered\r\n", ReplyKind::ProbeMissed},
    {"Z_Probe", ReplyKind::Probe},
    {"controller_id is set to", ReplyKind::Identity},
    {"min_x:", ReplyKind::Switches},
    {"X step pin", ReplyKind::StepPinX},
    {"Y step pin", ReplyKind::StepPinY},
    {"X step enable", ReplyKind::StepEnableX},
    {"Y step enable", ReplyKind::StepEnableY},
    {"X:", ReplyKind::Position},
};

// A line found in the table: its kind, and what stands in it from the text that decided on.
struct Reply {
  ReplyKind kind = ReplyKind::Unknown;
  std::string_view from;   // starts with the text that decided
  std::string_view after;  // starts behind it
};

constexpr Reply FindReply(std::string_view line) noexcept {
  for (const ReplyRow& row : kReplies) {
    const std::size_t at = line.find(row.text);
    if (at != std::string_view::npos) {
      return {row.kind, line.substr(at), line.substr(at + row.text.size())};
    }
  }
  return {};
}

constexpr ReplyKind ClassifyReply(std::string_view line) noexcept {
  return FindReply(line).kind;
}

static_assert(ClassifyReply("QX\r\n") == ReplyKind::Queued);
static_assert(ClassifyReply("X_Limit QX\r\n") == ReplyKind::Queued);
static_assert(ClassifyReply("QX") == ReplyKind::Unknown);  // a fragment
static_assert(ClassifyReply("ZProbe not triggered\r\n") == ReplyKind::ProbeMissed);
static_assert(ClassifyReply("ok C: X:0.0000 Y:0.0000 Z:0.0000\n") == ReplyKind::Position);

// An identity as it stands in a reply: up to sixteen characters, terminated.
struct IdentityText {
  wchar_t text[17] = {};
};

// The sixteen characters before the last two (the line end) of an identity reply. KEEP: a shorter
// identity comes with the end of the words before it. A line that is shorter still: what there is.
constexpr IdentityText ReadIdentity(std::string_view line) noexcept {
  constexpr std::size_t kLineEnd = 2;
  constexpr std::size_t kLength = 16;
  IdentityText identity;
  if (line.size() < kLineEnd) return identity;
  line.remove_suffix(kLineEnd);
  if (line.size() > kLength) line.remove_prefix(line.size() - kLength);
  for (std::size_t i = 0; i < line.size(); ++i) {
    identity.text[i] = static_cast<wchar_t>(static_cast<unsigned char>(line[i]));
  }
  return identity;
}

// Which switches a report says are closed, each 0 or 1.
struct SwitchReport {
  std::uint8_t x = 0;
  std::uint8_t y = 0;
  std::uint8_t z = 0;
  std::uint8_t probe = 0;
};

// Reads a switch report from its "min_x:" on (Reply::from). All four must be there, each with 0 or
// 1 right behind it; otherwise nothing.
std::optional<SwitchReport> ReadSwitches(std::string_view report) noexcept;

}  // namespace k7
