// CfgScan: the settings of scanning and image handling, each read with its default, and the
// four values that tell the image module how to treat a white picture with transparency.
#ifndef COMMON_SOURCE_CONFIG_CFG_SCAN_H_
#define COMMON_SOURCE_CONFIG_CFG_SCAN_H_

#include <cstdint>
#include <memory>
#include <string>

#include "Common/includes/config_db_helper.h"

// The values of alpha_white_png_cfg in their order: `mode` goes to the rendering, the other
// three to the test of whether a picture is white.
struct AlphaWhitePngCfg {
  int mode = 1;
  int second = 220;
  int third = 15;
  float fourth = 0.95f;
};

// The number of a text of 1 to 18 decimal digits and nothing else; 0 for any other text.
int64_t parseIntOrZero(const std::string& text);

// The number of a decimal floating-point text (sign, digits, point, exponent) and nothing
// else; 0 for any other text and for one out of float's range.
float parseFloatOrZero(const std::string& text);

// The record of a text of exactly four comma-separated values (a comma at the very end adds
// no value): each value that doesn't read as its type gives 0. Any other count of values
// gives the built-in record.
AlphaWhitePngCfg parseAlphaWhitePngCfg(const std::string& text);

class CfgScan {
 public:
  explicit CfgScan(std::shared_ptr<ConfigDBHelper> helper);

  // The extensions the scan treats as images, separated by ';'; the built-in list when the
  // table has none.
  std::string getAllTypeForImg();
  // Extensions that OpenCV decodes, separated by ','.
  std::string getOpencvTyp();
  // Megabytes up to which a PSD file counts as easy.
  int getEasyPsdMaxSize();
  // Where the JC program and the Inkscape plug-in lie, UTF-8 paths.
  std::string getJcPath();
  bool setJcPath(const std::string& path);
  std::string getInkPluginPath();
  // Read once a process.
  AlphaWhitePngCfg& getAlphaWhitePngCfg();

  bool getShowUnscannedFileType() const { return show_unscanned_file_type_; }

  std::shared_ptr<ConfigDBHelper> db_helper;

 private:
  bool show_unscanned_file_type_ = false;
  std::string all_type_for_img_;
};

#endif  // COMMON_SOURCE_CONFIG_CFG_SCAN_H_
