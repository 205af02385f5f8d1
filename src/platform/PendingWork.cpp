#include "platform/PendingWork.h"

#include <atomic>

namespace kelvar {
namespace {

std::atomic<int> pending = 0;

}  // namespace

std::shared_ptr<void> PendingWork::begin() {
  ++pending;
  return {&pending, [](std::atomic<int>* count) { --*count; }};
}

int PendingWork::count() { return pending; }

}  // namespace kelvar
