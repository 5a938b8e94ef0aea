#include "ui/QtDesktop.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QMessageBox>
#include <QThread>
#include <QUrl>
#include <atomic>
#include <thread>

#include "ui/TablePrinter.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

constexpr int IconPixels = 40;
constexpr qint64 YieldMilliseconds = 20;
constexpr unsigned long RestMilliseconds = 5;

/// By its standard name; empty for none.
QString iconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::Information:
      return QStringLiteral("dialog-information");
    case MessageIcon::Question:
      return QStringLiteral("dialog-question");
    case MessageIcon::Warning:
      return QStringLiteral("dialog-warning");
    case MessageIcon::Stop:
      return QStringLiteral("dialog-error");
    case MessageIcon::None:
      break;
  }
  return {};
}

/// A message with one of the program's icons, drawn anew when the desktop turns light or dark.
class MessageWindow : public QMessageBox {
 public:
  MessageWindow(QString icon, QWidget* parent) : QMessageBox(parent), icon_(std::move(icon)) {
    doDrawIcon();
  }

 protected:
  void changeEvent(QEvent* event) override {
    QMessageBox::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) doDrawIcon();
  }

 private:
  void doDrawIcon() {
    if (icon_.isEmpty()) return;
    const QSize size(IconPixels, IconPixels);
    setIconPixmap(Theme::icon(icon_).pixmap(size, devicePixelRatioF()));
  }

  QString icon_;
};

QMessageBox::StandardButtons buttonsOf(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::OkCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case MessageButtons::YesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case MessageButtons::YesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MessageButtons::SkipRetryStop:
      return QMessageBox::Ignore | QMessageBox::Retry | QMessageBox::Abort;
    case MessageButtons::Ok:
      break;
  }
  return QMessageBox::Ok;
}

/// A closed box counts as the most cautious of its answers.
Answer answerOf(int button, MessageButtons buttons) {
  switch (button) {
    case QMessageBox::Ok:
      return Answer::Ok;
    case QMessageBox::Yes:
      return Answer::Yes;
    case QMessageBox::No:
      return Answer::No;
    case QMessageBox::Ignore:
      return Answer::Skip;
    case QMessageBox::Retry:
      return Answer::Retry;
    default:
      break;
  }
  if (buttons == MessageButtons::Ok) return Answer::Ok;
  if (buttons == MessageButtons::SkipRetryStop) return Answer::Stop;
  return buttons == MessageButtons::YesNo ? Answer::No : Answer::Cancel;
}

QString filterOf(const FileDialog& dialog) {
  const QString name = toQt(dialog.filterName);
  return name.contains(QLatin1Char('('))
             ? name
             : QStringLiteral("%1 (%2)").arg(name, toQt(dialog.pattern));
}

}  // namespace

QWidget* QtDesktop::front() const {
  QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : mainWindow;
}

void QtDesktop::doWork() {
  if (onRefresh) onRefresh();
  QCoreApplication::processEvents();
  sinceYield_.start();
}

void QtDesktop::doYield() {
  if (!sinceYield_.isValid() || sinceYield_.elapsed() >= YieldMilliseconds) doWork();
}

void QtDesktop::doRest() {
  doYield();
  QThread::msleep(RestMilliseconds);
}

void QtDesktop::doAside(const std::function<void()>& work) {
  std::atomic<bool> done = false;
  const std::jthread worker([&] {
    work();
    done = true;
  });
  while (!done) doRest();
}

void QtDesktop::doPrepareToAsk() {
  if (onAsk) onAsk();
  if (onRefresh) onRefresh();
}

Answer QtDesktop::doShowMessage(const MessageBox& message) {
  doPrepareToAsk();
  MessageWindow box(iconOf(message.icon), front());
  box.setObjectName(QStringLiteral("messageBox"));
  box.setWindowTitle(toQt(message.title));
  // Names of files stand in messages: nothing of them is taken for markup.
  box.setTextFormat(Qt::PlainText);
  box.setText(toQt(message.text));
  box.setStandardButtons(buttonsOf(message.buttons));
  if (message.buttons == MessageButtons::SkipRetryStop) {
    box.button(QMessageBox::Ignore)->setText(QObject::tr("&Skip"));
    box.button(QMessageBox::Retry)->setText(QObject::tr("&Retry"));
    box.button(QMessageBox::Abort)->setText(QObject::tr("S&top"));
    box.setEscapeButton(QMessageBox::Abort);
  }
  if (message.noPreselected) box.setDefaultButton(QMessageBox::No);
  return answerOf(box.exec(), message.buttons);
}

void QtDesktop::doShowModal(Form& form) {
  doPrepareToAsk();
  DialogServices services = dialogs;
  services.desktop = this;
  if (const auto dialog = makeFormDialog(form, services, front()))
    dialog->runModal();
  else
    form.doCloseBox();
  if (onRefresh) onRefresh();
}

std::string QtDesktop::doAskOpenFile(const FileDialog& dialog) {
  doPrepareToAsk();
  return fromQt(QFileDialog::getOpenFileName(front(), toQt(dialog.title), toQt(dialog.folder),
                                             filterOf(dialog)));
}

std::string QtDesktop::doAskSaveFile(const FileDialog& dialog) {
  doPrepareToAsk();
  QFileDialog box(front(), toQt(dialog.title), toQt(dialog.folder), filterOf(dialog));
  box.setAcceptMode(QFileDialog::AcceptSave);
  // A name without the extension gets it before the dialog asks about overwriting.
  box.setDefaultSuffix(toQt(dialog.pattern).section(QLatin1Char('.'), -1));
  if (!dialog.fileName.empty()) box.selectFile(toQt(dialog.fileName));
  return box.exec() == QDialog::Accepted ? fromQt(box.selectedFiles().value(0)) : std::string();
}

std::string QtDesktop::doAskFolder(const std::string& title, const std::string& folder) {
  doPrepareToAsk();
  return fromQt(QFileDialog::getExistingDirectory(front(), toQt(title), toQt(folder)));
}

void QtDesktop::doSetWaitPointer(bool waiting) {
  if (waiting)
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  else
    QGuiApplication::restoreOverrideCursor();
}

void QtDesktop::doPrintTable(const Table& table, const std::string& documentName) {
  printTable(table, toQt(documentName), front());
}

void QtDesktop::doPlaySound(const std::string& file) {
  chime_.play(file);
}

bool QtDesktop::doOpenOutside(const std::string& path) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(toQt(path)));
}

std::string QtDesktop::doGetTypeName(const std::string& name, bool isFolder) {
  if (isFolder) return fromQt(QCoreApplication::translate("QtDesktop", "Folder"));
  const QMimeType type = types_.mimeTypeForFile(toQt(name), QMimeDatabase::MatchExtension);
  return type.isDefault() ? std::string() : fromQt(type.comment());
}

}  // namespace korvenal::ui
