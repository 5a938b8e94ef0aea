#include "console/ConsoleDesktop.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <thread>

namespace korvenal::console {

namespace {

constexpr std::int64_t ProgressMilliseconds = 20;
constexpr auto Rest = std::chrono::milliseconds(5);

struct Choice {
  Question question;
  std::vector<Answer> answers;
};

Choice choiceOf(const MessageBox& message) {
  switch (message.buttons) {
    case MessageButtons::OkCancel:
      return {{{"OK", "Cancel"}, 0, 1}, {Answer::Ok, Answer::Cancel}};
    case MessageButtons::YesNo:
      return {{{"Yes", "No"}, message.yesInPersonOnly ? 1 : 0, 1}, {Answer::Yes, Answer::No}};
    case MessageButtons::YesNoCancel:
      return {{{"Yes", "No", "Cancel"}, 0, 2}, {Answer::Yes, Answer::No, Answer::Cancel}};
    case MessageButtons::SkipRetryStop:
      return {{{"Skip", "Retry", "Stop"}, 0, 2}, {Answer::Skip, Answer::Retry, Answer::Stop}};
    case MessageButtons::Ok:
      break;
  }
  return {{{"OK"}, 0, 0}, {Answer::Ok}};
}

}  // namespace

std::string absolutePath(const std::string& path) {
  // No shell stands before the prompt, so what people type for their home is expanded here.
  const bool inHome = path == "~" || path.starts_with("~/");
  const char* home = inHome ? std::getenv("HOME") : nullptr;
  std::error_code error;
  const auto absolute =
      std::filesystem::absolute(home != nullptr ? home + path.substr(1) : path, error);
  return error ? path : absolute.lexically_normal().string();
}

void ConsoleDesktop::doPollInterrupt() {
  if (interrupted_.load(std::memory_order_relaxed) && onInterrupt()) interrupted_ = false;
}

void ConsoleDesktop::doYield() {
  doPollInterrupt();
  onNewEvents();
  if (!screen_.isTerminal()) return;
  const std::int64_t now = clock_.steadyMilliseconds();
  if (now < nextProgress_) return;
  nextProgress_ = now + ProgressMilliseconds;
  onProgress();
}

void ConsoleDesktop::doRest() {
  doYield();
  std::this_thread::sleep_for(Rest);
}

Answer ConsoleDesktop::doShowMessage(const MessageBox& message) {
  onNewEvents();
  screen_.line(message.title + ": " + message.text);
  const Choice choice = choiceOf(message);
  // A message with one button is not worth a wait, and takes no prepared answer.
  if (choice.answers.size() == 1) return choice.answers.front();
  const int button = answers_.choose(choice.question);
  doPollInterrupt();
  return choice.answers[static_cast<std::size_t>(button)];
}

void ConsoleDesktop::doShowModal(Form& form) {
  onNewEvents();
  forms->show(form);
}

std::string ConsoleDesktop::doAskOpenFile(const FileDialog& dialog) {
  return askPath(dialog.title);
}
std::string ConsoleDesktop::doAskSaveFile(const FileDialog& dialog) {
  return askPath(dialog.title);
}
std::string ConsoleDesktop::doAskFolder(const std::string& title, const std::string&) {
  return askPath(title);
}

std::string ConsoleDesktop::askPath(const std::string& title) {
  if (!preparedFiles_.empty()) {
    std::string path = preparedFiles_.front();
    preparedFiles_.pop_front();
    return path;
  }
  if (!answers_.isAttended()) return {};
  screen_.line(title);
  std::string path;
  if (!answers_.ask("  path > ", path) || path.empty()) return {};
  return absolutePath(path);
}

void ConsoleDesktop::doPrintTable(const Table&, const std::string& documentName) {
  screen_.line("There is no printer here for \"" + documentName + "\".");
}

void ConsoleDesktop::doPlaySound(const std::string&) {
  if (screen_.isTerminal()) screen_.raw("\a");
}

bool ConsoleDesktop::doOpenOutside(const std::string&) {
  return false;
}

std::string ConsoleDesktop::doGetTypeName(const std::string&, bool isFolder) {
  return isFolder ? "Folder" : "";
}

}  // namespace korvenal::console
