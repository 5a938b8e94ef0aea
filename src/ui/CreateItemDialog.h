#pragma once

#include "job/frmCreateItem.h"
#include "ui/FormDialog.h"

class QButtonGroup;
class QLabel;
class QLineEdit;
class QPushButton;

namespace korvenal::ui {

/// Makes an item by hand, for a path that need not exist now.
class CreateItemDialog : public FormDialog {
  Q_OBJECT
 public:
  CreateItemDialog(frmCreateItem& form, QWidget* parent);

 protected:
  void refresh() override;

 private:
  using Setter = void (frmCreateItem::*)(std::string_view);
  QLineEdit* addField(const char* name, Setter setter);
  static void draw(QLineEdit& field, const std::string& text);

  frmCreateItem& form_;
  QButtonGroup* TypeOpt_;
  QLabel* nameLabel_;
  QLabel* sourceLabel_;
  QLineEdit* txName_;
  QLineEdit* txSource_;
  QPushButton* pbOK_;
};

}  // namespace korvenal::ui
