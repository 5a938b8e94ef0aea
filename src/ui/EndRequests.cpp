#include "ui/EndRequests.h"

#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QDialog>
#include <QSessionManager>
#include <QSocketNotifier>
#include <atomic>
#include <cerrno>
#include <csignal>

namespace korvenal::ui {

namespace {

constexpr int Signals[] = {SIGTERM, SIGINT, SIGHUP};
constexpr int AgainMilliseconds = 50;

/// Where a signal is told. A signal handler reaches nothing but static storage.
std::atomic<int>& signalPipe() {
  static std::atomic<int> end = -1;
  return end;
}

void onSignal(int) {
  const int before = errno;
  const char told = 1;
  // A full pipe tells the same already.
  [[maybe_unused]] const ssize_t written = write(signalPipe(), &told, 1);
  errno = before;
}

}  // namespace

EndRequests::EndRequests(Lifecycle& life) : life_(life) {
  connect(qGuiApp, &QGuiApplication::commitDataRequest, this,
          [this](QSessionManager& session) { doAnswerSession(session); });
  connect(&again_, &QTimer::timeout, this, [this] { doGoOn(); });
  if (pipe2(pipe_.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  notifier_ = new QSocketNotifier(pipe_[0], QSocketNotifier::Read, this);
  connect(notifier_, &QSocketNotifier::activated, this, [this] { doTakeSignal(); });
  signalPipe() = pipe_[1];
  struct sigaction action {};
  action.sa_handler = onSignal;
  action.sa_flags = SA_RESTART;
  for (const int number : Signals) sigaction(number, &action, nullptr);
}

EndRequests::~EndRequests() {
  if (pipe_[0] < 0) return;
  for (const int number : Signals) std::signal(number, SIG_DFL);
  signalPipe() = -1;
  close(pipe_[0]);
  close(pipe_[1]);
}

void EndRequests::doTakeSignal() {
  char told[16];
  while (read(pipe_[0], told, sizeof told) > 0) {
  }
  stopAsked_ = false;
  again_.start(AgainMilliseconds);
  doGoOn();
}

void EndRequests::doGoOn() {
  if (QWidget* modal = QApplication::activeModalWidget()) {
    if (auto* dialog = qobject_cast<QDialog*>(modal))
      QMetaObject::invokeMethod(dialog, &QDialog::reject, Qt::QueuedConnection);
    return;
  }
  if (life_.doTerminate()) return again_.stop();
  if (!stopAsked_) life_.doStopRun();
  stopAsked_ = true;
}

void EndRequests::doAnswerSession(QSessionManager& session) {
  if (!life_.doPrepareSessionEnd()) session.cancel();
}

}  // namespace korvenal::ui
