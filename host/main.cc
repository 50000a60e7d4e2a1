// pellix: the host program. It loads the preview kernel as the product's host does and
// drives it from the command line.
#include <glog/logging.h>

#include <cstdio>
#include <cstring>

#include "host/commands.h"

namespace {

constexpr char kUsage[] =
    "usage: pellix [-v | -q] COMMAND [ARGS]\n"
    "\n"
    "Commands:\n"
    "  sniff PATH...             the file type number of each file, a tab, the path\n"
    "  preview [-s WxH] [--no-keep-ratio] [--json] -o DIR PATH...\n"
    "                            previews of each file (folders are walked) into DIR;\n"
    "                            per file its code, message and the previews made\n"
    "  errors [CODE...]          the message of each code, or the whole table\n"
    "  config get KEY            the value stored under KEY in the settings table\n"
    "  config set KEY VALUE      stores VALUE under KEY (thumb_base_path takes a folder)\n"
    "  config list               every key and value of the settings table\n"
    "  where SRC DIR             where the previews of SRC for the folder DIR go: the\n"
    "                            preview root, the regular preview, and the preview in\n"
    "                            the long-path tree when the regular path is too long;\n"
    "                            a line each, kind, tab, POSIX path, tab, Windows path\n"
    "  zoom SRC WxH OUT          SRC zoomed to fit WxH, written to OUT; prints the code\n"
    "  cut SRC LEFT TOP RIGHT BOTTOM VIEWMAX OUT\n"
    "                            the rectangle of a view of SRC whose long side is\n"
    "                            VIEWMAX (below 1: SRC's own pixels), written to OUT\n"
    "\n"
    "Options:\n"
    "  -v, --verbose             show the kernel's log from INFO up (default: ERROR lines)\n"
    "  -q, --quiet               show no kernel log\n"
    "  -h, --help                this text\n"
    "\n"
    "Exit status: 0 all done, 1 some file failed, 2 a wrong call, 130 stopped by Ctrl-C.\n";

struct Command {
  const char* name;
  int (*run)(const Args&);
};

constexpr Command kCommands[] = {
    {"sniff", runSniff},
    {"preview", runPreview},
    {"errors", runErrors},
    {"config", runConfig},
    {"where", runWhere},
    {"zoom", runZoom},
    {"cut", runCut},
};

}  // namespace

int usageError(const std::string& text) {
  std::fprintf(stderr, "pellix: %s\nTry 'pellix --help'.\n", text.c_str());
  return kExitUsage;
}

int main(int argc, char** argv) {
  FLAGS_logtostderr = true;
  FLAGS_minloglevel = google::GLOG_ERROR;
  int i = 1;
  for (; i < argc && argv[i][0] == '-'; ++i) {
    const std::string opt = argv[i];
    if (opt == "-h" || opt == "--help") {
      std::fputs(kUsage, stdout);
      return kExitOk;
    } else if (opt == "-v" || opt == "--verbose") {
      FLAGS_minloglevel = google::GLOG_INFO;
    } else if (opt == "-q" || opt == "--quiet") {
      FLAGS_minloglevel = google::GLOG_FATAL;
    } else {
      return usageError("unknown option " + opt);
    }
  }
  if (i == argc) return usageError("no command given");
  google::InitGoogleLogging("pellix");
  const std::string name = argv[i];
  const Args args(argv + i + 1, argv + argc);
  for (const Command& c : kCommands) {
    if (name == c.name) return c.run(args);
  }
  return usageError("unknown command " + name);
}
