#include "ui/ScheduleView.h"

#include <QLabel>
#include <QVBoxLayout>

#include "ui/GridMenu.h"
#include "ui/RecordTable.h"
#include "ui/Theme.h"

namespace korvenal::ui {

ScheduleView::ScheduleView(const Context& context, QWidget* parent)
    : Page(context, parent),
      vsSchedule_({"Next Run Time", "Backup Job", "Disc Type", "Disc Use", "Note"}) {
  auto* title = new QLabel(tr("Backup Scheduler"), this);
  QFont large = title->font();
  large.setPointSizeF(large.pointSizeF() * 1.4);
  title->setFont(large);

  auto* table = new RecordTable(
      vsSchedule_, new RecordModel(vsSchedule_),
      {.widths = {22, 26, 16, 12},
       .emptyText = tr("No backup is scheduled. Backups run when you press Backup on the backup "
                       "page."),
       .follows = RecordTable::Follows::Current},
      this);
  table->setObjectName(QStringLiteral("vsSchedule"));
  auto* caption = new QLabel(tr("&Next Automatic Backup"), this);
  caption->setBuddy(table);

  const auto nothing = [] {};
  const auto always = [] { return true; };
  const auto hasRows = [this] { return vsSchedule_.hasData(); };
  auto* menu =
      new GridMenu(QStringLiteral("pbSchedule"),
                   {{tr("&New..."), QStringLiteral("appointment-new"), nothing, always, {}},
                    {tr("&Edit..."), QStringLiteral("document-edit"), nothing, hasRows, {}},
                    {tr("&Delete"), QStringLiteral("edit-delete"), nothing, hasRows, {}}},
                   context, this);
  table->setMenu(menu->menu());

  auto* line = new QHBoxLayout;
  line->addWidget(caption);
  line->addStretch();
  line->addWidget(menu);
  auto* column = new QVBoxLayout(this);
  column->addWidget(title);
  column->addLayout(line);
  column->addWidget(table, 1);
}

}  // namespace korvenal::ui
