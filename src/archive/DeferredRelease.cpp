#include "archive/DeferredRelease.h"

namespace kelvar {

void releaseIteratively(QVariant&& values) {
  thread_local QVariantList* queue = nullptr;
  if (queue) {
    queue->append(std::move(values));
    return;
  }
  QVariantList waiting;
  waiting.append(std::move(values));
  queue = &waiting;
  while (!waiting.isEmpty()) {
    const QVariant released = waiting.takeLast();
  }
  queue = nullptr;
}

}  // namespace kelvar
