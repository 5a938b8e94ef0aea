#include "restore/RestoreFind.h"

#include <algorithm>
#include <functional>

#include "platform/Text.h"
#include "platform/UpperCaser.h"

namespace korvenal {

namespace {

constexpr std::size_t BatchBytes = 65536;  ///< names whose case is changed at once

/// Finds one text in many others. The text's last byte is looked at first, so a beginning that all
/// names share costs nothing.
class TextFinder {
 public:
  explicit TextFinder(const std::string& wanted)
      : wanted_(wanted), searcher_(wanted_.begin(), wanted_.end()) {}
  TextFinder(const TextFinder&) = delete;
  TextFinder& operator=(const TextFinder&) = delete;

  std::size_t findIn(std::string_view text) const {
    if (wanted_.size() == 1) return text.find(wanted_);
    const auto place = std::search(text.begin(), text.end(), searcher_);
    return place == text.end() ? std::string_view::npos
                               : static_cast<std::size_t>(place - text.begin());
  }

 private:
  std::string wanted_;
  std::boyer_moore_horspool_searcher<std::string::const_iterator> searcher_;
};

int namesIn(std::string_view names) {
  return static_cast<int>(std::count(names.begin(), names.end(), RestoreTree::NameEnd));
}

/// The first whole names, some BatchBytes in all.
std::string_view batchOf(std::string_view names) {
  return names.substr(0, names.find(RestoreTree::NameEnd, BatchBytes));
}

}  // namespace

int RestoreFind::firstRowToSearch(const std::string& text, bool matchCase) const {
  // An index opened since then has emptied the text of the page.
  const bool known =
      !last_.text.empty() && page_.FindText == last_.text && page_.FindMatchCase == matchCase;
  return known && text.starts_with(last_.text) ? last_.row : 1;
}

bool RestoreFind::doFindString(const std::string& text, bool matchCase) {
  const WaitPointer wait(desktop_);
  const int first = firstRowToSearch(text, matchCase);
  page_.FindText = text;
  page_.FindMatchCase = matchCase;
  page_.FindRow = findFrom(first);
  if (page_.FindRow == 0) page_.FindText.clear();
  last_ = {page_.FindText, page_.FindRow};
  page_.pbFindNextEnabled = page_.vsRestore.hasData() && !page_.FindText.empty();
  if (page_.FindRow == 0) return false;
  showMatch(page_.FindRow);
  return true;
}

void RestoreFind::doFindNext() {
  if (page_.FindText.empty()) return;
  if (page_.FindRow >= page_.vsRestore.Rows() - 1) page_.FindRow = 0;
  {
    const WaitPointer wait(desktop_);
    page_.FindRow = findFrom(page_.FindRow + 1);
  }
  if (page_.FindRow != 0) {
    showMatch(page_.FindRow);
    return;
  }
  desktop_.doShowMessage(
      {.text = "No more matching item found.", .title = "Find Next", .icon = MessageIcon::Warning});
}

int RestoreFind::findFrom(int row) const {
  const bool matchCase = page_.FindMatchCase;
  const TextFinder finder(matchCase ? page_.FindText : Text::toUpper(page_.FindText));
  // A text that runs over the end of a name is in none.
  if (page_.FindText.find(RestoreTree::NameEnd) != std::string::npos) return 0;
  UpperCaser upperCaser;
  std::string_view names = page_.vsRestore.namesFrom(row);
  while (!names.empty()) {
    const std::string_view batch = batchOf(names);
    const std::string upper = matchCase ? std::string() : upperCaser.toUpper(batch);
    const std::string_view searched = matchCase ? batch : upper;
    if (const std::size_t at = finder.findIn(searched); at != std::string_view::npos)
      return row + namesIn(searched.substr(0, at));
    names.remove_prefix(std::min(batch.size() + 1, names.size()));
    row += namesIn(batch) + 1;
  }
  return 0;
}

void RestoreFind::showMatch(int row) {
  RestoreTree& tree = page_.vsRestore;
  for (int above = static_cast<int>(tree.item(row).parent); above > 0;
       above = static_cast<int>(tree.item(above).parent))
    tree.setCollapsed(above, false);
  tree.Row = row;
}

frmFind::frmFind(RestoreFind& find, RestorePage& page, Desktop& desktop)
    : txName(page.FindText), matchCase(page.FindMatchCase), find_(find), desktop_(desktop) {}

bool frmFind::pbOKEnabled() const {
  return !Text::trim(txName).empty();
}

void frmFind::pbOK() {
  if (!pbOKEnabled()) return;
  if (find_.doFindString(std::string(Text::trim(txName)), matchCase)) {
    doClose();
    return;
  }
  desktop_.doShowMessage({.text = "No matching item found in backup index.",
                          .title = "Find Name",
                          .icon = MessageIcon::Stop});
  doRepaint();
}

}  // namespace korvenal
