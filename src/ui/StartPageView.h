#pragma once

#include "ui/Page.h"

namespace korvenal::ui {

/// The start page: what one can do, and the records of what was done.
class StartPageView : public Page {
  Q_OBJECT
 public:
  explicit StartPageView(const Context& context, QWidget* parent = nullptr);

  void refresh() override;
};

}  // namespace korvenal::ui
