// The reader of traces: records, what they tell, and how it is shown.
#include <gtest/gtest.h>

#include <string>

#include "trace/output.h"
#include "trace/record.h"
#include "trace/story.h"

namespace k7host {
namespace {

// A connection, a job of one plunge, one cut and one lift, a failure, a long wait.
constexpr char kTrace[] =
    R"(      0.000006 7 host:1    -     trace  format=1 driver=1.0.0 zero=2026-01-02T03:04:05.000006Z program="C:\a b\k7host.exe"
      0.000100 7 host:1    -     fail   open 2 "\\.\COM0"
      0.000200 7 host:1    -     fail   open 5 "\\.\COM3"
      0.001000 7 host:1    9c    open   serial "\\.\COM7"
      0.001100 7 host:1    9c    attach serial "\\.\COM7"
      0.001200 7 host:1    9c    send   - "SmoothieIsConnected\n"
      0.001700 7 reader:2  9c    recv   "SmoothieIsConnected\r\n"
      0.002000 7 host:1    -     load   found "C:\k7.ini"
      0.003000 7 host:1    9c    send   - "G92 X25.400000 Y0.000000 Z0.000000\n"
      0.004000 7 host:1    9c    send   - "SendBlockMessagesOn\n"
      0.005000 7 reader:2  9c    recv   "SendBlockMessagesOn\r\n"
      0.005100 7 host:1    9c    job    begun
      0.006000 7 host:1    9c    send   - "G0 F762.000\n"
      0.010000 7 host:1    9c    send   plunge "G0 Z2.540000\n"
      0.011000 7 host:1    9c    send   move "G0 X50.800000 Y25.400000\n"
      0.012000 7 reader:2  9c    recv   "QX\r\n"
      0.012500 7 reader:2  9c    recv   "BX\r\n"
      1.510000 7 reader:2  9c    recv   "QX\r\n"
      1.510100 7 reader:2  9c    tell   callback 1001 0 0
      1.510300 7 reader:2  9c    told   0.000200
      1.520000 7 reader:2  9c    recv   "EX\r\n"
      2.600000 7 host:1    -     wait   1.000100 "every move to be carried out" until "EX for each of them"
      3.600000 7 host:1    -     waited 2.000100 "every move to be carried out"
      3.700000 7 host:1    9c    send   lift "G0 Z0.000000\n"
)";

std::vector<TraceEntry> Entries(std::string_view text, TraceStory& story) {
  std::vector<TraceEntry> entries;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    if (auto entry = story.Take(text.substr(0, end))) entries.push_back(*entry);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return entries;
}

TEST(TraceRecord, IsReadFieldByField) {
  const auto record =
      ReadTraceRecord(R"(     12.345678 212 reader:280 9c    recv   "\"A\\\x01\xE4\t\r\n")");
  ASSERT_TRUE(record);
  EXPECT_EQ(record->us, 12345678);
  EXPECT_EQ(record->process, 212u);
  EXPECT_EQ(record->role, "reader");
  EXPECT_EQ(record->thread, 280u);
  EXPECT_EQ(record->link, "9c");
  EXPECT_EQ(record->kind, "recv");
  EXPECT_EQ(record->texts[0], "\"A\\\x01\xE4\t\r\n");
  const auto wait = ReadTraceRecord(R"(0.000001 1 host:2 - wait 1.5 "what" until "end")");
  ASSERT_TRUE(wait);
  EXPECT_EQ(wait->texts, (std::vector<std::string>{"what", "end"}));
  EXPECT_EQ(wait->words, (std::vector<std::string>{"1.5"}));
}

TEST(TraceRecord, IsNothingWhereALineIsNone) {
  for (const char* line :
       {"", " ", "hello", "0.000001", "0.000001 1 host:2 -", "0.00001 1 host:2 - end",
        "0.000001 x host:2 - end", "0.000001 1 host - end", "0.000001 1 :2 - end",
        "-0.000001 1 host:2 - end", R"(0.000001 1 host:2 9 send "a")",
        R"(0.000001 1 host:2 9 send - "a)", R"(0.000001 1 host:2 9 recv "\x0")",
        R"(0.000001 1 host:2 9 recv "\q")", R"(0.000001 1 host:2 9 recv)",
        "99999999999999999999.000001 1 host:2 - end"}) {
    EXPECT_FALSE(ReadTraceRecord(line)) << line;
  }
}

