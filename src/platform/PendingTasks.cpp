#include "platform/PendingTasks.h"

#include <atomic>

namespace kelvar {
namespace {

std::atomic<int>& pending(PendingTasks::Kind kind) {
  static std::atomic<int> awaited = 0, reports = 0;
  return kind == PendingTasks::Kind::Report ? reports : awaited;
}

}  // namespace

std::shared_ptr<void> PendingTasks::acquire(Kind kind) {
  ++pending(kind);
  return {&pending(kind), [](std::atomic<int>* count) { --*count; }};
}

int PendingTasks::count(Kind kind) { return pending(kind); }

}  // namespace kelvar
