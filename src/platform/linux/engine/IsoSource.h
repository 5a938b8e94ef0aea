#pragma once

#include <cstdint>
#include <memory>

#include "platform/linux/engine/CheckedBlocks.h"

struct iso_file_source;
struct iso_data_source;
struct iso_read_opts;

namespace korvenal {

struct DataSourceRelease {
  void operator()(iso_data_source* source) const;
};
struct ReadOptionsRelease {
  void operator()(iso_read_opts* options) const;
};
struct SourceRelease {
  void operator()(iso_file_source* source) const;
};
using DataSourcePtr = std::unique_ptr<iso_data_source, DataSourceRelease>;
using ReadOptionsPtr = std::unique_ptr<iso_read_opts, ReadOptionsRelease>;
/// A file or folder in a tree that was read.
using SourcePtr = std::unique_ptr<iso_file_source, SourceRelease>;

/// One more share in it.
SourcePtr sharedSource(iso_file_source* source);

/// A disc as the library reads it. It keeps the blocks as long as it lives.
DataSourcePtr newDataSource(std::shared_ptr<CheckedBlocks> blocks);
/// How trees are read here: the one at block `start`, names as UTF-8, without extras that cost.
ReadOptionsPtr newReadOptions(std::uint32_t start);

}  // namespace korvenal
