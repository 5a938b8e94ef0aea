#include "ui/Person.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QtTest>
#include <algorithm>

#include "ui/Mnemonics.h"

namespace korvenal::ui {

namespace {

/// So many looks at a dialog that nobody expects, a hundredth of a second apart.
constexpr int Patience = 300;

bool endsByItself(const QString& name) {
  return name == QStringLiteral("frmAddFiles");
}

QString plain(QString text) {
  return text.remove(QLatin1Char('&'));
}

}  // namespace

Person::Person() {
  QObject::connect(&timer_, &QTimer::timeout, this, [this] { doLook(); });
  timer_.start(10);
}

Person::~Person() {
  for (const Step& step : script_) ADD_FAILURE() << "The dialog " << step.dialog << " never came.";
}

void Person::when(const std::string& dialog, Deed deed, const std::string& once) {
  script_.push_back({dialog, std::move(deed), once});
}

void Person::answers(const std::string& dialog, const std::string& button) {
  script_.push_back({dialog, [button](QWidget& box) { press(box, button); }, button});
}

bool Person::isReady(const Step& step, QWidget& dialog) {
  if (step.dialog != dialog.objectName().toStdString()) return false;
  const QWidget* button = step.button.empty() ? nullptr : findAny(dialog, step.button);
  // A button that is not there is told when it is pressed.
  return button == nullptr || button->isEnabled();
}

QWidget* Person::frontDialog() {
  QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr && modal->isVisible() ? modal : nullptr;
}

void Person::doLook() {
  QWidget* dialog = frontDialog();
  if (acting_ || dialog == nullptr || endsByItself(dialog->objectName())) return;
  // What was done to a dialog takes its time; the next step is about another one, or comes later,
  // unless a menu was opened that waits for its choice.
  const bool inHand = std::find(inHand_.begin(), inHand_.end(), dialog) != inHand_.end();
  if (inHand && QApplication::activePopupWidget() == nullptr) return;
  if (!script_.empty() && isReady(script_.front(), *dialog)) {
    EXPECT_THAT(clashingMnemonics(*dialog), testing::IsEmpty()) << script_.front().dialog;
    const Step step = script_.front();
    script_.pop_front();
    if (const auto* box = qobject_cast<QMessageBox*>(dialog))
      messages_.push_back(box->text().toStdString());
    looks_ = 0;
    // A deed may open the next dialog and wait for it: the script goes on below it, which the timer
    // would not do inside its own call.
    acting_ = true;
    QMetaObject::invokeMethod(
        this,
        [this, step, front = QPointer<QWidget>(dialog)] {
          acting_ = false;
          if (!front) return;
          inHand_.push_back(front);
          step.deed(*front);
          inHand_.pop_back();
          // A dialog that was closed is still there until its loop has ended.
          timer_.start();
        },
        Qt::QueuedConnection);
    return;
  }
  looks_ = dialog == unexpected_ ? looks_ + 1 : 0;
  unexpected_ = dialog;
  if (looks_ < Patience) return;
  looks_ = 0;
  const auto* box = qobject_cast<QMessageBox*>(dialog);
  ADD_FAILURE() << "Nobody expected the dialog " << dialog->objectName().toStdString() << " \""
                << dialog->windowTitle().toStdString() << "\" "
                << (box != nullptr ? box->text().toStdString() : std::string());
  QTest::keyClick(dialog, Qt::Key_Escape);
}

QWidget* Person::findAny(QWidget& in, const std::string& name) {
  const QString wanted = QString::fromStdString(name);
  if (auto* named = in.findChild<QWidget*>(wanted)) return named;
  for (auto* button : in.findChildren<QAbstractButton*>())
    if (plain(button->text()) == wanted) return button;
  return nullptr;
}

void Person::tellMissing(const QWidget& in, const std::string& name) {
  ADD_FAILURE() << in.objectName().toStdString() << " holds no " << name << ".";
}

void Person::press(QWidget& in, const std::string& button) {
  QWidget* found = findAny(in, button);
  if (found == nullptr) return tellMissing(in, button);
  EXPECT_TRUE(found->isVisible() && found->isEnabled())
      << button << " of " << in.objectName().toStdString() << " cannot be pressed.";
  // Boxes and radio buttons react at their left end.
  const QPoint place(std::min(10, found->width() / 2), found->height() / 2);
  QTest::mouseClick(found, Qt::LeftButton, {}, place);
}

void Person::type(QWidget& field, const std::string& text) {
  field.setFocus();
  QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&field, Qt::Key_Delete);
  QTest::keyClicks(&field, QString::fromStdString(text));
}

}  // namespace korvenal::ui
