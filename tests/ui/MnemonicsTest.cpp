#include "ui/Mnemonics.h"

#include "ui/WindowFixture.h"

namespace korvenal::ui {
namespace {

class MnemonicsTest : public WindowFixture {
 protected:
  void expectNoClash(const std::string& place) {
    EXPECT_THAT(clashingMnemonics(window()), testing::IsEmpty()) << place;
  }
  void expectNoClashOnTabs(const std::string& place, QTabWidget& tabs) {
    for (int tab = 0; tab < tabs.count(); ++tab) {
      tabs.setCurrentIndex(tab);
      expectNoClash(place + ", " + tabs.tabText(tab).toStdString());
    }
  }
};

TEST_F(MnemonicsTest, LeadToOneThingOnEveryPage) {
  doStart();
  expectNoClash("start");
  find<QAction>("page1").trigger();
  find("pbEstimateInfo").show();  // as once there is an estimate
  expectNoClashOnTabs("job", find<QTabWidget>("OptionsTab"));
  program->controller.doShowStep(ActionController::Backup, ActionController::RunStep);
  dynamic_cast<MainWindow&>(window()).refresh();
  find("pbStop0").show();  // as during a run
  expectNoClash("backup");
  program->doTask02();
  dynamic_cast<MainWindow&>(window()).refresh();
  expectNoClash("selection");
  program->controller.doShowStep(ActionController::Restore, ActionController::RunStep);
  dynamic_cast<MainWindow&>(window()).refresh();
  expectNoClash("restore");
  find<QAction>("page3").trigger();
  expectNoClash("erase");
  find<QAction>("page4").trigger();
  expectNoClash("schedule");
}

/// The dialogs are looked at wherever a test answers them; this is about the looking.
TEST(Mnemonics, AClashIsFoundAmongWhatIsInView) {
  QWidget window;
  auto* button = new QPushButton(QStringLiteral("&Drive"), &window);
  auto* label = new QLabel(QStringLiteral("&Disc:"), &window);
  EXPECT_THAT(clashingMnemonics(window), testing::IsEmpty()) << "a label without a field";
  label->setBuddy(button);
  EXPECT_THAT(clashingMnemonics(window), testing::SizeIs(1));
  label->hide();
  EXPECT_THAT(clashingMnemonics(window), testing::IsEmpty());
  new QGroupBox(QStringLiteral("A&ddress"), &window);
  EXPECT_THAT(clashingMnemonics(window), testing::ElementsAre("Alt+D: &Drive / A&ddress"));
}

}  // namespace
}  // namespace korvenal::ui
