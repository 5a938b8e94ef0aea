#include "platform/Profile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/linux/LinuxFiles.h"
#include "support/TempDir.h"

namespace korvenal {

class ProfileTest : public testing::Test {
 protected:
  std::string read(const std::string& key) const {
    return profile_.doReadProfile("Backup", key, "default");
  }
  std::string content() const { return test::TempDir::read(profile_.file()); }

  test::TempDir folder_;
  LinuxFiles files_{nullptr};
  Profile profile_{files_, folder_ / "settings.dat"};
};

TEST_F(ProfileTest, ValuesComeBackUnchanged) {
  const std::vector<std::string> values = {"/home/ann/Photos",
                                           "  blanks at both ends ",
                                           "\"/opt/my loader\" --drive \"D:\"",
                                           "\"",
                                           "a=b;c",
                                           "[Backup]",
                                           "\xC3\xA4\xE2\x82\xAC",
                                           std::string(Profile::BufferChars - 1, 'x')};
  for (const std::string& value : values) {
    profile_.doWriteProfile("Backup", "Key", value);
    EXPECT_EQ(read("Key"), value);
  }
}

TEST_F(ProfileTest, OneWriteChangesNothingElse) {
  folder_.write(
      "settings.dat",
      "\xEF\xBB\xBF; a comment\r\n[backup]\r\nold = 1\r\nother=2\r\n\r\n[Other]\r\nOld=9");
  profile_.doWriteProfile("Backup", "Old", "5");
  profile_.doWriteProfile("Backup", "New", "6");
  profile_.doWriteProfile("Other", "Last", "7");
  profile_.doWriteProfile("Third", "Key", "8");
  EXPECT_EQ(content(),
            "\xEF\xBB\xBF; a comment\r\n[backup]\r\nOld=5\nother=2\r\nNew=6\n\r\n[Other]\r\nOld=9\n"
            "Last=7\n[Third]\nKey=8\n");
}

TEST_F(ProfileTest, MissingEmptyAndOverlongValuesGiveTheDefault) {
  EXPECT_EQ(read("Key"), "default");
  folder_.write("settings.dat", "[Backup]\nEmpty=\nQuoted=\"\"\nNul=" + std::string(1, '\0') +
                                    "x\nLong=" + std::string(Profile::BufferChars, 'x') +
                                    "\nLine without a sign\n[Other]\nKey=1\n");
  for (const char* key : {"Empty", "Quoted", "Nul", "Long", "Key", "Line without a sign"})
    EXPECT_EQ(read(key), "default") << key;
}

TEST_F(ProfileTest, AValueCannotAddLines) {
  profile_.doWriteProfile("Backup", "A", "x\r\n[Other]\nB=1");
  EXPECT_EQ(read("A"), "x  [Other] B=1");
  EXPECT_EQ(read("B"), "default");
}

TEST_F(ProfileTest, AFileThatCannotBeReadIsNotOverwritten) {
  const std::string large = "[Backup]\nA=1\n" + std::string(5 << 20, ';');
  folder_.write("settings.dat", large);
  int faults = 0;
  profile_.onFault = [&faults](const std::string&, const std::string&) { ++faults; };
  profile_.doWriteProfile("Backup", "A", "2");
  EXPECT_EQ(content().size(), large.size());
  EXPECT_EQ(faults, 1);
  EXPECT_EQ(read("A"), "2") << "for as long as the program runs";
  folder_.write("settings.dat", "[Backup]\nA=1\nOther=3\n");
  profile_.doWriteProfile("Backup", "B", "4");
  EXPECT_EQ(content(), "[Backup]\nA=2\nOther=3\nB=4\n") << "what could not be written comes along";
}

}  // namespace korvenal
