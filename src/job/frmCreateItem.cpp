#include "job/frmCreateItem.h"

#include "job/ItemFacts.h"
#include "job/TypedText.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::string_view RefusedInName = "/\\:*?\"<>|";
constexpr std::string_view RefusedInSource = "*?\"<>|";

}  // namespace

void frmCreateItem::setName(std::string_view text) {
  name_ = typedText(text, RefusedInName);
}
void frmCreateItem::setSource(std::string_view text) {
  source_ = typedText(text, RefusedInSource);
}

std::string frmCreateItem::nameLabel() const {
  return TypeOpt == 0 ? "File name on disc:" : "Folder name on disc:";
}

std::string frmCreateItem::sourceLabel() const {
  return TypeOpt == 0 ? "Full path of the file:  (Including original file name)"
                      : "Full path of the folder:";
}

bool frmCreateItem::isOkEnabled() const {
  return isItemName(Text::trim(name_)) && !Text::trim(source_).empty();
}

bool frmCreateItem::isNameTaken() const {
  const std::string wanted = Text::toUpper(Text::trim(name_));
  for (int row = 1; row < job_.vsContents.Rows(); ++row)
    if (Text::toUpper(job_.vsContents.text(row, ContentsName)) == wanted) return true;
  return false;
}

std::string frmCreateItem::pathError(const std::string& source) const {
  if (!Paths::isNative(source)) return "Invalid path format.";
  if (TypeOpt != 0) return {};
  if (source.back() == Paths::NativeSeparator)
    return "Invalid file path format. There should be no ' / ' at the end of the path.";
  const bool dotMissing =
      name_.find('.') != std::string::npos && source.find('.') == std::string::npos;
  return dotMissing ? "Invalid file path. Please add original file name to the path." : "";
}

void frmCreateItem::doTellError(Field field, const std::string& text) {
  focus = field;
  desktop_.doShowMessage({.text = text,
                          .title = field == Field::Name ? "Name Error" : "Path Error",
                          .icon = MessageIcon::Stop});
  doRepaint();
}

void frmCreateItem::pbOK() {
  if (!isOkEnabled()) return;
  if (isNameTaken()) return doTellError(Field::Name, "Item name duplicated with existing item.");
  const std::string source(Text::trim(source_));
  if (const std::string error = pathError(source); !error.empty())
    return doTellError(Field::Source, error);
  {
    const WaitPointer wait(desktop_);
    int type = TypeOpt == 0 ? 1 : 0;
    items_.doCreateItem(type, std::string(Text::trim(name_)),
                        std::string(Paths::withoutEnd(source)));
  }
  doClose();
}

}  // namespace korvenal
