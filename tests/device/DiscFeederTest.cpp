#include "device/DiscFeeder.h"

#include <gtest/gtest.h>

#include "device/DiscNames.h"
#include "device/MemoryTrays.h"

namespace korvenal::test {

class DiscFeederTest : public testing::Test {
 protected:
  void useDrives(const std::string& letters) {
    for (const char letter : letters) trays_.trays.try_emplace(letter);
    feeder_.doUseDrives(letters);
  }
  DiscRequest restoreOf(std::vector<int> discs, const std::string& setName) {
    DiscRequest request;
    request.RestoreDiscList = std::move(discs);
    request.setName = setName;
    return request;
  }
  static ImageDisc disc(const std::string& name, const std::string& label, UnixTime modified = 0) {
    return MemoryTrays::written(name, label, modified);
  }

  MemoryTrays trays_;
  DiscFeeder feeder_{trays_};
};

TEST_F(DiscFeederTest, ABurnGetsBlankDiscsAndUsedOnesGoToTheShelf) {
  useDrives("VWX");
  trays_.trays['V'] = disc("Photos (A) disc 01", "Backup #1");
  DiscRequest request;
  request.comboDiscType = 2;
  request.setName = "Photos (A)";
  feeder_.doFeedBlanks(request, 2, 3);
  EXPECT_EQ(trays_.nameIn('V'), "Photos (A) disc 02");
  EXPECT_EQ(trays_.nameIn('W'), "Photos (A) disc 03");
  EXPECT_EQ(trays_.trays['W'].typeCode, 12);
  EXPECT_EQ(trays_.nameIn('X'), "") << "the run needs no third drive";
  ASSERT_EQ(trays_.onShelf.size(), 1U);
  EXPECT_EQ(trays_.onShelf[0].label, "Backup #1");

  trays_.log.clear();
  feeder_.doFeedBlanks(request, 2, 3);
  EXPECT_THAT(trays_.log, testing::IsEmpty()) << "all is well already";

  request.FailedDrives = "W";
  feeder_.doFeedBlanks(request, 2, 3);
  EXPECT_THAT(trays_.log, testing::ElementsAre("blank Photos (A) disc 03"));
}

TEST_F(DiscFeederTest, WhereNoBlankDiscCanBeMadeNoOtherDiscTakesTheBackup) {
  useDrives("V");
  trays_.trays['V'] = disc("Old (A) disc 01", "Backup #1");
  trays_.fault = TrayResult::NotMade;
  feeder_.doFeedBlanks(DiscRequest(), 1, 1);
  EXPECT_EQ(trays_.nameIn('V'), "");
  EXPECT_EQ(trays_.onShelf.size(), 1U);
}

TEST_F(DiscFeederTest, BlankDiscsOfAnotherRunAreNotUsedUnderTheirName) {
  useDrives("V");
  DiscRequest request;
  request.setName = "Old (A)";
  feeder_.doFeedBlanks(request, 1, 1);
  request.setName = "New (B)";
  feeder_.doFeedBlanks(request, 1, 1);
  EXPECT_EQ(trays_.nameIn('V'), "New (B) disc 01");
  request.setName = "Old (A)";
  trays_.log.clear();
  feeder_.doFeedBlanks(request, 1, 1);
  EXPECT_EQ(trays_.nameIn('V'), "Old (A) disc 01");
  EXPECT_EQ(trays_.log.back(), "insert /shelf/Old (A) disc 01.iso") << "no second blank disc";
}

TEST_F(DiscFeederTest, LongAndHiddenNamesOfSetsAreTheSameWhenRestored) {
  useDrives("V");
  const std::string stamp = " (2026-11-22-10-00-F)";
  for (const std::string& job : {std::string(".hidden"), std::string(250, 'x')}) {
    DiscRequest request;
    request.setName = job + stamp;
    for (const int number : {10, 100}) {
      feeder_.doFeedBlanks(request, number, number);
      trays_.trays['V'].label = DiscNames::labelOf(number);
      trays_.trays['V'].sessions = 1;
    }
    EXPECT_NE(trays_.nameIn('V').find(stamp + " disc 100"), std::string::npos);
    trays_.onShelf.push_back(disc("Newer disc 10", "Backup #10", 99));
    feeder_.doFeedRestore(restoreOf({10}, job.substr(0, 222) + stamp));
    EXPECT_NE(trays_.nameIn('V').find(stamp + " disc 10"), std::string::npos);
  }
}

TEST_F(DiscFeederTest, APersonsDiscStays) {
  useDrives("V");
  ImageDisc own = disc("My own", "");
  own.sessions = 0;
  trays_.trays['V'] = own;
  DiscRequest request;
  feeder_.doFeedBlanks(request, 1, 1);
  EXPECT_EQ(trays_.nameIn('V'), "My own") << "a blank disc, whatever its type";
  trays_.trays['V'] = disc("Appendable", "Backup #1");
  feeder_.doKeep('V');
  feeder_.doFeedBlanks(request, 1, 1);
  feeder_.doFeedRestore(restoreOf({2}, ""));
  EXPECT_EQ(trays_.nameIn('V'), "Appendable");
}

TEST_F(DiscFeederTest, ARestoreGetsTheDiscsOfItsSet) {
  useDrives("VW");
  trays_.onShelf = {disc("A disc 01", "Backup #1", 50), disc("A disc 02", "Backup #2", 51),
                    disc("B disc 02", "Backup #2", 90)};
  trays_.trays['V'] = disc("A disc 03", "Backup #3", 52);
  trays_.trays['W'] = disc("B disc 01", "Backup #1", 80);
  feeder_.doFeedRestore(restoreOf({2, 3, 1}, "A"));
  EXPECT_EQ(trays_.nameIn('V'), "A disc 03") << "a wanted disc stays where it is";
  EXPECT_EQ(trays_.nameIn('W'), "A disc 02");

  DiscRequest next = restoreOf({2, 3, 1}, "A");
  next.RestoreDiscIndex = 2;
  feeder_.doFeedRestore(next);
  EXPECT_EQ(trays_.nameIn('V'), "A disc 01");

  trays_.log.clear();
  feeder_.doFeedRestore(restoreOf({2}, "named by hand"));
  feeder_.doFeedRestore(restoreOf({7}, "A"));
  EXPECT_THAT(trays_.log, testing::IsEmpty()) << "nothing is taken out for what is in or nowhere";
  trays_.remove('W');
  feeder_.doFeedRestore(restoreOf({2}, "unknown"));
  EXPECT_THAT(feeder_.missingDiscs(), testing::ElementsAre(2));
  EXPECT_EQ(trays_.nameIn('V'), "A disc 01") << "no disc of another set takes its place";
  feeder_.doFeedRestore(restoreOf({2}, ""));
  EXPECT_EQ(trays_.nameIn('V'), "B disc 02") << "of a set without a name the newest of that label";
}

TEST_F(DiscFeederTest, AnIndexComesFromTheNewestFirstDisc) {
  useDrives("V");
  trays_.trays['V'] = disc("B disc 03", "Backup #3", 99);
  trays_.onShelf = {disc("B disc 01", "Backup #1", 90), disc("A disc 01", "Backup #1", 40)};
  feeder_.doFeedIndexDisc();
  EXPECT_EQ(trays_.nameIn('V'), "B disc 01");
  trays_.trays['V'] = disc("A disc 01", "Backup #1", 40);
  trays_.log.clear();
  feeder_.doFeedIndexDisc();
  EXPECT_THAT(trays_.log, testing::IsEmpty()) << "a first disc is in";

  trays_.trays['V'] = {};
  trays_.onShelf = {disc("B disc 03", "Backup #3", 99), disc("B disc 02", "Backup #2", 98),
                    disc("foreign", "HOLIDAY", 100)};
  feeder_.doFeedIndexDisc();
  EXPECT_EQ(trays_.nameIn('V'), "B disc 03") << "the first discs are lost";

  trays_.trays['V'] = {};
  trays_.onShelf = {disc("foreign", "HOLIDAY")};
  feeder_.doFeedIndexDisc();
  EXPECT_EQ(trays_.nameIn('V'), "foreign") << "the only one there is";
}

TEST_F(DiscFeederTest, RealDrivesAndAFeederThatIsOffAreLeftAlone) {
  feeder_.doUseDrives("D");
  feeder_.doFeedBlanks({}, 1, 1);
  feeder_.doFeedRestore(restoreOf({1}, ""));
  feeder_.doFeedIndexDisc();
  useDrives("V");
  trays_.feeder = false;
  trays_.onShelf = {disc("A disc 01", "Backup #1")};
  feeder_.doFeedBlanks({}, 1, 1);
  feeder_.doFeedRestore(restoreOf({1}, ""));
  feeder_.doFeedIndexDisc();
  EXPECT_THAT(trays_.log, testing::IsEmpty());
}

}  // namespace korvenal::test
