#include "ui/QuestionDialog.h"

#include "ui/DialogParts.h"

namespace korvenal::ui {

namespace {

constexpr int QuestionCharacters = 62;
constexpr int LongestWord = 40;

/// Lets a long name go on in the next line, which a text does only where words end.
QString breakable(const QString& text) {
  constexpr char16_t ZeroWidthSpace = 0x200B;
  QString all;
  int inWord = 0;
  for (const QChar c : text) {
    inWord = c.isSpace() ? 0 : inWord + 1;
    if (inWord > LongestWord && !c.isLowSurrogate()) {
      all += QChar(ZeroWidthSpace);
      inWord = 1;
    }
    all += c;
  }
  return all;
}

}  // namespace

void QuestionDialog::doBuild(const QString& question, QLayout* files,
                             const std::vector<Choice>& choices, std::size_t preselected) {
  auto* whole = new QWidget(this);
  auto* content = new QVBoxLayout(whole);
  content->setContentsMargins(0, 0, 0, 0);
  content->addWidget(wrappedLabel(breakable(question), QuestionCharacters, this));
  content->addSpacing(fontMetrics().height() / 2);
  content->addLayout(files);
  content->addSpacing(fontMetrics().height() / 2);
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (const Choice& choice : choices) {
    QPushButton* button = namedButton(choice.name, choice.text, this);
    button->setToolTip(choice.toolTip);
    row->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, press = choice.press] { act(press); });
    if (&choice != &choices[preselected]) continue;
    button->setDefault(true);
    button->setFocus();
  }
  auto* column = new QVBoxLayout(this);
  column->addLayout(withIcon(*this, QStringLiteral("dialog-question"), whole));
  column->addStretch();
  column->addLayout(row);
}

}  // namespace korvenal::ui
