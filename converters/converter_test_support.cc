#include "converters/converter_test_support.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>

#include "Common/Source/ProcessUtils.h"
#include "platform/windows_path.h"

namespace converter_test {

TestDrives::TestDrives() {
  d_ = tmp_.mkdir("disk d $(touch x);'q'");
  e_ = tmp_.mkdir("disk e 图");
  const std::string table = tmp_.mkdir("dosdevices");
  EXPECT_EQ(::symlink(d_.c_str(), (table + "/d:").c_str()), 0);
  EXPECT_EQ(::symlink(e_.c_str(), (table + "/e:").c_str()), 0);
  const std::string utils = pellix_test::stageBin() + "/Utils";
  EXPECT_EQ(::symlink(utils.c_str(), (table + "/s:").c_str()), 0);
  // The whole file system, where programs and their modules lie.
  EXPECT_EQ(::symlink("/", (table + "/z:").c_str()), 0);
  ::setenv("PELLIX_DRIVE_TABLE", table.c_str(), 1);
}

TestDrives::~TestDrives() { ::unsetenv("PELLIX_DRIVE_TABLE"); }

std::wstring converterPath(const std::wstring& name_in_utils) { return L"S:\\" + name_in_utils; }

platform::ProcessExit runLikeTheKernel(const std::wstring& exe, const std::wstring& line) {
  platform::Env* env = platform::Env::Default();
  platform::ProcessHandle process = ProcessCommUtils::runExeInSilence(exe, line, 120000);
  platform::ProcessExit exit;
  EXPECT_NE(process, nullptr) << platform::Utf16ToFileName(exe);
  EXPECT_TRUE(env->GetProcessExit(process, &exit))
      << "still running: " << platform::Utf16ToFileName(line);
  env->CloseProcess(process);
  return exit;
}

std::string makePpm(int width, int height, const std::function<Rgb(int x, int y)>& colour) {
  std::string bytes = "P6\n" + std::to_string(width) + " " + std::to_string(height) + "\n255\n";
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      for (int c : colour(x, y)) bytes.push_back(static_cast<char>(c));
    }
  }
  return bytes;
}

void put16(std::string* bytes, size_t at, int value) {
  (*bytes)[at] = static_cast<char>(value & 0xFF);
  (*bytes)[at + 1] = static_cast<char>((value >> 8) & 0xFF);
}

namespace {

// Run-length coding of one scan line: a count byte (0xC0 + n) before a repeated byte, or
// the byte alone when it stands once and is below 0xC0.
std::string encodeLine(const std::string& raw) {
  std::string out;
  for (size_t i = 0; i < raw.size();) {
    size_t n = 1;
    while (i + n < raw.size() && raw[i + n] == raw[i] && n < 63) ++n;
    if (n > 1 || static_cast<unsigned char>(raw[i]) >= 0xC0) {
      out.push_back(static_cast<char>(0xC0 | n));
    }
    out.push_back(raw[i]);
    i += n;
  }
  return out;
}

}  // namespace

std::string makePcx(int bits, int planes, int width, int height,
                    const std::function<int(int, int, int)>& value, const std::string& palette) {
  std::string bytes(128, '\0');
  const int bytes_per_line = ((width * bits + 7) / 8 + 1) / 2 * 2;
  bytes[0] = 0x0A;  // maker
  bytes[1] = 5;     // version
  bytes[2] = 1;     // run-length coded
  bytes[3] = static_cast<char>(bits);
  put16(&bytes, 8, width - 1);
  put16(&bytes, 10, height - 1);
  put16(&bytes, 12, 72);
  put16(&bytes, 14, 72);
  for (int i = 0; i < 3; ++i) bytes[16 + 3 + i] = static_cast<char>(0xFF);  // entry 1: white
  bytes[65] = static_cast<char>(planes);
  put16(&bytes, 66, bytes_per_line);
  put16(&bytes, 68, 1);
  for (int y = 0; y < height; ++y) {
    std::string raw;
    for (int plane = 0; plane < planes; ++plane) {
      std::string line(static_cast<size_t>(bytes_per_line), '\0');
      for (int x = 0; x < width; ++x) {
        const int v = value(x, y, plane);
        if (bits == 8) {
          line[static_cast<size_t>(x)] = static_cast<char>(v);
        } else if (v != 0) {
          line[static_cast<size_t>(x / 8)] |= static_cast<char>(0x80 >> (x % 8));
        }
      }
      raw += line;
    }
    bytes += encodeLine(raw);
  }
  if (!palette.empty()) bytes += '\x0C' + palette;
  return bytes;
}

