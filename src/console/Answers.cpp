#include "console/Answers.h"

#include "platform/Text.h"

namespace korvenal::console {

std::string Answers::caption(const std::string& button) {
  return Text::replaceAll(button, "&", "");
}

int Answers::find(const std::vector<std::string>& buttons, const std::string& text) {
  const std::string wanted = Text::toUpper(Text::trim(text));
  if (wanted.empty()) return -1;
  int found = -1;
  int beginnings = 0;
  for (int i = 0; i < static_cast<int>(buttons.size()); ++i) {
    const std::string words = Text::toUpper(caption(buttons[static_cast<std::size_t>(i)]));
    if (words == wanted) return i;
    if (!Text::startsWith(words, wanted)) continue;
    found = i;
    ++beginnings;
  }
  return beginnings == 1 ? found : -1;
}

void Answers::show(const Question& question, int button) {
  screen_.line("  [" + caption(question.buttons[static_cast<std::size_t>(button)]) + "]");
}

int Answers::choose(const Question& question) {
  if (const int at = takeQueued(question); at >= 0) {
    show(question, at);
    return at;
  }
  if (agreeToAll_) {
    show(question, question.affirmative);
    return question.affirmative;
  }
  return askPerson(question);
}

int Answers::takeQueued(const Question& question) {
  for (auto text = queued_.begin(); text != queued_.end(); ++text) {
    const int at = find(question.buttons, *text);
    if (at < 0 && agreeToAll_) continue;  // it waits for the question that it fits
    if (at < 0) {
      mismatch_ = true;
      screen_.line("  The prepared answer \"" + *text + "\" is no answer to this question.");
    }
    queued_.erase(text);
    return at;
  }
  return -1;
}

int Answers::askPerson(const Question& question) {
  std::string prompt = "  ";
  for (const std::string& button : question.buttons) prompt += "[" + caption(button) + "] ";
  prompt += "> ";
  std::string line;
  while (person_.isAttended() && ask(prompt, line)) {
    const int at = find(question.buttons, line);
    if (at >= 0) return at;
    screen_.line("  Please answer with the words on one of the buttons.");
  }
  show(question, question.refusing);
  return question.refusing;
}

bool Answers::ask(const std::string& prompt, std::string& line) {
  screen_.flush();
  return person_.read(prompt, line) == LineSource::Got::Line;
}

bool Answers::takeMismatch() {
  const bool mismatch = mismatch_;
  mismatch_ = false;
  return mismatch;
}

}  // namespace korvenal::console
