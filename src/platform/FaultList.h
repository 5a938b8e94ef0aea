#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The list of the files that could not be saved while a session was burned. Their places on the
/// disc hold padding of the right size, which would pass for the files themselves: folders are
/// written before the bytes of files, so nothing else on the disc can tell. The list is the last
/// file of its session and stands at the root, beside the index of the backup.
///
/// Text in UTF-8: a line with the name of the format, a tab and the number of files; a line for the
/// disc path of each ('\' between components); a sentence for people; then blanks and line feeds
/// up to a size that was fixed before the burn.
namespace korvenal::FaultList {

inline constexpr std::int64_t Bytes = 65536;       ///< size of the file where a disc has the room
inline constexpr std::int64_t FewestBytes = 2048;  ///< a shorter one is not worth a file
inline constexpr std::string_view Extension = ".unsaved";

/// The name of the list that belongs to an index: "_KORVEN{JOB(STAMP)}.unsaved" beside ".bdx".
std::string nameBeside(std::string_view indexName);
/// True for the name of a list of any backup.
bool isName(std::string_view fileName);

/// The text of exactly `bytes` bytes; nothing when the paths do not fit or one cannot be a line.
std::optional<std::string> format(const std::vector<std::string>& discPaths, std::int64_t bytes);
/// The disc paths of a list; nothing when the text is none, or is not whole.
std::optional<std::vector<std::string>> parse(std::string_view text);

}  // namespace korvenal::FaultList
