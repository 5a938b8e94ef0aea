#pragma once

#include <QString>

#include "platform/Table.h"

class QPagedPaintDevice;
class QWidget;

namespace korvenal::ui {

/// Prints the rows and columns that are not hidden: a preview first, from which the person chooses
/// a printer or a PDF file.
void printTable(const Table& table, const QString& title, QWidget* parent);

/// Puts the pages on a printer, each with the title, the header row and its number. The event loop
/// goes on meanwhile, and a long print can be stopped: false then.
bool paintTable(const Table& table, const QString& title, QPagedPaintDevice& printer,
                QWidget* parent);

}  // namespace korvenal::ui
