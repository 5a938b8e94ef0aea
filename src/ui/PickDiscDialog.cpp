#include "ui/PickDiscDialog.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScreen>
#include <algorithm>

#include "platform/Text.h"
#include "ui/DialogParts.h"
#include "ui/RecordTable.h"
#include "ui/Texts.h"

namespace korvenal::ui {

namespace {

constexpr int WidthInCharacters = 130;
constexpr int HeightInLines = 26;

bool movesInList(const QKeyEvent& key) {
  switch (key.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      return key.modifiers() == Qt::NoModifier || key.modifiers() == Qt::KeypadModifier;
    default:
      return false;
  }
}

}  // namespace

PickDiscDialog::PickDiscDialog(frmPickDisc& form, QWidget* parent)
    : FormDialog(form, parent),
      form_(form),
      txName_(new QLineEdit(this)),
      count_(explanationLabel({}, this)) {
  setObjectName(QStringLiteral("frmPickDisc"));
  setWindowTitle(tr("Put in Disc"));
  txName_->setObjectName(QStringLiteral("txName"));
  txName_->setPlaceholderText(tr("Words of its name, label, type or date"));
  txName_->setClearButtonEnabled(true);
  txName_->installEventFilter(this);
  auto* caption = new QLabel(tr("&Find disc:"), this);
  caption->setBuddy(txName_);
  auto* search = new QHBoxLayout;
  search->addWidget(caption);
  search->addWidget(txName_, 1);
  doBuildList();
  auto* imageFile = namedButton("pbImageFile", tr("&Image File..."), this);
  imageFile->setToolTip(tr("Puts in an image that lies elsewhere"));
  auto* cancel = namedButton("pbCancel", tr("&Cancel"), this);
  pbOK_ = namedButton("pbOK", tr("&Put In"), this);
  pbOK_->setDefault(true);

  auto* column = new QVBoxLayout(this);
  auto* asked = wrappedLabel(tr("Asked for: %1").arg(toQt(form_.wanted)), 40, this);
  asked->setObjectName(QStringLiteral("wanted"));
  column->addWidget(asked);
  column->addLayout(search);
  column->addWidget(vsDisc_, 1);
  column->addWidget(count_);
  column->addLayout(buttonRow({imageFile}, {cancel, pbOK_}));
  const QSize wanted(fontMetrics().averageCharWidth() * WidthInCharacters,
                     fontMetrics().height() * HeightInLines);
  resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
  txName_->setFocus();

  connect(txName_, &QLineEdit::textChanged, this,
          [this](const QString& text) { act([this, text] { form_.doFilter(fromQt(text)); }); });
  connect(imageFile, &QPushButton::clicked, this, [this] { act([this] { form_.pbImageFile(); }); });
  connect(cancel, &QPushButton::clicked, this, [this] { act([this] { form_.pbCancel(); }); });
  connect(pbOK_, &QPushButton::clicked, this, [this] { act([this] { form_.pbOK(); }); });
}

void PickDiscDialog::doBuildList() {
  vsDisc_ = new RecordTable(form_.vsDisc, new RecordModel(form_.vsDisc),
                            {.widths = {40, 14, 11, 22},
                             .emptyText = form_.discCount() == 0 ? tr("No disc lies ready.")
                                                                 : tr("No disc is like that."),
                             .follows = RecordTable::Follows::Current},
                            this);
  vsDisc_->setObjectName(QStringLiteral("vsDisc"));
  vsDisc_->setAccessibleName(tr("Discs"));
  vsDisc_->horizontalHeader()->setStretchLastSection(false);
  vsDisc_->horizontalHeader()->setSectionResizeMode(PickDiscName, QHeaderView::Stretch);
  // The one that fits best stands first.
  vsDisc_->selectRow(0);
  connect(vsDisc_, &RecordTable::rowOpened, this, [this](int row) {
    act([this, row] {
      form_.doChooseRow(row);
      form_.pbOK();
    });
  });
}

bool PickDiscDialog::eventFilter(QObject* watched, QEvent* event) {
  if (watched == txName_ && event->type() == QEvent::KeyPress &&
      movesInList(static_cast<QKeyEvent&>(*event)))
    return QCoreApplication::sendEvent(vsDisc_, event);
  return FormDialog::eventFilter(watched, event);
}

void PickDiscDialog::refresh() {
  vsDisc_->refresh();
  const int shown = form_.vsDisc.Rows() - 1;
  const QString all = toQt(Text::counted(form_.discCount(), "disc"));
  count_->setText(shown == form_.discCount() ? all : tr("%1 of %2").arg(shown).arg(all));
  pbOK_->setEnabled(form_.pbOKEnabled());
}

}  // namespace korvenal::ui