void makePdf(const std::string& pdf_path, const std::string& postscript) {
  const std::string ps_path = pdf_path + ".ps";
  // Ghostscript's output name is a pattern, in which "%%" stands for '%'.
  std::string pattern;
  for (char c : pdf_path) pattern += c == '%' ? std::string("%%") : std::string(1, c);
  pellix_test::writeFile(ps_path, postscript);
  const pellix_test::RunResult made =
      pellix_test::run({"/usr/bin/gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE",
                        "-sDEVICE=pdfwrite", "-sOutputFile=" + pattern, ps_path});
  ::unlink(ps_path.c_str());
  ASSERT_EQ(made.status, 0) << made.err;
}

std::string base64(const std::string& bytes) {
  static const char kAlphabet[] =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  for (size_t i = 0; i < bytes.size(); i += 3) {
    uint32_t v = static_cast<uint32_t>(static_cast<unsigned char>(bytes[i])) << 16;
    if (i + 1 < bytes.size()) v |= static_cast<uint32_t>(static_cast<unsigned char>(bytes[i + 1])) << 8;
    if (i + 2 < bytes.size()) v |= static_cast<unsigned char>(bytes[i + 2]);
    out += kAlphabet[(v >> 18) & 63];
    out += kAlphabet[(v >> 12) & 63];
    out += i + 1 < bytes.size() ? kAlphabet[(v >> 6) & 63] : '=';
    out += i + 2 < bytes.size() ? kAlphabet[v & 63] : '=';
  }
  return out;
}

namespace {

std::string xmpImage(const std::string& bytes) {
  const std::string text = base64(bytes);
  std::string out;
  for (size_t i = 0; i < text.size(); i += 76) out += (i > 0 ? "&#xA;" : "") + text.substr(i, 76);
  return "<rdf:li rdf:parseType=\"Resource\"><xmpGImg:format>JPEG</xmpGImg:format>"
         "<xmpGImg:image>" + out + "</xmpGImg:image></rdf:li>";
}

}  // namespace

std::string xmpPacket(const std::vector<std::string>& pages, const std::string& document) {
  std::string xmp =
      "<?xpacket begin=\"\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
      "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
      "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"><rdf:Description "
      "xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\" "
      "xmlns:xmpGImg=\"http://ns.adobe.com/xap/1.0/g/img/\" "
      "xmlns:xmpTPg=\"http://ns.adobe.com/xap/1.0/t/pg/\">\n";
  if (!document.empty()) {
    xmp += "<xmp:Thumbnails><rdf:Alt>" + xmpImage(document) + "</rdf:Alt></xmp:Thumbnails>\n";
  }
  xmp += "<xmpTPg:PageInfo><rdf:Seq>";
  for (const std::string& page : pages) xmp += xmpImage(page);
  return xmp + "</rdf:Seq></xmpTPg:PageInfo>\n</rdf:Description></rdf:RDF></x:xmpmeta>\n"
               "<?xpacket end=\"w\"?>";
}

std::string makeJpeg(int width, int height, const Rgb& colour) {
  pellix_test::TempDir tmp;
  const std::string ppm = tmp.write("p.ppm", makePpm(width, height, [&](int, int) { return colour; }));
  const pellix_test::RunResult made =
      pellix_test::run({"/usr/bin/gm", "convert", ppm, tmp.path() + "/p.jpg"});
  EXPECT_EQ(made.status, 0) << made.err;
  return pellix_test::readFile(tmp.path() + "/p.jpg");
}

Rgb Picture::at(int x, int y) const {
  const size_t i =
      (static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)) * 3;
  if (i + 2 >= rgb.size()) return {-1, -1, -1};
  return {static_cast<unsigned char>(rgb[i]), static_cast<unsigned char>(rgb[i + 1]),
          static_cast<unsigned char>(rgb[i + 2])};
}

Picture readPicture(const std::string& path) {
  Picture picture;
  const pellix_test::RunResult id =
      pellix_test::run({"/usr/bin/gm", "identify", "-format", "%m", path});
  std::istringstream(id.out) >> picture.format;
  const pellix_test::RunResult ppm = pellix_test::run({"/usr/bin/gm", "convert", path, "ppm:-"});
  std::istringstream header(ppm.out);
  std::string magic;
  int max = 0;
  header >> magic >> picture.width >> picture.height >> max;
  if (magic != "P6" || max != 255) {
    ADD_FAILURE() << "gm can't read " << path << ": " << ppm.err;
    return Picture();
  }
  const size_t start = static_cast<size_t>(header.tellg()) + 1;
  picture.rgb = ppm.out.substr(start);
  return picture;
}

bool near(const Rgb& a, const Rgb& b, int tolerance) {
  for (int i = 0; i < 3; ++i) {
    if (std::abs(a[i] - b[i]) > tolerance) return false;
  }
  return true;
}

std::string show(const Rgb& c) {
  return "(" + std::to_string(c[0]) + "," + std::to_string(c[1]) + "," + std::to_string(c[2]) + ")";
}

}  // namespace converter_test
