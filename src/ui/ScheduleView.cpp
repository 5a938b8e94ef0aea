#include "ui/ScheduleView.h"

#include <QLabel>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/DialogParts.h"
#include "ui/GridView.h"
#include "ui/Theme.h"

namespace korvenal::ui {

ScheduleView::ScheduleView(const Context& context, QWidget* parent)
    : Page(context, parent),
      schedule_({"Next Run Time", "Backup Job", "Disc Type", "Disc Use", "Note"}) {
  auto* vsSchedule = new GridView(new TableModel(schedule_), QStringLiteral("vsSchedule"), this);
  vsSchedule->hint = tr("No backup is scheduled: this program starts none by itself.");
  auto* caption = new QLabel(tr("&Next Automatic Backup"), this);
  caption->setBuddy(vsSchedule);
  auto* pbSchedule = new QToolButton(this);
  pbSchedule->setObjectName(QStringLiteral("pbSchedule"));
  pbSchedule->setText(tr("&Schedule"));
  pbSchedule->setIcon(Theme::icon(QStringLiteral("appointment-new")));
  pbSchedule->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  pbSchedule->setPopupMode(QToolButton::InstantPopup);
  pbSchedule->setFocusPolicy(Qt::TabFocus);
  auto* menu = new QMenu(pbSchedule);
  menu->setObjectName(QStringLiteral("scheduleMenu"));
  menu->addAction(tr("New"));
  QAction* edit = menu->addAction(tr("Edit"));
  QAction* remove = menu->addAction(tr("Delete"));
  connect(menu, &QMenu::aboutToShow, this, [this, edit, remove] {
    for (QAction* action : {edit, remove}) action->setEnabled(schedule_.hasData());
  });
  pbSchedule->setMenu(menu);
  auto* head = new QHBoxLayout;
  head->addWidget(caption);
  head->addStretch();
  head->addWidget(pbSchedule);
  auto* column = new QVBoxLayout(this);
  column->addLayout(head);
  column->addWidget(vsSchedule, 1);
}

}  // namespace korvenal::ui
