// The bit-string SQL functions that SQLite statements from the library call
// in place of PostgreSQL's bit operators. Bit strings are texts of '0' and
// '1'; results match PostgreSQL's operators on the same inputs:
//   str_bit_and(a, b)          a & b   (equal lengths)
//   str_bit_or(a, b)           a | b   (equal lengths)
//   str_bit_xor(a, b)          a # b   (equal lengths)
//   str_bit_not(a)             ~a
//   str_bit_shift_left(a, n)   a << n  (length kept, zero fill; n < 0 shifts right)
//   str_bit_shift_right(a, n)  a >> n
// NULL in any argument gives NULL; other bad input is an SQL error.
#ifndef VEXEL_HOST_SQLITE_BITSTRINGFUNCTIONS_H
#define VEXEL_HOST_SQLITE_BITSTRINGFUNCTIONS_H

struct sqlite3;

namespace tessel {
namespace sqlite_functions {

// Returns an SQLite result code.
int RegisterBitStringFunctions(sqlite3* db);

}  // namespace sqlite_functions
}  // namespace tessel

#endif  // VEXEL_HOST_SQLITE_BITSTRINGFUNCTIONS_H
