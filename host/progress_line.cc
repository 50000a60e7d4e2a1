#include "host/progress_line.h"

#include <unistd.h>

#include <cstdio>

ProgressLine::ProgressLine(size_t total)
    : shown_(::isatty(STDERR_FILENO) == 1 && total > 1),
      total_(total),
      start_(std::chrono::steady_clock::now()) {}

ProgressLine::~ProgressLine() {
  if (shown_ && done_ > 0) std::fprintf(stderr, "\r\033[K");
}

void ProgressLine::step() {
  ++done_;
  if (!shown_) return;
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  const double rate = seconds > 0 ? static_cast<double>(done_) / seconds : 0.0;
  const double left = rate > 0 ? static_cast<double>(total_ - done_) / rate : 0.0;
  std::fprintf(stderr, "\r\033[K%zu/%zu  %.1f files/s  %.0f s left", done_, total_, rate, left);
  std::fflush(stderr);
}
