#include "platform/linux/engine/IsoSource.h"

#include <libisofs/libisofs.h>

#include <cstdlib>
#include <new>

namespace korvenal {

namespace {

using Holder = std::shared_ptr<CheckedBlocks>;

int openSource(IsoDataSource*) {
  return 1;
}
int closeSource(IsoDataSource*) {
  return 1;
}
int readBlock(IsoDataSource* source, std::uint32_t block, std::uint8_t* buffer) {
  CheckedBlocks& blocks = **static_cast<Holder*>(source->data);
  return blocks.read(block, buffer) ? 1 : static_cast<int>(ISO_DATA_SOURCE_SORRY);
}
void freeSource(IsoDataSource* source) {
  delete static_cast<Holder*>(source->data);
}

}  // namespace

void DataSourceRelease::operator()(iso_data_source* source) const {
  iso_data_source_unref(source);
}

void SourceRelease::operator()(iso_file_source* source) const {
  iso_file_source_unref(source);
}

void ReadOptionsRelease::operator()(iso_read_opts* options) const {
  iso_read_opts_free(options);
}

SourcePtr sharedSource(iso_file_source* source) {
  iso_file_source_ref(source);
  return SourcePtr(source);
}

DataSourcePtr newDataSource(std::shared_ptr<CheckedBlocks> blocks) {
  // The library frees the object with its own allocator.
  auto* source = static_cast<IsoDataSource*>(std::calloc(1, sizeof(IsoDataSource)));
  if (source == nullptr) return nullptr;
  *source = {0, 1, openSource, closeSource, readBlock, freeSource, new Holder(std::move(blocks))};
  return DataSourcePtr(source);
}

ReadOptionsPtr newReadOptions(std::uint32_t start) {
  IsoReadOpts* options = nullptr;
  if (iso_read_opts_new(&options, 0) < 0) return nullptr;
  iso_read_opts_set_start_block(options, start);
  iso_read_opts_set_no_aaip(options, 1);
  iso_read_opts_set_no_md5(options, 1);
  iso_read_opts_set_input_charset(options, "UTF-8");
  return ReadOptionsPtr(options);
}

}  // namespace korvenal
