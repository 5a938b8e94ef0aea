#include "console/Session.h"

#include <algorithm>
#include <charconv>

#include "platform/Text.h"

namespace korvenal::console {

bool Session::beginEdit() const {
  if (mayBegin(korvenal::Command::AddItems, main.state)) {
    main.doEditJob();
    return true;
  }
  screen.line("The job cannot be changed now.");
  return false;
}

int Session::findItem(const std::string& name) const {
  const Table& contents = main.job.vsContents;
  for (int row = 1; row < contents.Rows(); ++row)
    if (contents.text(row, ContentsName) == name) return row;
  screen.line("There is no item \"" + name + "\".");
  return 0;
}

std::optional<int> parseNumber(const std::string& text, int least, int most) {
  int number = 0;
  const char* end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stopped != end || number < least || number > most) return {};
  return number;
}

std::optional<bool> parseFlag(const std::string& text) {
  if (text == "1") return true;
  if (text == "0") return false;
  return {};
}

Options parseOptions(const Arguments& arguments, const Arguments& withValue,
                     const Arguments& withoutValue) {
  const auto holds = [](const Arguments& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
  };
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& word = arguments[i];
    if (!Text::startsWith(word, "--")) {
      options.rest.push_back(word);
    } else if (holds(withoutValue, word)) {
      options.values[word] = "";
    } else if (holds(withValue, word) && i + 1 < arguments.size()) {
      options.values[word] = arguments[++i];
    } else {
      options.valid = false;
    }
  }
  return options;
}

}  // namespace korvenal::console
