#include <gtest/gtest.h>

#include <set>

#include "app/frmMain.h"
#include "device/frmLoadDisc.h"
#include "platform/DiscType.h"
#include "platform/Text.h"
#include "platform/linux/LinuxPlatform.h"
#include "support/ScriptedDesktop.h"
#include "support/TempDir.h"

namespace korvenal::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using End = BackupResult::End;

constexpr std::int64_t SmallDisc = 1000;  ///< blocks
constexpr int Backup = ActionController::Backup;

/// A backup of some discs on image drives of the program itself. The person puts a small blank disc
/// into each drive that the prompt counts on.
struct DriveWorld {
  DriveWorld(int discsWanted, const std::string& drives) : discs(discsWanted) {
    main.workspace.doCheckFolders(ports.files);
    main.profile.doWriteProfile("Backup", "Notice", "1");
    main.deviceSettings.DeviceMode = 1;
    for (std::size_t i = 0; i < drives.size(); ++i)
      main.deviceSettings.MultiDrive[i] = drives.substr(i, 1);
    main.deviceSettings.doBuildDriveLetters();
    main.job.txJobName = "Discs";
    main.job.comboDiscType = 0;
    main.job.vsContents.addRow({"0", "", "Files"});
    planIndex();
    for (int disc = 1; disc <= discs; ++disc) planFile(disc);
    main.controller.mainTab = ActionController::BackupPage;
    main.controller.BackupTab = ActionController::RunStep;
    main.backup.PreparedForRun = true;
    desktop.onForm = [this](Form& form) { load(dynamic_cast<frmLoadDisc&>(form)); };
  }

