#include "scripting/runtime/ScriptRuntime.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QStringList>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/Log.h"
#include "platform/PendingTasks.h"
#include "scripting/ScriptApi.h"
#include "scripting/bridge/Bridge.h"
#include "scripting/runtime/ErrorLocator.h"
#include "scripting/runtime/ModuleLoader.h"
#include "scripting/runtime/ScriptLoader.h"
#include "scripting/runtime/ScriptTimers.h"

namespace kelvar {

using namespace Qt::StringLiterals;

namespace {

/// How often a running script is checked, in seconds of processor time.
constexpr double kCheckInterval = 0.05;
/// How often it is asked where a script is that has to end.
constexpr int kMaxLocations = 50;
/// How often the event loop looks for pending work, in milliseconds.
constexpr int kTurn = 20;

}  // namespace

struct ScriptRuntime::Engine {
  using Enter = SelectorFunctions::Enter;

  explicit Engine(const Enter& enter)
      : bridge(context, enter),
        locator(bridge.context()),
        loader(bridge.context(), locator),
        modules(bridge.context(), locator),
        timers(bridge.context(), enter) {}
  ~Engine() {
    timers.clear();
    bridge.close();
    JSGlobalContextRelease(context);
    JSContextGroupRelease(group);
  }

  const JSContextGroupRef group = JSContextGroupCreate();
  const JSGlobalContextRef context = JSGlobalContextCreateInGroup(group, nullptr);
  Bridge bridge;
  ErrorLocator locator;
  ScriptLoader loader;
  ModuleLoader modules;
  ScriptTimers timers;
};

ScriptRuntime::ScriptRuntime(Output output, std::shared_ptr<ScriptLimits> limits)
    : output_(std::move(output)),
      limits_(std::move(limits)),
      engine_(std::make_unique<Engine>([this](const auto& call) { attempt(call); })) {
  watchTime(kCheckInterval);
  defineOutput();
  defineApi();
}

ScriptRuntime::~ScriptRuntime() = default;

/// Has the engine call back after this time, which ends the script or watches again.
void ScriptRuntime::watchTime(double seconds) {
  const auto check = [](JSContextRef, void* data) {
    auto* const self = static_cast<ScriptRuntime*>(data);
    if (!self->limits_->check()) {
      self->watchTime(kCheckInterval);
      return false;
    }
    // The script is still where it was. While an exception is on its way, that cannot be told.
    if (self->stoppedAt_.line == 0) self->stoppedAt_ = self->engine_->locator.here();
    if (self->stoppedAt_.line > 0 || ++self->locations_ > kMaxLocations) return true;
    self->watchTime(kCheckInterval / kMaxLocations);
    return false;
  };
  JSContextGroupSetExecutionTimeLimit(engine_->group, seconds, check, this);
}

/// Every call into the script goes through here. An exception becomes the failure, unless the
/// script itself made the outer call: then it goes on there.
bool ScriptRuntime::attempt(const std::function<void()>& body) {
  Bridge& bridge = engine_->bridge;
  if (failure_ || bridge.classes().hasPendingException()) return false;
  const bool isNested = depth_ > 0;
  ++depth_;
  try {
    body();
    if (!isNested) bridge.collect();
  } catch (const ThrownValue& thrown) {
    if (isNested) bridge.classes().setPendingException(thrown.value);
    if (!isNested || limits_->exceeded()) fail(errorFor(thrown.value));
  } catch (const std::exception& failure) {
    const QString message = QString::fromUtf8(failure.what());
    if (isNested) bridge.classes().setPendingException(bridge.context().error(message));
    if (!isNested) fail({message, {}, 0, {}});
  }
  --depth_;
  // The engine drops the exception that ends a microtask.
  if (!isNested && limits_->exceeded()) fail(errorFor(nullptr));
  return !failure_;
}

void ScriptRuntime::fail(const ScriptError& error) {
  if (!failure_) failure_ = error;
}

ScriptError ScriptRuntime::errorFor(const void* exception) const {
  if (!limits_->exceeded()) return engine_->locator.errorFor(static_cast<JSValueRef>(exception));
  ScriptError error = stoppedAt_;
  if (error.file.isEmpty()) error = {{}, limits_->file(), 1, {}};
  error.message = *limits_->exceeded();
  return error;
}

bool ScriptRuntime::evaluateFile(const QString& path) {
  limits_->enter(path);
  return attempt([&] { engine_->loader.import(path); });
}

bool ScriptRuntime::evaluate(const QString& script, const QString& file) {
  limits_->enter(file);
  return attempt([&] { engine_->loader.evaluate(script, file); });
}

bool ScriptRuntime::hasFunction(const QString& name) {
  const EngineContext& context = engine_->bridge.context();
  bool has = false;
  attempt([&] { has = context.functionOrNull(context.get(context.global(), name)) != nullptr; });
  return has;
}

bool ScriptRuntime::call(const QString& function, const QVariantList& arguments) {
  return attempt([&] {
    const EngineContext& context = engine_->bridge.context();
    const JSObjectRef called = context.object(context.get(context.global(), function));
    if (!called) throw NativeError(u"the script has no function %1"_s.arg(function));
    EngineArguments values(context);
    for (const QVariant& each : arguments) values.append(engine_->bridge.values().toScript(each));
    context.call(called, nullptr, values);
  });
}

void ScriptRuntime::setGlobal(const QString& name, const QVariant& value) {
  attempt([&] {
    const Bridge& bridge = engine_->bridge;
    bridge.context().set(bridge.context().global(), name, bridge.values().toScript(value));
  });
}

/// Defines what prints, and `nil`; reports the promises whose rejection nobody handles.
void ScriptRuntime::defineOutput() {
  const EngineContext& context = engine_->bridge.context();
  const JSObjectRef global = context.global();
  context.set(global, u"nil"_s, context.null());
  const JSObjectRef print = context.function([this, &context](const EngineContext::Call& call) {
    QStringList words;
    for (const JSValueRef each : call.arguments) words.append(context.described(each));
    output_(words.join(u' '));
    return context.undefined();
  });
  context.set(global, u"print"_s, print);
  context.set(global, u"log"_s, print);
  // For `console`, which joins the words itself.
  const auto line = [&context](void (*write)(const ScriptRuntime&, const QString&),
                               const ScriptRuntime* self) {
    return context.function([&context, write, self](const EngineContext::Call& call) {
      write(*self, context.text(call.arguments[0]));
      return context.undefined();
    });
  };
  const JSObjectRef native = context.prelude("native");
  context.set(native, u"print"_s,
              line([](const auto& self, const QString& text) { self.output_(text); }, this));
  context.set(native, u"warn"_s,
              line([](const auto&, const QString& text) { warnUser(text); }, this));
  const JSObjectRef rejected = context.function([this, &context](const EngineContext::Call& call) {
    fail(errorFor(call.arguments[1]));
    return context.undefined();
  });
  JSGlobalContextSetUnhandledRejectionCallback(engine_->context, rejected, nullptr);
}

void ScriptRuntime::defineApi() {
  Bridge& bridge = engine_->bridge;
  const EngineContext& context = bridge.context();
  const JSObjectRef global = context.global();
  // For our own JavaScript, whatever a script makes of the names.
  const auto classNamed = [&bridge, &context](const EngineContext::Call& call) -> JSValueRef {
    const QString name = context.text(call.arguments[0]);
    for (const ClassInfo* const each : ScriptApi::classes()) {
      if (each->name() == name) return bridge.classes().classObject(*each);
    }
    return context.null();
  };
  context.set(context.prelude("native"), u"classNamed"_s, context.function(classNamed));
  for (const ClassInfo* const each : ScriptApi::classes()) {
    // The foundation's classes take precedence.
    if (JSObjectHasProperty(context, global, EngineString(each->name()))) continue;
    const JSObjectRef get = context.function([&bridge, each](const EngineContext::Call&) {
      return bridge.classes().classObject(*each);
    });
    context.defineAccessor(global, each->name(), get, nullptr);
  }
  for (const ClassInfo::Operation& function : ScriptApi::functions().operations()) {
    context.set(global, function.selector,
                bridge.classes().functionOf(ScriptApi::functions(), function));
  }
  for (const ScriptApi::Constant& constant : ScriptApi::constants()) {
    context.set(global, constant.name, bridge.values().toScript(constant.value));
  }
}

/// What keeps the script running, if anything does.
std::optional<QString> ScriptRuntime::pending() const {
  if (engine_->timers.isPending()) return u"a timer"_s;
  if (PendingTasks::count() > 0) return u"a request or deferred work"_s;
  if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return std::nullopt;
  const auto windows = QGuiApplication::topLevelWindows();
  const bool isShown = std::any_of(windows.begin(), windows.end(),
                                   [](const QWindow* window) { return window->isVisible(); });
  return isShown ? std::optional(u"a window"_s) : std::nullopt;
}

bool ScriptRuntime::run() {
  QTimer turn;
  turn.start(kTurn);
  QCoreApplication::processEvents();
  while (!failure_) {
    const std::optional<QString> what = pending();
    if (!what) break;
    if (const auto& reason = limits_->check()) {
      fail({u"%1: %2 is still pending"_s.arg(*reason, *what), {}, 0, {}});
      break;
    }
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return !failure_;
}

}  // namespace kelvar
