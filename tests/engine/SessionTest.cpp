#include <filesystem>

#include "engine/EngineFixture.h"
#include "platform/linux/engine/MmcFacts.h"

namespace korvenal::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* FirstSet = "20261123141502-F Familienfotos von Öland";
constexpr const char* SecondSet = "20261123141559-D";

/// Discs that take one session after the other.
class SessionTest : public EngineFixture {
 protected:
  void burnSession(const std::string& label, const std::string& set, const std::string& content) {
    engine->do_ClearAll();
    engine->do_SetReplaceFile(-1);
    if (!told().empty()) {
      ASSERT_NE(engine->do_ImportSession(0, "\\"), 0);
    }
    insert("\\", "doc.txt", dir.write("source/" + content, content));
    ASSERT_TRUE(prepare()) << engine->do_GetErrorString();
    engine->do_SetVolumeID(label);
    engine->do_SetVolumeSetID(set);
    ASSERT_EQ(burn().error, 0) << engine->do_GetErrorString();
  }
  void burnBoth() {
    burnSession("Backup #2", FirstSet, "first");
    burnSession("Backup #1", SecondSet, "second");
  }
  std::string readSession(std::uint32_t start) { return contentOf({'V', start, {}}); }
  std::string contentOf(const Paths::DrivePath& tree) {
    const auto stream = disc->open(tree, "doc.txt");
    if (!stream) return "<missing>";
    std::string content(static_cast<std::size_t>(stream->info().size.whole()), '\0');
    return stream->read(0, content.data(), content.size()) < 0 ? "<unreadable>" : content;
  }
  std::vector<std::string> told() {
    std::vector<std::string> all;
    for (const DiscSession& one : disc->sessions('V'))
      all.push_back(one.label + "|" + one.identity.text());
    return all;
  }
};

TEST_F(SessionTest, EachSessionKeepsItsLabelItsSetAndItsTree) {
  for (const std::uint8_t type : {DiscCdR, DiscDvdPlusRw}) {
    blank(type);
    if (type == DiscDvdPlusRw) {
      EXPECT_EQ(erase().error, 0) << "it is formatted";
    }
    EXPECT_THAT(told(), IsEmpty());
    burnBoth();
    const auto both =
        ElementsAre(std::string("Backup #2|") + FirstSet, std::string("Backup #1|") + SecondSet);
    EXPECT_THAT(told(), both);
    const std::uint32_t first = disc->sessions('V').at(0).start;
    const std::uint32_t second = disc->sessions('V').at(1).start;
    EXPECT_EQ(readSession(first) + readSession(second) + readDisc("doc.txt"), "firstsecondsecond");
    EXPECT_EQ(readSession(first + 1), "<missing>") << "no session begins there";

    // Without its profile the disc has them all the same.
    const std::string lone = dir / "lone.iso";
    std::filesystem::copy_file(image(), lone, std::filesystem::copy_options::overwrite_existing);
    ASSERT_TRUE(shelf->insert('V', lone));
    EXPECT_THAT(told(), both);
    EXPECT_EQ(readSession(first), "first");
    EXPECT_EQ(shelf->discIn('V').trees.size(), 2U);
    EXPECT_EQ(shelf->discIn('V').trees.at(0).identity.text(), FirstSet);
  }
}

TEST_F(SessionTest, AnotherDiscAndAnEraseLeaveNothingOfTheOldSessions) {
  blank(DiscCdRw);
  burnBoth();
  const std::string old = image();
  const std::uint32_t first = disc->sessions('V').at(0).start;
  const auto stream = disc->open(Paths::DrivePath{'V', first, {}}, "doc.txt");
  ASSERT_TRUE(stream);
  ASSERT_TRUE(shelf->insertBlank('V', DiscCdR, "new", 0));
  char byte = 0;
  EXPECT_LT(stream->read(0, &byte, 1), 0) << "its disc is gone";
  EXPECT_THAT(told(), IsEmpty());
  EXPECT_EQ(readSession(first), "<missing>");
  ASSERT_TRUE(shelf->insert('V', old));
  EXPECT_EQ(readSession(first), "first");
  ASSERT_EQ(erase().error, 0);
  EXPECT_THAT(told(), IsEmpty());
  EXPECT_EQ(readSession(first), "<missing>");
}

TEST_F(SessionTest, ALongIdentityIsCutAndOtherReadersFindIt) {
  blank(DiscCdR);
  const SetIdentity set = SetIdentity::ofRun(clock.now(), false, std::string(110, 'x') + "Ö");
  EXPECT_EQ(set.text().size(), 17U + 110U) << "cut at a whole character";
  burnSession("Backup #1", set.text(), "x");
  EXPECT_EQ(disc->sessions('V').at(0).identity.job, set.job);
  const std::string seen = run({"xorriso", "-indev", "stdio:" + image(), "-pvd_info"});
  EXPECT_THAT(seen, ::testing::HasSubstr(set.text()));
  EXPECT_THAT(seen, ::testing::HasSubstr("KORVENAL TO DVD"));
}

TEST(MmcSessions, TheDriveTellsOfDiscsWrittenOnceAndTheTreesOfOthers) {
  SessionChain chain;
  chain.starts = {32, 96};
  MmcReport report{.profile = MmcDvdPlusRw, .sessions = 1, .lastSession = 0};
  EXPECT_THAT(MmcFacts::sessionStarts(report, chain), ElementsAre(32, 96));
  report = {.profile = MmcCdR, .sessions = 3, .lastSession = 20000};
  EXPECT_THAT(MmcFacts::sessionStarts(report, {}), ElementsAre(20000)) << "the drive tells no more";
  report.sessionStarts = {0, 11702, 20000};
  EXPECT_THAT(MmcFacts::sessionStarts(report, {}), ElementsAre(0, 11702, 20000));
  EXPECT_THAT(MmcFacts::sessionStarts({.profile = MmcCdR}, {}), IsEmpty());
}

}  // namespace
}  // namespace korvenal::test
