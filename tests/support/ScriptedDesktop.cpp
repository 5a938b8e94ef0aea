#include "support/ScriptedDesktop.h"

#include <gtest/gtest.h>

namespace korvenal::test {

void ScriptedDesktop::doYield() {
  ++yields;
  if (onYield) onYield(yields);
}

void ScriptedDesktop::doRest() {
  ++rests;
  doYield();
}

Answer ScriptedDesktop::doShowMessage(const MessageBox& message) {
  asked.push_back({message.title, message.text});
  if (!answers.empty()) {
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
  }
  if (!answerAllOk)
    ADD_FAILURE() << "unexpected question: " << message.title << ": " << message.text;
  if (message.buttons == MessageButtons::SkipRetryStop) return Answer::Skip;
  const bool yesNo =
      message.buttons == MessageButtons::YesNo || message.buttons == MessageButtons::YesNoCancel;
  return yesNo ? Answer::Yes : Answer::Ok;
}

void ScriptedDesktop::doShowModal(Form& form) {
  form.doActivate();
  if (!form.isClosed() && onForm) onForm(form);
  if (!form.isClosed()) ADD_FAILURE() << "a form stayed open";
}

std::string ScriptedDesktop::doAskOpenFile(const FileDialog& dialog) {
  return nextFile(dialog.title);
}
std::string ScriptedDesktop::doAskSaveFile(const FileDialog& dialog) {
  return nextFile(dialog.title);
}
std::string ScriptedDesktop::doAskFolder(const std::string& title, const std::string&) {
  return nextFile(title);
}

void ScriptedDesktop::doSetWaitPointer(bool) {}
void ScriptedDesktop::doPrintTable(const Table&, const std::string& documentName) {
  printed.push_back(documentName);
}
void ScriptedDesktop::doPlaySound(const std::string& file) {
  sounds.push_back(file);
}
bool ScriptedDesktop::doOpenOutside(const std::string& path) {
  opened.push_back(path);
  return opensOutside;
}
std::string ScriptedDesktop::doGetTypeName(const std::string&, bool isFolder) {
  return isFolder ? "Folder" : "";
}

std::string ScriptedDesktop::nextFile(const std::string& title) {
  if (files.empty()) {
    ADD_FAILURE() << "unexpected file dialog: " << title;
    return {};
  }
  std::string file = files.front();
  files.pop_front();
  return file;
}

}  // namespace korvenal::test
