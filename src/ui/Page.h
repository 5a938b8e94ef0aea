#pragma once

#include <QWidget>
#include <functional>

#include "app/frmMain.h"

namespace korvenal::ui {

/// What the pages of the main window work with. All of it outlives them.
struct Context {
  frmMain& main;
  Desktop& desktop;
  FileView& files;
  ImageTrays& trays;
  /// Runs what a person asked for, then shows what became of it everywhere.
  std::function<void(const std::function<void()>& wish)> act;
  std::function<void(const std::string& topic)> showHelp;
  bool hasTray = false;  ///< the desktop has a notification area
  std::function<void(bool on)> setSystemTray;
};

/// A part of the main window that shows subjects of the program.
class Page : public QWidget {
  Q_OBJECT
 public:
  explicit Page(const Context& context, QWidget* parent = nullptr)
      : QWidget(parent), context_(context) {}

  /// Shows what has changed. Called up to 50 times a second while something runs: costs next to
  /// nothing when nothing changed, and never asks the person anything.
  virtual void refresh() = 0;

 protected:
  frmMain& main() const { return context_.main; }
  const Context& context() const { return context_; }
  void act(const std::function<void()>& wish) const { context_.act(wish); }

 private:
  Context context_;
};

}  // namespace korvenal::ui
