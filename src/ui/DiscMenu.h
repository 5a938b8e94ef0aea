#pragma once

#include <QMenu>
#include <functional>

#include "device/frmLoadDisc.h"

namespace korvenal::ui {

/// What can be done with the disc of an image drive while the prompt for discs is open. Filled
/// each time it opens. The form outlives it.
class DiscMenu : public QMenu {
  Q_OBJECT
 public:
  /// Runs what the person chose, and shows what became of it.
  using Act = std::function<void(const std::function<void()>& wish)>;

  DiscMenu(frmLoadDisc& form, int row, Act act, QWidget* parent);

 private:
  void doFill();
  void doAddBlanks();
  void doAddShelf();
  QAction* doAdd(QMenu& menu, const QString& text, std::function<void()> wish);

  frmLoadDisc& form_;
  int row_;
  Act act_;
};

}  // namespace korvenal::ui
