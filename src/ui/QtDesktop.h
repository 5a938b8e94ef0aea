#pragma once

#include <QElapsedTimer>
#include <QMimeDatabase>
#include <functional>

#include "platform/Desktop.h"
#include "ui/Chime.h"
#include "ui/FormDialogs.h"

class QWidget;

namespace korvenal::ui {

/// The front end that is a window: what the program asks of its desktop.
class QtDesktop : public Desktop {
 public:
  QtDesktop() = default;

  /// Shows what has changed since the last call; called at yields, some 50 times a second at most.
  std::function<void()> onRefresh;
  /// Called before the person is asked anything.
  std::function<void()> onAsk;
  DialogServices dialogs;
  /// The window that dialogs stand over. Not owned; null before there is one.
  QWidget* mainWindow = nullptr;

  void doYield() override;
  void doRest() override;
  void doAside(const std::function<void()>& work) override;
  Answer doShowMessage(const MessageBox& message) override;
  void doShowModal(Form& form) override;
  std::string doAskOpenFile(const FileDialog& dialog) override;
  std::string doAskSaveFile(const FileDialog& dialog) override;
  std::string doAskFolder(const std::string& title, const std::string& folder) override;
  void doSetWaitPointer(bool waiting) override;
  void doPrintTable(const Table& table, const std::string& documentName) override;
  void doPlaySound(const std::string& file) override;
  bool doOpenOutside(const std::string& path) override;
  std::string doGetTypeName(const std::string& name, bool isFolder) override;

 private:
  void doWork();
  void doPrepareToAsk();
  QWidget* front() const;

  QElapsedTimer sinceYield_;
  QMimeDatabase types_;
  Chime chime_;
};

}  // namespace korvenal::ui
