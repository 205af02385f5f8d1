// Base64 and MD5 of 64 MiB compared with Qt's own, including strings on both sides.

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QCryptographicHash>
#include <QString>

#include "util/MD5String.h"
#include "util/MF_Base64Codec.h"

namespace {

constexpr qsizetype kBytes = qsizetype{64} << 20;

const QByteArray& data() {
  static const QByteArray kData = [] {
    QByteArray bytes(kBytes, Qt::Uninitialized);
    uint32_t state = 1;
    for (char& byte : bytes) byte = char((state = state * 1664525u + 1013904223u) >> 24);
    return bytes;
  }();
  return kData;
}

const QString& base64() {
  static const QString kText = QString::fromLatin1(data().toBase64());
  return kText;
}

const QString& letters() {
  static const QString kText(kBytes, u'a');
  return kText;
}

template <class Work>
void measure(benchmark::State& state, const Work& work) {
  for (auto _ : state) benchmark::DoNotOptimize(work());
  state.SetBytesProcessed(state.iterations() * kBytes);
}

}  // namespace

int main(int argc, char** argv) {
  using benchmark::RegisterBenchmark;
  using benchmark::State;
  RegisterBenchmark("encode/kelvar", [](State& state) {
    measure(state, [] { return kelvar::base64String(data()); });
  });
  RegisterBenchmark("encode/qt", [](State& state) {
    measure(state, [] { return QString::fromLatin1(data().toBase64()); });
  });
  RegisterBenchmark("decode/kelvar", [](State& state) {
    measure(state, [] { return kelvar::dataWithBase64String(base64()); });
  });
  RegisterBenchmark("decode/qt", [](State& state) {
    measure(state, [] { return QByteArray::fromBase64(base64().toLatin1()); });
  });
  RegisterBenchmark("md5/kelvar", [](State& state) {
    measure(state, [] { return kelvar::MD5String(letters()); });
  });
  RegisterBenchmark("md5/qt", [](State& state) {
    measure(state, [] {
      return QCryptographicHash::hash(letters().toUtf8(), QCryptographicHash::Md5).toHex();
    });
  });
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
