#!/bin/sh
# The module shows its host exactly the names of its contract, nothing else.
set -eu
module="$1"
expected='Accquire
FileScanner::operator=(FileScanner const&)
HaveInterface
Release
pellix_client_rpc::kBufSize
pellix_client_rpc::kTmpBufSize'
actual=$(nm -D --defined-only -C "$module" | awk '{ $1=""; $2=""; sub(/^  /, ""); print }' | sort)
if [ "$actual" != "$expected" ]; then
  echo "unexpected exports of $module:"
  echo "$actual"
  exit 1
fi
echo "exports of $module are exactly the contract's"
