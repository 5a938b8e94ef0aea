#pragma once

#include <string>
#include <vector>

#include "platform/Table.h"

namespace korvenal {

/// Gives the table as many columns as there are headers, and writes them. Rows stay.
inline void setHeaders(Table& table, const std::vector<std::string>& headers) {
  table.setCols(static_cast<int>(headers.size()));
  for (std::size_t col = 0; col < headers.size(); ++col)
    table.setText(0, static_cast<int>(col), headers[col]);
}

}  // namespace korvenal
