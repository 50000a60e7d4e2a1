// The buffer sizes of the preview server's client class, which the kernel carries as data.
#ifndef OUTSIDE_PELLIX_CLIENT_RPC_CONSTANTS_H_
#define OUTSIDE_PELLIX_CLIENT_RPC_CONSTANTS_H_

class __attribute__((visibility("default"))) pellix_client_rpc {
 public:
  static const int kBufSize;
  static const int kTmpBufSize;
};

#endif  // OUTSIDE_PELLIX_CLIENT_RPC_CONSTANTS_H_
