#pragma once

#include <QBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <initializer_list>

namespace korvenal::ui {

/// Small grey words that are still easy to read, also after the desktop turned light or dark.
class ExplanationLabel : public QLabel {
 public:
  ExplanationLabel(const QString& text, QWidget* parent);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void doTakeColor();
};

// What most dialogs are put together from. Everything made is owned by the parent given.

/// A picture that is drawn anew whenever the palette changes. Square, `pixels` wide.
QWidget* iconLabel(const QIcon& icon, int pixels, QWidget* parent);
/// A text that wraps at about so many characters.
QLabel* wrappedLabel(const QString& text, int characters, QWidget* parent);
/// Small grey text that explains what stands above it.
QLabel* explanationLabel(const QString& text, QWidget* parent);
QPushButton* namedButton(const char* objectName, const QString& text, QWidget* parent);
/// Ways out: those that give up at the left, those that go on at the right.
QHBoxLayout* buttonRow(std::initializer_list<QWidget*> left, std::initializer_list<QWidget*> right);
/// A large icon beside the content.
QHBoxLayout* withIcon(QWidget& parent, const QString& icon, QWidget* content);

/// A file by its icon and name, with facts below.
QHBoxLayout* fileFacts(QWidget& parent, const QString& name, const QStringList& facts);

}  // namespace korvenal::ui
