#include "restore/RestoreFind.h"

#include "platform/Text.h"

namespace korvenal {

namespace {

/// Compares names with one wanted text. Names are mostly ASCII, where a change of case needs no
/// tables and no copy.
class NameMatcher {
 public:
  NameMatcher(const std::string& wanted, bool matchCase)
      : wanted_(matchCase ? wanted : Text::toUpper(wanted)), matchCase_(matchCase) {}

  bool matches(std::string_view name) const {
    if (matchCase_) return name.find(wanted_) != std::string_view::npos;
    if (!isAscii(name)) return Text::toUpper(name).find(wanted_) != std::string::npos;
    return asciiHolds(name);
  }

 private:
  static char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

  static bool isAscii(std::string_view name) {
    char bits = 0;
    for (const char c : name) bits = static_cast<char>(bits | c);
    return static_cast<unsigned char>(bits) < 0x80;
  }

  bool asciiHolds(std::string_view name) const {
    for (std::size_t at = 0; at + wanted_.size() <= name.size(); ++at) {
      std::size_t same = 0;
      while (same < wanted_.size() && upper(name[at + same]) == wanted_[same]) ++same;
      if (same == wanted_.size()) return true;
    }
    return false;
  }

  std::string wanted_;
  bool matchCase_;
};

}  // namespace

bool RestoreFind::doFindString(const std::string& text, bool matchCase) {
  const WaitPointer wait(desktop_);
  page_.FindText = text;
  page_.FindMatchCase = matchCase;
  page_.FindRow = findFrom(1);
  if (page_.FindRow == 0) page_.FindText.clear();
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
  const NameMatcher matcher(page_.FindText, page_.FindMatchCase);
  for (; row < page_.vsRestore.Rows(); ++row)
    if (matcher.matches(page_.vsRestore.name(row))) return row;
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
