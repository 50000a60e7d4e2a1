// Writing a whole file through a temporary name beside it, so that no reader ever sees half
// of it and a failed write leaves the old file as it was.
#ifndef COMMON_SOURCE_FILE_REPLACE_H_
#define COMMON_SOURCE_FILE_REPLACE_H_

#include <string>

#include "platform/env.h"

// Writes `bytes` to a new file beside `path` and renames it to `path`, replacing what was
// there. On failure nothing of the attempt is left behind.
platform::Status replaceFileContent(const std::wstring& path, const std::string& bytes);

#endif  // COMMON_SOURCE_FILE_REPLACE_H_
