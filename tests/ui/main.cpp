#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
  // No display, no theme of the machine: the same window everywhere.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_STYLE_OVERRIDE", "Fusion");
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  QApplication::setEffectEnabled(Qt::UI_AnimateMenu, false);
  return RUN_ALL_TESTS();
}
