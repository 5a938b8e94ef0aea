#include <QAction>

#include "ui/WindowFixture.h"

namespace korvenal::ui {
namespace {

using MainWindowTest = WindowFixture;

TEST_F(MainWindowTest, OpensOnTheStartPageWithTheDriveInItsStatusBar) {
  doStart();
  EXPECT_EQ(window().windowTitle(), QStringLiteral("Korvenal to DVD 2.0"));
  EXPECT_TRUE(find<QAction>("page0").isChecked());
  EXPECT_EQ(find<QLabel>("DeviceName").text(), QStringLiteral("Single-drive (V:)"));
}

}  // namespace
}  // namespace korvenal::ui
