#include "cli/run/endDescendants.h"

#include <sys/prctl.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QMultiHash>
#include <chrono>
#include <csignal>
#include <thread>
#include <vector>

namespace kelvar::cli {
namespace {

using namespace std::chrono_literals;

/// The parent of a process that runs in this one's session; 0 for any other.
pid_t parentOf(pid_t process) {
  QFile file(QStringLiteral("/proc/%1/stat").arg(process));
  if (!file.open(QIODevice::ReadOnly)) return 0;
  // The program's name, in parentheses, may contain anything.
  const QByteArray line = file.readAll();
  const QList<QByteArray> fields = line.sliced(line.lastIndexOf(')') + 1).simplified().split(' ');
  const bool counts = fields.value(0) != "Z" && fields.value(3).toInt() == getsid(0);
  return counts ? fields.value(1).toInt() : 0;
}

std::vector<pid_t> descendants() {
  QMultiHash<pid_t, pid_t> children;
  for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
    const pid_t process = name.toInt();
    if (process > 0) children.insert(parentOf(process), process);
  }
  std::vector<pid_t> found{getpid()};
  for (size_t i = 0; i < found.size(); ++i) {
    for (const pid_t child : children.values(found[i])) found.push_back(child);
  }
  found.erase(found.begin());
  return found;
}

}  // namespace

void adoptDescendants() { prctl(PR_SET_CHILD_SUBREAPER, 1); }

void endDescendants() {
  constexpr auto kPatience = 500ms, kTurn = 10ms;
  // Found once: a process whose parent ends is no longer a descendant.
  std::vector<pid_t> running = descendants();
  for (const pid_t process : running) kill(process, SIGTERM);
  for (auto waited = 0ms; waited < kPatience && !running.empty(); waited += kTurn) {
    std::this_thread::sleep_for(kTurn);
    std::erase_if(running, [](pid_t process) { return parentOf(process) == 0; });
  }
  for (const pid_t process : running) kill(process, SIGKILL);
}

}  // namespace kelvar::cli
