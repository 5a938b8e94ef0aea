#include <gmock/gmock.h>

#include "app/frmMain.h"
#include "platform/linux/LinuxPlatform.h"
#include "support/FullDisk.h"
#include "support/ScriptedDesktop.h"
#include "support/TempDir.h"

namespace korvenal::test {
namespace {

TEST(ExportTest, ATextFileThatCannotBeWrittenIsToldAndTheOldOneStays) {
  TempDir temp;
  const Workspace places =
      Workspace::below(temp.makeFolder("app"), temp.makeFolder("bin"), temp.makeFolder("home"));
  LinuxPlatform platform({.applicationFolder = places.applicationFolder, .imageDrives = {}});
  ScriptedDesktop desktop;
  frmMain main(platform.ports(desktop), places);
  Table table({"File Name"});
  for (int row = 0; row < 5000; ++row) table.addRow({"a name of thirty-two characters."});

  const std::string old = temp.write("old.txt", "as it was");
  desktop.files = {old, temp / "none/new.txt"};
  desktop.answers = {Answer::Ok, Answer::Ok};
  {
    const FullDisk full(100'000);
    main.doExport(table);
  }
  EXPECT_EQ(TempDir::read(old), "as it was");
  main.doExport(table);
  ASSERT_EQ(desktop.asked.size(), 2U);
  EXPECT_EQ(desktop.asked[0].title, "Error");
  for (const auto& asked : desktop.asked)
    EXPECT_THAT(asked.text, testing::MatchesRegex("The text file could not be written.\n.+"));
  EXPECT_NE(desktop.asked[0].text, desktop.asked[1].text) << "each with its reason";
  EXPECT_FALSE(main.state.IgnoreEvents);
}

}  // namespace
}  // namespace korvenal::test
