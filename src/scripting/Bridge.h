#pragma once

#include <QHash>
#include <QSet>
#include <QStringList>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <span>
#include <stdexcept>
#include <unordered_map>
#include <vector>

#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"
#include "scripting/Engine.h"

namespace kelvar {

/// Described classes and their objects as a script sees them, and values across. No class is known
/// here by name: everything comes out of the descriptions.
///
/// An object has one face in the script, which holds a reference to it for as long as the script
/// can reach the face. A script object that serves as a delegate is held by the face of the object
/// to which it was given, and that face lives also while something of ours holds the object, such
/// as a request whose answer it waits for. Main thread.
class Bridge {
 public:
  /// What goes wrong in one of ours reaches the script as an `Error` with this message.
  struct Failure : std::runtime_error {
    explicit Failure(const QString& message) : std::runtime_error(message.toStdString()) {}
  };
  /// What a script has thrown, on its way through our code.
  struct Thrown {
    JSValueRef value;
  };

  struct Call {
    JSObjectRef self;
    std::span<const JSValueRef> arguments;
  };
  using Function = std::function<JSValueRef(const Call& call)>;

  /// `enter` stands around every call into the script that comes from elsewhere than the script
  /// itself, and deals with what it throws.
  using Enter = std::function<void(const std::function<void()>& call)>;

  Bridge(JSGlobalContextRef context, Enter enter);
  ~Bridge();
  Bridge(const Bridge&) = delete;
  Bridge& operator=(const Bridge&) = delete;

  /// Lets go of what the script holds. Nothing may be called any more but the destructor, which
  /// comes after the context is gone.
  void close();

  JSValueRef toScript(const QVariant& value);
  /// Throws `Failure` for what cannot be converted. `type`, where it is known, tells structures,
  /// objects and delegates apart.
  QVariant toNative(JSValueRef value, const ValueType* type = nullptr);

  JSObjectRef function(Function function);
  /// The class as an object, made when it is first asked for.
  JSObjectRef classObject(const ClassInfo& info);
  /// A function of a class operation whose selector is the function's name.
  JSObjectRef functionOf(const ClassInfo& info, const ClassInfo::Operation& operation);

  JSValueRef string(const QString& text) const;
  QString text(JSValueRef value) const;
  JSValueRef undefined() const { return JSValueMakeUndefined(context_); }
  JSValueRef get(JSObjectRef object, const QString& name) const;
  void set(JSObjectRef object, const QString& name, JSValueRef value) const;
  /// Either may be null.
  void defineAccessor(JSObjectRef object, const QString& name, JSObjectRef get, JSObjectRef set);
  /// These throw `Thrown`.
  JSValueRef call(JSObjectRef function, JSObjectRef self,
                  std::span<const JSValueRef> arguments) const;
  JSValueRef call(JSObjectRef function, JSObjectRef self,
                  std::initializer_list<JSValueRef> arguments) const {
    return call(function, self, std::span(arguments.begin(), arguments.size()));
  }
  JSObjectRef error(const QString& message) const;
  /// What is shown of the value by whoever prints it. Throws `Thrown`.
  QString described(JSValueRef value) const;

  /// For what a delegate has thrown while an operation was at work that the script has called:
  /// once that returns, it is thrown there. No delegate is called until then.
  void throwLater(JSValueRef value);
  bool isThrowing() const { return thrown_ != nullptr; }

  /// Between two turns: lets go of objects whose faces are gone, sees which operations delegates
  /// implement now, and which objects still have something to tell theirs.
  void tidy();

 private:
  /// Behind a face.
  struct Held {
    Bridge* bridge = nullptr;
    ObjectRef object;
    /// Of an object that is allocated and not yet initialised.
    const ClassInfo* allocated = nullptr;
  };
  /// Of a class.
  struct Faces {
    JSObjectRef classObject = nullptr;
    JSObjectRef instance = nullptr;
    JSObjectRef allocated = nullptr;
  };
  /// Operations with one name in scripts, by the number of their arguments.
  using Candidates = std::vector<const ClassInfo::Operation*>;
  /// A script object that serves as a delegate.
  struct Link {
    const DelegateInfo* info;
    std::shared_ptr<void> delegate;
    JSWeakRef script;
    /// Where the script object is, or was.
    JSObjectRef address;
    std::vector<bool> implemented;
  };

