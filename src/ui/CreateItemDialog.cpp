#include "ui/CreateItemDialog.h"

#include <QButtonGroup>
#include <QLineEdit>
#include <QRadioButton>

#include "ui/DialogParts.h"
#include "ui/Texts.h"

namespace korvenal::ui {

CreateItemDialog::CreateItemDialog(frmCreateItem& form, QWidget* parent)
    : FormDialog(form, parent),
      form_(form),
      TypeOpt_(new QButtonGroup(this)),
      nameLabel_(new QLabel(this)),
      sourceLabel_(new QLabel(this)) {
  setObjectName(QStringLiteral("frmCreateItem"));
  setWindowTitle(tr("Create Item"));
  auto* types = new QHBoxLayout;
  const QString captions[] = {tr("&File"), tr("Fol&der")};
  for (int type = 0; type < 2; ++type) {
    auto* option = new QRadioButton(captions[type], this);
    option->setObjectName(QStringLiteral("TypeOpt%1").arg(type));
    TypeOpt_->addButton(option, type);
    types->addWidget(option);
  }
  types->addStretch();
  txName_ = addField("txName", &frmCreateItem::setName);
  txSource_ = addField("txSource", &frmCreateItem::setSource);
  pbOK_ = namedButton("pbOK", tr("&OK"), this);
  pbOK_->setDefault(true);
  auto* cancel = namedButton("pbCancel", tr("&Cancel"), this);
  auto* column = new QVBoxLayout(this);
  column->addLayout(types);
  column->addWidget(nameLabel_);
  column->addWidget(txName_);
  column->addWidget(sourceLabel_);
  column->addWidget(txSource_);
  column->addWidget(explanationLabel(
      tr("The path need not be there now: the item is backed up when it is there at the time of "
         "the backup."),
      this));
  column->addStretch();
  column->addLayout(buttonRow({}, {cancel, pbOK_}));
  connect(TypeOpt_, &QButtonGroup::idClicked, this,
          [this](int type) { act([this, type] { form_.TypeOpt = type; }); });
  connect(cancel, &QPushButton::clicked, this, [this] { act([this] { form_.pbCancel(); }); });
  connect(pbOK_, &QPushButton::clicked, this, [this] {
    act([this] { form_.pbOK(); });
    if (form_.isClosed()) return;
    (form_.focus == frmCreateItem::Field::Name ? txName_ : txSource_)->setFocus();
  });
  txName_->setFocus();
}

QLineEdit* CreateItemDialog::addField(const char* name, Setter setter) {
  auto* field = new QLineEdit(this);
  field->setObjectName(QLatin1String(name));
  field->setMinimumWidth(fontMetrics().averageCharWidth() * 64);
  connect(field, &QLineEdit::textEdited, this, [this, setter](const QString& text) {
    act([this, setter, &text] { (form_.*setter)(fromQt(text)); });
  });
  return field;
}

void CreateItemDialog::draw(QLineEdit& field, const std::string& text) {
  // A refused character goes; the place of the typing stays.
  if (fromQt(field.text()) == text) return;
  const int place = field.cursorPosition();
  const auto length = field.text().size();
  field.setText(toQt(text));
  field.setCursorPosition(place - static_cast<int>(length - field.text().size()));
}

void CreateItemDialog::refresh() {
  TypeOpt_->button(form_.TypeOpt)->setChecked(true);
  nameLabel_->setText(toQt(form_.nameLabel()));
  sourceLabel_->setText(toQt(form_.sourceLabel()));
  draw(*txName_, form_.txName());
  draw(*txSource_, form_.txSource());
  pbOK_->setEnabled(form_.isOkEnabled());
}

}  // namespace korvenal::ui
