#include <gtest/gtest.h>

#include "app/frmMain.h"
#include "device/frmLoadDisc.h"
#include "platform/DiscType.h"
#include "platform/linux/LinuxPlatform.h"
#include "support/ScriptedDesktop.h"
#include "support/TempDir.h"

namespace korvenal::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using End = BackupResult::End;

constexpr int Discs = 12;
constexpr std::int64_t SmallDisc = 1000;  ///< blocks

/// A backup of twelve discs on five image drives of the program itself. The person puts a small
/// blank disc into each drive that the prompt counts on.
class ImageDrives : public testing::Test {
 protected:
  ImageDrives() {
    main.workspace.doCheckFolders(ports.files);
    main.profile.doWriteProfile("Backup", "Notice", "1");
    main.deviceSettings.DeviceMode = 1;
    main.deviceSettings.MultiDrive = {"V", "W", "X", "Y", "Z"};
    main.deviceSettings.doBuildDriveLetters();
    main.job.txJobName = "Twelve";
    main.job.comboDiscType = 0;
    main.job.vsContents.addRow({"0", "", "Files"});
    for (int disc = 1; disc <= Discs; ++disc) planFile(disc);
    main.backup.PreparedForRun = true;
    desktop.onForm = [this](Form& form) { load(dynamic_cast<frmLoadDisc&>(form)); };
  }

  static std::string contentOf(int disc) {
    return std::string(300'000 + static_cast<std::size_t>(disc), static_cast<char>('a' + disc));
  }
  void planFile(int disc) {
    Plan& plan = main.plan;
    const std::string name = "file" + std::to_string(disc);
    PlanTable::Row row;
    row.type = RowType::File;
    row.name = row.original = plan.vsBuffer.addText(name);
    row.source = plan.vsBuffer.addText(temp.write("source/" + name, contentOf(disc)));
    row.size = static_cast<std::int64_t>(contentOf(disc).size());
    row.disc = static_cast<std::uint8_t>(disc);
    row.itemFlag = true;
    plan.vsBuffer.rows().push_back(row);
    plan.DiscUsed[static_cast<std::size_t>(disc - 1)] = row.size;
    plan.TotalSize += row.size;
    plan.TotalDiscs = plan.TotalFiles = disc;
    plan.IndexOnDiscs = true;
  }
  void load(frmLoadDisc& form) {
    prompts.push_back(form.FromDisc);
    for (int row = 0; row <= form.ToDisc - form.FromDisc; ++row) {
      ASSERT_TRUE(form.doInsertBlank(row, DiscCdR, "disc", SmallDisc));
      if (form.vsDrive.text(row + 1, 0) != badDrive) continue;
      const std::string image = form.discInTray(row).file;
      const std::string profile = "app/Discs/" + image.substr(image.rfind('/') + 1) + ".disc";
      temp.write(profile, TempDir::read(temp / profile) + "fail-burn=10\nfail-number=1032\n");
      ASSERT_TRUE(form.doInsertFromShelf(row, image));
    }
    form.pbOK();
  }
  /// The content of the one file of each disc, by the number on its label.
  std::map<std::string, std::string> contents() {
    std::vector<ImageDisc> all = ports.trays.discsOnShelf();
    for (const char letter : ports.trays.letters()) all.push_back(ports.trays.discIn(letter));
    std::map<std::string, std::string> found;
    for (const ImageDisc& disc : all) {
      if (disc.sessions == 0) continue;
      const auto reader = DiscReader::open(openImageBlocks(disc.file), 0);
      const std::vector<std::string> names = reader ? reader->list("") : std::vector<std::string>();
      const auto file = names.size() == 1 ? reader->openFile(names[0]) : nullptr;
      if (!file) continue;
      std::string content(static_cast<std::size_t>(file->info().size.whole()), '\0');
      file->read(0, content.data(), content.size());
      EXPECT_TRUE(found.emplace(disc.label, content).second) << disc.label << " was burned twice";
    }
    return found;
  }
  void expectAllDiscs() {
    const auto found = contents();
    EXPECT_EQ(found.size(), std::size_t{Discs});
    for (int disc = 1; disc <= Discs; ++disc) {
      const auto one = found.find("Backup #" + std::to_string(disc));
      EXPECT_TRUE(one != found.end() && one->second == contentOf(disc)) << disc;
    }
  }
  std::string column(int number) const {
    std::string text;
    const Table& records = main.grids.vsOutput[0];
    for (int row = 1; row < records.Rows(); ++row) text += records.text(row, number);
    return text;
  }

  TempDir temp;
  ScriptedDesktop desktop;
  LinuxPlatform platform{{temp.makeFolder("app") + "/",
                          {.folder = temp / "app/Discs/", .drives = 5, .feeder = false}}};
  Ports ports = platform.ports(desktop);
  frmMain main{ports, [this] {
                 Workspace places = Workspace::below(temp / "app/", temp / "app/BIN/", temp.path());
                 places.TempFolder = temp.makeFolder("scratch") + "/";
                 return places;
               }()};
  std::string badDrive;  ///< "X:"; its discs fail
  std::vector<int> prompts;
};

TEST_F(ImageDrives, FiveOfThemWriteTwelveDiscsInThreeLoads) {
  EXPECT_EQ(main.backup.doStartBackup().end, End::Finished);
  EXPECT_THAT(prompts, ElementsAre(1, 6, 11));
  EXPECT_EQ(column(0), "V:W:X:Y:Z:V:W:X:Y:Z:V:W:");
  expectAllDiscs();
}

TEST_F(ImageDrives, OneThatFailsTwiceEndsTheRunAndTheNextStartGoesOn) {
  main.deviceSettings.MultiErrorMax = 2;
  badDrive = "X:";
  EXPECT_EQ(main.backup.doStartBackup().end, End::ErrorLimit);
  EXPECT_THAT(prompts, ElementsAre(1, 5));
  EXPECT_EQ(column(0), "V:W:X:Y:Z:V:W:X:");
  EXPECT_THAT(column(7), HasSubstr("Success.Error: Drive function failed.Success."));
  const Table& events = main.grids.vsEvent[0];
  EXPECT_EQ(events.text(events.Rows() - 1, 1), "Action stop: Disc burning error counted 2.");
  EXPECT_EQ(main.records.vsRecent.text(1, 6), "* Uncompleted.");
  EXPECT_EQ(main.backup.request().FailedDrives, "X") << "gets another disc at the next prompt";
  EXPECT_FALSE(ports.trays.isOpen('Y')) << "left alone behind the limit";

  badDrive.clear();
  prompts.clear();
  EXPECT_EQ(main.backup.doStartBackup().end, End::Finished);
  EXPECT_THAT(prompts, ElementsAre(7, 12));
  expectAllDiscs();
}

}  // namespace
}  // namespace korvenal::test
