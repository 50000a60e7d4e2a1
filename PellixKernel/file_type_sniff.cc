#include "PellixKernel/file_type_sniff.h"

#include <cstdio>
#include <cwctype>
#include <initializer_list>

#include "Common/Source/text_forms.h"
#include "platform/env.h"

namespace {

constexpr size_t kHeadChars = 64;

// The extension lists of the in-process form, each entry closed by ';'.
constexpr wchar_t kImageList[] =
    L"*.bmp;*.gif;*.jng;*.jp2;*.jpc;*.jpeg;*.jpg;*.png;*.tiff;*.tif;*.emf;*.webp;*.jfif;";
constexpr wchar_t kJcList[] = L"*.jc1;*.jc8;*.jch;*.jcs;*.jar;";
constexpr wchar_t kPcxList[] = L"*.pcx;";

// Names whose extension says "raster image" to the magic probes.
constexpr const char* kRasterExtensions[] = {".png", ".psd",  ".jpg", ".jpeg", ".jfif",
                                             ".bmp", ".gif", ".tif", ".tiff"};

bool contains(const std::string& head, const char* mark) {
  return head.find(mark) != std::string::npos;
}

std::wstring lowerWide(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  return text;
}

// Lower case of the ASCII letters only, as the C runtime does in its default locale.
std::string lowerNarrow(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

bool isRasterExtension(const std::string& ext) {
  for (const char* e : kRasterExtensions) {
    if (ext == e) return true;
  }
  return false;
}

// Whether the extension (dot included) stands in a list as a whole entry: "*.peg;" is no
// entry of a list that holds "*.jpeg;", and a name that ends in a dot matches nothing.
bool inList(const wchar_t* list, const std::wstring& ext) {
  if (ext.size() < 2) return false;
  return std::wstring(list).find(L"*" + ext + L";") != std::wstring::npos;
}

enum class MarkVerdict { kNoMark, kType, kListStage };

// The magic stage shared by both forms: the first mark found decides.
MarkVerdict markStage(const std::string& head, const std::string& ext, bool knows_psb,
                      int* type) {
  if (contains(head, "PK")) {
    if (ext != ".cdr") return MarkVerdict::kListStage;
    *type = FT_CDR_ZIP;
    return MarkVerdict::kType;
  }
  if (contains(head, "RIFF")) {
    if (ext != ".cdr") return MarkVerdict::kListStage;
    *type = FT_CDR_RIFF;
    return MarkVerdict::kType;
  }
  if (contains(head, "%PDF")) {
    if (!contains(head, "0 obj")) return MarkVerdict::kListStage;
    if (ext == ".ai") *type = FT_AI;
    else if (ext == ".pdf") *type = FT_PDF;
    else return MarkVerdict::kListStage;
    return MarkVerdict::kType;
  }
  if (contains(head, "8BPS")) {
    if (ext != ".psd" && !(knows_psb && ext == ".psb")) return MarkVerdict::kListStage;
    *type = FT_PSD;
    return MarkVerdict::kType;
  }
  return MarkVerdict::kNoMark;
}

}  // namespace

std::string readFileHead(const std::wstring& path) {
  // 64 characters take at most 128 bytes (all CR LF pairs), and one more byte tells whether
  // a CR at the end is the first half of a pair.
  std::string raw;
  platform::Env::Default()->ReadFile(path, 0, kHeadChars * 2 + 1, &raw);
  std::string head(kHeadChars, '\0');
  size_t out = 0;
  for (size_t i = 0; i < raw.size() && out < kHeadChars; ++i) {
    char c = raw[i];
    if (c == '\x1A') break;
    if (c == '\r' && i + 1 < raw.size() && raw[i + 1] == '\n') {
      c = '\n';
      ++i;
    }
    head[out++] = c;
  }
  return head;
}

std::string hexOfHead(const std::string& head, uint16_t count) {
  std::string hex;
  const size_t n = count < head.size() ? count : head.size();
  for (size_t i = 0; i < n; ++i) {
    char digits[4];
    std::snprintf(digits, sizeof(digits), "%2x", static_cast<unsigned char>(head[i]));
    hex += digits;
  }
  return hex;
}

int sniffFileType(const std::wstring& path) {
  const size_t dot = path.rfind(L'.');
  if (dot == std::wstring::npos) return FT_UNKNOWN;
  const std::wstring wide_ext = lowerWide(path.substr(dot));
  const std::string ext = wsToUtf8(wide_ext);
  const std::string head = readFileHead(path);

  int type = FT_UNKNOWN;
  MarkVerdict verdict = markStage(head, ext, false, &type);
  if (verdict == MarkVerdict::kType) return type;
  if (verdict == MarkVerdict::kNoMark && ext == ".eps") return FT_PDF;

  if (inList(kImageList, wide_ext)) return FT_IMAGE;
  if (inList(kJcList, wide_ext)) return FT_JC;
  if (inList(kPcxList, wide_ext)) return FT_PCX;

  if (isRasterExtension(ext)) {
    const std::string narrow = wsToNarrowPath(path);
    return sniffFileTypeNarrow(narrow.c_str()) != FT_UNKNOWN ? FT_IMAGE : FT_UNKNOWN;
  }
  return FT_UNKNOWN;
}

int sniffFileTypeNarrow(const char* path) {
  if (path == nullptr) return FT_UNKNOWN;
  const std::string name = path;
  const size_t dot = name.rfind('.');
  if (dot == std::string::npos) return FT_UNKNOWN;
  const std::string ext = lowerNarrow(name.substr(dot));
  platform::Env* env = platform::Env::Default();
  const std::string head = readFileHead(env->WidenNarrowPath(name));

  if (ext == ".pptx") return FT_PPTX;
  int type = FT_UNKNOWN;
  MarkVerdict verdict = markStage(head, ext, true, &type);
  if (verdict == MarkVerdict::kType) return type;
  if (verdict == MarkVerdict::kNoMark) {
    if (isRasterExtension(ext)) {
      struct Probe {
        uint16_t bytes;
        const char* hex;
        int type;
      };
      for (const Probe& p : {Probe{3, "ffd8ff", FT_JPEG}, Probe{4, "89504e47", FT_PNG},
                             Probe{2, "424d", FT_BMP}, Probe{4, "47494638", FT_GIF},
                             Probe{2, "4949", FT_TIFF}, Probe{2, "4d4d", FT_TIFF}}) {
        if (hexOfHead(head, p.bytes) == p.hex) return p.type;
      }
    } else if (ext == ".eps") {
      return FT_PDF;
    } else if (ext == ".indd" || ext == ".indt") {
      return FT_INDD;
    }
  }
  return ext == ".webp" ? FT_WEBP : FT_UNKNOWN;
}
