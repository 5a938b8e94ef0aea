#pragma once

#include <QVariantAnimation>
#include <QWidget>
#include <vector>

#include "ui/Theme.h"

class QPainter;
class QVBoxLayout;

namespace korvenal::ui {

/// A disc as it is shown everywhere: its number, how full or how far it is, and a word about it.
struct DiscFill {
  QString label;       ///< "disc 2"
  double percent = 0;  ///< negative: at work, nobody can tell how far
  RunDiscState state = RunDiscState::Planned;
  QString text;  ///< "38 %  1.7 of 4.4 GB, 21 MB/s, about 2 minutes"

  bool operator==(const DiscFill&) const = default;
};

/// Draws the bar alone into the rectangle.
void paintDiscFill(QPainter& painter, const QRectF& rect, const QPalette& palette, double percent,
                   RunDiscState state);

/// One disc: label, bar, text in a row.
class DiscBar : public QWidget {
  Q_OBJECT
 public:
  /// As long as runs take to tell how far they are, so that a bar never stands and jumps.
  static constexpr int WayMilliseconds = 500;

  explicit DiscBar(QWidget* parent = nullptr);

  void setFill(const DiscFill& fill);
  const DiscFill& fill() const { return fill_; }
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void doMoveTo(double percent);

  DiscFill fill_;
  double painted_ = 0;  ///< percent, on its way to that of the fill
  QVariantAnimation way_;
};

/// The discs of a run under one another; the one that is worked on stays in view.
class DiscStrip : public QWidget {
  Q_OBJECT
 public:
  explicit DiscStrip(QWidget* parent = nullptr);

  void setDiscs(const std::vector<DiscFill>& discs);

 private:
  std::vector<DiscBar*> bars_;
  class QScrollArea* scroll_;
  QWidget* inner_;
  QVBoxLayout* column_;
  int shown_ = -1;  ///< the disc brought into view last
};

}  // namespace korvenal::ui