  static JSValueRef callFunction(JSContextRef context, JSObjectRef function, JSObjectRef self,
                                 size_t count, const JSValueRef arguments[], JSValueRef* exception);
  static void finalizeFunction(JSObjectRef function);
  static void finalizeFace(JSObjectRef face);
  static bool isInstance(JSContextRef context, JSObjectRef classObject, JSValueRef value,
                         JSValueRef* exception);

  void makePrelude();
  void extendValues();
  JSObjectRef prelude(const char* name) const;

  Faces& facesOf(const ClassInfo& info);
  JSObjectRef makePrototype(const ClassInfo& info, ClassInfo::Kind kind);
  void define(JSObjectRef target, const ClassInfo& info, ClassInfo::Kind kind);
  void defineBasics(JSObjectRef target);
  JSObjectRef terminal(const ClassInfo& info, ClassInfo::Kind kind);
  Function method(const ClassInfo& info, ClassInfo::Kind kind, const QString& name,
                  Candidates candidates);
  ObjectRef objectBehind(JSObjectRef self, const ClassInfo& info, const QString& name) const;
  JSValueRef invoke(const ClassInfo& info, const ClassInfo::Operation& operation, const Call& call,
                    const ObjectRef& self);
  QVariant perform(const ClassInfo::Operation& operation, Object* self,
                   const QVariantList& arguments);
  JSValueRef initialise(const ClassInfo& info, const ClassInfo::Operation& operation,
                        const Call& call);

  Held* heldBy(JSValueRef value) const;
  /// Null for what is no class.
  const ClassInfo* classBehind(JSValueRef value) const;
  JSObjectRef face(const ObjectRef& object);
  JSObjectRef makeFace(Held held, JSObjectRef prototype) const;

  JSValueRef listToScript(const QVariantList& list);
  JSValueRef mapToScript(const QVariantMap& map);
  QVariant objectToNative(JSObjectRef object, const ValueType* type, int depth);
  QVariant toNative(JSValueRef value, const ValueType* type, int depth);
  QVariant structToNative(JSObjectRef object, QMetaType type) const;
  double number(JSObjectRef object, const char* name) const;
  void shuffleList(JSObjectRef list) const;
  QString kindOf(JSValueRef value) const;

  QVariant delegateFor(JSObjectRef script, const DelegateInfo& info);
  void refresh(Link& link);
  void forget(const Link& link);
  DelegateInfo::Handler handler(const Link& link, const DelegateInfo::Operation& operation);
  JSValueRef delegateToScript(const QVariant& delegate, const ValueType& type);
  JSObjectRef implementation(JSObjectRef script, const QString& selector) const;
  void hold(JSObjectRef face, const QString& selector, JSValueRef delegate);
  void keep(JSObjectRef face, bool isNeeded);
  void keepWhatIsAtWork();
  void dropGone();

  const JSGlobalContextRef context_;
  const JSContextGroupRef group_;
  const Enter enter_;
  JSClassRef functionClass_;
  JSClassRef faceClass_;
  JSClassRef classClass_;
  JSObjectRef prelude_ = nullptr;
  QHash<const ClassInfo*, Faces> faces_;
  std::unordered_map<Object*, JSWeakRef> objects_;
  std::list<Link> links_;
  std::unordered_multimap<JSObjectRef, Link*> linkOfScript_;
  std::unordered_map<const void*, const Link*> linkOfDelegate_;
  std::list<std::pair<Bridge*, const ClassInfo*>> classes_;
  size_t facesMade_ = 0;
  /// Objects that were given a delegate, and their faces that live on without the script.
  QSet<Object*> delegating_;
  QSet<JSObjectRef> kept_;
  JSValueRef thrown_ = nullptr;

  /// Faces may go on any thread, their objects only on the main one.
  std::mutex goneMutex_;
  std::vector<std::unique_ptr<Held>> gone_;
};

}  // namespace kelvar
