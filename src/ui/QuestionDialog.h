#pragma once

#include <functional>
#include <vector>

#include "ui/FormDialog.h"

class QLayout;

namespace korvenal::ui {

/// A question about files, answered by one of a row of buttons.
class QuestionDialog : public FormDialog {
  Q_OBJECT
 public:
  using FormDialog::FormDialog;

 protected:
  struct Choice {
    const char* name;  ///< of the button
    QString text;
    QString toolTip;
    std::function<void()> press;
  };
  /// Puts the dialog together. `preselected` is the place in `choices` of the answer that Enter
  /// gives.
  void doBuild(const QString& question, QLayout* files, const std::vector<Choice>& choices,
               std::size_t preselected);

  void refresh() override {}
};

}  // namespace korvenal::ui
