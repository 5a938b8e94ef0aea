#include "ui/TablePrinter.h"

#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTextDocument>

#include "ui/Texts.h"

namespace korvenal::ui {

namespace {

void addRow(QString& html, const Table& table, int row, const QString& cell) {
  html += QStringLiteral("<tr>");
  for (int col = 0; col < table.Cols(); ++col) {
    if (table.isColHidden(col)) continue;
    html += QStringLiteral("<%1 align=\"left\">%2</%1>")
                .arg(cell, toQt(table.text(row, col)).toHtmlEscaped());
  }
  html += QStringLiteral("</tr>");
}

QString htmlOf(const Table& table, const QString& title) {
  QString html =
      QStringLiteral("<h3>%1</h3><table width=\"100%\" cellspacing=\"0\" cellpadding=\"3\">")
          .arg(title.toHtmlEscaped());
  html += QStringLiteral("<thead>");
  addRow(html, table, 0, QStringLiteral("th"));
  html += QStringLiteral("</thead>");
  for (int row = 1; row < table.Rows(); ++row)
    if (!table.isRowHidden(row)) addRow(html, table, row, QStringLiteral("td"));
  return html + QStringLiteral("</table>");
}

}  // namespace

void printTable(const Table& table, const QString& title, QWidget* parent) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(title);
  QPrintPreviewDialog preview(&printer, parent);
  preview.setObjectName(QStringLiteral("printPreview"));
  QTextDocument document;
  document.setHtml(htmlOf(table, title));
  QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &document,
                   [&document](QPrinter* target) { document.print(target); });
  preview.exec();
}

}  // namespace korvenal::ui
