// Text as a JSON string literal, quotes included.
#ifndef HOST_JSON_TEXT_H_
#define HOST_JSON_TEXT_H_

#include <string>

// Bytes that aren't valid UTF-8 (file names may hold them) are written as \u00XX escapes of
// their byte value, so the output is always valid JSON.
std::string jsonString(const std::string& utf8);

#endif  // HOST_JSON_TEXT_H_
