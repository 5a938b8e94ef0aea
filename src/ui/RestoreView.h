#pragma once

#include "ui/Page.h"

namespace korvenal::ui {

/// The first step of a restore: the tree of the index and what is picked of it.
class RestoreView : public Page {
  Q_OBJECT
 public:
  explicit RestoreView(const Context& context, QWidget* parent = nullptr);

  void refresh() override;
};

}  // namespace korvenal::ui
