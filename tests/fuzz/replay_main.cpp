// Runs a fuzz target over its corpus: the folder that the command line names.
#include <QDir>
#include <QFile>

#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("one argument: the corpus folder\n", stderr);
    return 2;
  }
  const QDir folder(QFile::decodeName(argv[1]));
  const QStringList names = folder.entryList(QDir::Files, QDir::Name);
  if (names.isEmpty()) {
    std::fprintf(stderr, "no corpus in %s\n", argv[1]);
    return 1;
  }
  for (const QString& name : names) {
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::ReadOnly)) {
      std::fprintf(stderr, "cannot read %s\n", qPrintable(name));
      return 1;
    }
    const QByteArray data = file.readAll();
    std::printf("%s\n", qPrintable(name));
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(data.constData()),
                           static_cast<size_t>(data.size()));
  }
  return 0;
}
