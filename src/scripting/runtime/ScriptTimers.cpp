#include "scripting/runtime/ScriptTimers.h"

#include <QTimer>
#include <algorithm>
#include <utility>

namespace kelvar {

using namespace Qt::StringLiterals;

struct ScriptTimers::Timer {
  explicit Timer(JSContextRef context) : values(context) {}

  /// The function and its arguments.
  EngineArguments values;
  QTimer timer;
};

ScriptTimers::ScriptTimers(const EngineContext& context, Enter enter)
    : context_(context), enter_(std::move(enter)) {
  defineGlobals();
  defineNative();
}

ScriptTimers::~ScriptTimers() = default;

void ScriptTimers::defineGlobals() {
  using Call = EngineContext::Call;
  const JSObjectRef global = context_.global();
  for (const bool repeats : {false, true}) {
    context_.set(global, repeats ? u"setInterval"_s : u"setTimeout"_s,
                 context_.function(
                     [this, repeats](const Call& call) { return startGlobal(call, repeats); }));
  }
  const JSObjectRef clear = context_.function([this](const Call& call) { return stop(call); });
  context_.set(global, u"clearTimeout"_s, clear);
  context_.set(global, u"clearInterval"_s, clear);
}

void ScriptTimers::defineNative() {
  using Call = EngineContext::Call;
  const JSObjectRef native = context_.prelude("native");
  const auto flag = [this](JSValueRef value) { return JSValueToBoolean(context_, value); };
  // The arguments: a function, milliseconds, whether it repeats.
  const auto begin = [this, flag](const Call& call) {
    const double milliseconds = JSValueToNumber(context_, call.arguments[1], nullptr);
    return context_.number(start(call.arguments.first(1), milliseconds, flag(call.arguments[2])));
  };
  const auto keep = [this, flag](const Call& call) {
    keepsAround_ = flag(call.arguments[0]);
    return context_.undefined();
  };
  context_.set(native, u"startTimer"_s, context_.function(begin));
  context_.set(native, u"stopTimer"_s,
               context_.function([this](const Call& call) { return stop(call); }));
  context_.set(native, u"keepAround"_s, context_.function(keep));
}

JSValueRef ScriptTimers::startGlobal(const EngineContext::Call& call, bool repeats) {
  const std::span<const JSValueRef> given = call.arguments;
  const JSObjectRef function = given.empty() ? nullptr : context_.functionOrNull(given[0]);
  if (!function) throw NativeError(u"a timer requires a function"_s);
  EngineArguments values(context_);
  values.append(function);
  for (size_t i = 2; i < given.size(); ++i) values.append(given[i]);
  const double delay = given.size() > 1 ? JSValueToNumber(context_, given[1], nullptr) : 0;
  return context_.number(start(values, delay, repeats));
}

int ScriptTimers::start(std::span<const JSValueRef> values, double milliseconds, bool repeats) {
  const int id = ++lastId_;
  const auto timer = std::make_shared<Timer>(context_);
  for (const JSValueRef each : values) timer->values.append(each);
  timer->timer.setSingleShot(!repeats);
  // Anything but a number is no delay.
  timer->timer.setInterval(milliseconds > 0 ? int(std::min(milliseconds, 1e9)) : 0);
  QObject::connect(&timer->timer, &QTimer::timeout, [this, id, repeats] { fire(id, repeats); });
  timer->timer.start();
  timers_.insert(id, timer);
  return id;
}

JSValueRef ScriptTimers::stop(const EngineContext::Call& call) {
  if (!call.arguments.empty()) {
    timers_.remove(int(JSValueToNumber(context_, call.arguments[0], nullptr)));
  }
  return context_.undefined();
}

bool ScriptTimers::isPending() const {
  return std::any_of(timers_.begin(), timers_.end(), [this](const auto& each) {
    return keepsAround_ || each->timer.isSingleShot();
  });
}

void ScriptTimers::fire(int id, bool repeats) {
  // Holds the timer, which the script may clear during the call.
  const std::shared_ptr<Timer> running = timers_.value(id);
  if (!repeats) timers_.remove(id);
  const std::span<const JSValueRef> values = running->values;
  enter_([&] { context_.call(context_.object(values[0]), nullptr, values.subspan(1)); });
}

}  // namespace kelvar
