// The main of every test program: GoogleTest, glog writing to the standard error stream
// (never to files) so that log sinks of the tests see every line, and a home folder of the
// program's own, so that no settings file of a test (or of a program it starts) lands in the
// user's.
#include <glog/logging.h>
#include <gtest/gtest.h>

#include "testing/test_support.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  FLAGS_logtostderr = true;
  FLAGS_minloglevel = 0;
  google::InitGoogleLogging(argv[0]);
  pellix_test::useOwnHome();
  return RUN_ALL_TESTS();
}
