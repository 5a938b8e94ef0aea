#include "ui/TablePrinter.h"

#include <QElapsedTimer>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <algorithm>
#include <numeric>
#include <vector>

#include "ui/Texts.h"

namespace korvenal::ui {

namespace {

/// Between two turns of the event loop no more time than this passes.
constexpr qint64 PieceMilliseconds = 30;
/// Columns are as wide as so many rows ask for, taken from the whole table.
constexpr int SampledRows = 400;
/// A column asks for no more than so many of its average characters; longer texts are wrapped.
constexpr int MostCharacters = 60;
constexpr int CellFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWrapAnywhere;

/// Puts a table on pages, each with title, header row and number.
class TablePages {
 public:
  TablePages(const Table& table, const QString& title, QPagedPaintDevice& printer)
      : table_(table),
        title_(title),
        printer_(printer),
        painter_(&printer),
        font_(painter_.font()) {
    font_.setPointSize(8);
    painter_.setFont(font_);
    page_ = QRect(QPoint(), printer.pageLayout().paintRectPixels(printer.logicalDpiX()).size());
    line_ = painter_.fontMetrics().height();
    for (int col = 0; col < table.Cols(); ++col)
      if (!table.isColHidden(col)) cols_.push_back(col);
    doMeasure();
  }

  /// Progress gets the row at hand; true from it stops the print.
  void doPrint(const std::function<bool(int row)>& isStopped) {
    doBeginPage();
    for (int row = 1; row < table_.Rows(); ++row) {
      if (isStopped(row)) return;
      if (table_.isRowHidden(row)) continue;
      const int height = rowHeight(row);
      if (y_ + height > page_.bottom() - 2 * line_) {
        printer_.newPage();
        doBeginPage();
      }
      doDrawRow(row, height);
    }
  }

 private:
  int gap() const { return line_ / 2; }

  void doMeasure() {
    const QFontMetrics metrics = painter_.fontMetrics();
    const int most = metrics.averageCharWidth() * MostCharacters;
    widths_.assign(cols_.size(), 0);
    const int step = std::max(1, table_.Rows() / SampledRows);
    for (int row = 0; row < table_.Rows(); row += row == 0 ? 1 : step)
      for (std::size_t at = 0; at < cols_.size(); ++at) {
        const int asked = metrics.horizontalAdvance(toQt(table_.text(row, cols_[at]))) + gap();
        widths_[at] = std::clamp(asked, widths_[at], std::max(most, widths_[at]));
      }
    doFit();
  }

  /// Too much for the page: the wide columns give way, narrow ones stay readable.
  void doFit() {
    const int narrow = cols_.empty() ? 0 : page_.width() / static_cast<int>(cols_.size());
    const int all = std::accumulate(widths_.begin(), widths_.end(), 0);
    if (all <= page_.width()) return;
    int wide = 0;
    for (const int width : widths_)
      if (width > narrow) wide += width;
    const double shrink = static_cast<double>(page_.width() - (all - wide)) / std::max(wide, 1);
    for (int& width : widths_)
      if (width > narrow) width = static_cast<int>(width * shrink);
  }

  QRect cell(std::size_t at, int x, int height) const {
    return {x, y_, std::max(widths_[at] - gap(), 1), height};
  }

  int rowHeight(int row) const {
    int height = line_;
    for (std::size_t at = 0; at < cols_.size(); ++at) {
      const QString text = toQt(table_.text(row, cols_[at]));
      const QFontMetrics metrics = painter_.fontMetrics();
      if (metrics.horizontalAdvance(text) <= widths_[at] - gap()) continue;
      height = std::max(
          height, metrics.boundingRect(cell(at, 0, page_.height()), CellFlags, text).height());
    }
    return std::min(height, page_.height() / 2);
  }

  void doDrawRow(int row, int height) {
    int x = 0;
    for (std::size_t at = 0; at < cols_.size(); ++at) {
      painter_.drawText(cell(at, x, height), CellFlags, toQt(table_.text(row, cols_[at])));
      x += widths_[at];
    }
    y_ += height + line_ / 4;
  }

  void doBeginPage() {
    ++number_;
    y_ = 0;
    QFont bold = font_;
    bold.setBold(true);
    painter_.setFont(bold);
    painter_.drawText(QRect(0, 0, page_.width(), line_), Qt::AlignLeft, title_);
    painter_.drawText(QRect(0, page_.height() - line_, page_.width(), line_), Qt::AlignRight,
                      QString::number(number_));
    y_ = 2 * line_;
    doDrawRow(0, line_);
    painter_.setFont(font_);
    painter_.drawLine(0, y_, page_.width(), y_);
    y_ += line_ / 4;
  }

  const Table& table_;
  QString title_;
  QPagedPaintDevice& printer_;
  QPainter painter_;
  QFont font_;
  QRect page_;  ///< what can be printed on, from (0, 0)
  std::vector<int> cols_;
  std::vector<int> widths_;  ///< with the gap behind
  int line_ = 0;
  int y_ = 0;
  int number_ = 0;
};

}  // namespace

bool paintTable(const Table& table, const QString& title, QPagedPaintDevice& printer,
                QWidget* parent) {
  QProgressDialog progress(QProgressDialog::tr("Preparing pages..."), QProgressDialog::tr("Stop"),
                           0, table.Rows(), parent);
  progress.setObjectName(QStringLiteral("printProgress"));
  progress.setWindowModality(Qt::ApplicationModal);
  QElapsedTimer sincePiece;
  sincePiece.start();
  TablePages(table, title, printer).doPrint([&progress, &sincePiece](int row) {
    if (sincePiece.elapsed() < PieceMilliseconds) return false;
    progress.setValue(row);
    QCoreApplication::processEvents();
    sincePiece.start();
    return progress.wasCanceled();
  });
  return !progress.wasCanceled();
}

void printTable(const Table& table, const QString& title, QWidget* parent) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(title);
  printer.setPageOrientation(QPageLayout::Landscape);
  QPrintPreviewDialog preview(&printer, parent);
  preview.setObjectName(QStringLiteral("printPreview"));
  QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                   [&table, &title, &preview](QPrinter* target) {
                     paintTable(table, title, *target, &preview);
                   });
  preview.exec();
}

}  // namespace korvenal::ui
