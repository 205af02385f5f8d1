#include "cli/run/ScriptGuard.h"

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <thread>
#include <utility>

#include "cli/CommandError.h"
#include "cli/Output.h"
#include "cli/run/endDescendants.h"
#include "platform/files/FileName.h"

namespace kelvar::cli {
namespace {

using namespace std::chrono_literals;

constexpr auto kGraceTime = 1s;

/// For the signal handler, while a script runs.
std::atomic<ScriptLimits*> running = nullptr;
std::atomic<bool> interrupted = false;
/// Set by the first to end the script, the runtime or the thread; the other one then lets it.
std::atomic_flag hasEnded;

void interrupt(int) {
  std::signal(SIGINT, SIG_DFL);
  interrupted = true;
  if (ScriptLimits* const limits = running.load()) limits->interrupt();
}

void watch(const std::shared_ptr<const ScriptLimits>& script, std::chrono::duration<double> timeout,
           size_t memoryLimit) {
  ScriptLimits limits;
  if (timeout.count() > 0) limits.setTimeout(timeout, kGraceTime);
  limits.setMemoryLimit(memoryLimit, memoryLimit / 4);
  while (!hasEnded.test()) {
    std::this_thread::sleep_for(20ms);
    const std::optional<QString>& reason = limits.check();
    if (!reason || hasEnded.test_and_set()) continue;
    printError(*reason);
    if (const QString file = sanitizeForTerminal(readableFileName(script->file()));
        !file.isEmpty()) {
      std::fprintf(stderr, "%s:1\n", qUtf8Printable(file));
    }
    endDescendants();
    std::_Exit(kFailed);
  }
}

}  // namespace

ScriptGuard::ScriptGuard(std::shared_ptr<ScriptLimits> limits,
                         std::chrono::duration<double> timeout, size_t memoryLimit)
    : limits_(std::move(limits)) {
  if (timeout.count() > 0) limits_->setTimeout(timeout);
  limits_->setMemoryLimit(memoryLimit);
  adoptDescendants();
  std::thread(watch, limits_, timeout, memoryLimit).detach();
  running = limits_.get();
  std::signal(SIGINT, interrupt);
}

ScriptGuard::~ScriptGuard() {
  running = nullptr;
  while (hasEnded.test_and_set()) pause();
}

bool ScriptGuard::wasInterrupted() { return interrupted; }

}  // namespace kelvar::cli
