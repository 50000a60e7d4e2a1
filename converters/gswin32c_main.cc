// gswin32c.exe: Ghostscript under the name the kernel starts it by. It runs the real `gs`
// with the options of its command line, the input files and the output name mapped through
// the drive table.
//
// Documents are programs from anywhere: gs always runs in its safe mode here, whatever the
// command line says (-dNOSAFER is dropped), with a temporary folder of its own and without
// GS_OPTIONS or GS_LIB from the environment, so that a document can't reach the file system
// beyond its input and its output. Only the options that rendering to images needs are
// taken; any other option refuses the whole command line.
#include <cctype>
#include <set>
#include <string>
#include <vector>

#include "converters/converter_support.h"

namespace {

constexpr char kProgram[] = "gswin32c.exe";

const std::set<std::string> kPlainSwitches = {"-q",        "-dQUIET",    "-dBATCH",
                                              "-dNOPAUSE", "-dNOPROMPT", "-dEPSCrop"};
const std::set<std::string> kNumberSwitches = {"GraphicsAlphaBits", "TextAlphaBits", "FirstPage",
                                               "LastPage", "JPEGQ"};
const std::set<std::string> kSafetySwitches = {"SAFER", "NOSAFER", "DELAYSAFER"};
const std::set<std::string> kImageDevices = {"jpeg",    "jpeggray", "png16m",
                                             "pnggray", "png256",   "pngalpha",
                                             "bmp16m",  "tiff24nc", "tiffgray"};
constexpr char kOutputFile[] = "-sOutputFile=";
constexpr char kDevice[] = "-sDEVICE=";

bool allDigits(const std::string& text) {
  if (text.empty()) return false;
  for (char c : text) {
    if (!std::isdigit(static_cast<unsigned char>(c))) return false;
  }
  return true;
}

bool startsWith(const std::string& text, const std::string& head) {
  return text.compare(0, head.size(), head) == 0;
}

// "-rN" or "-rNxM".
bool isResolution(const std::string& arg) {
  if (!startsWith(arg, "-r")) return false;
  const std::string value = arg.substr(2);
  const size_t x = value.find('x');
  if (x == std::string::npos) return allDigits(value);
  return allDigits(value.substr(0, x)) && allDigits(value.substr(x + 1));
}

// The name of a "-dNAME" or "-dNAME=VALUE" switch (also "-D"), empty for anything else.
std::string defineName(const std::string& arg) {
  if (arg.size() < 3 || arg[0] != '-' || (arg[1] != 'd' && arg[1] != 'D')) return std::string();
  return arg.substr(2, arg.find('=') - 2);
}

// The output name is a pattern for gs: "%d" stands for the page number and "%%" for a '%'.
// The kernel wrote the Windows part so; the drive's root folder is doubled here.
bool mapOutputName(const std::string& windows_name, std::string* posix_name) {
  std::string mapped;
  if (!converters::mapPath(windows_name, &mapped)) return false;
  const std::string root = converters::driveRootOf(windows_name);
  if (root.empty() || root == "/" || !startsWith(mapped, root)) {
    *posix_name = mapped;
    return true;
  }
  std::string escaped;
  for (char c : root) escaped += c == '%' ? std::string("%%") : std::string(1, c);
  *posix_name = escaped + mapped.substr(root.size());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> args = {"-dSAFER"};
  bool has_output = false, has_input = false;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    const std::string define = defineName(arg);
    std::string output;
    if (kSafetySwitches.count(define) > 0) continue;
    if (kPlainSwitches.count(arg) > 0 || isResolution(arg)) {
      args.push_back(arg);
    } else if (kNumberSwitches.count(define) > 0 && arg.find('=') != std::string::npos &&
               allDigits(arg.substr(arg.find('=') + 1))) {
      args.push_back(arg);
    } else if (startsWith(arg, kDevice) && kImageDevices.count(arg.substr(sizeof(kDevice) - 1))) {
      args.push_back(arg);
    } else if (startsWith(arg, kOutputFile) || (arg == "-o" && i + 1 < argc)) {
      const std::string name = arg == "-o" ? argv[++i] : arg.substr(sizeof(kOutputFile) - 1);
      if (!converters::isDrivePath(name) || !mapOutputName(name, &output)) {
        return converters::fail(kProgram, "no drive holds the output " + name,
                                converters::kExitBadCommandLine);
      }
      args.push_back(kOutputFile + output);
      // gs's own -o also means -dBATCH -dNOPAUSE.
      if (arg == "-o") args.insert(args.end(), {"-dBATCH", "-dNOPAUSE"});
      has_output = true;
    } else if (!arg.empty() && arg[0] != '-' && arg[0] != '@') {
      std::string input;
      if (!converters::isDrivePath(arg) || !converters::mapPath(arg, &input)) {
        return converters::fail(kProgram, "no drive holds the input " + arg,
                                converters::kExitBadCommandLine);
      }
      args.push_back(input);
      has_input = true;
    } else {
      return converters::fail(kProgram, "option not taken: " + arg,
                              converters::kExitBadCommandLine);
    }
  }
  if (!has_output || !has_input) {
    return converters::fail(kProgram, "an input file and -sOutputFile are both needed",
                            converters::kExitBadCommandLine);
  }
  const int status = converters::runTool(kProgram, "gs", args, {"GS_OPTIONS", "GS_LIB"});
  return status < 0 ? converters::kExitFailed : status;
}