TEST(TraceRecord, SecondsAreExact) {
  EXPECT_EQ(SecondsText(1), "0.000001");
  EXPECT_EQ(SecondsText(-2500000), "-2.500000");
  EXPECT_EQ(ReadSeconds("12.345678"), 12345678);
  EXPECT_FALSE(ReadSeconds("12.34567"));
}

TEST(TraceStory, FollowsPositionTagsAndOutstandingMoves) {
  TraceStory story;
  const auto entries = Entries(kTrace, story);
  ASSERT_EQ(entries.size(), 24u);
  const TraceEntry& cut = entries[14];
  EXPECT_EQ(cut.tag, "move");
  EXPECT_EQ(cut.outstanding, 2);
  EXPECT_DOUBLE_EQ(cut.place.x, 2.0);
  EXPECT_DOUBLE_EQ(cut.place.y, 1.0);
  EXPECT_DOUBLE_EQ(cut.place.z, 0.1);
  EXPECT_EQ(cut.meaning, "cuts 1.414 in");
  EXPECT_EQ(cut.deltaUs, 1000);
  EXPECT_EQ(entries[12].meaning, "feed from here on: 30.000 in/min");
  EXPECT_EQ(entries[6].meaning, "a sign of life, 0.000500 s after it was asked");
  EXPECT_EQ(entries[15].meaning, "queued: G0 Z2.540000, 0.002000 s after it was sent");
  EXPECT_EQ(entries[16].tag, "plunge");
  EXPECT_EQ(entries[16].outstanding, 1);
  EXPECT_EQ(entries[17].tag, "move");
  EXPECT_EQ(entries[20].tag, "plunge");
  EXPECT_EQ(entries[2].meaning,
            "cannot open \\\\.\\COM3, error 5: held by another program, or no right to it");
  ASSERT_EQ(story.Moves().size(), 3u);
  EXPECT_TRUE(story.Moves()[1].cut);
}

TEST(TraceStory, SummarisesWaitsAnswersFeedsAndDistances) {
  TraceStory story;
  Entries(kTrace, story);
  EXPECT_EQ(TraceSummaryText(story.Summary()),
            "records: 24, unreadable 0, lost 0\n"
            "lines: sent 7, received 6 in 3.698800 s\n"
            "rate: 1.893 lines sent a second, 6 in the busiest second\n"
            "jobs: 1, cuts 1, plunges 1\n"
            "distance: cut 1.414 inches, travelled 0.200 inches\n"
            "feed: 30.000 in/min, 1.614 inches\n"
            "wait: 2.000100 s from 1.599900: every move to be carried out\n"
            "kept by the host: 0.000200 s from 1.510100: callback 1001\n"
            "late answer: 1.499000 s from 0.011000: G0 X50.800000 Y25.400000\n"
            "failure: 0.000200 cannot open \\\\.\\COM3, error 5: held by another program, or no "
            "right to it\n");
}

TEST(TraceStory, NamesWhatWasNeverAnsweredAndNeverEnded) {
  TraceStory story;
  Entries(
      "0.000001 7 host:1 9c send - \"SendBlockMessagesOn\\n\"\n"
      "0.000002 7 reader:2 9c tell window 5 0 0\n"
      "1.000002 7 host:1 - wait 1.000001 \"the job to begin\" until \"an answer\"\n"
      "9.000001 7 host:1 - load found \"C:\\a\"\n"
      "cut off in the mid",
      story);
  EXPECT_EQ(TraceSummaryText(story.Summary()),
            "records: 5, unreadable 1, lost 0\n"
            "lines: sent 1, received 0 in 0.000000 s\n"
            "rate: 0.000 lines sent a second, 1 in the busiest second\n"
            "jobs: 0, cuts 0, plunges 0\n"
            "distance: cut 0.000 inches, travelled 0.000 inches\n"
            "wait without end: 9.000000 s from 0.000001: the job to begin\n"
            "kept by the host without end: 8.999999 s from 0.000002: window 5\n"
            "no answer: 9.000000 s from 0.000001: SendBlockMessagesOn\n");
}

