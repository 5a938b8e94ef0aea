#pragma once

#include <QTimer>
#include <QWidget>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace korvenal::ui {

/// A person at the window: presses buttons and keys, and answers dialogs as they come up, in the
/// order of the script. A dialog that nobody expected fails the test and is closed.
class Person : public QObject {
 public:
  using Deed = std::function<void(QWidget& dialog)>;

  Person();
  ~Person() override;

  /// The next dialog of the script: when the one with this object name is in front, the deed is
  /// done, as soon as its button `once` can be pressed when one is named. Dialogs of work that end
  /// by themselves ("frmAddFiles") need no entry.
  void when(const std::string& dialog, Deed deed, const std::string& once = {});
  /// The next dialog is answered by its button with this object name, or this text without '&', as
  /// soon as that can be pressed.
  void answers(const std::string& dialog, const std::string& button);
  /// True when every dialog of the script has come.
  bool isDone() const { return script_.empty(); }
  /// Texts of the message boxes so far.
  const std::vector<std::string>& messages() const { return messages_; }

  /// Presses a button or box, found by object name or by its text without '&', with the mouse.
  static void press(QWidget& in, const std::string& button);
  /// The widget or action of this object name; fails the test when there is none.
  template <typename Widget = QWidget>
  static Widget& find(QWidget& in, const std::string& name);
  /// Types into the field with the keyboard, in place of what stands there.
  static void type(QWidget& field, const std::string& text);

 private:
  struct Step {
    std::string dialog;
    Deed deed;
    std::string button;  ///< waited for until it is enabled; empty for none
  };
  static bool isReady(const Step& step, QWidget& dialog);
  void doLook();
  static QWidget* frontDialog();
  static QWidget* findAny(QWidget& in, const std::string& name);
  static void tellMissing(const QWidget& in, const std::string& name);

  std::deque<Step> script_;
  std::vector<std::string> messages_;
  QTimer timer_;
  QWidget* unexpected_ = nullptr;       ///< only compared
  std::vector<const QWidget*> inHand_;  ///< dialogs whose deeds have not ended, outermost first
  int looks_ = 0;                       ///< at the same unexpected dialog
  bool acting_ = false;                 ///< a deed is about to begin
};

template <typename Widget>
Widget& Person::find(QWidget& in, const std::string& name) {
  auto* found = in.findChild<Widget*>(QString::fromStdString(name));
  if (found == nullptr) {
    tellMissing(in, name);
    static auto* none = new Widget(nullptr);
    return *none;
  }
  return *found;
}

}  // namespace korvenal::ui
