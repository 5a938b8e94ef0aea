#pragma once

#include <array>

#include "ui/Page.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QToolButton;

namespace korvenal::ui {

/// Where to restore to, with the room there is, and what becomes of files that are there already.
class RestoreOptionsView : public Page {
  Q_OBJECT
 public:
  explicit RestoreOptionsView(const Context& context, QWidget* parent = nullptr);

  void refresh() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  static QString noFolderText();
  QWidget* makeTarget();
  QWidget* makeOptions();
  QCheckBox* makeBox(const char* name, const QString& text, const QString& explanation,
                     bool RestorePage::*option);
  void doSetTarget(const QString& folder);
  void doShowRoom();

  struct Box {
    QCheckBox* box;
    bool RestorePage::*option;
  };
  QLineEdit* txRestoreTo_ = nullptr;
  QToolButton* browse_ = nullptr;
  QLabel* room_ = nullptr;
  std::array<QRadioButton*, 4> RestoreOpt_{};
  std::vector<Box> boxes_;
};

}  // namespace korvenal::ui
