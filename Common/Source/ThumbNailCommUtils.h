// ThumbNailCommUtils: where a preview lies, worked out again from its source path alone, and
// the writing of a thumbnail that a document carries as Base64 text.
//
// A regular preview lies in the caller's folder and is named after its source: name, page
// number from 1, preview type ("logo.psd.1.jpg"). When that path would reach 260 characters,
// the preview goes to the long-path tree under the preview root instead:
// <root>\KvnLongPath\<volume serial>\mid\<MD5 of the source path without its drive>.jpg.
#ifndef COMMON_SOURCE_THUMBNAILCOMMUTILS_H_
#define COMMON_SOURCE_THUMBNAILCOMMUTILS_H_

#include <cstdint>
#include <string>

class ThumbNailCommUtils {
 public:
  // The regular preview of page 1: folder, '\', the source's file name, ".1.", thumb_type.
  // Empty if either argument is empty.
  static std::wstring getThumbPath(const std::wstring& source_path,
                                   const std::wstring& dst_folder);

  // The preview of size mid in the long-path tree. Empty for an empty source or an empty
  // thumb_type.
  static std::wstring getLongPathThumb(const std::wstring& source_path);

  // True if the path lies in the long-path tree (the marker folder in any case).
  static bool isLongPathThumb(const std::wstring& path);

  // The same preview in the other of the folders mid and min, or the path unchanged.
  static std::wstring getMidMinSibling(const std::wstring& path);

  // The path with the page field (between its last two dots) replaced; empty if the path
  // has fewer than two dots.
  static std::wstring setThumbPage(const std::wstring& path, uint16_t page);

  // The page field of a preview path as text.
  static std::wstring getThumbPage(const std::wstring& path);

  // MD5 of UTF-8 text with the ASCII letters folded to lower case, as 32 lower-case
  // hexadecimal digits; empty for empty text.
  static std::string getPathMd5(const std::string& text);

  // The text after the last '\'; empty if there is none.
  static std::wstring getFileNameOf(const std::wstring& path);

  // The path with `text` put before its last dot; the path itself if it has no dot.
  static std::wstring insertBeforeExt(const std::wstring& path, const std::wstring& text);

  // Decodes Base64 text and writes the bytes to `path` (its folders made). Tells the
  // standard output when there is nothing to write or the folder can't be made; nothing is
  // thrown.
  static void saveThumbNail(const std::wstring& path, const std::string& image);
};

// Base64 (the standard alphabet) to bytes: groups of four characters, CR and LF skipped
// between groups, '=' ending a group, any other character read as 0. Stops after `length`
// characters by its count of four a group and one a line break, and never reads past the
// end of the data. `out_count` is raised by one for each byte written to `out_text`.
void decodeBase64(const char* data, int32_t length, std::string& out_text, uint32_t& out_count);

#endif  // COMMON_SOURCE_THUMBNAILCOMMUTILS_H_
