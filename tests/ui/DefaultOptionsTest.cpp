#include "ui/WindowFixture.h"

namespace korvenal::ui {
namespace {

class DefaultOptionsTest : public WindowFixture {
 protected:
  void open(const Person::Deed& deed) {
    person.when("frmDefault", deed);
    find<QMenu>("cmdSettings").actions().at(1)->trigger();
  }
  static bool isTicked(QWidget& dialog, const std::string& box) {
    return Person::find(dialog, box).property("checked").toBool();
  }
  static std::string size(QWidget& dialog, const std::string& list) {
    return Person::find<QComboBox>(dialog, list).currentText().toStdString();
  }
  static QColor textColor(QWidget& dialog, const std::string& label) {
    const auto& text = Person::find<QLabel>(dialog, label);
    return text.palette().color(text.foregroundRole());
  }
  static void doChangeSeveral(QWidget& dialog) {
    for (const char* name : {"optSplitAndSpan0", "FinalizeDisc", "SkipError", "ExcludeEmptyFolder",
                             "optFileSystem1", "RestoreOpt3", "SkipOpen"})
      Person::press(dialog, name);
    for (const char* name : {"FileSize", "DiscSize"})
      QTest::keyClick(&Person::find(dialog, name), Qt::Key_End);
  }
  static void expectSeveralChanged(QWidget& dialog) {
    for (const char* name : {"optSplitAndSpan0", "FinalizeDisc", "optFileSystem1", "RestoreOpt3",
                             "ExcludeTopFolder", "SkipSystem"})
      EXPECT_TRUE(isTicked(dialog, name)) << name;
    for (const char* name : {"SkipError", "ExcludeEmptyFolder", "AutoErase", "SkipOpen"})
      EXPECT_FALSE(isTicked(dialog, name)) << name;
    EXPECT_EQ(size(dialog, "FileSize"), "700 MB");
    EXPECT_EQ(size(dialog, "DiscSize"), "500 MB");
  }
  static void expectFirstOptions(QWidget& dialog) {
    for (const char* name : {"optSplitAndSpan1", "optFileSystem0", "RestoreOpt1", "SkipError",
                             "ExcludeTopFolder", "ExcludeEmptyFolder", "SkipSystem", "SkipOpen"})
      EXPECT_TRUE(isTicked(dialog, name)) << name;
    for (const char* name : {"FinalizeDisc", "AutoErase"})
      EXPECT_FALSE(isTicked(dialog, name)) << name;
    EXPECT_EQ(size(dialog, "FileSize"), "20 MB");
    EXPECT_EQ(size(dialog, "DiscSize"), "10 MB");
  }
};

TEST_F(DefaultOptionsTest, NewJobsAndRestoresTakeThemAndTheJobInViewKeepsItsOwn) {
  doStart();
  find<QAction>("page1").trigger();
  open([](QWidget& dialog) {
    expectFirstOptions(dialog);
    doChangeSeveral(dialog);
    Person::press(dialog, "pbOK");
  });
  EXPECT_TRUE(isTicked(window(), "optFileSystem0"));
  EXPECT_TRUE(isTicked(window(), "SkipError"));
  doEnd();
  doStart();
  open([](QWidget& dialog) {
    expectSeveralChanged(dialog);
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  find<QAction>("page1").trigger();
  EXPECT_TRUE(isTicked(window(), "optFileSystem1"));
  EXPECT_TRUE(isTicked(window(), "FinalizeDisc"));
  EXPECT_TRUE(isTicked(window(), "optSplitAndSpan0"));
  EXPECT_FALSE(isTicked(window(), "SkipError"));
  EXPECT_EQ(size(window(), "FileSize"), "700 MB");
}

TEST_F(DefaultOptionsTest, AResetCountsOnlyWithOk) {
  doStart();
  open([](QWidget& dialog) {
    doChangeSeveral(dialog);
    Person::press(dialog, "pbOK");
  });
  for (const bool byEscape : {false, true})
    open([byEscape](QWidget& dialog) {
      expectSeveralChanged(dialog);
      Person::press(dialog, "pbDefault");
      expectFirstOptions(dialog);
      if (byEscape)
        QTest::keyClick(&dialog, Qt::Key_Escape);
      else
        Person::press(dialog, "pbCancel");
    });
  open([](QWidget& dialog) {
    expectSeveralChanged(dialog);
    Person::press(dialog, "pbDefault");
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  open([](QWidget& dialog) {
    expectFirstOptions(dialog);
    Person::press(dialog, "pbCancel");
  });
}

TEST_F(DefaultOptionsTest, WhatIsSaidOfTheChosenFileSystemStandsOut) {
  doStart();
  open([](QWidget& dialog) {
    const QColor chosen = textColor(dialog, "fileSystemText0");
    const QColor other = textColor(dialog, "fileSystemText1");
    EXPECT_NE(chosen, other);
    Person::press(dialog, "optFileSystem1");
    EXPECT_EQ(textColor(dialog, "fileSystemText0"), other);
    EXPECT_EQ(textColor(dialog, "fileSystemText1"), chosen);
    Person::press(dialog, "pbCancel");
  });
}

}  // namespace
}  // namespace korvenal::ui
