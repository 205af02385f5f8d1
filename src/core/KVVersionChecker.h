#pragma once

#include <QDateTime>
#include <QUrl>
#include <functional>

#include "core/KVPersister.h"
#include "runtime/Object.h"

namespace kelvar {

class DelegateInfo;
class KVVersionChecker;
struct URLAnswer;

/// What a checker tells. An empty member is not called.
struct KELVAR_EXPORT KVVersionCheckerDelegate {
  static const DelegateInfo& theDelegate();

  /// A check has completed, well or not: the checker's properties say how. On the main thread. What
  /// it throws has nobody to go to and is logged.
  std::function<void(KVVersionChecker&)> checkerDidFinish;
};

using KVVersionCheckerRef = std::shared_ptr<KVVersionChecker>;

/// Asks the vendor's server whether the running version is still current, and keeps the answer over
/// restarts.
///
/// Made, read and called on the main thread, where everything changes. The settings have it as an
/// archive under its identifier with ".checker" appended. When to check, and what to show, is for
/// the caller to decide.
class KELVAR_EXPORT KVVersionChecker : public Object {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// The stored checker, if there is one for this identifier and name; otherwise a new one.
  static KVVersionCheckerRef checkerWithIdentifier(const QString& identifier, const QString& name);

  /// `identifier` names the place in the settings, `name` the version, as the server knows it.
  KVVersionChecker(const QString& identifier, const QString& name);

  /// Whether the last check succeeded is not read back: no check has been made yet.
  static KVVersionCheckerRef initWithCoder(Coder& coder);
  void encodeWithCoder(Coder& coder) const override;

  void persist();

  /// Begins a check and returns at once. The checker stays alive until it has completed, and is
  /// stored then, after the delegate was called. With no server configured there is no connection.
  void start();

  QString identifier() const { return identifier_; }
  void setIdentifier(const QString& identifier) { identifier_ = identifier; }
  QString name() const { return name_; }
  void setName(const QString& name) { name_ = name; }

  /// Whether a check has completed, in this session or before.
  bool finished() const { return finished_; }
  void setFinished(bool finished) { finished_ = finished; }
  /// Whether a check of this session got a good answer. A failure after it does not change that.
  bool success() const { return success_; }
  void setSuccess(bool success) { success_ = success; }
  /// The last failure: a map with a "message", or what the server gave. Not reset by a success.
  QVariant error() const { return error_; }
  void setError(const QVariant& error) { error_ = error; }
  /// What the server said in the last good answer, a map.
  QVariant result() const { return result_; }
  void setResult(const QVariant& result) { result_ = result; }

  bool isExpired() const { return isExpired_; }
  void setIsExpired(bool isExpired) { isExpired_ = isExpired; }
  QString expiredMessage() const { return expiredMessage_; }
  void setExpiredMessage(const QString& message) { expiredMessage_ = message; }
  /// What the button for the update says, and where it leads.
  QString actionTitle() const { return actionTitle_; }
  void setActionTitle(const QString& title) { actionTitle_ = title; }
  QUrl actionURL() const { return actionURL_; }
  void setActionURL(const QUrl& url) { actionURL_ = url; }
  /// When the last check completed.
  QDateTime lastCheck() const { return lastCheck_; }
  void setLastCheck(const QDateTime& date) { lastCheck_ = date; }

  std::weak_ptr<KVVersionCheckerDelegate> delegate() const { return delegate_; }
  void setDelegate(std::weak_ptr<KVVersionCheckerDelegate> delegate) {
    delegate_ = std::move(delegate);
  }
  KVPersisterRef persister() const { return persister_; }
  void setPersister(KVPersisterRef persister) { persister_ = std::move(persister); }

 private:
  void complete(const URLAnswer& answer);
  void read(const QByteArray& body);
  void apply(const QVariantMap& answer);
  void tellDelegate();

  QString identifier_;
  QString name_;
  bool finished_ = false;
  bool success_ = false;
  QVariant error_;
  QVariant result_;
  bool isExpired_ = false;
  QString expiredMessage_;
  QString actionTitle_;
  QUrl actionURL_;
  QDateTime lastCheck_;
  std::weak_ptr<KVVersionCheckerDelegate> delegate_;
  KVPersisterRef persister_ = std::make_shared<KVPersister>();
};

}  // namespace kelvar
