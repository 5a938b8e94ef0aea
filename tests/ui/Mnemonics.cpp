#include "ui/Mnemonics.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>
#include <QTabBar>
#include <map>

namespace korvenal::ui {

namespace {

using Captions = std::map<QString, QStringList>;

void addCaption(Captions& captions, const QString& text) {
  const QKeySequence letter = QKeySequence::mnemonic(text);
  if (!letter.isEmpty()) captions[letter.toString()].append(text);
}

void addCaptions(Captions& captions, const QWidget& widget) {
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
    return addCaption(captions, button->text());
  if (const auto* box = qobject_cast<const QGroupBox*>(&widget))
    return addCaption(captions, box->title());
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
    if (label->buddy() != nullptr) addCaption(captions, label->text());
  } else if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
    for (int tab = 0; tab < tabs->count(); ++tab)
      if (tabs->isTabVisible(tab)) addCaption(captions, tabs->tabText(tab));
  } else if (const auto* menus = qobject_cast<const QMenuBar*>(&widget)) {
    for (const QAction* menu : menus->actions()) addCaption(captions, menu->text());
  }
}

}  // namespace

std::vector<std::string> clashingMnemonics(const QWidget& window) {
  Captions captions;
  for (const QWidget* widget : window.findChildren<QWidget*>())
    if (widget->window() == &window && widget->isVisibleTo(&window)) addCaptions(captions, *widget);
  std::vector<std::string> clashes;
  for (const auto& [letter, texts] : captions)
    if (texts.size() > 1)
      clashes.push_back(letter.toStdString() + ": " +
                        texts.join(QStringLiteral(" / ")).toStdString());
  return clashes;
}

}  // namespace korvenal::ui
