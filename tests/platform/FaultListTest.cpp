#include "platform/FaultList.h"

#include <gmock/gmock.h>

namespace korvenal::test {
namespace {

using Paths = std::vector<std::string>;

TEST(FaultList, WhatIsFormattedIsReadBackWhateverItsSize) {
  for (const Paths& paths :
       {Paths{}, Paths{"a"}, Paths{"F\\b c", "G\\film.avi\\film.avi.002", "\xC3\xA4"}}) {
    for (const std::int64_t bytes : {400, 2048, 65536}) {
      const auto text = FaultList::format(paths, bytes);
      ASSERT_TRUE(text);
      EXPECT_EQ(static_cast<std::int64_t>(text->size()), bytes);
      EXPECT_EQ(FaultList::parse(*text), paths);
    }
  }
  const std::string none = FaultList::format({}, 2048).value_or("");
  EXPECT_THAT(none, testing::HasSubstr("All files of this session were saved."));
}

TEST(FaultList, WhatDoesNotFitOrIsNoLineMakesNoList) {
  EXPECT_FALSE(FaultList::format({std::string(2048, 'a')}, 2048));
  EXPECT_FALSE(FaultList::format({"two\nlines"}, 2048));
  EXPECT_FALSE(FaultList::format({""}, 2048));
  EXPECT_FALSE(FaultList::format({}, 10));
}

TEST(FaultList, DamageIsNoList) {
  const std::string good = FaultList::format({"a", "b"}, 2048).value_or("");
  const std::size_t end = good.find("The places");
  for (std::size_t cut = 0; cut < end + 20; ++cut)
    EXPECT_FALSE(FaultList::parse(std::string_view(good).substr(0, cut))) << cut;
  for (const std::string bad : {"", "\n", "KORVEN-UNSAVED-1\t", "KORVEN-UNSAVED-1\tx\n",
                                "KORVEN-UNSAVED-1\t18446744073709551615\na\n",
                                "KORVEN-UNSAVED-2\t0\nAll files of this session were saved.\n"})
    EXPECT_FALSE(FaultList::parse(bad)) << bad;
  EXPECT_FALSE(FaultList::parse(std::string(65536, '\0')));
}

TEST(FaultList, ItsNameStandsBesideThatOfTheIndex) {
  const std::string name = FaultList::nameBeside("_KORVEN{My.Job(2026-11-23-14-15-F)}.bdx");
  EXPECT_EQ(name, "_KORVEN{My.Job(2026-11-23-14-15-F)}.unsaved");
  EXPECT_TRUE(FaultList::isName(name));
  EXPECT_FALSE(FaultList::isName("notes.unsaved"));
  EXPECT_FALSE(FaultList::isName("_KORVEN{J(2026-11-23-14-15-F)}.bdx"));
}

}  // namespace
}  // namespace korvenal::test
