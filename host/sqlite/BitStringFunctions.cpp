#include "sqlite/BitStringFunctions.h"

#include <sqlite3.h>

#include <string>

namespace tessel {
namespace sqlite_functions {
namespace {

struct Binary {
  const char* name;
  char (*op)(char, char);
};

char bit_and(char a, char b) { return (a == '1' && b == '1') ? '1' : '0'; }
char bit_or(char a, char b) { return (a == '1' || b == '1') ? '1' : '0'; }
char bit_xor(char a, char b) { return a != b ? '1' : '0'; }

const Binary kAnd{"str_bit_and", bit_and};
const Binary kOr{"str_bit_or", bit_or};
const Binary kXor{"str_bit_xor", bit_xor};
const char kShiftLeft[] = "str_bit_shift_left";
const char kShiftRight[] = "str_bit_shift_right";

bool any_null(int argc, sqlite3_value** argv) {
  for (int i = 0; i < argc; ++i) {
    if (sqlite3_value_type(argv[i]) == SQLITE_NULL) return true;
  }
  return false;
}

// Bytes of an argument quoted in an error message: enough to recognise it,
// short enough that a huge argument cannot flood the error and log lines.
// A NUL byte is spelt "\0": the message is a C string and would end there.
constexpr size_t kQuoted = 64;

std::string quoted(const std::string& text) {
  std::string out;
  for (size_t i = 0; i < text.size() && i < kQuoted; ++i) {
    if (text[i] == '\0') {
      out += "\\0";
    } else {
      out += text[i];
    }
  }
  if (text.size() > kQuoted) out += "...";
  return out;
}

void fail(sqlite3_context* ctx, const std::string& message) {
  sqlite3_result_error(ctx, message.c_str(), -1);
}

// The argument as a bit string; false (with the error set) when it holds
// anything but '0' and '1'.
bool bits(sqlite3_context* ctx, const char* name, sqlite3_value* value, std::string& out) {
  const unsigned char* text = sqlite3_value_text(value);
  if (text == nullptr) {
    sqlite3_result_error_nomem(ctx);
    return false;
  }
  out.assign(reinterpret_cast<const char*>(text), static_cast<size_t>(sqlite3_value_bytes(value)));
  for (char c : out) {
    if (c != '0' && c != '1') {
      fail(ctx, std::string(name) + ": \"" + quoted(out) + "\" is not a bit string of 0 and 1");
      return false;
    }
  }
  return true;
}

void result(sqlite3_context* ctx, const std::string& s) {
  sqlite3_result_text(ctx, s.data(), static_cast<int>(s.size()), SQLITE_TRANSIENT);
}

void binary(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  const auto* f = static_cast<const Binary*>(sqlite3_user_data(ctx));
  if (any_null(argc, argv)) return sqlite3_result_null(ctx);
  std::string a;
  std::string b;
  if (!bits(ctx, f->name, argv[0], a) || !bits(ctx, f->name, argv[1], b)) return;
  if (a.size() != b.size()) {
    return fail(ctx, std::string(f->name) + ": bit strings of different lengths (" +
                         std::to_string(a.size()) + " and " + std::to_string(b.size()) + ")");
  }
  for (size_t i = 0; i < a.size(); ++i) a[i] = f->op(a[i], b[i]);
  result(ctx, a);
}

void bit_not(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  if (any_null(argc, argv)) return sqlite3_result_null(ctx);
  std::string a;
  if (!bits(ctx, "str_bit_not", argv[0], a)) return;
  for (char& c : a) c = c == '1' ? '0' : '1';
  result(ctx, a);
}

// Shifts left by `count` (right when negative), keeping the length.
std::string shifted(const std::string& a, sqlite3_int64 count) {
  const auto size = static_cast<sqlite3_int64>(a.size());
  std::string out(a.size(), '0');
  if (count >= size || count <= -size) return out;
  for (sqlite3_int64 i = 0; i < size; ++i) {
    const sqlite3_int64 from = i + count;
    if (from >= 0 && from < size) out[static_cast<size_t>(i)] = a[static_cast<size_t>(from)];
  }
  return out;
}

void shift(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  const char* name = static_cast<const char*>(sqlite3_user_data(ctx));
  if (any_null(argc, argv)) return sqlite3_result_null(ctx);
  std::string a;
  if (!bits(ctx, name, argv[0], a)) return;
  if (sqlite3_value_numeric_type(argv[1]) != SQLITE_INTEGER) {
    return fail(ctx, std::string(name) + ": the shift count must be an integer");
  }
  sqlite3_int64 count = sqlite3_value_int64(argv[1]);
  // Clamp before negating so that the most negative count cannot overflow.
  const auto size = static_cast<sqlite3_int64>(a.size());
  if (count > size) count = size;
  if (count < -size) count = -size;
  if (name == kShiftRight) count = -count;
  result(ctx, shifted(a, count));
}

int add(sqlite3* db, const char* name, int args, void* data,
        void (*fn)(sqlite3_context*, int, sqlite3_value**)) {
  return sqlite3_create_function_v2(db, name, args, SQLITE_UTF8 | SQLITE_DETERMINISTIC, data, fn,
                                    nullptr, nullptr, nullptr);
}

}  // namespace

int RegisterBitStringFunctions(sqlite3* db) {
  // The user data pointers name constant objects, never freed.
  auto* const shift_left = const_cast<char*>(kShiftLeft);
  auto* const shift_right = const_cast<char*>(kShiftRight);
  int rc = add(db, kAnd.name, 2, const_cast<Binary*>(&kAnd), binary);
  if (rc == SQLITE_OK) rc = add(db, kOr.name, 2, const_cast<Binary*>(&kOr), binary);
  if (rc == SQLITE_OK) rc = add(db, kXor.name, 2, const_cast<Binary*>(&kXor), binary);
  if (rc == SQLITE_OK) rc = add(db, "str_bit_not", 1, nullptr, bit_not);
  if (rc == SQLITE_OK) rc = add(db, kShiftLeft, 2, shift_left, shift);
  if (rc == SQLITE_OK) rc = add(db, kShiftRight, 2, shift_right, shift);
  return rc;
}

}  // namespace sqlite_functions
}  // namespace tessel
