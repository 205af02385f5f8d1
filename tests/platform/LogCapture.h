#pragma once

#include <QLoggingCategory>
#include <QStringList>
#include <mutex>

namespace kelvar {

/// Switches the log on for its lifetime and keeps its lines, whichever thread they come from.
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
