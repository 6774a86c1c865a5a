// Finding controllers on real COM ports and connecting to one.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "harness.h"

namespace k7test {
namespace {

std::string IdOf(int number) {
  std::string id = "ENDTOEND00000000";
  id[14] = static_cast<char>('0' + number / 10);
  id[15] = static_cast<char>('0' + number % 10);
  return id;
}

// Without any controller the search still keeps a location, in the file of the unset identity.
TEST(Discovery, FindsNothingOnAMachineWithoutControllers) {
  RemoveAllSettings();
  Slots slots;
  EXPECT_EQ(slots.Ask("enumerate"), "0");
  EXPECT_EQ(slots.Ask("info 0"), "|");
  EXPECT_EQ(slots.Ask("connect ENDTOEND00000001"), "null");
  EXPECT_EQ(slots.Quit(), 0);
  EXPECT_EQ(ReadSettings("0000000000000000"),
            (Settings{{"Current Location/X Axis", "0"}, {"Current Location/Y Axis", "0"}}));
}

TEST(Discovery, FindsOneControllerByItsIdentityAndName) {
  RemoveAllSettings();
  WriteSettings(IdOf(1), {{"Settings/FriendlyName", "The Big Table"}});
  Controller controller(7, IdOf(1));
  Slots slots;
  EXPECT_EQ(slots.AskUntil("1", "enumerate"), "1");
  EXPECT_EQ(slots.Ask("info 0"), IdOf(1) + "|The Big Table");
  EXPECT_EQ(slots.Ask("info 1"), "|");
  EXPECT_EQ(slots.Ask("info 10"), "?|?");
  EXPECT_EQ(slots.Ask("info -1"), "?|?");
}

TEST(Discovery, FindsSeveralInTheOrderOfTheirPorts) {
  RemoveAllSettings();
  Controller third(40, IdOf(3)), first(2, IdOf(1)), second(11, IdOf(2));
  Slots slots;
  EXPECT_EQ(slots.AskUntil("3", "enumerate"), "3");
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(slots.Ask("info " + std::to_string(i)), IdOf(i + 1) + "|K7 System Controller");
  }
}

TEST(Discovery, StopsAfterTheTenthOfElevenControllers) {
  RemoveAllSettings();
  std::vector<std::unique_ptr<Controller>> controllers;
  for (int i = 1; i <= 11; ++i) {
    controllers.push_back(std::make_unique<Controller>(i, IdOf(i)));
  }
  Slots slots;
  // A search that misses the answer of one of the ten rightly goes on to the eleventh: such a try
  // is made again with another eleventh.
  std::string found = slots.Ask("enumerate", 120);
  for (int i = 0; i < 5 && controllers[10]->HasHeard("\n"); ++i) {
    controllers.pop_back();
    controllers.push_back(std::make_unique<Controller>(11, IdOf(11)));
    found = slots.Ask("enumerate", 120);
  }
  EXPECT_EQ(found, "10");
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(slots.Ask("info " + std::to_string(i)), IdOf(i + 1) + "|K7 System Controller");
  }
  slots.Quit();
  EXPECT_EQ(controllers[10]->Transcript(), "") << "the eleventh port was opened";
}

// An identity that ends like a report of a move is taken for one, and its controller is not found
// again.
bool EndsLikeAReport(const std::string& id) {
  return id.ends_with("QX") || id.ends_with("BX") || id.ends_with("EX");
}

TEST(Discovery, GivesAControllerWithoutAnIdentityOne) {
  std::string id = "QX";
  for (int attempt = 0; attempt < 5 && EndsLikeAReport(id); ++attempt) {
    RemoveAllSettings();
    Controller controller(7, "");
    Slots slots;
    EXPECT_EQ(slots.AskUntil("1", "enumerate"), "1");
    id = slots.Ask("info 0").substr(0, 16);
    EXPECT_THAT(id, testing::MatchesRegex("[0-9A-Z]{16}"));
    EXPECT_NE(id, "0000000000000000");
    if (EndsLikeAReport(id)) continue;
    // It is the controller's own from now on.
    EXPECT_EQ(slots.AskUntil("1", "enumerate"), "1");
    EXPECT_EQ(slots.Ask("info 0").substr(0, 16), id);
    slots.Quit();
    EXPECT_THAT(controller.Transcript(),
                testing::HasSubstr("config-set sd controller_id " + id + "\n"));
  }
}

TEST(Discovery, PassesOverAControllerThatNeverTellsItsIdentity) {
  RemoveAllSettings();
  Controller controller(7, IdOf(1), {"--fault", "match=config-get,do=ignore,count=0"});
  Slots slots;
  EXPECT_EQ(slots.Ask("enumerate"), "0");
  EXPECT_EQ(slots.Ask("info 0"), "|");
}

TEST(Discovery, PassesOverASilentController) {
  RemoveAllSettings();
  Controller silent(3, IdOf(1), {"--fault", "line=1,do=silent"});
  Controller healthy(7, IdOf(2));
  Slots slots;
  EXPECT_EQ(slots.AskUntil("1", "enumerate"), "1");
  EXPECT_EQ(slots.Ask("info 0").substr(0, 16), IdOf(2));
}

TEST(Connect, SendsTheStartUpLinesByteForByte) {
  int connects = 0;
  for (int attempt = 0; attempt < 6 && connects < 2; ++attempt) {
    RemoveAllSettings();
    Controller controller(7, IdOf(1));
    Slots slots;
    // A try whose answer came late on a busy machine is made again, with a machine of its own.
    if (slots.Ask("connect " + IdOf(1)) != "connected") continue;
    ++connects;
    EXPECT_EQ(slots.Ask("connected"), "1");
    EXPECT_EQ(slots.Ask("resolution"), "4000 4000");
    EXPECT_EQ(slots.Ask("release"), "released");
    EXPECT_EQ(slots.Quit(), 0);
    ExpectGolden("connect.txt", controller.Transcript());
    EXPECT_EQ(ReadSettings(IdOf(1)),
              (Settings{{"Current Location/X Axis", "0"}, {"Current Location/Y Axis", "0"}}));
  }
  EXPECT_EQ(connects, 2);
}

TEST(Connect, TakesTheIdentityLetterForLetter) {
  Controller controller(7, IdOf(1));
  Slots slots;
  EXPECT_EQ(slots.Ask("connect endtoend00000001"), "null");
  EXPECT_EQ(slots.Ask("connect ENDTOEND0000000"), "null");
  EXPECT_EQ(slots.Ask("connect"), "null");
}

// That nobody else can open the port meanwhile cannot be shown here: Wine hands a terminal that is
// in use to root all the same (OpenSerialPort has a test of its own).
TEST(Connect, FindsAControllerThatAnotherHostHasReleased) {
  Controller controller(7, IdOf(1));
  Slots first, second;
  EXPECT_EQ(first.AskUntil("connected", "connect " + IdOf(1)), "connected");
  EXPECT_EQ(first.Ask("release"), "released");
  EXPECT_EQ(second.AskUntil("connected", "connect " + IdOf(1)), "connected");
}

}  // namespace
}  // namespace k7test
