#include "job/ItemFacts.h"

#include "core/SizeText.h"
#include "job/Job.h"
#include "platform/Clock.h"
#include "platform/Paths.h"

namespace korvenal {

std::string itemName(std::string_view path) {
  path = Paths::withoutEnd(path);
  return path == "/" ? "root" : std::string(Paths::doGetFilePart(path));
}

bool isItemName(std::string_view name) {
  return Paths::isHoldable(name) && name != "." && name != ".." &&
         name.find(Paths::NativeSeparator) == std::string_view::npos;
}

FileInfo itemInfo(const FileView& files, const std::string& path) {
  if (!Paths::isNative(path) || !isItemName(itemName(path))) return {};
  return files.doGetInfo(path);
}

void fillItemRow(Table& contents, int row, const FileInfo& info, Desktop& desktop) {
  const bool isFile = isFileItem(info);
  const std::string name = itemName(contents.text(row, ContentsPath));
  contents.setText(row, ContentsType, isFile ? "1" : "0");
  contents.setText(row, ContentsSize, isFile ? formatSizeText(info.size, true) : "");
  contents.setText(row, ContentsTypeName, desktop.doGetTypeName(name, !isFile));
  contents.setText(row, ContentsModified, Dates::displayShort(info.modified));
  if (isFile)
    contents.setCheck(row, ContentsSubfolder, Table::Check::None);
  else if (contents.check(row, ContentsSubfolder) == Table::Check::None)
    contents.setCheck(row, ContentsSubfolder, Table::Check::Ticked);
}

void fillMissingRow(Table& contents, int row, Desktop& desktop) {
  const bool isFolder = contents.text(row, ContentsType) == "0";
  contents.setText(row, ContentsSize, "");
  contents.setText(row, ContentsTypeName,
                   desktop.doGetTypeName(contents.text(row, ContentsName), isFolder));
  contents.setText(row, ContentsModified, NotExistingText);
}

}  // namespace korvenal
