// OpenCvTool: tells whether an encoded image is white all over, testing square tiles of it
// at a small fixed size.
#ifndef TESSELOPENCV_OPENCV_TOOL_H_
#define TESSELOPENCV_OPENCV_TOOL_H_

#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

class OpenCvTool {
 public:
  // True when every pixel of every slice, shrunk to 32 by 32 grey pixels, is 255; also for
  // no bytes at all. False when the bytes don't decode. No exception leaves it.
  static bool isAllWhiteJpg(const std::string& jpg_bytes);

  // The whole image, then (when its long side is more than 1.5 times its short side) square
  // tiles of the short side along the long side, the last one shorter. Views on `src`'s
  // pixels, not copies.
  static void sliceImage(const cv::Mat& src, std::vector<cv::Mat>& slices);
};

#endif  // TESSELOPENCV_OPENCV_TOOL_H_
