#pragma once

#include <QDialog>

namespace korvenal::ui {

/// The product's name, version and slogan.
class AboutDialog : public QDialog {
  Q_OBJECT
 public:
  explicit AboutDialog(QWidget* parent = nullptr);
};

}  // namespace korvenal::ui
