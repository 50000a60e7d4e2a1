#include "Common/Source/config/cfg_scan.h"

#include <glog/logging.h>

#include <mutex>
#include <regex>
#include <stdexcept>
#include <vector>

#include "Common/includes/config_key_names.h"

namespace {

constexpr char kBuiltInTypesForImg[] =
    "ai;art;bmp;bpg;cdr;cdt;cdx;cal;cin;cgm;cur;cg4;cut;dcm;dcx;dib;dpx;eps;emf;epdf;epi;ept;fax;"
    "fig;fpx;gif;gbr;hpgl;ico;jar;jbig;jpg;jp2;jpc;jpeg;jc1;jc8;jch;jcs;man;mif;mng;mpeg;mvg;otb;"
    "psd;pdf;ps;pam;pbm;pcd;pcds;pcx;pgm;picon;pict;pix;png;pnm;ppm;ps2;ptif;pwp;ras;rad;rla;rle;"
    "sct;sgi;stl;tga;tiff;tif;wbmp;wmf;webp;wpg;xbm;xpm;zip;rar;docx;pptx;xlsx";
constexpr char kDefaultOpencvTyp[] = "jpg,jpeg,bmp,png,jfif,webp";
constexpr int kDefaultEasyPsdMaxSize = 100;
constexpr char kDefaultAlphaWhitePngCfg[] = "1,220,15,0.95";

// Cut at every comma, empty pieces in the middle kept, none after a comma at the very end.
std::vector<std::string> cutAtCommas(const std::string& text) {
  std::vector<std::string> pieces;
  size_t start = 0;
  for (;;) {
    const size_t comma = text.find(',', start);
    if (comma == std::string::npos) {
      if (start < text.size() || pieces.empty()) pieces.push_back(text.substr(start));
      return pieces;
    }
    pieces.push_back(text.substr(start, comma - start));
    start = comma + 1;
  }
}

}  // namespace

int64_t parseIntOrZero(const std::string& text) {
  static const std::regex kDigits("^\\d{1,18}$", std::regex::ECMAScript);
  if (!std::regex_match(text, kDigits)) return 0;
  return std::stoll(text, nullptr, 10);
}

float parseFloatOrZero(const std::string& text) {
  static const std::regex kNumber("^[+-]?(\\d+(\\.\\d*)?|\\.\\d+)([eE][+-]?\\d+)?$",
                                  std::regex::ECMAScript);
  if (!std::regex_match(text, kNumber)) return 0;
  try {
    return std::stof(text);
  } catch (const std::exception&) {
    return 0;
  }
}

AlphaWhitePngCfg parseAlphaWhitePngCfg(const std::string& text) {
  AlphaWhitePngCfg cfg;
  const std::vector<std::string> pieces = cutAtCommas(text);
  if (pieces.size() != 4) return cfg;
  cfg.mode = static_cast<int>(parseIntOrZero(pieces[0]));
  cfg.second = static_cast<int>(parseIntOrZero(pieces[1]));
  cfg.third = static_cast<int>(parseIntOrZero(pieces[2]));
  cfg.fourth = parseFloatOrZero(pieces[3]);
  return cfg;
}

CfgScan::CfgScan(std::shared_ptr<ConfigDBHelper> helper) : db_helper(std::move(helper)) {
  if (!db_helper) {
    LOG(ERROR) << "CfgScan::CfgScan" << " db_helper is null";
    all_type_for_img_ = kBuiltInTypesForImg;
    return;
  }
  show_unscanned_file_type_ = db_helper->getValue(cfg_names::k_show_unscanned_file_type, false);
  getAllTypeForImg();
}

std::string CfgScan::getAllTypeForImg() {
  if (!all_type_for_img_.empty()) return all_type_for_img_;
  if (db_helper) all_type_for_img_ = db_helper->getValue(cfg_names::k_all_type_for_img, "");
  if (all_type_for_img_.empty()) {
    LOG(ERROR) << "CfgScan::getAllTypeForImg" << " all_type_for_img_ is null";
    all_type_for_img_ = kBuiltInTypesForImg;
  }
  return all_type_for_img_;
}

std::string CfgScan::getOpencvTyp() {
  return db_helper ? db_helper->getValue(cfg_names::k_opencv_typ, kDefaultOpencvTyp)
                   : kDefaultOpencvTyp;
}

int CfgScan::getEasyPsdMaxSize() {
  return db_helper ? db_helper->getValue(cfg_names::k_easy_psd_max_size, kDefaultEasyPsdMaxSize)
                   : kDefaultEasyPsdMaxSize;
}

std::string CfgScan::getJcPath() {
  return db_helper ? db_helper->getValue(cfg_names::k_cfg_jc_path, "") : std::string();
}

bool CfgScan::setJcPath(const std::string& path) {
  return db_helper && db_helper->setValue(cfg_names::k_cfg_jc_path, path);
}

std::string CfgScan::getInkPluginPath() {
  return db_helper ? db_helper->getValue(cfg_names::k_cfg_ink_plugin_path, "") : std::string();
}

AlphaWhitePngCfg& CfgScan::getAlphaWhitePngCfg() {
  // One record a process, filled whole before anyone sees it.
  static AlphaWhitePngCfg s_cfg;
  static std::once_flag s_loaded;
  std::call_once(s_loaded, [this] {
    const std::string text =
        db_helper ? db_helper->getValue(cfg_names::k_alpha_white_png_cfg, kDefaultAlphaWhitePngCfg)
                  : std::string(kDefaultAlphaWhitePngCfg);
    s_cfg = parseAlphaWhitePngCfg(text);
  });
  return s_cfg;
}
