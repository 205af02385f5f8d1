// The cost of tracking for the main thread: one queued event, one sent event, and ten thousand
// queued events. There is no server at the URL; the network thread handles the failures. Also the
// cost of a hundred thousand server messages, from the request to the stored list.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <memory>
#include <semaphore>

#include "analytics/SegmentIOTracker.h"
#include "core/ServerMessages.h"
#include "platform/LoopbackServer.h"

namespace {

using benchmark::State;
using kelvar::SegmentIOTracker;

constexpr int kEvents = 10'000;
constexpr int kMessages = 100'000;

const QString kName = QStringLiteral("Started");

QVariantMap properties() {
  return {{QStringLiteral("layers"), 3}, {QStringLiteral("quality"), QStringLiteral("high")}};
}

std::shared_ptr<SegmentIOTracker> tracker() {
  const auto tracker = std::make_shared<SegmentIOTracker>(QStringLiteral("key"));
  tracker->setUuid(QStringLiteral("F6C6C0A0-2F0B-4A53-9A37-3B6A3E8F7C11"));
  tracker->setSuperProperties(std::make_shared<QVariantMap>(
      QVariantMap{{QStringLiteral("Plugin Name"), QStringLiteral("Kelvar")}}));
  tracker->setIsObtainingLocation(true);
  return tracker;
}

void waits(State& state) {
  const auto waiting = tracker();
  for (auto _ : state) waiting->track(kName, properties());
}

void isSent(State& state) {
  const auto knowing = tracker();
  knowing->setContext(QVariantMap{{QStringLiteral("city"), QStringLiteral("Ulm")}});
  for (auto _ : state) knowing->track(kName, properties());
}

void drain(State& state) {
  const auto full = tracker();
  for (auto _ : state) {
    state.PauseTiming();
    for (int i = 0; i < kEvents; ++i) full->track(kName, properties());
    state.ResumeTiming();
    full->handlePendingRequests();
  }
}

QByteArray manyMessages() {
  QByteArray records;
  for (int id = 1; id <= kMessages; ++id) {
    const QByteArray number = QByteArray::number(id);
    // No more, or the answer is longer than any that is read.
    records += (id == 1 ? "" : ",") + QByteArray(R"({"fields":{"ID":)") + number +
               R"(,"Message":"Version )" + number + R"( draws faster"}})";
  }
  return "{\"messages\":[" + records + "]}";
}

void messages(State& state) {
  using kelvar::LoopbackServer;
  const LoopbackServer server({LoopbackServer::http(manyMessages())});
  qputenv("KELVAR_API_SERVER", server.url(QString()).toEncoded());
  const auto store = std::make_shared<kelvar::KVPersister>();
  for (auto _ : state) {
    store->removeObjectForKey(QLatin1String(kelvar::ServerMessages::kKey));
    std::binary_semaphore done(0);
    kelvar::ServerMessages::load([store] { return store; },
                                 [&](const kelvar::Result<void>& loaded) {
                                   if (!loaded) state.SkipWithError(loaded.error().message.c_str());
                                   done.release();
                                 });
    done.acquire();
  }
  const auto stored = store->objectForKey(QLatin1String(kelvar::ServerMessages::kKey)).toList();
  if (stored.size() != kMessages) state.SkipWithError("not all messages are stored");
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QTemporaryDir folder;
  qputenv("KELVAR_DEFAULTS", folder.filePath(QStringLiteral("settings.sqlite")).toUtf8());
  qputenv("KELVAR_ANALYTICS_SERVER", "http://127.0.0.1:1");
  qunsetenv("DO_NOT_TRACK");
  benchmark::RegisterBenchmark("track/waits", waits)->Iterations(kEvents);
  benchmark::RegisterBenchmark("track/isSent", isSent)->Iterations(kEvents);
  benchmark::RegisterBenchmark("drain/10000", drain)->Iterations(3)->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("messages/100000", messages)
      ->Iterations(3)
      ->MeasureProcessCPUTime()
      ->Unit(benchmark::kMillisecond);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
