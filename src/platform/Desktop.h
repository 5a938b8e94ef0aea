#pragma once

#include <functional>
#include <string>

#include "platform/Form.h"
#include "platform/Table.h"

namespace korvenal {

enum class MessageIcon { None, Information, Question, Warning, Stop };
enum class MessageButtons { Ok, OkCancel, YesNo, YesNoCancel, SkipRetryStop };
enum class Answer { Ok, Cancel, Yes, No, Skip, Retry, Stop };

struct MessageBox {
  std::string text;
  std::string title;
  MessageIcon icon = MessageIcon::None;
  MessageButtons buttons = MessageButtons::Ok;
  bool noPreselected = false;    ///< YesNo: the answer at hand is No
  bool yesInPersonOnly = false;  ///< YesNo: who agreed to everything beforehand has said No
};

struct FileDialog {
  std::string title;
  std::string filterName;  ///< "Backup Job File(*.jbf)"
  std::string pattern;     ///< "*.jbf"
  std::string folder;      ///< opens there
  std::string fileName;    ///< proposed name, for saving
};

/// What the program asks of the front end that shows it. Everything happens on the one thread of
/// the program.
class Desktop {
 public:
  virtual ~Desktop() = default;

  /// Lets the front end work: paint, take key presses, call handlers of the program. Costs next to
  /// nothing when little time has passed since the last, so loops may yield at every row.
  virtual void doYield() = 0;
  /// A yield inside a wait for background work: rests some milliseconds as well.
  virtual void doRest() = 0;
  /// Does long work that touches nothing which the program may touch meanwhile; a front end that
  /// has other things to do does it on another thread and works until it has ended.
  virtual void doAside(const std::function<void()>& work) { work(); }

  virtual Answer doShowMessage(const MessageBox& message) = 0;
  /// Shows the form and returns when it is closed.
  virtual void doShowModal(Form& form) = 0;
  /// Asks for an existing file. Empty when the person gave up.
  virtual std::string doAskOpenFile(const FileDialog& dialog) = 0;
  /// Asks for a file to write, overwriting confirmed. Empty when the person gave up.
  virtual std::string doAskSaveFile(const FileDialog& dialog) = 0;
  /// Asks for a folder. Empty when the person gave up.
  virtual std::string doAskFolder(const std::string& title, const std::string& folder) = 0;

  virtual void doSetWaitPointer(bool waiting) = 0;
  /// Prints the rows and columns that are not hidden, after a dialog about the printer.
  virtual void doPrintTable(const Table& table, const std::string& documentName) = 0;
  virtual void doPlaySound(const std::string& file) = 0;
  /// Opens a folder or a page with the program that the desktop has for it. False when it has none.
  virtual bool doOpenOutside(const std::string& path) = 0;
  /// The type text of a file by its name ("JPEG image"); empty when unknown.
  virtual std::string doGetTypeName(const std::string& name, bool isFolder) = 0;
};

/// The wait pointer for the time of a scope.
class WaitPointer {
 public:
  explicit WaitPointer(Desktop& desktop) : desktop_(desktop) { desktop_.doSetWaitPointer(true); }
  ~WaitPointer() { desktop_.doSetWaitPointer(false); }
  WaitPointer(const WaitPointer&) = delete;
  WaitPointer& operator=(const WaitPointer&) = delete;

 private:
  Desktop& desktop_;
};

}  // namespace korvenal
