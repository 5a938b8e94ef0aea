#include "restore/IndexText.h"

#include <utility>

namespace korvenal {

namespace {

constexpr int LinesBetweenYields = 4096;

bool splitFields(std::string_view line, IndexLine& fields) {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const std::size_t tab = line.find('\t');
    const bool last = i + 1 == fields.size();
    if (last != (tab == std::string_view::npos)) return false;
    fields[i] = line.substr(0, tab);
    if (!last) line.remove_prefix(tab + 1);
  }
  return true;
}

bool isDroppable(std::string_view line) {
  return line.empty() || line.front() == '\t';
}

/// Takes off a last line that has an empty first field.
void dropEmptyLastLine(std::string& text) {
  if (text.empty()) return;
  const std::size_t searchFrom = text.size() >= 2 ? text.size() - 2 : 0;
  const std::size_t before = text.rfind('\n', text.back() == '\n' ? searchFrom : text.size());
  const std::size_t start =
      before == std::string::npos || before + 1 >= text.size() ? 0 : before + 1;
  std::string_view line = std::string_view(text).substr(start);
  IndexCursor(line).next(line);
  if (start > 0 && isDroppable(line)) text.resize(start);
}

}  // namespace

bool IndexCursor::next(std::string_view& line) {
  if (rest_.empty()) return false;
  const std::size_t end = rest_.find('\n');
  line = rest_.substr(0, end);
  rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return true;
}

bool IndexCursor::next(IndexLine& fields) {
  std::string_view line;
  return next(line) && splitFields(line, fields);
}

bool IndexText::load(std::string text, const std::function<void()>& yield) {
  clear();
  dropEmptyLastLine(text);
  IndexLine fields;
  IndexCursor header(text);
  if (!header.next(fields) || !fields[IndexHeadStamp].starts_with(Stamp)) return false;

  int rows = 0;
  std::string_view line;
  for (IndexCursor cursor(text); cursor.next(line); ++rows) {
    if (rows >= MaxLines || !splitFields(line, fields)) return false;
    if (yield && rows % LinesBetweenYields == 0) yield();
  }
  if (rows < 2) return false;
  text_ = std::move(text);
  rows_ = rows;
  return true;
}

void IndexText::clear() {
  take();
}

std::string IndexText::take() {
  rows_ = 0;
  return std::exchange(text_, {});
}

}  // namespace korvenal
