#include "ui/AboutDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

#include "core/Workspace.h"
#include "ui/DialogParts.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

AboutDialog::AboutDialog(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmAbout"));
  setWindowTitle(tr("About"));
  const int unit = fontMetrics().height();

  auto* picture = new QLabel(this);
  picture->setPixmap(Theme::ownIcon(QStringLiteral("korvenal"))
                         .pixmap(QSize(5 * unit, 5 * unit), devicePixelRatioF()));

  // "Korvenal to DVD 2.0": the version is its last word.
  const QString product = toQt(gProductName);
  const qsizetype cut = product.lastIndexOf(QLatin1Char(' '));
  auto* name = new QLabel(product.left(cut), this);
  name->setObjectName(QStringLiteral("ProductName"));
  QFont large = name->font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  name->setFont(large);
  auto* version = new QLabel(tr("Version %1").arg(product.mid(cut + 1)), this);
  version->setObjectName(QStringLiteral("Version"));
  auto* slogan = explanationLabel(tr("Kept safe, disc by disc."), this);
  slogan->setObjectName(QStringLiteral("Slogan"));
  slogan->setWordWrap(false);

  auto* texts = new QVBoxLayout;
  texts->addWidget(name);
  texts->addWidget(version);
  texts->addSpacing(unit / 2);
  texts->addWidget(slogan);
  texts->addStretch();
  auto* row = new QHBoxLayout;
  row->setSpacing(unit);
  row->addWidget(picture, 0, Qt::AlignTop);
  row->addLayout(texts, 1);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(unit, unit, unit, unit);
  column->setSpacing(unit);
  column->addLayout(row);
  column->addWidget(buttons);
  column->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace korvenal::ui
