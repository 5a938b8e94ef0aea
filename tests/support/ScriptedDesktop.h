#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/Desktop.h"

namespace korvenal::test {

/// A front end that follows a script: answers in order, forms handled by a function, every question
/// recorded with its exact text. A question that nobody expected fails the test.
class ScriptedDesktop : public Desktop {
 public:
  struct Asked {
    std::string title;
    std::string text;
  };

  std::vector<Asked> asked;           ///< every message box, in order
  std::deque<Answer> answers;         ///< taken by message boxes, one each
  bool answerAllOk = false;           ///< with no answers left: OK or Yes instead of a failure
  std::deque<std::string> files;      ///< taken by file and folder dialogs
  std::function<void(Form&)> onForm;  ///< handles a form after its activation
  std::function<void(int)> onYield;   ///< called with the number of the yield, from 1
  int yields = 0;
  int rests = 0;
  std::vector<std::string> sounds;
  std::vector<std::string> printed;  ///< names of printed documents
  std::vector<std::string> opened;   ///< folders and pages handed to the desktop
  bool opensOutside = true;

  void doYield() override;
  void doRest() override;
  Answer doShowMessage(const MessageBox& message) override;
  void doShowModal(Form& form) override;
  std::string doAskOpenFile(const FileDialog& dialog) override;
  std::string doAskSaveFile(const FileDialog& dialog) override;
  std::string doAskFolder(const std::string& title, const std::string& folder) override;
  void doSetWaitPointer(bool waiting) override;
  void doPrintTable(const Table& table, const std::string& documentName) override;
  void doPlaySound(const std::string& file) override;
  bool doOpenOutside(const std::string& path) override;
  std::string doGetTypeName(const std::string& name, bool isFolder) override;

 private:
  std::string nextFile(const std::string& title);
};

}  // namespace korvenal::test
