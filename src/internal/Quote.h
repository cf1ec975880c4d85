// Quoting of names and texts that the catalogue reads back from the
// database and writes into its next statements. Such a name may be
// anything a CREATE statement accepted ("Orders", "a b", or a text holding
// a quote and a whole statement), so it is quoted whenever it is not a
// plain identifier; a plain one stays as it is, and the statement text
// with it.
#ifndef VEXEL_INTERNAL_QUOTE_H
#define VEXEL_INTERNAL_QUOTE_H

#include <string>

namespace vexel {
namespace internal {

// PostgreSQL, as its quote_ident does: bare when it matches [a-z_][a-z0-9_]*
// and is not a keyword that needs quotes; else in double quotes with inner
// double quotes doubled. An empty name stays empty.
std::string pg_ident(const std::string& name);

// SQLite: bare when it matches [A-Za-z_][A-Za-z0-9_]* (SQLite folds case)
// and is not a keyword; else in double quotes as above.
std::string sqlite_ident(const std::string& name);

// SQL Server: bare when a plain identifier and no keyword; else in square
// brackets with inner closing brackets doubled.
std::string sqlserver_ident(const std::string& name);

// A whole PostgreSQL literal, as quote_literal writes it: 'text' with inner
// quotes doubled, and E'...' with doubled backslashes when the text holds
// a backslash, which reads the same under either standard_conforming_strings.
std::string pg_literal(const std::string& text);

// The inside of a literal whose quotes the statement text already has:
// single quotes doubled.
std::string literal_body(const std::string& text);

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_INTERNAL_QUOTE_H
