#include <filesystem>

#include "console/ConsoleFixture.h"
#include "console/OtherProgram.h"
#include "platform/linux/engine/ImageLock.h"
#include "support/SmallDisk.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

/// The shelf and what it shares: with another program, or with too much else on the disk.
class SharedShelf : public ConsoleFixture {
 protected:
  std::string shelf() const { return temp / "app/Discs/"; }
  std::vector<std::string> images() const {
    std::vector<std::string> all;
    if (fs::exists(shelf()))
      for (const auto& entry : fs::directory_iterator(shelf()))
        if (entry.path().extension() == ".iso") all.push_back(entry.path());
    return all;
  }
  bool isBurning() const {
    for (const std::string& image : images())
      if (ImageLock().others(image) == ImageUse::Written) return true;
    return false;
  }
};

TEST_F(SharedShelf, TwoProgramsBurnIntoDiscsOfTheirOwn) {
  temp.write("source/first", "of the first program");
  const std::string second = temp.write("other/second", "of the second program");
  const std::string script = temp.write(
      "script", "new Demo\nset comboDiscType 0\nset FinalizeDisc 0\nadd " + second + "\nbackup\n");
  int secondCode = -1;
  whileWaiting = [&] {
    if (secondCode != -1 || !isBurning()) return;
    secondCode =
        runProgram({KORVENAL_CONSOLE, "--app", temp / "app2", "--discs", shelf(), "--yes", script},
                   temp / "said");
  };
  const Outcome first = run(backup(""));
  EXPECT_EQ(first.code, ExitCode::Ok) << first.out;
  const std::string said = test::TempDir::read(temp / "said");
  EXPECT_EQ(secondCode, 0) << said;
  ASSERT_EQ(images().size(), 2U);
  bool told = false;
  for (const std::string& image : images()) {
    told = told || said.find("The disc " + image + " in drive (V:) is in use") != std::string::npos;
    ASSERT_EQ(runProgram({"bsdtar", "-tf", image}, temp / "list"), 0);
    const std::string list = test::TempDir::read(temp / "list");
    EXPECT_NE(list.find("first") == std::string::npos, list.find("second") == std::string::npos)
        << list;
  }
  EXPECT_TRUE(told) << said;
}

TEST_F(SharedShelf, ADiscTooLargeForTheDiskIsRefusedBeforeAByteIsBurned) {
  const test::SmallDisk disk(temp.makeFolder("app/Discs"), 8 << 20);
  if (!disk) GTEST_SKIP() << "no disk of one's own for this user";
  temp.sparse("source/large", 20 << 20);
  const Outcome outcome = run(backup(""));
  EXPECT_EQ(outcome.code, ExitCode::Failed);
  EXPECT_THAT(outcome.out, HasSubstr("Error: Disc free space not enough."));
  EXPECT_THAT(outcome.out, HasSubstr("There is room for "));
  EXPECT_THAT(outcome.out, Not(HasSubstr("Burning backup disc")));
  EXPECT_THAT(run("disc list").out, Not(HasSubstr("damaged")));
  for (const std::string& image : images()) EXPECT_EQ(fs::file_size(image), 0U);
}

}  // namespace
}  // namespace korvenal::console
