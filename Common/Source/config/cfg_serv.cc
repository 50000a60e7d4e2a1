#include "Common/Source/config/cfg_serv.h"

#include <glog/logging.h>

#include "Common/includes/config_key_names.h"

CfgServ::CfgServ(std::shared_ptr<ConfigDBHelper> helper) : db_helper(std::move(helper)) {
  if (!db_helper) LOG(ERROR) << "CfgServ::CfgServ" << " db_helper is null";
}

void CfgServ::setMetaSrvGoodPort(int port) {
  if (port == meta_srv_good_port_) return;
  meta_srv_good_port_ = port;
  if (db_helper) db_helper->setValue(cfg_names::k_meta_srv_good_port, port);
}
