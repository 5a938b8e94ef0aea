#pragma once

#include <QTimer>
#include <array>
#include <functional>

#include "app/Lifecycle.h"

class QSessionManager;
class QSocketNotifier;

namespace korvenal::ui {

/// Ends the program when the person's session ends or a signal asks for it (SIGTERM, SIGINT,
/// SIGHUP). The end of a session is refused while a run is at work. A signal cannot be refused for
/// long: the run is asked to stop, open questions get their most cautious answer, and the program
/// ends behind them. One object at a time.
class EndRequests : public QObject {
  Q_OBJECT
 public:
  explicit EndRequests(Lifecycle& life);
  ~EndRequests() override;

 private:
  void doTakeSignal();
  void doGoOn();
  void doAnswerSession(QSessionManager& session);

  Lifecycle& life_;
  std::array<int, 2> pipe_{-1, -1};  ///< the end that is read, the end that signals write
  QSocketNotifier* notifier_ = nullptr;
  QTimer again_;
  bool stopAsked_ = false;
};

}  // namespace korvenal::ui
