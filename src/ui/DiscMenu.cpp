#include "ui/DiscMenu.h"

#include <algorithm>

#include "device/frmPickDisc.h"
#include "platform/DiscType.h"
#include "ui/DiscTexts.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

/// So many discs of the shelf stand in the menu; the list of all is one entry more.
constexpr std::size_t MostShelfEntries = 8;

}  // namespace

DiscMenu::DiscMenu(frmLoadDisc& form, int row, Act act, QWidget* parent)
    : QMenu(parent), form_(form), row_(row), act_(std::move(act)) {
  setObjectName(QStringLiteral("trayMenu%1").arg(row));
  connect(this, &QMenu::aboutToShow, this, [this] { doFill(); });
}

QAction* DiscMenu::doAdd(QMenu& menu, const QString& text, std::function<void()> wish) {
  return menu.addAction(text, this, [this, wish = std::move(wish)] { act_(wish); });
}

void DiscMenu::doFill() {
  // Clearing takes away the entries of the menus in it, not the menus.
  qDeleteAll(findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly));
  clear();
  doAddBlanks();
  doAddShelf();
  addSeparator();
  QAction* out = doAdd(*this, tr("&Take Out"), [this] { form_.doTakeOut(row_); });
  out->setIcon(Theme::icon(QStringLiteral("media-eject")));
  out->setEnabled(!form_.discInTray(row_).file.empty());
  doAdd(*this, tr("Show in File &Manager"), [this] { form_.doShowShelf(row_); });
}

void DiscMenu::doAddBlanks() {
  const std::uint8_t wanted = form_.blankType();
  if (wanted != DiscNone) {
    QAction* first = doAdd(*this, tr("&New Blank %1").arg(discTypeText(wanted)),
                           [this, wanted] { form_.doInsertBlank(row_, wanted); });
    first->setIcon(Theme::icon(QStringLiteral("media-optical-recordable")));
    first->setObjectName(QStringLiteral("newBlank%1").arg(row_));
  }
  QMenu* blanks = addMenu(wanted == DiscNone ? tr("&New Blank Disc") : tr("Other &Blank Disc"));
  for (const std::uint8_t type : blankDiscTypes())
    if (type != wanted)
      doAdd(*blanks, discTypeText(type), [this, type] { form_.doInsertBlank(row_, type); });
}

void DiscMenu::doAddShelf() {
  QMenu* shelf = addMenu(tr("Disc from the &Shelf"));
  shelf->setObjectName(QStringLiteral("shelf%1").arg(row_));
  const std::vector<ShelfDisc> discs = form_.discsOnShelf();
  for (std::size_t i = 0; i < std::min(discs.size(), MostShelfEntries); ++i) {
    const ImageDisc& disc = discs[i].disc;
    QString text = QStringLiteral("%1  (%2)").arg(toQt(shelfNameOf(disc)), discDescription(disc));
    QAction* entry = doAdd(*shelf, text.replace(QLatin1Char('&'), QStringLiteral("&&")),
                           [this, file = disc.file] { form_.doInsertFromShelf(row_, file); });
    if (discs[i].fit != DiscFit::Asked) continue;
    QFont strong = entry->font();
    strong.setBold(true);
    entry->setFont(strong);
  }
  shelf->addSeparator();
  QAction* other = doAdd(*shelf, tr("&Other Disc..."), [this] { form_.doInsertOther(row_); });
  other->setObjectName(QStringLiteral("otherDisc%1").arg(row_));
}

}  // namespace korvenal::ui
