// What the converter tests share: a drive table of their own, the converters run as the
// kernel runs them, and pictures made byte by byte and read back through real GraphicsMagick.
#ifndef CONVERTERS_CONVERTER_TEST_SUPPORT_H_
#define CONVERTERS_CONVERTER_TEST_SUPPORT_H_

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "platform/env.h"
#include "testing/test_support.h"

namespace converter_test {

// Drives D: and E: with roots of odd names inside a temporary folder, S: for the stage
// tree's Utils folder and Z: for the whole file system, in force (for this process and the converters it starts) while the
// object lives.
class TestDrives {
 public:
  TestDrives();
  ~TestDrives();
  TestDrives(const TestDrives&) = delete;
  TestDrives& operator=(const TestDrives&) = delete;

  // The POSIX roots of the two drives.
  const std::string& d() const { return d_; }
  const std::string& e() const { return e_; }
  const pellix_test::TempDir& tmp() const { return tmp_; }

 private:
  pellix_test::TempDir tmp_;
  std::string d_, e_;
};

// The Windows path of a converter of the stage tree ("GM\\gm.exe", "gswin32c.exe"...)
// while TestDrives lives.
std::wstring converterPath(const std::wstring& name_in_utils);

// Runs the converter with the command line as the kernel does, waits for it (a minute at
// most) and gives how it ended; fails the test when it didn't end.
platform::ProcessExit runLikeTheKernel(const std::wstring& exe, const std::wstring& line);

using Rgb = std::array<int, 3>;

// A binary PPM picture of the given size, each pixel from `colour`.
std::string makePpm(int width, int height, const std::function<Rgb(int x, int y)>& colour);

// A picture as real GraphicsMagick reads it.
struct Picture {
  std::string format;  // as gm names it: "JPEG", "PNG"...
  int width = 0;
  int height = 0;
  std::string rgb;  // three bytes a pixel, row by row

  Rgb at(int x, int y) const;
};
Picture readPicture(const std::string& path);

// Writes a 16-bit little-endian number at `at`.
void put16(std::string* bytes, size_t at, int value);

// A PCX file: `bits` a pixel in each of `planes` planes, `value(x, y, plane)` the pixel's
// value in the plane; `palette` (768 bytes) is appended for 8-bit pictures of one plane.
std::string makePcx(int bits, int planes, int width, int height,
                    const std::function<int(int, int, int)>& value,
                    const std::string& palette = std::string());

// Turns PostScript into the PDF `pdf_path` with the real Ghostscript; fails the test when
// Ghostscript does.
void makePdf(const std::string& pdf_path, const std::string& postscript);

// An XMP packet as a design program writes it into its documents: a thumbnail of the whole
// document (when `document` isn't empty) and one of each page, each as Base64 text broken
// into lines of 76 characters by the character reference "&#xA;".
std::string xmpPacket(const std::vector<std::string>& pages, const std::string& document);

// A JPEG picture of the given size in one colour, made by real GraphicsMagick.
std::string makeJpeg(int width, int height, const Rgb& colour);

// The bytes in Base64, the standard alphabet with '=' padding.
std::string base64(const std::string& bytes);

// Each channel within `tolerance` of the other's.
bool near(const Rgb& a, const Rgb& b, int tolerance = 40);
std::string show(const Rgb& c);

}  // namespace converter_test

#endif  // CONVERTERS_CONVERTER_TEST_SUPPORT_H_
