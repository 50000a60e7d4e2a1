// Items of neighbouring classes that the kernel module exports for the product's other
// modules. Nothing in the kernel uses them.
#include "outside/FileScanner.h"
#include "outside/pellix_client_rpc_constants.h"

FileScanner& FileScanner::operator=(const FileScanner& other) {
  handle_ = other.handle_;
  return *this;
}

const int pellix_client_rpc::kBufSize = 200024;
const int pellix_client_rpc::kTmpBufSize = 1024;
