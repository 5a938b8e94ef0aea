#include "ui/GridMenu.h"

#include <QMenu>

#include "ui/Theme.h"

namespace korvenal::ui {

GridMenu::GridMenu(const QString& name, const std::vector<GridMenuItem>& items,
                   const Context& context, QWidget* parent)
    : QToolButton(parent), context_(context), items_(items) {
  setObjectName(name);
  setPopupMode(InstantPopup);
  setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  setFocusPolicy(Qt::StrongFocus);
  setAutoRaise(true);
  setIcon(Theme::icon(QStringLiteral("view-more")));
  setText(tr("&More"));
  auto* menu = new QMenu(this);
  int number = 0;
  for (const GridMenuItem& item : items_) {
    QAction* action = menu->addAction(Theme::icon(item.icon), item.text);
    action->setObjectName(QStringLiteral("%1_%2").arg(name).arg(++number));
    action->setShortcut(item.key);
    // The key belongs to the table that has the focus, not to the whole window.
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, [this, number] { doChoose(number); });
    actions_.push_back(action);
  }
  setMenu(menu);
  connect(menu, &QMenu::aboutToShow, this, [this] { refresh(); });
  refresh();
}

void GridMenu::refresh() {
  for (std::size_t item = 0; item < items_.size(); ++item)
    actions_[item]->setEnabled(items_[item].isEnabled());
}

void GridMenu::doChoose(int number) {
  const GridMenuItem& item = items_[static_cast<std::size_t>(number - 1)];
  if (item.isEnabled()) context_.act(item.run);
}

std::vector<GridMenuItem> saveAndPrint(const Context& context, const Table& table,
                                       const std::string& title,
                                       const std::function<bool()>& isEnabled) {
  return {
      {GridMenu::tr("&Save to Text File..."),
       QStringLiteral("document-export"),
       [context, &table] { context.main.doExport(table); },
       isEnabled,
       {}},
      {GridMenu::tr("&Print..."),
       QStringLiteral("document-print"),
       [context, &table, title] { context.main.doPrint(table, title); },
       isEnabled,
       {}},
  };
}

}  // namespace korvenal::ui
