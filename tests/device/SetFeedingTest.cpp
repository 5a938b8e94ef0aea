#include <gmock/gmock.h>

#include "device/DiscFeeder.h"
#include "device/MemoryTrays.h"

namespace korvenal::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A feeder of one drive that knows which set is wanted.
class SetFeeding : public testing::Test {
 protected:
  SetFeeding() {
    feeder_.doUseDrives("V");
    request_.RestoreDiscList = {2};
    request_.setName = "A (1)";
    request_.wantedSet.identity = SetIdentity::parse("20261123141502-F A");
  }
  static ImageDisc disc(const std::string& name, UnixTime modified,
                        const std::vector<std::string>& identities) {
    ImageDisc disc = MemoryTrays::written(name, "Backup #2", modified);
    for (const std::string& identity : identities)
      disc.trees.push_back({32, "Backup #2", SetIdentity::parse(identity)});
    return disc;
  }

  MemoryTrays trays_;
  DiscFeeder feeder_{trays_};
  DiscRequest request_;
};

TEST_F(SetFeeding, OnlyADiscOfTheSetGoesIn) {
  trays_.onShelf = {disc("A (1) disc 02", 90, {"20261123141503-F A"}),
                    disc("by hand", 91, {"20261123141503-D A"})};
  feeder_.doFeedRestore(request_);
  EXPECT_THAT(trays_.log, IsEmpty()) << "whatever they are called";
  EXPECT_THAT(feeder_.missingDiscs(), ElementsAre(2));
  trays_.onShelf.push_back(disc("old", 10, {""}));
  trays_.onShelf.push_back(disc("B disc 02", 5, {"20261123141502-F A", "20271123141502-F B"}));
  feeder_.doFeedRestore(request_);
  EXPECT_EQ(trays_.nameIn('V'), "B disc 02") << "of the set, whatever was appended since";
  EXPECT_THAT(feeder_.missingDiscs(), IsEmpty());

  trays_.trays['V'] = disc("A (1) disc 02", 90, {"20261123141503-F A"});
  trays_.onShelf = {disc("old", 10, {""})};
  feeder_.doFeedRestore(request_);
  EXPECT_EQ(trays_.nameIn('V'), "old") << "nothing speaks against it";

  trays_.trays['V'] = {};
  trays_.onShelf = {disc("old", 10, {""}), disc("first", 10, {"20261123141502-F A"})};
  trays_.onShelf.back().trees.back().label = "Backup #1";
  feeder_.doFeedRestore(request_);
  EXPECT_EQ(trays_.nameIn('V'), "") << "the discs of this set tell it";
  EXPECT_THAT(feeder_.missingDiscs(), ElementsAre(2));
}

TEST_F(SetFeeding, ABlankDiscThatLiesReadyIsUsedAgainWhenItIsOfTheType) {
  request_.comboDiscType = 2;
  ImageDisc ready = disc("A (1) disc 01", 1, {});
  ready.label.clear();
  ready.sessions = 0;
  ready.typeCode = DiscFeeder::blankTypeFor(0);
  trays_.onShelf = {ready};
  feeder_.doFeedBlanks(request_, 1, 1);
  EXPECT_THAT(trays_.log, ElementsAre("blank A (1) disc 01"));
  EXPECT_EQ(trays_.trays['V'].typeCode, DiscFeeder::blankTypeFor(2));

  trays_.trays['V'] = {};
  trays_.log.clear();
  request_.comboDiscType = 0;
  feeder_.doFeedBlanks(request_, 1, 1);
  EXPECT_THAT(trays_.log, ElementsAre("insert /shelf/A (1) disc 01.iso"));
}

}  // namespace
}  // namespace korvenal::test
