#include <QFile>

#include "fuzz/Fuzz.h"

/// Runs each of the given input files once.
int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    QFile file(QString::fromLocal8Bit(argv[i]));
    kelvar::check(file.open(QIODevice::ReadOnly), argv[i]);
    const QByteArray bytes = file.readAll();
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.constData()),
                           size_t(bytes.size()));
  }
  kelvar::check(argc > 1, "there are seeds");
}
