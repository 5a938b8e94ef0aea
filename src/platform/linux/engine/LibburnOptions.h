#pragma once

#include <libburn/libburn.h>

#include <memory>

namespace korvenal {

struct LibburnOptionsRelease {
  void operator()(burn::burn_write_opts* options) const { burn::burn_write_opts_free(options); }
};
/// How the burning library is to write with a drive.
using LibburnOptionsPtr = std::unique_ptr<burn::burn_write_opts, LibburnOptionsRelease>;

}  // namespace korvenal
