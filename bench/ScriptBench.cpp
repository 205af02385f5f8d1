// The cost of scripts: reading properties, and `kelvar run` from its start to the first line.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "scripting/runtime/ScriptRuntime.h"

namespace {

using kelvar::ScriptRuntime;

constexpr int kReads = 1'000'000;

void readProperties(benchmark::State& state) {
  ScriptRuntime runtime([](const QString&) {});
  runtime.evaluate(QStringLiteral("var rect = KVRectMake(1, 2, 3, 4)"), QStringLiteral("make"));
  const QString script =
      QStringLiteral("for (let i = 0; i < %1; ++i) if (rect.width() !== 3) throw i").arg(kReads);
  for (auto _ : state) {
    if (!runtime.evaluate(script, QStringLiteral("read"))) state.SkipWithError("the script failed");
  }
  state.SetItemsProcessed(state.iterations() * kReads);
}
BENCHMARK(readProperties)->Unit(benchmark::kMillisecond);

void start(benchmark::State& state) {
  const QTemporaryDir dir;
  QFile script(dir.filePath(QStringLiteral("script.js")));
  if (!script.open(QIODevice::WriteOnly)) return state.SkipWithError("no place for the script");
  script.write("log(KVRectMake(1, 2, 3, 4))");
  script.close();
  for (auto _ : state) {
    QProcess program;
    program.start(QStringLiteral(KELVAR_PROGRAM), {QStringLiteral("run"), script.fileName()});
    if (!program.waitForReadyRead()) state.SkipWithError("kelvar run prints nothing");
    state.PauseTiming();
    program.waitForFinished();
    state.ResumeTiming();
  }
}
BENCHMARK(start)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
