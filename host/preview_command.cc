// pellix preview [-s WxH] [--no-keep-ratio] [--json] -o DIR PATH...: one getView a file,
// folders walked, one file at a time.
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>

#include "Common/Source/text_forms.h"
#include "errors/error_table.h"
#include "errors/result_codes.h"
#include "host/commands.h"
#include "host/host_paths.h"
#include "host/json_text.h"
#include "host/kernel_module.h"
#include "host/progress_line.h"
#include "host/stop_signal.h"

namespace {

struct PreviewOptions {
  uint32_t width = 800;
  uint32_t height = 800;
  bool keep_ratio = true;
  bool json = false;
  std::string out_dir;
  std::vector<std::string> paths;
};

// Parses the words; an error text when the call is wrong.
std::optional<std::string> parse(const Args& args, PreviewOptions* opt) {
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a == "-s" || a == "--size") {
      if (++i == args.size() || !parseSize(args[i], &opt->width, &opt->height))
        return "-s wants WIDTHxHEIGHT, both above 0";
    } else if (a == "-o" || a == "--out") {
      if (++i == args.size()) return "-o wants a folder";
      opt->out_dir = args[i];
    } else if (a == "--no-keep-ratio") {
      opt->keep_ratio = false;
    } else if (a == "--json") {
      opt->json = true;
    } else if (a == "--") {
      opt->paths.insert(opt->paths.end(), args.begin() + static_cast<long>(i) + 1, args.end());
      break;
    } else if (!a.empty() && a[0] == '-') {
      return "unknown option " + a;
    } else {
      opt->paths.push_back(a);
    }
  }
  if (opt->out_dir.empty()) return "preview needs -o DIR";
  if (opt->paths.empty()) return "preview needs at least one PATH";
  return std::nullopt;
}

// The files to preview: each path, with folders walked (in name order, links to folders not
// followed).
std::vector<std::string> collectFiles(const std::vector<std::string>& paths) {
  std::vector<std::string> files;
  for (const std::string& path : paths) {
    const std::string abs = absolutePosixPath(path);
    std::error_code ec;
    if (!std::filesystem::is_directory(abs, ec)) {
      files.push_back(abs);
      continue;
    }
    std::vector<std::string> found;
    for (auto it = std::filesystem::recursive_directory_iterator(
             abs, std::filesystem::directory_options::skip_permission_denied, ec);
         !ec && it != std::filesystem::recursive_directory_iterator(); it.increment(ec)) {
      if (!it->is_directory(ec)) found.push_back(it->path().string());
    }
    std::sort(found.begin(), found.end());
    files.insert(files.end(), found.begin(), found.end());
  }
  return files;
}

void report(const PreviewOptions& opt, const std::string& src, int code,
            const std::vector<std::string>& previews) {
  if (opt.json) {
    std::string line = "{\"src\":" + jsonString(src) + ",\"code\":" + std::to_string(code) +
                       ",\"message\":" + jsonString(messageOf(code)) + ",\"previews\":[";
    for (size_t i = 0; i < previews.size(); ++i) {
      line += (i ? "," : "") + jsonString(previews[i]);
    }
    std::printf("%s]}\n", line.c_str());
  } else {
    std::printf("%d\t%s%s%s\n", code, src.c_str(), code ? "\t" : "", messageOf(code).c_str());
    for (const std::string& p : previews) std::printf("\t-> %s\n", p.c_str());
  }
  std::fflush(stdout);
}

}  // namespace

bool parseSize(const std::string& text, uint32_t* width, uint32_t* height) {
  unsigned long w = 0, h = 0;
  char x = 0, rest = 0;
  if (std::sscanf(text.c_str(), "%lu%c%lu%c", &w, &x, &h, &rest) != 3 || (x != 'x' && x != 'X'))
    return false;
  if (w == 0 || h == 0 || w > 0xFFFFFFFFul || h > 0xFFFFFFFFul) return false;
  *width = static_cast<uint32_t>(w);
  *height = static_cast<uint32_t>(h);
  return true;
}

std::string messageOf(int code) {
  if (code == codes::kOk) return "";
  const errors::ErrorLookup found = errors::lookupError(code);
  if (found.kind == errors::ErrorLookup::Kind::kMessage) return wsToUtf8(found.message);
  return found.kind == errors::ErrorLookup::Kind::kNoKnownMessage ? "(no known message)"
                                                                  : "(not in the table)";
}

int runPreview(const Args& args) {
  PreviewOptions opt;
  if (auto error = parse(args, &opt)) return usageError(*error);
  StopSignal stop;
  KernelModule module;
  std::string load_error;
  if (!module.open(&load_error)) {
    std::fprintf(stderr, "pellix: %s\n", load_error.c_str());
    return kExitFailed;
  }
  IPellix* kernel = module.kernel();
  stop.attach(kernel);

  std::wstring out_dir;
  if (!toKernelPath(opt.out_dir, &out_dir)) {
    std::fprintf(stderr, "pellix: no drive holds the folder %s\n", opt.out_dir.c_str());
    return kExitFailed;
  }
  const std::vector<std::string> files = collectFiles(opt.paths);
  const auto start = std::chrono::steady_clock::now();
  size_t done = 0, failed = 0;
  {
    ProgressLine progress(files.size());
    for (const std::string& file : files) {
      if (stop.requested()) break;
      std::wstring src;
      std::vector<std::wstring> made;
      // A file that no drive holds can't be named to the kernel at all.
      const int code = toKernelPath(file, &src)
                           ? kernel->getView(src, opt.width, opt.height, opt.keep_ratio, out_dir,
                                             made, false, 0)
                           : codes::kPathNotUsable;
      std::vector<std::string> previews;
      for (const std::wstring& p : made) {
        if (!p.empty()) previews.push_back(fromKernelPath(p));
      }
      report(opt, file, code, previews);
      ++done;
      failed += code != codes::kOk;
      progress.step();
    }
  }
  stop.attach(nullptr);
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  std::fprintf(stderr, "%zu of %zu files, %zu with previews, %zu failed, %.1f s%s\n", done,
               files.size(), done - failed, failed, seconds,
               stop.requested() ? ", stopped by request" : "");
  if (stop.requested()) return kExitInterrupted;
  return failed == 0 ? kExitOk : kExitFailed;
}
