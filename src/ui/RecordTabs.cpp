#include "ui/RecordTabs.h"

#include <QStackedLayout>

#include "ui/GridMenu.h"
#include "ui/RecordTable.h"

namespace korvenal::ui {

RecordTabs::RecordTabs(const QString& name, QWidget* parent) : QTabWidget(parent) {
  setObjectName(name);
  setDocumentMode(true);
  auto* corner = new QWidget(this);
  corner_ = new QStackedLayout(corner);
  corner_->setContentsMargins(0, 0, 0, 0);
  setCornerWidget(corner);
  connect(this, &QTabWidget::currentChanged, corner_, &QStackedLayout::setCurrentIndex);
}

int RecordTabs::addTable(QWidget* page, RecordTable& table, GridMenu& menu,
                         const QString& caption) {
  table.setMenu(menu.menu());
  const int index = addTab(page, caption);
  corner_->addWidget(&menu);
  return index;
}

}  // namespace korvenal::ui
