#pragma once

#include <QDateTime>
#include <QUrl>

#include "core/KVPersister.h"
#include "runtime/DelegateFunction.h"
#include "runtime/Object.h"

namespace kelvar {

class DelegateInfo;
class KVVersionChecker;
struct URLResponse;

/// Delegate of a version checker. Empty members are not called.
struct KELVAR_EXPORT KVVersionCheckerDelegate {
  static const DelegateInfo& staticDelegateInfo();

  /// Called on the main thread after a check has finished, successfully or not; the checker's
  /// properties say how. The checker is stored after this call. An exception is logged.
  DelegateFunction<void(KVVersionChecker&)> checkerDidFinish;
};

using KVVersionCheckerRef = std::shared_ptr<KVVersionChecker>;

/// Asks the vendor's server whether the running version is current, and keeps the answer across
/// restarts.
///
/// Use on the main thread only. The settings hold the checker as an archive under its identifier +
/// ".checker". Callers decide when to check and what to show.
class KELVAR_EXPORT KVVersionChecker : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// The checker stored for this identifier and name, or a new one.
  static KVVersionCheckerRef checkerWithIdentifier(const QString& identifier, const QString& name);

  /// `identifier` names the place in the settings, `name` the version as the server knows it.
  KVVersionChecker(const QString& identifier, const QString& name);

  /// Does not restore `success`: no check has been made yet.
  static KVVersionCheckerRef initWithCoder(Coder& coder);
  void encodeWithCoder(Coder& coder) const override;

  void persist();

  /// Starts a check and returns immediately. The checker stays alive until the check has completed;
  /// it is then stored, after the delegate was called. Without a configured server, nothing is
  /// sent.
  void start();

  QString identifier() const { return identifier_; }
  void setIdentifier(const QString& identifier) { identifier_ = identifier; }
  QString name() const { return name_; }
  void setName(const QString& name) { name_ = name; }

  /// Whether a check has completed, in this session or an earlier one.
  bool finished() const { return finished_; }
  void setFinished(bool finished) { finished_ = finished; }
  /// Whether a check in this session got a valid answer. A later failure does not reset this.
  bool success() const { return success_; }
  void setSuccess(bool success) { success_ = success; }
  /// The last failure: a map with a "message", or the error as the server sent it. A success does
  /// not reset this.
  QVariant error() const { return error_; }
  void setError(const QVariant& error) { error_ = error; }
  /// The contents of the last valid answer, a map.
  QVariant result() const { return result_; }
  void setResult(const QVariant& result) { result_ = result; }

  bool isExpired() const { return isExpired_; }
  void setIsExpired(bool isExpired) { isExpired_ = isExpired; }
  QString expiredMessage() const { return expiredMessage_; }
  void setExpiredMessage(const QString& message) { expiredMessage_ = message; }
  /// Title and URL of the update button.
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
  void complete(const URLResponse& answer);
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
