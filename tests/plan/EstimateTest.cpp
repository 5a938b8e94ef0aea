#include "plan/Estimate.h"

#include <gmock/gmock.h>

#include "plan/ScanFixture.h"
#include "plan/frmEstimateInfo.h"

namespace korvenal::test {
namespace {

using testing::ElementsAre;

constexpr std::int64_t CdBytes = 703'406'080;  ///< what a CD takes besides its reserve

class EstimateTest : public testing::Test, public ScanFixture {
 protected:
  EstimateTest() {
    settings.ExcludeTopFolder = false;
    desktop.onForm = [this](Form& form) {
      auto* report = dynamic_cast<frmEstimateInfo*>(&form);
      if (report == nullptr) return;
      ++reports_;
      if (onReport_) onReport_(*report);
      report->pbClose();
    };
  }
  /// A job of one folder with one file.
  void makeJob(std::int64_t bytes) {
    job.vsContents.clearData();
    addItem("/s/top", folder("Top", {file("a.bin", bytes)}));
  }
  std::vector<std::string> contents(frmEstimateInfo& report, int col) {
    std::vector<std::string> texts;
    for (int row = 1; row < report.vsDContents.Rows(); ++row)
      texts.push_back(report.vsDContents.text(row, col));
    return texts;
  }

  bool drivesWriteDvd_ = true;
  int reports_ = 0;
  std::function<void(frmEstimateInfo&)> onReport_;
  SourceScan scan_ = makeScan();
  Estimate estimate_{
      {state, desktop, profile, [this](int) { return drivesWriteDvd_; }}, job, plan, scan_};
};

TEST_F(EstimateTest, SaysHowManyDiscsAndHidesAnOldAnswerWhenStopped) {
  addItem("/s/top", folder("Top", {file("a", 1'000'000'000), file("b", 5)}));
  estimate_.pbEstimate();
  EXPECT_TRUE(job.estimateShown);
  EXPECT_EQ(estimate_.EstimateDisc, "CD 700MB x 2  (Total:  953.7 MB, 2 files, 1 file split)");
  EXPECT_EQ(plan.ScanMode, 0);
  EXPECT_EQ(plan.vsBuffer.row(1).size, plan.IndexSizePreliminary);
  EXPECT_EQ(reports_, 1);
  EXPECT_FALSE(state.ActionBusy);

  desktop.onYield = [&](int) { state.StopAction = true; };
  estimate_.pbEstimate();
  EXPECT_FALSE(job.estimateShown);
  estimate_.pbEstimateInfo();
  EXPECT_EQ(reports_, 1) << "no estimate, no report";
}

TEST_F(EstimateTest, ADvdIsTooMuchForWhatACdMayTake) {
  job.comboDiscType = 1;
  makeJob(730'000'000);
  desktop.answers = {Answer::No, Answer::Yes};
  estimate_.pbEstimate();
  EXPECT_EQ(job.comboDiscType, 1);
  estimate_.pbEstimate();
  EXPECT_EQ(job.comboDiscType, 0);
  EXPECT_EQ(estimate_.EstimateDisc, "CD 700MB x 1  (Total:  696.2 MB, 1 file)")
      << "the plan is still that of the DVD";
  ASSERT_EQ(desktop.asked.size(), 2U);
  EXPECT_EQ(desktop.asked[0].title, "Change Disc Type");
  EXPECT_EQ(desktop.asked[0].text,
            "According to the estimated backup data size, you can select a lower capacity disc "
            "type.\nDo you want to change the disc type to 'CD 700MB'?");
  EXPECT_TRUE(job.Modified && job.estimateShown);

  for (const std::int64_t bytes : {std::int64_t{0}, std::int64_t{730'000'001}}) {
    job.comboDiscType = 2;
    makeJob(bytes);
    estimate_.pbEstimate();
  }
  EXPECT_EQ(desktop.asked.size(), 2U);
}

TEST_F(EstimateTest, ManyCdsAreBetterOneDvd) {
  makeJob(CdBytes * 5 - 1'000'000);
  estimate_.pbEstimate();
  EXPECT_EQ(plan.TotalDiscs, 5);
  makeJob(CdBytes * 6 - 1'000'000);
  drivesWriteDvd_ = false;
  estimate_.pbEstimate();
  EXPECT_EQ(plan.TotalDiscs, 6);
  EXPECT_TRUE(desktop.asked.empty());

  drivesWriteDvd_ = true;
  desktop.answers = {Answer::No, Answer::Yes};
  estimate_.pbEstimate();
  EXPECT_EQ(job.comboDiscType, 0);
  const int before = reports_;
  estimate_.pbEstimate();
  EXPECT_EQ(job.comboDiscType, 1);
  EXPECT_EQ(plan.TotalDiscs, 1) << "planned again";
  EXPECT_EQ(estimate_.EstimateDisc.substr(0, 13), "DVD 4.7GB x 1");
  EXPECT_EQ(reports_, before + 1);
  EXPECT_EQ(desktop.asked.size(), 2U);
}

TEST_F(EstimateTest, OverTheLimitNothingIsShownAndNothingLogged) {
  makeJob(CdBytes * 101);
  desktop.answers = {Answer::Ok};
  estimate_.pbEstimate();
  ASSERT_EQ(desktop.asked.size(), 1U) << "no disc type is suggested";
  EXPECT_EQ(desktop.asked[0].title, "Stop Estimation");
  EXPECT_TRUE(state.LimitExceeded);
  EXPECT_FALSE(job.estimateShown || grids.vsEvent[0].hasData());
  EXPECT_EQ(reports_, 0);
  EXPECT_EQ(plan.ScanMode, 0);
}

TEST_F(EstimateTest, TheReportTellsWhatGoesOnEachDisc) {
  files.addFile("/app/BIN/" + KitFileName, 5000);
  job.BurnRestoreKit = true;
  addItem("/s/top", folder("Top", {file("a.bin", CdBytes), file("b", 5)}));
  onReport_ = [&](frmEstimateInfo& report) {
    EXPECT_EQ(report.caption, "Estimate Details - Job");
    EXPECT_EQ(report.discs + " " + report.files + " " + report.splitFiles, "2 3 1");
    ASSERT_EQ(report.vsDisc.Rows(), 3);
    EXPECT_EQ(report.vsDisc.text(2, EstimateLabel), "Backup #2");
    EXPECT_EQ(report.vsDisc.text(1, EstimateFilled), "99%");
    EXPECT_EQ(report.fillPercent(2), 2);
    EXPECT_EQ(report.vsDContents.text(0, 0), "Files name on Disc No.1");
    EXPECT_THAT(contents(report, DiscContentsName),
                ElementsAre(plan.IndexDiscName, KitFileName, "Top\\", "Top\\a.bin\\",
                            "Top\\a.bin\\a.bin.001"));
    EXPECT_THAT(
        contents(report, DiscContentsNote),
        ElementsAre("Backup Index", "RestoreKit Installer", "", "Split File", "Split File"));
    EXPECT_EQ(report.vsDContents.text(5, DiscContentsSource), "/s/top/a.bin");
    EXPECT_EQ(report.vsDContents.text(4, DiscContentsDate), Dates::displayShort(1'600'000'000));
    report.doSelectDisc(3);
    report.doSelectDisc(2);
    EXPECT_THAT(contents(report, DiscContentsName),
                ElementsAre("Top\\", "Top\\a.bin\\", "Top\\a.bin\\a.bin.002", "Top\\b"));
    EXPECT_EQ(report.vsDContents.text(5, DiscContentsName), "");
    report.chkShowInfo = false;
    report.setShowPath(true);
  };
  estimate_.pbEstimate();
  EXPECT_EQ(reports_, 1);
  EXPECT_EQ(profile.doReadProfile("Backup", "EstimateShowPath", ""), "1");
  onReport_ = [](frmEstimateInfo& report) { EXPECT_TRUE(report.chkShowPath()); };
  estimate_.pbEstimate();
  EXPECT_EQ(reports_, 1) << "not wanted any more";
  estimate_.pbEstimateInfo();
  EXPECT_EQ(reports_, 2);
}

}  // namespace
}  // namespace korvenal::test
