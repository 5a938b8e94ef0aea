#pragma once

#include "ui/Page.h"

class QPushButton;

namespace korvenal::ui {

/// The buttons at the foot of a page: the ways back at the left, the next step at the right, and
/// the stop button in its place while a run is at work.
class StepBar : public Page {
  Q_OBJECT
 public:
  /// Action 0 backup, 1 restore, 2 erase.
  StepBar(int action, const Context& context, QWidget* parent = nullptr);

  void refresh() override;

 private:
  int step() const;
  QString nextText() const;

  int action_;
  QPushButton* PBSTART_;
  QPushButton* PBBack_;
  QPushButton* pbStop_;
  QPushButton* PBNext_;
};

}  // namespace korvenal::ui
