// The main of every test program: GoogleTest, and glog writing to the standard error stream
// (never to files) so that log sinks of the tests see every line.
#include <glog/logging.h>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  FLAGS_logtostderr = true;
  FLAGS_minloglevel = 0;
  google::InitGoogleLogging(argv[0]);
  return RUN_ALL_TESTS();
}
