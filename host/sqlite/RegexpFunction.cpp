#include "sqlite/RegexpFunction.h"

#include <sqlite3.h>
#include <unicode/uregex.h>
#include <unicode/utext.h>

#include <memory>
#include <string>

namespace tessel {
namespace sqlite_functions {
namespace {

// Match-engine steps (each roughly a few milliseconds of work) before a match
// is abandoned, and bytes of backtracking stack: both keep catastrophic
// patterns and very long texts from hanging or exhausting memory.
constexpr int32_t kTimeLimit = 1000;
constexpr int32_t kStackLimit = 8 * 1024 * 1024;

struct Compiled {
  URegularExpression* regex = nullptr;
  bool case_insensitive = false;
  ~Compiled() {
    if (regex != nullptr) uregex_close(regex);
  }
};

void free_compiled(void* p) { delete static_cast<Compiled*>(p); }

// Bytes of a pattern quoted in an error message: enough to recognise it,
// short enough that a huge pattern cannot flood the error and log lines.
// A NUL byte is spelt "\0": the message is a C string and would end there.
constexpr size_t kQuotedPattern = 64;

std::string quoted(const char* pattern, int length) {
  const auto size = static_cast<size_t>(length);
  std::string out;
  for (size_t i = 0; i < size && i < kQuotedPattern; ++i) {
    if (pattern[i] == '\0') {
      out += "\\0";
    } else {
      out += pattern[i];
    }
  }
  if (size > kQuotedPattern) out += "...";
  return out;
}

std::unique_ptr<Compiled> compile(const char* pattern, int length, bool case_insensitive,
                                  std::string& error) {
  // '.' also matches a newline, as in the PostgreSQL operators these
  // predicates stand for.
  uint32_t flags = UREGEX_DOTALL;
  if (case_insensitive) flags |= UREGEX_CASE_INSENSITIVE;
  UParseError parse_error{};
  UErrorCode status = U_ZERO_ERROR;
  auto compiled = std::make_unique<Compiled>();
  compiled->case_insensitive = case_insensitive;
  // The engine refuses an empty pattern; an empty group means the same
  // (it matches everywhere, as '' does for PostgreSQL's operators).
  if (length == 0) {
    pattern = "(?:)";
    length = 4;
  }
  UText* utext = utext_openUTF8(nullptr, pattern, length, &status);
  if (U_SUCCESS(status)) compiled->regex = uregex_openUText(utext, flags, &parse_error, &status);
  utext_close(utext);
  if (U_SUCCESS(status)) uregex_setTimeLimit(compiled->regex, kTimeLimit, &status);
  if (U_SUCCESS(status)) uregex_setStackLimit(compiled->regex, kStackLimit, &status);
  if (U_FAILURE(status)) {
    error = "regexp: invalid pattern '" + quoted(pattern, length) + "': " + u_errorName(status);
    return nullptr;
  }
  return compiled;
}

// Searches `text` for the pattern; false with `error` set when the engine
// gives up.
bool search(URegularExpression* regex, const char* text, int length, bool& found,
            std::string& error) {
  UErrorCode status = U_ZERO_ERROR;
  UText* utext = utext_openUTF8(nullptr, text, length, &status);
  if (U_SUCCESS(status)) uregex_setUText(regex, utext, &status);
  found = U_SUCCESS(status) && uregex_find(regex, 0, &status) != 0;
  // Detach the text before closing it: the cached pattern outlives this call.
  UErrorCode reset_status = U_ZERO_ERROR;
  uregex_setText(regex, u"", 0, &reset_status);
  utext_close(utext);
  if (U_FAILURE(status)) {
    if (status == U_REGEX_TIME_OUT) {
      error = "regexp: matching stopped, the pattern took too long";
    } else if (status == U_REGEX_STACK_OVERFLOW) {
      error = "regexp: matching stopped, the pattern backtracks too deeply";
    } else {
      error = std::string("regexp: matching failed: ") + u_errorName(status);
    }
    return false;
  }
  return true;
}

void regexp(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  for (int i = 0; i < argc; ++i) {
    if (sqlite3_value_type(argv[i]) == SQLITE_NULL) {
      sqlite3_result_null(ctx);
      return;
    }
  }
  const sqlite3_int64 mode = sqlite3_value_int64(argv[2]);
  if (sqlite3_value_numeric_type(argv[2]) != SQLITE_INTEGER || mode < 0 || mode > 3) {
    sqlite3_result_error(ctx, "regexp: mode must be 0, 1, 2 or 3", -1);
    return;
  }
  const bool case_insensitive = mode == 0 || mode == 2;
  const bool negate = mode >= 2;

  const char* pattern = reinterpret_cast<const char*>(sqlite3_value_text(argv[1]));
  const int pattern_length = sqlite3_value_bytes(argv[1]);
  const char* text = reinterpret_cast<const char*>(sqlite3_value_text(argv[0]));
  const int text_length = sqlite3_value_bytes(argv[0]);
  if (pattern == nullptr || text == nullptr) {
    sqlite3_result_error_nomem(ctx);
    return;
  }

  // The compiled pattern is cached on the pattern argument while it stays
  // the same for the statement's rows.
  auto* cached = static_cast<Compiled*>(sqlite3_get_auxdata(ctx, 1));
  std::unique_ptr<Compiled> fresh;
  std::string error;
  if (cached == nullptr || cached->case_insensitive != case_insensitive) {
    fresh = compile(pattern, pattern_length, case_insensitive, error);
    if (!fresh) {
      sqlite3_result_error(ctx, error.c_str(), -1);
      return;
    }
    cached = fresh.get();
  }
  bool found = false;
  if (!search(cached->regex, text, text_length, found, error)) {
    sqlite3_result_error(ctx, error.c_str(), -1);
  } else {
    sqlite3_result_int(ctx, found != negate ? 1 : 0);
  }
  if (fresh) sqlite3_set_auxdata(ctx, 1, fresh.release(), free_compiled);
}

}  // namespace

int RegisterRegexp(sqlite3* db) {
  return sqlite3_create_function_v2(db, "regexp", 3, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                    regexp, nullptr, nullptr, nullptr);
}

}  // namespace sqlite_functions
}  // namespace tessel
