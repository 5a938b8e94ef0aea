#pragma once

#include <QObject>
#include <functional>

class QLocalServer;

namespace korvenal::ui {

/// Listens on a local socket in the application folder, which only the user can reach. A program
/// that sends "2035" there brings the main window up.
class ShowRequests : public QObject {
  Q_OBJECT
 public:
  /// The lock on the folder is held, so a socket that lies there is left over. A folder that takes
  /// no socket has none, and all else goes on. `folder` ends in '/'.
  ShowRequests(const QString& folder, std::function<void()> onShow);

  static QString socketIn(const QString& folder);

 private:
  void doServe();

  std::function<void()> onShow_;
  QLocalServer* server_;
};

}  // namespace korvenal::ui
