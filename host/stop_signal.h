// Ctrl-C during a run: asks the kernel to stop what it is doing and lets the run end after
// the current file.
#ifndef HOST_STOP_SIGNAL_H_
#define HOST_STOP_SIGNAL_H_

#include "pellix/IPellix.h"

class StopSignal {
 public:
  // From here on SIGINT and SIGTERM are taken by a thread of their own. Made before anything
  // starts threads, so that no other thread receives them. A second signal ends the process.
  StopSignal();
  // The kernel is no longer called after this.
  ~StopSignal();

  // The kernel whose setStopFlag(true) a signal calls; null for none.
  void attach(IPellix* kernel);
  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;

  // True once a stop was asked for.
  bool requested() const;
};

#endif  // HOST_STOP_SIGNAL_H_
