#include "internal/Text.h"

#include <charconv>
#include <cstring>
#include <system_error>

namespace vexel {
namespace internal {
namespace {

template <typename Sink>
void put_list(Sink& f, Span<col> cols, tessel::DBTYPE db, bool with_order) {
  for (const col& c : cols) {
    // Only a leading empty text goes without a separator.
    if (f.size() != 0) f.put(" , ", 3);
    if (with_order) {
      ColumnText::put_order(f, c, db);
    } else {
      ColumnText::put(f, c, db);
    }
  }
}

std::string join(Span<col> cols, tessel::DBTYPE db, bool with_order) {
  std::size_t size = 0;
  for (const col& c : cols) {
    size += ColumnText::order_size(c, db) + 3;
  }
  // A list that fits is put together on the stack and copied once.
  char small[1024];
  if (size <= sizeof small) {
    Into into{small};
    put_list(into, cols, db, with_order);
    return std::string(small, into.size());
  }
  std::string out;
  {
    // Scoped: the text is trimmed to what was written when this ends.
    Fill f(out, size - 3);
    put_list(f, cols, db, with_order);
  }
  return out;
}

}  // namespace

col with_dialect(const col& c, tessel::DBTYPE db) { return col(c, db); }

namespace {

const std::string& refused_marker() {
  static const std::string text("\0refused value: ", 16);
  return text;
}

}  // namespace

std::string refused_value_text(const std::string& why) { return refused_marker() + why + '\0'; }

bool find_refused_value(const std::string& sql, std::string& why) {
  const std::size_t at = sql.find(refused_marker());
  if (at == std::string::npos) return false;
  const std::size_t from = at + refused_marker().size();
  const std::size_t to = sql.find('\0', from);
  why = sql.substr(from, to == std::string::npos ? std::string::npos : to - from);
  return true;
}

std::string fixed_six(double value) {
  // The largest double has 309 integer digits; sign, point and decimals
  // add 8.
  char buffer[330];
  const std::to_chars_result result =
      std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::fixed, 6);
  if (result.ec != std::errc()) return std::string();
  return std::string(buffer, result.ptr);
}

std::vector<col> with_dialect(const std::vector<col>& cols, tessel::DBTYPE db) {
  std::vector<col> out;
  out.reserve(cols.size());
  for (const col& c : cols) out.emplace_back(c, db);
  return out;
}

// A table's text is the same in every dialect.
std::string table_text(const tab& t, tessel::DBTYPE /*db*/) { return t.table_name(); }

void append_table(std::string& out, const tab& t) {
  const std::string& schema = t.schema_name();
  const std::string& name = t.get_only_table_name();
  char small[128];
  if (schema.size() + name.size() < sizeof small) {
    // Put together on the stack and appended in one piece.
    Into into{small};
    if (!schema.empty()) {
      into.put(schema.data(), schema.size());
      into.put('.');
    }
    into.put(name.data(), name.size());
    out.append(small, into.size());
    return;
  }
  if (!schema.empty()) out.append(schema).push_back('.');
  out += name;
}

std::string view_text(const view& v, tessel::DBTYPE db) {
  view copy(v);
  copy.set_db_type(db);
  return copy.view_name();
}

std::string column_text(const col& c, tessel::DBTYPE db) {
  std::string out;
  ColumnText::append(out, c, db);
  return out;
}

void ColumnTexts::add(Span<col> cols, tessel::DBTYPE db) {
  for (const col& c : cols) {
    ColumnText::put(text_, c, db);
    if (count_ < kInline) {
      ends_[count_] = text_.size();
    } else {
      more_ends_.push_back(text_.size());
    }
    ++count_;
  }
}

bool ColumnTexts::listed(const char* ref) const {
  return count_ > 1 || (count_ == 1 && (*ref != '\0' || !text_.empty()));
}

template <typename Sink>
void ColumnTexts::put(Sink& out, const char* ref) const {
  if (*ref == '\0') {
    // The names as they are kept, between commas.
    std::size_t from = 0;
    for (std::size_t i = 0; i < count_; ++i) {
      if (i > 0) out.put(',');
      const std::size_t to = end(i);
      out.put(text_.view().data() + from, to - from);
      from = to;
    }
    return;
  }
  const std::size_t ref_size = std::strlen(ref);
  for (std::size_t i = 0; i < count_; ++i) {
    if (i > 0) out.put(',');
    const std::string_view name = (*this)[i];
    out.put(ref, ref_size);
    out.put(name.data(), name.size());
  }
}
template void ColumnTexts::put(Fill&, const char*) const;
template void ColumnTexts::put(Into&, const char*) const;

std::string join_names(Span<col> cols, tessel::DBTYPE db) { return join(cols, db, false); }

std::string join_orders(Span<col> cols, tessel::DBTYPE db) { return join(cols, db, true); }

}  // namespace internal
}  // namespace vexel
