#include "host/stop_signal.h"

#include <pthread.h>
#include <signal.h>

#include <atomic>
#include <mutex>
#include <thread>

#include <unistd.h>

namespace {

std::atomic<bool> g_requested{false};
std::mutex g_mutex;
IPellix* g_kernel = nullptr;  // guarded by g_mutex

sigset_t stopSignals() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGINT);
  sigaddset(&set, SIGTERM);
  return set;
}

void waitForSignals() {
  const sigset_t set = stopSignals();
  for (;;) {
    int sig = 0;
    if (sigwait(&set, &sig) != 0) continue;
    if (g_requested.exchange(true)) _exit(130);
    std::lock_guard<std::mutex> lock(g_mutex);
    if (g_kernel != nullptr) g_kernel->setStopFlag(true);
  }
}

}  // namespace

StopSignal::StopSignal() {
  const sigset_t set = stopSignals();
  pthread_sigmask(SIG_BLOCK, &set, nullptr);
  static std::once_flag started;
  std::call_once(started, [] { std::thread(waitForSignals).detach(); });
}

StopSignal::~StopSignal() { attach(nullptr); }

void StopSignal::attach(IPellix* kernel) {
  std::lock_guard<std::mutex> lock(g_mutex);
  g_kernel = kernel;
}

bool StopSignal::requested() const { return g_requested.load(); }