  End start() {
    main.controller.PBNext(Backup);
    return main.backupResult.end;
  }
  static std::string contentOf(int disc) {
    return std::string(300'000 + static_cast<std::size_t>(disc), static_cast<char>('a' + disc));
  }
  /// Row 1, of which each disc gets a copy.
  void planIndex() {
    Plan& plan = main.plan;
    plan.IndexOnDiscs = true;
    plan.IndexDiscName = "_Index";
    plan.IndexTempPath = temp.write("index", "i");
    plan.IndexSizeFinal = 1;
    PlanTable::Row row;
    row.type = RowType::File;
    row.name = row.original = plan.vsBuffer.addText(plan.IndexDiscName);
    row.source = plan.vsBuffer.addText(plan.IndexTempPath);
    row.size = 1;
    row.disc = 1;
    plan.vsBuffer.rows().push_back(row);
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
  }
  void load(frmLoadDisc& form) {
    prompts.push_back(form.FromDisc);
    for (int row = 0; row <= form.ToDisc - form.FromDisc; ++row) {
      ASSERT_TRUE(form.doInsertBlank(row, DiscCdR, SmallDisc));
      if (form.vsDrive.text(row + 1, 0) != badDrive) continue;
      const std::string image = form.discInTray(row).file;
      const std::string profile = "app/Discs/" + image.substr(image.rfind('/') + 1) + ".disc";
      temp.write(profile, TempDir::read(temp / profile) + "fail-burn=10\nfail-number=1032\n");
      ASSERT_TRUE(form.doInsertFromShelf(row, image));
    }
    form.pbOK();
  }
  /// All discs of the plan are there with the index, and no disc holds anything else.
  void expectAllDiscs() {
    const DiscLibraries libraries;
    std::set<std::string> found;
    std::vector<ImageDisc> all = ports.trays.discsOnShelf();
    for (const char letter : ports.trays.letters()) all.push_back(ports.trays.discIn(letter));
    for (const ImageDisc& disc : all) {
      if (disc.sessions == 0) continue;
      const auto reader = DiscReader::open(libraries, openImageBlocks(disc.file), 0);
      const std::vector<std::string> names = reader ? reader->list("") : std::vector<std::string>();
      const auto file = names.size() == 2 ? reader->openFile(names[1]) : nullptr;
      ASSERT_TRUE(file) << disc.file;
      std::string content(static_cast<std::size_t>(file->info().size.whole()), '\0');
      file->read(0, content.data(), content.size());
      const int number = std::stoi(disc.label.substr(disc.label.find('#') + 1));
      EXPECT_TRUE(content == contentOf(number)) << disc.label;
      found.insert(disc.label);
    }
    EXPECT_EQ(found.size(), static_cast<std::size_t>(discs));
  }
  const std::string& lastEvent() const {
    const Table& events = main.grids.vsEvent[0];
    return events.text(events.Rows() - 1, 1);
  }
  std::string column(int number) const {
    std::string text;
    const Table& records = main.grids.vsOutput[0];
    for (int row = 1; row < records.Rows(); ++row) text += records.text(row, number);
    return text;
  }

  const int discs;
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

TEST(ImageDrives, FiveOfThemWriteTwelveDiscsInThreeLoads) {
  DriveWorld world(12, "VWXYZ");
  EXPECT_EQ(world.start(), End::Finished);
  EXPECT_THAT(world.prompts, ElementsAre(1, 6, 11));
  EXPECT_EQ(world.column(0), "V:W:X:Y:Z:V:W:X:Y:Z:V:W:");
  world.expectAllDiscs();
}

TEST(ImageDrives, OneThatFailsTwiceEndsTheRunAndTheNextStartGoesOn) {
  DriveWorld world(12, "VWXYZ");
  world.main.deviceSettings.MultiErrorMax = 2;
  world.badDrive = "X:";
  EXPECT_EQ(world.start(), End::ErrorLimit);
  EXPECT_THAT(world.prompts, ElementsAre(1, 5));
  EXPECT_EQ(world.column(0), "V:W:X:Y:Z:V:W:X:");
  EXPECT_THAT(world.column(7), HasSubstr("Success.Error: Drive function failed.Success."));
  EXPECT_EQ(world.lastEvent(), "Action stop: Disc burning error counted 2.");
  EXPECT_EQ(world.main.records.vsRecent.text(1, 6), "* Uncompleted.");
  EXPECT_EQ(world.main.backup.request().FailedDrives, "X")
      << "gets another disc at the next prompt";
  EXPECT_FALSE(world.ports.trays.isOpen('Y')) << "left alone behind the limit";

  world.badDrive.clear();
  world.prompts.clear();
  EXPECT_EQ(world.start(), End::Finished);
  EXPECT_THAT(world.prompts, ElementsAre(7, 12));
  world.expectAllDiscs();
}

TEST(ImageDrives, AStopBetweenLinesLeavesWholeDiscsAndTheNextStartGoesOn) {
  bool pressed = true;
  for (int lines = 1; pressed; lines += 3) {
    DriveWorld world(2, "VW");
    frmMain& main = world.main;
    pressed = false;
    world.desktop.onYield = [&](int) {
      if (pressed || main.grids.vsEvent[0].Rows() <= lines) return;
      pressed = main.runPages[Backup].pbStopEnabled;
      main.controller.pbStop(Backup);
    };
    const End end = world.start();
    // A press while the last disc is settled comes too late to stop anything.
    const bool stopped = pressed && world.column(7) != "Success.Success.";
    EXPECT_EQ(end == End::Stopped, stopped) << lines;
    EXPECT_EQ(world.lastEvent(), stopped ? "Action stop by user." : "Backup action finished.");
    EXPECT_FALSE(main.state.ActionBusy || main.state.ActionRunning || main.state.IgnoreEvents);
    EXPECT_EQ(world.ports.engine.do_GetState(), 0);
    const std::string notes = world.column(7);
    EXPECT_EQ(Text::replaceAll(Text::replaceAll(notes, "Success.", ""), "Action stop by user.", ""),
              "");
    if (!stopped) continue;
    const int burned = main.backup.request().DiscsBurned;
    world.prompts.clear();
    world.desktop.onYield = {};
    EXPECT_EQ(world.start(), End::Finished) << lines;
    EXPECT_EQ(world.prompts.front(), burned == world.discs ? 1 : burned + 1) << lines;
    world.expectAllDiscs();
  }
}

}  // namespace
}  // namespace korvenal::test
