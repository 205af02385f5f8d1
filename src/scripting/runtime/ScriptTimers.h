#pragma once

#include <QHash>
#include <functional>
#include <memory>

#include "scripting/bridge/EngineContext.h"

namespace kelvar {

/// The timers of a script: `setTimeout`, `setInterval` and what clears them, and what the runtime's
/// own JavaScript makes its timers of. Main thread, whose event loop must run.
class ScriptTimers {
 public:
  /// Runs a call into the script and handles what it throws.
  using Enter = std::function<void(const std::function<void()>& call)>;

  /// Also defines the functions.
  ScriptTimers(const EngineContext& context, Enter enter);
  ~ScriptTimers();

  /// Whether a timer keeps the script running. One that repeats does not once the script has said
  /// that it need not be kept.
  bool isPending() const;
  /// Stops all timers. Must be called before the context is released.
  void clear() { timers_.clear(); }

 private:
  struct Timer;

  void defineGlobals();
  void defineNative();
  JSValueRef startGlobal(const EngineContext::Call& call, bool repeats);
  /// Returns the timer's number. `values` are the function and its arguments.
  int start(std::span<const JSValueRef> values, double milliseconds, bool repeats);
  JSValueRef stop(const EngineContext::Call& call);
  void fire(int id, bool repeats);

  const EngineContext& context_;
  const Enter enter_;
  QHash<int, std::shared_ptr<Timer>> timers_;
  int lastId_ = 0;
  bool keepsAround_ = true;
};

}  // namespace kelvar
