#include "cli/run/ScriptSession.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "cli/CommandError.h"
#include "cli/run/endDescendants.h"
#include "pixels/threads/spawnThreadOrRunInline.h"
#include "platform/hasAddressSpace.h"

namespace kelvar::cli {
namespace {

using namespace Qt::StringLiterals;

/// Scripts may use this much memory, or half of the machine's if that is less.
constexpr size_t kMaxMemory = size_t{4} << 30;

size_t memoryLimit() {
  const size_t all = size_t(sysconf(_SC_PHYS_PAGES)) * size_t(sysconf(_SC_PAGESIZE));
  return std::min(kMaxMemory, all / 2);
}

/// The engine aborts the program if it does not get what it requires.
void checkResources() {
  if (!canHaveThreads(ScriptGuard::kEngineThreads)) {
    fail(u"scripts require threads, and the system provides none"_s);
  }
  if (!hasAddressSpace(ScriptGuard::kEngineSpace)) {
    fail(u"scripts require 6 GiB of address space, which is not available (see ulimit -v)"_s);
  }
}

}  // namespace

ScriptSession::ScriptSession(ScriptRuntime::Output output, std::chrono::duration<double> timeout)
    : output_(std::move(output)) {
  checkResources();
  guard_ = std::make_unique<ScriptGuard>(limits_, timeout, memoryLimit());
}

ScriptSession::~ScriptSession() = default;

ScriptRuntime* ScriptSession::find(const QString& script) const {
  const auto found = std::find_if(scripts_.begin(), scripts_.end(),
                                  [&](const Script& each) { return each.path == script; });
  return found == scripts_.end() ? nullptr : found->runtime.get();
}

bool ScriptSession::note(const ScriptRuntime& runtime) {
  if (!failure_) failure_ = runtime.failure();
  return !failure_;
}

bool ScriptSession::open(const QString& script, const QVariantMap& context) {
  if (failure_) return false;
  ScriptRuntime* runtime = find(script);
  const bool isNew = !runtime;
  if (isNew) {
    scripts_.push_back({script, std::make_unique<ScriptRuntime>(output_, limits_)});
    runtime = scripts_.back().runtime.get();
  }
  runtime->setGlobal(u"context"_s, context);
  if (isNew) runtime->evaluateFile(script);
  return note(*runtime);
}

bool ScriptSession::hasFunction(const QString& script, const QString& function) {
  ScriptRuntime* const runtime = find(script);
  return runtime && runtime->hasFunction(function);
}

bool ScriptSession::call(const QString& script, const QString& function,
                         const QVariantMap& context) {
  ScriptRuntime* const runtime = find(script);
  if (failure_ || !runtime) return false;
  runtime->call(function, {context});
  return note(*runtime);
}

bool ScriptSession::wait() {
  const auto isPending = [](const Script& each) { return each.runtime->isPending(); };
  do {
    for (const Script& each : scripts_) {
      if (failure_) return false;
      each.runtime->run();
      note(*each.runtime);
    }
  } while (!failure_ && std::any_of(scripts_.begin(), scripts_.end(), isPending));
  return !failure_;
}

void ScriptSession::close() {
  guard_ = nullptr;
  if (limits_->exceeded()) endDescendants();
}

}  // namespace kelvar::cli
