// The progress line of a long run on a terminal: count, rate and time left, rewritten in
// place on the standard error stream.
#ifndef HOST_PROGRESS_LINE_H_
#define HOST_PROGRESS_LINE_H_

#include <chrono>
#include <cstddef>

class ProgressLine {
 public:
  // Shown only when the standard error stream is a terminal.
  explicit ProgressLine(size_t total);
  ~ProgressLine();

  // One more file is done.
  void step();

 private:
  bool shown_;
  size_t total_;
  size_t done_ = 0;
  std::chrono::steady_clock::time_point start_;
};

#endif  // HOST_PROGRESS_LINE_H_
