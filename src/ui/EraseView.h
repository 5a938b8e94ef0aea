#pragma once

#include "ui/Page.h"

namespace korvenal::ui {

/// The erase page: the choice of the mode above the run.
class EraseView : public Page {
  Q_OBJECT
 public:
  explicit EraseView(const Context& context, QWidget* parent = nullptr);

  void refresh() override;
};

}  // namespace korvenal::ui
