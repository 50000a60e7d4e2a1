// CfgUI: flags of the user interface that the kernel reads, and the record of how far the
// write test of the default preview disk got.
#ifndef COMMON_SOURCE_CONFIG_CFG_UI_H_
#define COMMON_SOURCE_CONFIG_CFG_UI_H_

#include <atomic>
#include <memory>
#include <string>

#include "Common/includes/config_db_helper.h"

class CfgUI {
 public:
  explicit CfgUI(std::shared_ptr<ConfigDBHelper> helper);

  // disk_rw_flag: 0 nothing decided, 1 a write test was begun and not passed, 2 the second
  // disk is good.
  int getDiskRwFlag();
  bool setDiskRwFlag(int flag);

  int getFeaAllGotNotifySwitch() const { return fea_all_got_notify_switch_.load(); }
  const std::string& getUiHideJsn() const { return ui_hide_jsn_; }

  std::shared_ptr<ConfigDBHelper> db_helper;

 private:
  std::atomic<int> fea_all_got_notify_switch_{1};
  std::string ui_hide_jsn_;
};

#endif  // COMMON_SOURCE_CONFIG_CFG_UI_H_
