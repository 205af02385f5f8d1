#include "cli/threads.h"

#include <CLI/CLI.hpp>
#include <QThreadPool>

#include "pixels/threads/ThreadPool.h"

namespace kelvar::cli {
namespace {

void limit(int threads) {
  limitThreads(threads);
  // Qt scales and converts images on threads of its own.
  QThreadPool* const pool = threads > 0 ? QThreadPool::globalInstance() : nullptr;
  if (pool) pool->setMaxThreadCount(threads);
}

}  // namespace

void addThreads(CLI::App* command) {
  command
      ->add_option_function<int>("--threads", limit, "Number of threads; 0 for one per processor")
      ->check(CLI::Range(0, 32))
      ->type_name("N")
      ->default_str("0");
}

}  // namespace kelvar::cli
