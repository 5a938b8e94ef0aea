#pragma once

#include <QTimer>
#include <functional>
#include <map>

class QWidget;

namespace korvenal::tools {

/// Leads through the dialogs that a tour of the program opens: each gets its picture once, and is
/// then answered so that the tour goes on.
class Guide : public QObject {
 public:
  using Visit = std::function<void(QWidget& dialog)>;

  Guide();

  /// What to do at the dialog with this object name; without a visit its default button is
  /// pressed.
  void at(const QString& dialog, Visit visit) { visits_[dialog] = std::move(visit); }
  void forget(const QString& dialog) { visits_.erase(dialog); }
  /// Called at every look while no dialog is in front.
  Visit onRun;
  QWidget* window = nullptr;

  /// Presses the button or box with this object name, or with this text without '&'.
  static bool press(QWidget& in, const QString& button);

 private:
  void doLook();

  std::map<QString, Visit> visits_;
  QTimer timer_;
  bool visiting_ = false;
};

}  // namespace korvenal::tools