TEST(TraceStory, KeepsProcessesAndLinksApart) {
  TraceStory story;
  const auto entries = Entries(
      "1.000000 7 host:1 9c send - \"G92 X25.400000\\n\"\n"
      "0.500000 8 host:1 9c send - \"G0 X50.800000\\n\"\n"
      "1.000001 7 host:1 a0 send - \"G0 Y25.400000\\n\"\n"
      "1.000003 7 host:1 9c send - \"G0 Y25.400000\\n\"\n",
      story);
  ASSERT_EQ(entries.size(), 4u);
  EXPECT_DOUBLE_EQ(entries[1].place.x, 2.0);
  EXPECT_EQ(entries[1].deltaUs, 0);
  EXPECT_DOUBLE_EQ(entries[2].place.x, 0.0);
  EXPECT_DOUBLE_EQ(entries[3].place.x, 1.0);
  EXPECT_EQ(entries[3].deltaUs, 2);
}

TEST(TraceOutput, ShowsALineARecord) {
  TraceStory story;
  const auto entries = Entries(kTrace, story);
  EXPECT_EQ(TraceEntryText(entries[14]),
            "      0.011000    +0.001000       7 host   > G0 X50.800000 Y25.400000             "
            "2 2.000 1.000 0.100      [move] cuts 1.414 in");
  EXPECT_EQ(TraceEntryText(entries[3]),
            "      0.001000    +0.000800       7 host   . open serial \"\\\\.\\COM7\"");
  EXPECT_EQ(TraceEntryJson(entries[14]),
            R"({"seconds":0.011000,"delta":0.001000,"process":7,"thread":1,"role":"host",)"
            R"("link":"9c","kind":"send","line":"G0 X50.800000 Y25.400000\u000a","tag":"move",)"
            R"("outstanding":2,"inches":[2.000,1.000,0.100],"meaning":"cuts 1.414 in"})");
  EXPECT_EQ(TraceEntryJson(entries[7]),
            R"({"seconds":0.002000,"delta":0.000300,"process":7,"thread":1,"role":"host",)"
            R"("link":"","kind":"load","rest":"found \"C:\\k7.ini\"","meaning":""})");
}

TEST(TraceOutput, DrawsCutsTravelsAndDots) {
  const TracePlace a{0, 0, 0}, b{2, 1, 0};
  const std::string picture = TracePicture({{a, b, 0, false},
                                            {b, {2, 1, 0.1}, 0, false},
                                            {{2, 1, 0.1}, {2, 1, 0}, 0, false},
                                            {{2, 1, 0}, {2, 1, 0.1}, 0, false},
                                            {{2, 1, 0.1}, {0, 1, 0.1}, 0, true}});
  EXPECT_EQ(picture,
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"2.500in\" height=\"1.500in\" "
            "viewBox=\"0 0 2.500 1.500\" fill=\"none\" stroke-linecap=\"round\" "
            "stroke-linejoin=\"round\">\n"
            "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n"
            "<path stroke=\"#bbb\" stroke-width=\"0.005\" d=\"M0.250 1.250L2.250 0.250\"/>\n"
            "<path stroke=\"black\" stroke-width=\"0.02\" d=\"M2.250 0.250L0.250 0.250\"/>\n"
            "<g fill=\"black\">\n<circle cx=\"2.250\" cy=\"0.250\" r=\"0.02\"/>\n</g>\n</svg>\n");
}

}  // namespace
}  // namespace k7host
