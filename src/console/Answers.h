#pragma once

#include <deque>
#include <string>
#include <vector>

#include "console/LineSource.h"
#include "console/Screen.h"

namespace korvenal::console {

/// A question with buttons.
struct Question {
  std::vector<std::string> buttons;  ///< captions, with or without '&'
  int affirmative = 0;               ///< the button that goes on; taken under --yes
  int refusing = 0;                  ///< the button that does no harm; taken when nobody can answer
};

/// Answers questions by the words on their buttons: first from the queue of prepared answers, then
/// by the affirmative one when all are to be agreed to, then by asking the person. A prepared
/// answer that does not fit its question is an error, but not where all is agreed to: there it
/// waits for one that it fits, and lets later answers pass.
class Answers {
 public:
  /// `person` is where a person is asked.
  Answers(LineSource& person, Screen& screen, bool agreeToAll)
      : person_(person), screen_(screen), agreeToAll_(agreeToAll) {}

  void queue(const std::string& text) { queued_.push_back(text); }
  bool agreesToAll() const { return agreeToAll_; }
  bool isAttended() const { return person_.isAttended(); }

  /// The index of the button chosen.
  int choose(const Question& question);
  /// One line from the person; false when there is none, at the end of lines or at an interrupt.
  bool ask(const std::string& prompt, std::string& line);

  /// True once when a prepared answer was no button of its question since the last call.
  bool takeMismatch();

  /// The index of the button with these words ('&' and case ignored, a beginning that fits one
  /// button alone is enough); -1 for none.
  static int find(const std::vector<std::string>& buttons, const std::string& text);
  /// A caption without its '&'.
  static std::string caption(const std::string& button);

 private:
  /// The button that the next prepared answer names; -1 for none.
  int takeQueued(const Question& question);
  int askPerson(const Question& question);
  void show(const Question& question, int button);

  LineSource& person_;
  Screen& screen_;
  bool agreeToAll_;
  bool mismatch_ = false;
  std::deque<std::string> queued_;
};

}  // namespace korvenal::console
