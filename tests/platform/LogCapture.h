#pragma once

#include <QLoggingCategory>
#include <QStringList>
#include <mutex>

namespace kelvar {

/// Turns on the log during its lifetime and collects its lines from all threads.
class LogCapture {
 public:
  LogCapture() {
    {
      const std::scoped_lock lock(mutex_);
      lines_.clear();
    }
    QLoggingCategory::setFilterRules(QStringLiteral("kelvar.info=true"));
    previous_ = qInstallMessageHandler(keep);
  }
  ~LogCapture() {
    qInstallMessageHandler(previous_);
    QLoggingCategory::setFilterRules(QString());
  }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  QStringList lines() const {
    const std::scoped_lock lock(mutex_);
    return lines_;
  }

 private:
  static void keep(QtMsgType, const QMessageLogContext& context, const QString& line) {
    if (qstrcmp(context.category, "kelvar") != 0) return;
    const std::scoped_lock lock(mutex_);
    lines_.append(line);
  }

  static inline std::mutex mutex_;
  static inline QStringList lines_;
  QtMessageHandler previous_ = nullptr;
};

}  // namespace kelvar
