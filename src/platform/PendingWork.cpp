#include "platform/PendingWork.h"

#include <atomic>

namespace kelvar {
namespace {

std::atomic<int>& pending(PendingWork::Kind kind) {
  static std::atomic<int> awaited = 0, reports = 0;
  return kind == PendingWork::Kind::Report ? reports : awaited;
}

}  // namespace

std::shared_ptr<void> PendingWork::begin(Kind kind) {
  ++pending(kind);
  return {&pending(kind), [](std::atomic<int>* count) { --*count; }};
}

int PendingWork::count(Kind kind) { return pending(kind); }

}  // namespace kelvar
