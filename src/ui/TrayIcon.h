#pragma once

#include <QSystemTrayIcon>
#include <QTimer>
#include <functional>
#include <memory>

#include "platform/TrayArea.h"
#include "tray/frmCommander.h"

class QAction;
class QMenu;

namespace korvenal::ui {

/// The program's icon in the desktop's tray, and its menu.
class TrayIcon : public QObject, public TrayArea {
  Q_OBJECT
 public:
  TrayIcon();
  ~TrayIcon() override;

  /// What the icon works for; set before an icon is added. It outlives the icon.
  frmCommander* commander = nullptr;
  /// Runs what the person asked for, then shows what became of it.
  std::function<void(const std::function<void()>& wish)> act;

  bool isPresent() const override;
  void doAddIcon(const std::string& tip) override;
  void doRemoveIcon() override;
  void doNotify(const std::string& text) override;

  /// The menu as it would open now; null without an icon. For desktops that ask for it, and tests.
  QMenu* menu() const { return menu_.get(); }

 private:
  using Item = void (frmCommander::*)();
  QAction* addItem(QMenu& menu, const char* name, const QString& text, const QString& icon,
                   Item item);
  void doItem(Item item);
  void doBuildMenu();
  void doShowStates(const TrayMenu& states);
  void doComeUpWithoutTray();

  std::unique_ptr<QMenu> menu_;
  std::unique_ptr<QSystemTrayIcon> icon_;
  QTimer watch_;
  QAction* mnOpen_ = nullptr;
  QAction* mnHide_ = nullptr;
  QAction* mnBackup_ = nullptr;
  QAction* mnRestore_ = nullptr;
  QAction* mnSchedule_ = nullptr;
  QAction* mnExit_ = nullptr;
  QMenu* mnSettings_ = nullptr;
};

}  // namespace korvenal::ui
