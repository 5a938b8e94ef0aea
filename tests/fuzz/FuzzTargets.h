#pragma once

#include <string_view>

namespace korvenal::test {

/// Feeds one input to a reader of files and looks at what it makes of it. A broken promise ends
/// the process; so do the sanitizers.
using FuzzTarget = void (*)(std::string_view input);

void fuzzIndexText(std::string_view input);
/// The packed form of an index.
void fuzzIndexArchive(std::string_view input);
void fuzzJobFile(std::string_view input);
void fuzzSettings(std::string_view input);
/// The first 1024 bytes of each block of a disc from block 16 on; all else on the disc is zero.
void fuzzDiscImage(std::string_view input);
/// The same, as a disc that another session is prepared for.
void fuzzDiscAppend(std::string_view input);
/// The stored form of a table.
void fuzzGridFile(std::string_view input);

}  // namespace korvenal::test
