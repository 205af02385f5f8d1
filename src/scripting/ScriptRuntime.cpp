#include "scripting/ScriptRuntime.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/FileName.h"
#include "platform/PendingWork.h"
#include "platform/WholeFile.h"
#include "scripting/Bridge.h"
#include "scripting/Catalogue.h"
#include "scripting/Translation.h"

namespace kelvar {

using namespace Qt::StringLiterals;

namespace {

/// Larger ones are no scripts.
constexpr qsizetype kMaxScript = qsizetype{16} << 20;
/// How often a running script is looked at, in seconds of processor time.
constexpr double kWatch = 0.05;
/// How often the event loop looks at what is pending, in milliseconds.
constexpr int kTurn = 20;

/// What the process has in memory, in bytes.
size_t memoryInUse() {
  QFile file(u"/proc/self/statm"_s);
  if (!file.open(QIODevice::ReadOnly)) return 0;
  return file.readAll().split(' ').value(1).toULongLong() * size_t(sysconf(_SC_PAGESIZE));
}

/// `evaluate` is told the context, the piece, its file and its first line.
template <class Evaluate>
void forEachPiece(JSContextRef context, const QStringList& pieces, const QString& file,
                  Evaluate evaluate) {
  // Comments may stand before it.
  static const QRegularExpression kStrict(
      uR"(^(?:\s|//[^\n]*|/\*[\s\S]*?\*/)*+(["'])use strict\1)"_s);
  const bool isStrict = kStrict.match(pieces.first()).hasMatch();
  int line = 1;
  for (const QString& piece : pieces) {
    // The engine does not tell the place of an exception in a script's very first expression.
    // Before "use strict" and #! nothing may stand.
    const QString whole = isStrict && line > 1                 ? u"'use strict';"_s + piece
                          : isStrict || piece.startsWith(u'#') ? piece
                                                               : u';' + piece;
    JSValueRef exception = nullptr;
    evaluate(context, EngineString(whole), EngineString(file), line, &exception);
    if (exception) throw Bridge::Thrown{exception};
    line += int(piece.count(u'\n'));
  }
}

/// The innermost place of the script's in what the engine tells of the calls. What is ours of them
/// has no file.
std::optional<ScriptRuntime::Failure> frameOf(const QString& stack) {
  static const QRegularExpression kFrame(u"@(.+):([0-9]+):[0-9]+$"_s,
                                         QRegularExpression::MultilineOption);
  const QRegularExpressionMatch found = kFrame.match(stack);
  if (!found.hasMatch()) return std::nullopt;
  return ScriptRuntime::Failure{{}, found.captured(1), found.captured(2).toInt(), {}};
}

}  // namespace

struct ScriptRuntime::Engine {
  JSContextGroupRef group = JSContextGroupCreate();
  JSGlobalContextRef context = JSGlobalContextCreateInGroup(group, nullptr);
  std::unique_ptr<Bridge> bridge;
  JSShouldTerminateCallback watch = nullptr;
  /// The last value that was thrown without being an error, and an error made there and then.
  JSObjectRef thrown = nullptr;
};

struct ScriptRuntime::Timer {
  explicit Timer(JSContextRef context) : values(context) {}
  /// The function and what it is called with.
  EngineArguments values;
  QTimer timer;
};

ScriptRuntime::ScriptRuntime(Output output)
    : output_(std::move(output)), engine_(std::make_unique<Engine>()) {
  const auto watch = [](JSContextRef context, void* data) {
    auto* const self = static_cast<ScriptRuntime*>(data);
    if (self->mustStop()) {
      // Scripts are still where they are: an error made here is told where that is.
      self->stoppedAt_ = self->placeOf(self->engine_->bridge->error({}));
      return true;
    }
    JSContextGroupSetExecutionTimeLimit(JSContextGetGroup(context), kWatch, self->engine_->watch,
                                        self);
    return false;
  };
  engine_->watch = watch;
  JSContextGroupSetExecutionTimeLimit(engine_->group, kWatch, watch, this);
  engine_->bridge =
      std::make_unique<Bridge>(engine_->context, [this](const auto& call) { attempt(call); });
  defineGlobals();
  defineCatalogue();
  defineTimers();
}

ScriptRuntime::~ScriptRuntime() {
  timers_.clear();
  engine_->bridge->close();
  JSGlobalContextRelease(engine_->context);
  JSContextGroupRelease(engine_->group);
}

void ScriptRuntime::setTimeout(std::chrono::duration<double> timeout) {
  using Clock = std::chrono::steady_clock;
  timeout_ = timeout;
  deadline_ = Clock::now() + std::chrono::duration_cast<Clock::duration>(timeout);
}

void ScriptRuntime::setMemoryLimit(size_t limit) { memoryLimit_ = limit; }

QString ScriptRuntime::reasonToStop() const {
  if (isInterrupted_) return u"the script was interrupted"_s;
  if (deadline_ && std::chrono::steady_clock::now() > *deadline_) {
    return u"the script did not end within %1 s"_s.arg(timeout_.count());
  }
  if (memoryLimit_ > 0 && memoryInUse() > memoryLimit_) {
    return u"the script uses more than %1 MB of memory"_s.arg(memoryLimit_ >> 20);
  }
  return {};
}

bool ScriptRuntime::mustStop() {
  if (stopped_.isNull()) stopped_ = reasonToStop();
  return !stopped_.isNull();
}

/// Every way into the script. What is thrown becomes the failure, but where the script itself is at
/// work further out, it goes on there.
bool ScriptRuntime::attempt(const std::function<void()>& body) {
  Bridge& bridge = *engine_->bridge;
  if (failure_ || bridge.isThrowing()) return false;
  const bool isWithin = depth_ > 0;
  ++depth_;
  try {
    body();
    if (!isWithin) bridge.tidy();
  } catch (const Bridge::Thrown& thrown) {
    if (isWithin) bridge.throwLater(thrown.value);
    if (!isWithin || !stopped_.isNull()) fail(failureOf(thrown.value));
  } catch (const std::exception& failure) {
    const QString message = QString::fromUtf8(failure.what());
    if (isWithin) bridge.throwLater(bridge.error(message));
    if (!isWithin) fail({message, {}, 0, {}});
  }
  --depth_;
  return !failure_;
}

void ScriptRuntime::fail(const Failure& failure) {
  if (!failure_) failure_ = failure;
}

QString ScriptRuntime::lineOf(const QString& file, int line) const {
  return line > 0 ? sources_.value(file).split(u'\n').value(line - 1).trimmed() : QString();
}

/// Where the error was made, without a message.
ScriptRuntime::Failure ScriptRuntime::placeOf(void* error) const {
  const Bridge& bridge = *engine_->bridge;
  auto* const object = static_cast<JSObjectRef>(error);
  Failure place;
  const JSValueRef line = bridge.get(object, u"line"_s);
  if (JSValueIsNumber(engine_->context, line)) {
    place.line = int(JSValueToNumber(engine_->context, line, nullptr));
  }
  const JSValueRef file = bridge.get(object, u"sourceURL"_s);
  if (JSValueIsString(engine_->context, file)) {
    place.file = bridge.text(file);
  } else if (const auto frame = frameOf(bridge.text(bridge.get(object, u"stack"_s)))) {
    place = *frame;
  }
  place.text = lineOf(place.file, place.line);
  return place;
}

ScriptRuntime::Failure ScriptRuntime::failureOf(const void* exception) {
  if (!stopped_.isNull()) {
    stoppedAt_.message = stopped_;
    return stoppedAt_;
  }
  Bridge& bridge = *engine_->bridge;
  const auto value = static_cast<JSValueRef>(exception);
  QString message;
  // Made where it was thrown: its own message is not the script's.
  JSObjectRef where = nullptr;
  if (JSValueIsObject(engine_->context, value)) {
    where = JSValueToObject(engine_->context, value, nullptr);
  }
  try {
    message = bridge.described(value);
    if (!where || JSValueIsUndefined(engine_->context, bridge.get(where, u"line"_s))) {
      const JSValueRef last = bridge.get(engine_->thrown, u"value"_s);
      if (!JSValueIsStrictEqual(engine_->context, last, value)) return {message, {}, 0, {}};
      where = JSValueToObject(engine_->context, bridge.get(engine_->thrown, u"where"_s), nullptr);
    }
    Failure failure = placeOf(where);
    failure.message = message;
    return failure;
  } catch (const Bridge::Thrown&) {
    // The exception is an object that throws when it is looked at.
    return {message, {}, 0, {}};
  }
}

bool ScriptRuntime::evaluateFile(const QString& path) {
  return attempt([&] { import(path); });
}

bool ScriptRuntime::evaluate(const QString& script, const QString& file) {
  return attempt([&] { evaluateText(script, file); });
}

void ScriptRuntime::evaluateText(const QString& script, const QString& file) {
  sources_.insert(file, script);
  const QStringList pieces = plainJavaScript(script);
  // A mistake in a later one is found before the first is run.
  if (pieces.size() > 1) forEachPiece(engine_->context, pieces, file, JSCheckScriptSyntax);
  forEachPiece(engine_->context, pieces, file,
               [](JSContextRef context, JSStringRef piece, JSStringRef url, int line,
                  JSValueRef* exception) {
                 JSEvaluateScript(context, piece, nullptr, url, line, exception);
               });
}

/// Each file once, also where files import one another. Paths are relative to the file that
/// imports.
void ScriptRuntime::import(const QString& path) {
  const QString importer = placeOf(engine_->bridge->error({})).file;
  const QString folder = importer.isEmpty() ? QString() : QFileInfo(importer).path();
  const QString file = folder.isEmpty() ? path : QDir::cleanPath(QDir(folder).filePath(path));
  std::error_code isMissing;
  const auto whole = std::filesystem::canonical(filePath(file), isMissing);
  const QString canonical = fileNameFromBytes(whole.native());
  if (!canonical.isEmpty() && imported_.contains(canonical)) return;
  imported_.insert(canonical);
  QByteArray bytes;
  QString error;
  if (!WholeFile::read(file, kMaxScript, &bytes, &error)) throw Bridge::Failure(error);
  evaluateText(QString::fromUtf8(bytes), file);
}

bool ScriptRuntime::hasFunction(const QString& name) {
  bool has = false;
  attempt([&] {
    const JSObjectRef global = JSContextGetGlobalObject(engine_->context);
    const JSValueRef value = engine_->bridge->get(global, name);
    has = JSValueIsObject(engine_->context, value) &&
          JSObjectIsFunction(engine_->context, JSValueToObject(engine_->context, value, nullptr));
  });
  return has;
}

bool ScriptRuntime::call(const QString& function, const QVariantList& arguments) {
  return attempt([&] {
    Bridge& bridge = *engine_->bridge;
    const JSValueRef value = bridge.get(JSContextGetGlobalObject(engine_->context), function);
    if (!JSValueIsObject(engine_->context, value)) {
      throw Bridge::Failure(u"the script has no function %1"_s.arg(function));
    }
    EngineArguments values(engine_->context);
    for (const QVariant& argument : arguments) values.append(bridge.toScript(argument));
    bridge.call(JSValueToObject(engine_->context, value, nullptr), nullptr, values);
  });
}

void ScriptRuntime::setGlobal(const QString& name, const QVariant& value) {
  attempt([&] {
    engine_->bridge->set(JSContextGetGlobalObject(engine_->context), name,
                         engine_->bridge->toScript(value));
  });
}

void ScriptRuntime::defineGlobals() {
  Bridge& bridge = *engine_->bridge;
  const JSContextRef context = engine_->context;
  const JSObjectRef global = JSContextGetGlobalObject(context);
  bridge.set(global, u"nil"_s, JSValueMakeNull(context));
  const JSObjectRef print = bridge.function([this](const Bridge::Call& call) {
    QStringList words;
    for (const JSValueRef each : call.arguments) words.append(engine_->bridge->described(each));
    output_(words.join(u' '));
    return engine_->bridge->undefined();
  });
  bridge.set(global, u"print"_s, print);
  bridge.set(global, u"log"_s, print);
  const JSObjectRef console = JSObjectMake(context, nullptr, nullptr);
  bridge.set(console, u"log"_s, print);
  bridge.set(global, u"console"_s, console);
  bridge.set(
      global, QString::fromLatin1(kImportFunction),
      bridge.function([this](const Bridge::Call& call) {
        import(call.arguments.empty() ? QString() : engine_->bridge->text(call.arguments[0]));
        return engine_->bridge->undefined();
      }));
  const JSObjectRef note = bridge.function([this](const Bridge::Call& call) -> JSValueRef {
    Bridge& ours = *engine_->bridge;
    ours.set(engine_->thrown, u"value"_s, call.arguments[0]);
    ours.set(engine_->thrown, u"where"_s, ours.error({}));
    return ours.undefined();
  });
  engine_->thrown = JSObjectMake(context, nullptr, nullptr);
  JSValueProtect(context, engine_->thrown);
  bridge.defineAccessor(global, QString::fromLatin1(kThrownVariable), nullptr, note);
  const JSObjectRef rejected = bridge.function([this](const Bridge::Call& call) {
    fail(failureOf(call.arguments[1]));
    return engine_->bridge->undefined();
  });
  JSGlobalContextSetUnhandledRejectionCallback(engine_->context, rejected, nullptr);
}

void ScriptRuntime::defineCatalogue() {
  Bridge& bridge = *engine_->bridge;
  const JSObjectRef global = JSContextGetGlobalObject(engine_->context);
  for (const ClassInfo* const each : Catalogue::classes()) {
    const JSObjectRef get = bridge.function(
        [this, each](const Bridge::Call&) { return engine_->bridge->classObject(*each); });
    bridge.defineAccessor(global, each->name(), get, nullptr);
  }
  for (const ClassInfo::Operation& function : Catalogue::functions().operations()) {
    bridge.set(global, function.selector, bridge.functionOf(Catalogue::functions(), function));
  }
  for (const Catalogue::Constant& constant : Catalogue::constants()) {
    bridge.set(global, constant.name, bridge.toScript(constant.value));
  }
}

void ScriptRuntime::defineTimers() {
  Bridge& bridge = *engine_->bridge;
  const JSObjectRef global = JSContextGetGlobalObject(engine_->context);
  const auto starter = [&](bool repeats) {
    return bridge.function([this, repeats](const Bridge::Call& call) {
      return static_cast<JSValueRef>(startTimer(&call, repeats));
    });
  };
  bridge.set(global, u"setTimeout"_s, starter(false));
  bridge.set(global, u"setInterval"_s, starter(true));
  const JSObjectRef clear = bridge.function([this](const Bridge::Call& call) {
    if (!call.arguments.empty()) {
      timers_.remove(int(JSValueToNumber(engine_->context, call.arguments[0], nullptr)));
    }
    return engine_->bridge->undefined();
  });
  bridge.set(global, u"clearTimeout"_s, clear);
  bridge.set(global, u"clearInterval"_s, clear);
}

const void* ScriptRuntime::startTimer(const void* made, bool repeats) {
  const auto& call = *static_cast<const Bridge::Call*>(made);
  const JSContextRef context = engine_->context;
  const JSObjectRef function =
      !call.arguments.empty() && JSValueIsObject(context, call.arguments[0])
          ? JSValueToObject(context, call.arguments[0], nullptr)
          : nullptr;
  if (!function || !JSObjectIsFunction(context, function)) {
    throw Bridge::Failure(u"a timer takes a function"_s);
  }
  const double delay =
      call.arguments.size() > 1 ? JSValueToNumber(context, call.arguments[1], nullptr) : 0;
  const int id = ++lastTimer_;
  const auto timer = std::make_shared<Timer>(context);
  timer->values.append(function);
  for (size_t i = 2; i < call.arguments.size(); ++i) timer->values.append(call.arguments[i]);
  timer->timer.setSingleShot(!repeats);
  // What is no number is no delay.
  timer->timer.setInterval(delay > 0 ? int(std::min(delay, 1e9)) : 0);
  QObject::connect(&timer->timer, &QTimer::timeout, [this, id, repeats] {
    const std::shared_ptr<Timer> running = timers_.value(id);
    if (!repeats) timers_.remove(id);
    const std::span<const JSValueRef> values = running->values;
    attempt([&] {
      const JSObjectRef called = JSValueToObject(engine_->context, values[0], nullptr);
      engine_->bridge->call(called, nullptr, values.subspan(1));
    });
  });
  timer->timer.start();
  timers_.insert(id, timer);
  return JSValueMakeNumber(context, id);
}

/// What the script is not done with; null for nothing.
QString ScriptRuntime::pending() const {
  if (!timers_.isEmpty()) return u"a timer"_s;
  if (PendingWork::count() > 0) return u"a request or work that was put off"_s;
  if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return {};
  const auto windows = QGuiApplication::topLevelWindows();
  const bool isShown = std::any_of(windows.begin(), windows.end(),
                                   [](const QWindow* window) { return window->isVisible(); });
  return isShown ? u"a window"_s : QString();
}

bool ScriptRuntime::run() {
  QTimer turn;
  turn.start(kTurn);
  QCoreApplication::processEvents();
  for (QString what; !failure_ && !(what = pending()).isNull();) {
    if (mustStop()) {
      fail({u"%1: %2 is still pending"_s.arg(stopped_, what), {}, 0, {}});
      break;
    }
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return !failure_;
}

}  // namespace kelvar
