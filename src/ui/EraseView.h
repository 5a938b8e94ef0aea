#pragma once

#include <array>

#include "ui/Page.h"

class QGroupBox;
class QRadioButton;

namespace korvenal::ui {

class RunView;

/// The erase page: the choice of the mode above the run.
class EraseView : public Page {
  Q_OBJECT
 public:
  explicit EraseView(const Context& context, QWidget* parent = nullptr);

  void refresh() override;

 private:
  QGroupBox* EraseMode_;
  std::array<QRadioButton*, 2> optEraseMode_{};  ///< quick, full
  RunView* run_;
};

}  // namespace korvenal::ui
