// What a file really is, from the first 64 characters of its content and its extension.
#ifndef PELLIXKERNEL_FILE_TYPE_SNIFF_H_
#define PELLIXKERNEL_FILE_TYPE_SNIFF_H_

#include <cstdint>
#include <string>

// The file type numbers; 3 and 8 aren't assigned.
enum _FileType : int32_t {
  FT_UNKNOWN = 0,
  FT_AI = 1,
  FT_PSD = 2,
  FT_CDR_ZIP = 4,
  FT_CDR_RIFF = 5,
  FT_PDF = 6,  // also EPS
  FT_TIFF = 7,
  FT_JPEG = 9,
  FT_PNG = 10,
  FT_BMP = 11,
  FT_GIF = 12,
  FT_JC = 13,
  FT_IMAGE = 14,  // any raster image for the in-process route
  FT_PPTX = 15,
  FT_INDD = 16,
  FT_WEBP = 17,
  FT_PCX = 18,
};

// The form every request uses. The path may carry "\\?\"; the raster types come out as 14.
int sniffFileType(const std::wstring& path);

// The form that knows more types and tells the raster ones apart by their magic bytes. Takes
// the narrow path that wsToNarrowPath gives.
int sniffFileTypeNarrow(const char* path);

// The first `count` bytes of `head` as lower-case hexadecimal, each printed with "%2x" (so a
// byte below 0x10 has a leading blank).
std::string hexOfHead(const std::string& head, uint16_t count);

// The first 64 characters of a file as a stream in text mode gives them: CR LF reads as LF,
// a 0x1A byte ends the text, and what the file lacks stays zero. All zero when the file
// can't be read.
std::string readFileHead(const std::wstring& path);

#endif  // PELLIXKERNEL_FILE_TYPE_SNIFF_H_
