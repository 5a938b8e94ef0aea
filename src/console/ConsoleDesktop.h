#pragma once

#include <atomic>
#include <deque>
#include <functional>
#include <string>

#include "console/Answers.h"
#include "console/Screen.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"

namespace korvenal::console {

/// Shows forms in the terminal.
class FormShower {
 public:
  virtual ~FormShower() = default;
  /// Runs the form until it is closed.
  virtual void show(Form& form) = 0;
};

/// The front end that is a terminal: questions are asked line by line, and yields print what runs
/// have to tell.
class ConsoleDesktop : public Desktop {
 public:
  /// `interrupted` is set by the interrupt key, possibly from a signal handler.
  ConsoleDesktop(Screen& screen, Answers& answers, const Clock& clock,
                 std::atomic<bool>& interrupted)
      : screen_(screen), answers_(answers), clock_(clock), interrupted_(interrupted) {}

  // Set by the wiring before the first yield; none may be empty then.
  FormShower* forms = nullptr;        ///< not owned
  std::function<void()> onNewEvents;  ///< at every yield; prints event lines that are new
  std::function<void()> onProgress;   ///< some 50 times a second at most
  /// The person asks to stop; false: not possible right now, to be asked again at the next yield.
  std::function<bool()> onInterrupt;

  /// The answer to the next file or folder dialog: a command that names its file opens no dialog.
  void prepareFile(const std::string& path) { preparedFiles_.assign(1, path); }
  void doForgetPrepared() { preparedFiles_.clear(); }

  /// Passes a press of the interrupt key on.
  void doPollInterrupt();

  void doYield() override;
  void doRest() override;
  Answer doShowMessage(const MessageBox& message) override;
  void doShowModal(Form& form) override;
  std::string doAskOpenFile(const FileDialog& dialog) override;
  std::string doAskSaveFile(const FileDialog& dialog) override;
  std::string doAskFolder(const std::string& title, const std::string& folder) override;
  void doSetWaitPointer(bool) override {}
  void doPrintTable(const Table& table, const std::string& documentName) override;
  void doPlaySound(const std::string& file) override;
  bool doOpenOutside(const std::string& path) override;
  std::string doGetTypeName(const std::string& name, bool isFolder) override;

 private:
  std::string askPath(const std::string& title);

  Screen& screen_;
  Answers& answers_;
  const Clock& clock_;
  std::atomic<bool>& interrupted_;
  std::deque<std::string> preparedFiles_;
  std::int64_t nextProgress_ = 0;
};

/// A path as a person types it, made absolute: "." and ".." are taken away, links stay.
std::string absolutePath(const std::string& path);

}  // namespace korvenal::console
