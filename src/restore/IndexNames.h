#pragma once

#include <string>
#include <string_view>

#include "platform/SetIdentity.h"

namespace korvenal {

/// What the names of index files tell: "_KORVEN{Photos(2026-11-22-10-00-F)}.bdx".
namespace IndexNames {

inline constexpr std::size_t StampBytes = 20;  ///< "(2026-11-22-10-00-F)"

bool isIndex(std::string_view fileName);
/// The part between "{" and "}": job and stamp.
std::string innerPart(std::string_view fileName);
/// "Photos (2026-11-22-10-00-F)"; empty for any name that is not of an index.
std::string setName(std::string_view fileName);
/// 'F' or 'D'; 0 for any name that is not of an index.
char typeOf(std::string_view fileName);
/// True when a backup of that identity gave its index this name. Backups of one job that began in
/// the same minute give the same name.
bool isOf(std::string_view fileName, const SetIdentity& identity);

}  // namespace IndexNames

}  // namespace korvenal
