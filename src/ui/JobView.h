#pragma once

#include "ui/Page.h"

namespace korvenal::ui {

/// The first step of a backup: the job's items and options.
class JobView : public Page {
  Q_OBJECT
 public:
  explicit JobView(const Context& context, QWidget* parent = nullptr);

  void refresh() override;
};

}  // namespace korvenal::ui
