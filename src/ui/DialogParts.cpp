#include "ui/DialogParts.h"

#include <QApplication>
#include <QPainter>
#include <QResizeEvent>
#include <algorithm>

#include "ui/FileIcons.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

constexpr int LargeIconPixels = 40;
constexpr int MostNameCharacters = 30;

class IconLabel : public QWidget {
 public:
  IconLabel(const QIcon& icon, int pixels, QWidget* parent) : QWidget(parent), icon_(icon) {
    setFixedSize(pixels, pixels);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    icon_.paint(&painter, rect());
  }

 private:
  QIcon icon_;
};

/// Takes all the height that its text needs at the width it has: layouts in layouts forget that.
class WrappedLabel : public QLabel {
 public:
  using QLabel::QLabel;

  QSize minimumSizeHint() const override {
    return {minimumWidth(), heightForWidth(std::max(width(), minimumWidth()))};
  }
  QSize sizeHint() const override { return minimumSizeHint(); }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QLabel::resizeEvent(event);
    if (event->size().width() != event->oldSize().width()) updateGeometry();
  }
};

}  // namespace

ExplanationLabel::ExplanationLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
  doTakeColor();
  setTextFormat(Qt::PlainText);
  QFont small = font();
  small.setPointSizeF(small.pointSizeF() * 0.9);
  setFont(small);
}

void ExplanationLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) doTakeColor();
}

void ExplanationLabel::doTakeColor() {
  const QWidget* ground = parentWidget();
  const QColor grey =
      Theme::explanation(ground != nullptr ? ground->palette() : QApplication::palette());
  QPalette colors = palette();
  if (colors.color(QPalette::Active, QPalette::WindowText) == grey) return;
  colors.setColor(QPalette::Active, QPalette::WindowText, grey);
  colors.setColor(QPalette::Inactive, QPalette::WindowText, grey);
  setPalette(colors);
}

QWidget* iconLabel(const QIcon& icon, int pixels, QWidget* parent) {
  return new IconLabel(icon, pixels, parent);
}

QLabel* wrappedLabel(const QString& text, int characters, QWidget* parent) {
  auto* label = new WrappedLabel(text, parent);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setMinimumWidth(label->fontMetrics().averageCharWidth() * characters);
  return label;
}

QLabel* explanationLabel(const QString& text, QWidget* parent) {
  auto* label = new ExplanationLabel(text, parent);
  label->setWordWrap(true);
  return label;
}

QPushButton* namedButton(const char* objectName, const QString& text, QWidget* parent) {
  auto* button = new QPushButton(text, parent);
  button->setObjectName(QLatin1String(objectName));
  button->setAutoDefault(false);
  return button;
}

QHBoxLayout* buttonRow(std::initializer_list<QWidget*> left,
                       std::initializer_list<QWidget*> right) {
  auto* row = new QHBoxLayout;
  for (QWidget* button : left) row->addWidget(button);
  row->addStretch();
  for (QWidget* button : right) row->addWidget(button);
  return row;
}

QHBoxLayout* withIcon(QWidget& parent, const QString& icon, QWidget* content) {
  QWidget* picture = iconLabel(Theme::icon(icon), LargeIconPixels, &parent);
  auto* row = new QHBoxLayout;
  row->addWidget(picture, 0, Qt::AlignTop);
  row->addWidget(content, 1);
  return row;
}

QHBoxLayout* fileFacts(QWidget& parent, const QString& name, const QStringList& facts) {
  auto* column = new QVBoxLayout;
  // A long name keeps its beginning and its end; all of it stands in the tool tip.
  const QFontMetrics metrics = parent.fontMetrics();
  auto* title = new QLabel(
      metrics.elidedText(name, Qt::ElideMiddle, metrics.averageCharWidth() * MostNameCharacters),
      &parent);
  title->setTextFormat(Qt::PlainText);
  title->setToolTip(toolTipText(name));
  column->addWidget(title);
  for (const QString& fact : facts) {
    auto* label = new QLabel(fact, &parent);
    label->setTextFormat(Qt::PlainText);
    column->addWidget(label);
  }
  column->addStretch();
  QWidget* picture = iconLabel(FileIcons().ofType(name), LargeIconPixels, &parent);
  auto* row = new QHBoxLayout;
  row->addWidget(picture, 0, Qt::AlignTop);
  row->addLayout(column, 1);
  return row;
}

}  // namespace korvenal::ui
