#pragma once

#include <QString>

#include "platform/Table.h"

class QWidget;

namespace korvenal::ui {

/// Prints the rows and columns that are not hidden: a preview first, from which the person chooses
/// a printer or a PDF file.
void printTable(const Table& table, const QString& title, QWidget* parent);

}  // namespace korvenal::ui
