#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ui/Page.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QTabWidget;
class QVBoxLayout;

namespace korvenal::ui {

/// The options of the job: its disc, its filters, its split rule.
class JobOptionsView : public Page {
  Q_OBJECT
 public:
  explicit JobOptionsView(const Context& context, QWidget* parent = nullptr);

  void refresh() override;

 private:
  /// Draws one control as the job has it.
  using Drawing = std::function<void()>;

  QWidget* discTab();
  QWidget* filterTab();
  QWidget* splitTab();
  QCheckBox* addFlag(const char* name, const QString& text, std::function<bool(const Job&)> value,
                     std::function<void(JobControls&, bool)> change);
  QButtonGroup* addChoice(const char* name, const QStringList& texts, int Job::*field,
                          bool (JobControls::*change)(int));
  QComboBox* addText(const char* name, std::string Job::*field,
                     void (JobControls::*change)(std::string_view));
  QComboBox* addSizes(const char* name, std::span<const int> megabytes, std::string Job::*field,
                      bool (JobControls::*change)(std::string_view));
  QWidget* dateFilter();

  std::vector<Drawing> drawings_;
  QTabWidget* tabs_;
};

}  // namespace korvenal::ui
