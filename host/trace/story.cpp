#include "trace/story.h"

#include <algorithm>
#include <cstdlib>

#include "core/scaling.h"
#include "trace/meaning.h"

namespace k7host {
namespace {

constexpr std::size_t kMostMoves = 1000000;     // that are kept for a picture
constexpr std::size_t kMostOutstanding = 4096;  // of a trace that is no driver's
constexpr std::size_t kMostNoted = 10000;

std::string WithoutEnd(std::string text) {
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  return text;
}

std::string Word(const TraceRecord& record, std::size_t index) {
  return index < record.words.size() ? record.words[index] : "";
}

std::string Text(const TraceRecord& record, std::size_t index) {
  return index < record.texts.size() ? record.texts[index] : "";
}

void KeepLongest(std::vector<TraceWait>& waits) {
  std::stable_sort(waits.begin(), waits.end(),
                   [](const TraceWait& a, const TraceWait& b) { return a.us > b.us; });
  if (waits.size() > 10) waits.resize(10);
}

}  // namespace

std::optional<TraceEntry> TraceStory::Take(std::string_view line) {
  if (line.empty()) return {};
  ++summary_.lines;
  auto record = ReadTraceRecord(line);
  if (!record) {
    ++summary_.unreadable;
    return {};
  }
  TraceEntry entry;
  entry.record = *record;
  if (entry.record.kind == "trace" && lastUs_.contains(record->process) &&
      record->us < lastUs_[record->process]) {
    lastUs_.erase(record->process);  // another process of that number, or the next life of it
    lastLineUs_.erase(record->process);
  }
  const auto last = lastUs_.find(record->process);
  entry.deltaUs = last == lastUs_.end() ? 0 : record->us - last->second;
  lastUs_[record->process] = record->us;
  if (record->link.empty()) {
    TakeOther(entry);
    return entry;
  }
  Link& link = links_[{record->process, record->link}];
  if (record->kind == "send") {
    NoteTime(*record);
    TakeSent(link, entry);
  } else if (record->kind == "recv") {
    NoteTime(*record);
    TakeReceived(link, entry);
  } else {
    TakeOther(entry);
    if (record->kind == "detach" || record->kind == "attach") EndLink(link, record->us);
  }
  entry.outstanding = static_cast<int>(link.moves.size() - link.begun);
  entry.place = link.place;
  return entry;
}

void TraceStory::NoteTime(const TraceRecord& record) {
  const auto last = lastLineUs_.find(record.process);
  if (last != lastLineUs_.end() && record.us > last->second) {
    summary_.spanUs += record.us - last->second;
  }
  lastLineUs_[record.process] = record.us;
}

void TraceStory::TakeSent(Link& link, TraceEntry& entry) {
  ++summary_.sent;
  const std::pair second{entry.record.process, entry.record.us / 1000000};
  if (second != second_) sentInSecond_ = 0;
  second_ = second;
  summary_.busiestSent = std::max(summary_.busiestSent, ++sentInSecond_);
  const std::string line = WithoutEnd(entry.record.texts[0]);
  const std::string& tag = entry.record.words[0];
  if (tag != "-") entry.tag = tag;
  if (const TraceQuestion* question = QuestionIn(line)) {
    if (link.questions.size() < kMostOutstanding) {
      link.questions.push_back(
          {line, std::string(question->answer), entry.record.us, question->machine});
    }
  }
  if (line.starts_with("G0 ") && !line.starts_with("G0 F")) return TakeMove(link, entry, line);
  if (line.starts_with("G0 F")) link.feed = InchesBehind(line, 'F').value_or(0.0);
  if (line.starts_with("G92 ")) SetPlace(link.place, line);
  if (line.starts_with("G28 ")) {  // ends at the axis's switch, which is its zero
    if (line.starts_with("G28 X")) link.place.x = 0;
    if (line.starts_with("G28 Y")) link.place.y = 0;
    if (line.starts_with("G28 Z")) link.place.z = 0;
  }
  const TraceMeaning* meaning = MeaningOfSent(line);
  entry.meaning = meaning != nullptr ? meaning->text : "the host's own line";
  if (line.starts_with("G0 F")) entry.meaning += ": " + InchesText(link.feed) + " in/min";
}

void TraceStory::TakeMove(Link& link, TraceEntry& entry, const std::string& line) {
  const TracePlace from = link.place;
  SetPlace(link.place, line);
  const std::string& tag = entry.tag;
  const bool along = from.x != link.place.x || from.y != link.place.y;
  const double inches = Distance(from, link.place);
  if (tag == "plunge" || tag == "dwell") {
    link.down = true;
    ++summary_.plunges;
    entry.meaning = "lowers the cutter";
  } else if (tag == "lift" || (tag.empty() && link.place.z < from.z)) {
    link.down = false;
    entry.meaning = "lifts the cutter";
  } else if (tag == "jog") {
    entry.meaning = "a step of a jog";
  } else {
    entry.meaning = link.down && along ? "cuts" : "travels";
  }
  const bool cut = link.down && along && tag == "move";
  if (cut) ++summary_.cuts;
  (cut ? summary_.cutInches : summary_.travelInches) += inches;
  summary_.feeds[link.feed] += inches;
  entry.meaning += " " + InchesText(inches) + " in";
  if (moves_.size() < kMostMoves) moves_.push_back({from, link.place, link.feed, cut});
  if (link.reports && link.moves.size() < kMostOutstanding) {
    link.moves.push_back({line, tag, entry.record.us});
  }
}

void TraceStory::TakeReceived(Link& link, TraceEntry& entry) {
  ++summary_.received;
  const std::string line = WithoutEnd(entry.record.texts[0]);
  const auto report = [&](std::size_t index, const char* what) {
    if (index >= link.moves.size()) {
      entry.meaning = std::string(what) + ": a move that this trace does not know";
      return;
    }
    const Move& move = link.moves[index];
    entry.tag = move.tag;
    entry.meaning = std::string(what) + ": " + move.line + ", " +
                    SecondsText(entry.record.us - move.sentUs) + " s after it was sent";
  };
  if (line.find("QX") != std::string::npos) {
    report(link.queued, "queued");
    if (link.queued < link.moves.size()) {
      const Move& move = link.moves[link.queued++];
      NoteAnswer(move.line, move.sentUs, entry.record.us, false);
    }
    return;
  }
  if (line.find("BX") != std::string::npos) {
    report(link.begun, "begun");
    if (link.begun < link.moves.size()) ++link.begun;
    return;
  }
  if (line.find("EX") != std::string::npos) {
    report(0, "ended");
    if (!link.moves.empty()) {
      link.moves.pop_front();
      if (link.queued > 0) --link.queued;
      if (link.begun > 0) --link.begun;
    }
    return;
  }
  for (auto question = link.questions.begin(); question != link.questions.end(); ++question) {
    if (line.find(question->answer) == std::string::npos) continue;
    NoteAnswer(question->line, question->sentUs, entry.record.us, question->machine);
    entry.meaning = SecondsText(entry.record.us - question->sentUs) + " s after it was asked";
    link.questions.erase(question);
    break;
  }
  if (line.find("SendBlockMessagesOn") != std::string::npos) {
    link.reports = true;
    link.moves.clear();
    link.queued = link.begun = 0;
  } else if (line.find("SendBlockMessagesOff") != std::string::npos) {
    link.reports = false;
  }
  if (const TraceMeaning* meaning = MeaningOfReceived(line)) {
    entry.meaning = meaning->text + (entry.meaning.empty() ? "" : ", " + entry.meaning);
  }
  if (entry.meaning.empty() && line != "ok") entry.meaning = "passed over";
}

void TraceStory::NoteAnswer(const std::string& line, std::int64_t sentUs, std::int64_t us,
                            bool machine) {
  if (machine || us - sentUs < kLateUs || summary_.answers.size() >= kMostNoted) return;
  summary_.answers.push_back({sentUs, us - sentUs, line, false});
}

void TraceStory::AddUnanswered(const Link& link, std::int64_t us,
                               std::vector<TraceAnswer>& answers) {
  const auto add = [&](const std::string& line, std::int64_t sentUs) {
    // The last lines before an end: their answers were on their way.
    if (us - sentUs < kLateUs || answers.size() >= kMostNoted) return;
    answers.push_back({sentUs, us - sentUs, line, true});
  };
  for (const Question& question : link.questions) add(question.line, question.sentUs);
  for (std::size_t i = link.queued; i < link.moves.size(); ++i) {
    add(link.moves[i].line, link.moves[i].sentUs);
  }
}

void TraceStory::EndLink(Link& link, std::int64_t us) {
  AddUnanswered(link, us, summary_.answers);
  const TracePlace place = link.place;
  link = {};
  link.place = place;
}

void TraceStory::NoteFailure(const TraceRecord& record, std::string text) {
  ++summary_.failureCount;
  if (summary_.failures.size() >= kMostFailures) return;
  summary_.failures.push_back(SecondsText(record.us) + " " + std::move(text));
}

void TraceStory::TakeOther(TraceEntry& entry) {
  const TraceRecord& record = entry.record;
  Thread& thread = threads_[{record.process, record.thread}];
  const std::string& kind = record.kind;
  const auto seconds = ReadSeconds(Word(record, 0));
  if (kind == "trace") {
    entry.meaning = "a trace begins, or goes on in a new file: " + Text(record, 0);
    std::erase_if(threads_, [&](const auto& t) {
      return t.first.first == record.process && !t.second.message && !t.second.wait;
    });
  } else if (kind == "fail") {
    const std::string what = Word(record, 0) == "overlong"
                                 ? "256 bytes without a line end: the process has been ended"
                                 : "cannot " + Word(record, 0) +
                                       (record.texts.empty() ? "" : " " + Text(record, 0)) + ", " +
                                       TraceErrorText(Word(record, 1));
    entry.meaning = what;
    // Ports that do not exist are what a search finds.
    if (Word(record, 0) != "open" || Word(record, 1) != "2") NoteFailure(record, what);
  } else if (kind == "lost") {
    entry.meaning = "the link is lost: a " + Word(record, 0) + " has failed for good";
    NoteFailure(record, entry.meaning);
  } else if (kind == "gap") {
    entry.meaning = Word(record, 0) + " records could not be written";
    summary_.lost +=
        std::clamp(std::strtoll(Word(record, 0).c_str(), nullptr, 10), 0LL, 1000000000000LL);
  } else if (kind == "job") {
    if (Word(record, 0) == "begun") ++summary_.jobs;
  } else if (kind == "wait" && seconds) {
    entry.meaning = "waits for " + Text(record, 0) + "; " + Text(record, 1) + " would end it";
    thread.wait = TraceWait{record.us - *seconds, *seconds, Text(record, 0), false};
  } else if (kind == "waited" && seconds) {
    entry.meaning = "has waited for " + Text(record, 0);
    summary_.waits.push_back({record.us - *seconds, *seconds, Text(record, 0), true});
    KeepLongest(summary_.waits);
    thread.wait.reset();
  } else if (kind == "tell") {
    entry.meaning = "the host is told";
    thread.message = TraceWait{record.us, 0, Word(record, 0) + " " + Word(record, 1), false};
  } else if (kind == "told" && seconds) {
    entry.meaning = "and has returned";
    if (thread.message) {
      thread.message->us = *seconds;
      thread.message->ended = true;
      summary_.kept.push_back(*thread.message);
      KeepLongest(summary_.kept);
      thread.message.reset();
    }
  }
}

TraceSummary TraceStory::Summary() const {
  TraceSummary summary = summary_;
  for (const auto& [key, link] : links_) {
    const auto last = lastUs_.find(key.first);
    if (last != lastUs_.end()) AddUnanswered(link, last->second, summary.answers);
  }
  for (const auto& [key, thread] : threads_) {
    const auto last = lastUs_.find(key.first);
    if (last == lastUs_.end()) continue;
    const auto add = [&](const std::optional<TraceWait>& open, std::vector<TraceWait>& to) {
      if (!open) return;
      TraceWait wait = *open;
      wait.us = std::max<std::int64_t>(0, last->second - wait.atUs);
      to.push_back(wait);
      KeepLongest(to);
    };
    add(thread.wait, summary.waits);
    add(thread.message, summary.kept);
  }
  return summary;
}

}  // namespace k7host
