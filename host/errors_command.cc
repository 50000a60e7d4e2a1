// pellix errors [CODE...]: the message of each code, or the whole table.
#include <cstdio>
#include <cstdlib>

#include "Common/Source/text_forms.h"
#include "errors/error_table.h"
#include "host/commands.h"

namespace {

void printRow(int code, const errors::ErrorLookup& found) {
  switch (found.kind) {
    case errors::ErrorLookup::Kind::kMessage:
      std::printf("%d\t%s\n", code, wsToUtf8(found.message).c_str());
      break;
    case errors::ErrorLookup::Kind::kNoKnownMessage:
      std::printf("%d\t(no known message)\n", code);
      break;
    case errors::ErrorLookup::Kind::kNotInTable:
      std::printf("%d\t(not in the table)\n", code);
      break;
  }
}

}  // namespace

int runErrors(const Args& args) {
  if (args.empty()) {
    for (const errors::ErrorRow& row : errors::errorTable()) {
      printRow(row.code, row.has_known_message
                             ? errors::ErrorLookup{errors::ErrorLookup::Kind::kMessage, row.message}
                             : errors::ErrorLookup{errors::ErrorLookup::Kind::kNoKnownMessage, {}});
    }
    return kExitOk;
  }
  int status = kExitOk;
  for (const std::string& word : args) {
    char* end = nullptr;
    const long code = std::strtol(word.c_str(), &end, 10);
    if (word.empty() || *end != '\0') return usageError("not a code: " + word);
    const errors::ErrorLookup found = errors::lookupError(static_cast<int>(code));
    if (found.kind == errors::ErrorLookup::Kind::kNotInTable) status = kExitFailed;
    printRow(static_cast<int>(code), found);
  }
  return status;
}
