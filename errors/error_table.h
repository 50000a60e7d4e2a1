// The product's table of result codes and their messages for the user, and a look-up by code.
#ifndef ERRORS_ERROR_TABLE_H_
#define ERRORS_ERROR_TABLE_H_

#include <string>
#include <vector>

namespace errors {

// One row of the table. Rows whose message this product's material doesn't carry keep
// their code with `has_known_message` false; a known message may really be empty.
struct ErrorRow {
  int code;
  std::wstring message;
  bool has_known_message;
};

// The whole table in its own order (not numeric): 773 rows, 6001 twice, -1 last. Built
// while the module loads, read-only afterwards.
const std::vector<ErrorRow>& errorTable();

// What the table says about one code.
struct ErrorLookup {
  enum class Kind {
    kMessage,         // the code's message (which may be empty)
    kNoKnownMessage,  // the code is in the table, its message isn't known
    kNotInTable,
  };
  Kind kind;
  std::wstring message;
};

// The row of `code`; for 6001, which stands twice, the first of its rows.
ErrorLookup lookupError(int code);

}  // namespace errors

#endif  // ERRORS_ERROR_TABLE_H_
