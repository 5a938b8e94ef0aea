#pragma once

#include <string>
#include <string_view>

#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/Table.h"

namespace korvenal {

/// The name that an item gets on disc at first: the last part of its path; "root" for "/".
std::string itemName(std::string_view path);

/// True for a name that a disc, the index and every reader can hold as one component.
bool isItemName(std::string_view name);

/// What lies at the path of an item. Missing also when it is no native path, or when its name
/// cannot be held on a disc.
FileInfo itemInfo(const FileView& files, const std::string& path);

/// Files go on disc as files; whatever is no folder counts as one.
inline bool isFileItem(const FileInfo& info) {
  return info.kind != FileInfo::Kind::Folder;
}

/// Fills type, size, type name, date and box of a row of `vsContents` for an item that exists. A
/// box that a folder already has keeps its state, a new one is ticked.
void fillItemRow(Table& contents, int row, const FileInfo& info, Desktop& desktop);
/// The same for an item that does not exist: its type stays, the rest tells that it is missing.
void fillMissingRow(Table& contents, int row, Desktop& desktop);

}  // namespace korvenal
