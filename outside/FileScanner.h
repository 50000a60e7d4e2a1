// The scanner's file record, of which the kernel carries only the assignment.
#ifndef OUTSIDE_FILESCANNER_H_
#define OUTSIDE_FILESCANNER_H_

#include <cstdint>

class __attribute__((visibility("default"))) FileScanner {
 public:
  FileScanner& operator=(const FileScanner& other);

 private:
  uint64_t handle_ = 0;
};

#endif  // OUTSIDE_FILESCANNER_H_
