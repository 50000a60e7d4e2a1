// Pure string logic between the kernel's Windows-form wide paths and POSIX file names.
//
// Nothing here touches the file system: the drive table is handed in, so every rule can be
// tested with tables of input and expected output.
#ifndef PLATFORM_WINDOWS_PATH_H_
#define PLATFORM_WINDOWS_PATH_H_

#include <string>
#include <vector>

namespace platform {

// One row of the drive table: a drive letter and the POSIX folder that is its root.
struct DriveRoot {
  wchar_t letter;          // upper case, 'A' to 'Z'
  std::string posix_root;  // absolute, without a closing '/' unless it is "/" itself
};

// UTF-16 code units (one per wchar_t, as the kernel holds wide text) to the bytes of a POSIX
// file name. Surrogate pairs are joined into one four-byte sequence. A lone surrogate from
// U+DC80 to U+DCFF stands for the raw byte it encodes (see FileNameToUtf16); any other lone
// surrogate keeps its three-byte form. An element above U+FFFF is taken as a code point.
std::string Utf16ToFileName(const std::wstring& text);

// The bytes of a POSIX file name to UTF-16 code units. Well-formed UTF-8 is decoded, with
// characters above U+FFFF as surrogate pairs; a byte that isn't part of a well-formed
// sequence becomes the lone surrogate U+DC00 + byte, so that every file name survives the
// round trip through wide text unchanged.
std::wstring FileNameToUtf16(const std::string& name);

// Drops a leading "\\?\" (the long-path prefix). Other text is returned unchanged.
std::wstring StripLongPathPrefix(const std::wstring& path);

// Maps a Windows path to a POSIX path through `drives`: drops the long-path prefix, looks the
// drive letter up (without regard to case), resolves "." and ".." by their text as Windows
// does, and joins the parts with '/'. Both '\' and '/' separate parts. Fails (false) for a
// drive that isn't in the table, for UNC and device paths, for paths without a drive letter
// and for text holding a NUL.
bool WindowsToPosix(const std::wstring& windows_path, const std::vector<DriveRoot>& drives,
                    std::string* posix_path);

// Maps an absolute POSIX path to its Windows form: the drive whose root is the longest
// prefix of the path (whole parts only) gives the letter. "." and ".." are resolved by
// their text first. Fails for a relative path or one that no drive holds.
bool PosixToWindows(const std::string& posix_path, const std::vector<DriveRoot>& drives,
                    std::wstring* windows_path);

// Resolves "." and ".." parts and repeated '/' of an absolute POSIX path by text alone.
std::string NormalizePosixPath(const std::string& path);

}  // namespace platform

#endif  // PLATFORM_WINDOWS_PATH_H_
