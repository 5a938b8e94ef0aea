#include "device/frmPickDisc.h"

#include <algorithm>

#include "core/DiscTypes.h"
#include "device/DiscNames.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::string_view ImageEnd = ".iso";

}  // namespace

std::string shelfNameOf(const ImageDisc& disc) {
  std::string_view name = Paths::doGetFilePart(disc.file);
  if (Text::endsWith(Text::toLower(name), ImageEnd)) name.remove_suffix(ImageEnd.size());
  return std::string(name);
}

std::string discStateText(const ImageDisc& disc) {
  if (DiscNames::isBlank(disc)) return "blank";
  return disc.sessions == 0 ? "damaged" : disc.label;
}

frmPickDisc::frmPickDisc(Desktop& desktop, std::vector<ShelfDisc> discs, std::string shelf,
                         std::string wantedText)
    : vsDisc({"Disc", "Label", "Type", "Modified"}),
      wanted(std::move(wantedText)),
      desktop_(desktop),
      shelf_(std::move(shelf)) {
  for (const ShelfDisc& found : discs) {
    const ImageDisc& disc = found.disc;
    Line line{{shelfNameOf(disc), discStateText(disc), doGetDiscTypeName(disc.typeCode),
               Dates::displayShort(disc.modified)},
              {},
              disc.file};
    for (const std::string& text : line.texts) line.folded += Text::toLower(text) + "\n";
    discs_.push_back(std::move(line));
  }
  doFillTable();
}

void frmPickDisc::doFillTable() {
  std::vector<std::string> words = Text::split(Text::toLower(filter), ' ');
  vsDisc.clearData();
  shown_.clear();
  for (const Line& line : discs_) {
    const bool holdsAll = std::all_of(words.begin(), words.end(), [&line](const auto& word) {
      return line.folded.find(word) != std::string::npos;
    });
    if (!holdsAll) continue;
    vsDisc.addRow(line.texts);
    shown_.push_back(line.file);
  }
  vsDisc.Row = shown_.empty() ? 0 : 1;
}

void frmPickDisc::doFilter(const std::string& text) {
  if (text == filter) return;
  filter = text;
  doFillTable();
  doRepaint();
}

void frmPickDisc::doChooseRow(int row) {
  if (row >= 1 && row < vsDisc.Rows()) vsDisc.Row = row;
}

void frmPickDisc::pbOK() {
  if (!pbOKEnabled()) return;
  file = shown_[static_cast<std::size_t>(vsDisc.Row - 1)];
  doClose();
}

void frmPickDisc::pbImageFile() {
  file = desktop_.doAskOpenFile({.title = "Put in Disc",
                                 .filterName = "Disc Image(*.iso)",
                                 .pattern = "*.iso",
                                 .folder = shelf_,
                                 .fileName = {}});
  if (!file.empty()) doClose();
}

}  // namespace korvenal
