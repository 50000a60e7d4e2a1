#include "Common/Source/config/cfg_ui.h"

#include <glog/logging.h>

#include "Common/includes/config_key_names.h"

CfgUI::CfgUI(std::shared_ptr<ConfigDBHelper> helper) : db_helper(std::move(helper)) {
  if (!db_helper) {
    LOG(ERROR) << "CfgUI::CfgUI" << " db_helper is null";
    return;
  }
  fea_all_got_notify_switch_.store(db_helper->getValue(cfg_names::k_fea_all_got_notify_switch, 1));
  ui_hide_jsn_ = db_helper->getValue(cfg_names::k_ui_hide_jsn, "");
}

int CfgUI::getDiskRwFlag() {
  return db_helper ? db_helper->getValue(cfg_names::k_disk_rw_flag, 0) : 0;
}

bool CfgUI::setDiskRwFlag(int flag) {
  return db_helper && db_helper->setValue(cfg_names::k_disk_rw_flag, flag);
}
