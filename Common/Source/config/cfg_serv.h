// CfgServ: the settings of the preview server. The port manager reads its port lists
// through `db_helper`; the port the server last booted on is recorded here.
#ifndef COMMON_SOURCE_CONFIG_CFG_SERV_H_
#define COMMON_SOURCE_CONFIG_CFG_SERV_H_

#include <memory>

#include "Common/includes/config_db_helper.h"

class CfgServ {
 public:
  explicit CfgServ(std::shared_ptr<ConfigDBHelper> helper);

  // Records the port the preview server was started on; within a process only a change of
  // port is written.
  void setMetaSrvGoodPort(int port);

  std::shared_ptr<ConfigDBHelper> db_helper;

 private:
  int meta_srv_good_port_ = -1;
};

#endif  // COMMON_SOURCE_CONFIG_CFG_SERV_H_
