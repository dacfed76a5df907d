// lokari-bench: measures the figures of docs/benchmarks.md.
#include <benchmark/benchmark.h>

#include <QApplication>

#include <cstdio>

namespace {

/// Qt's messages without its complaints about what windows cannot do without a screen: the progress
/// dialog wants to come to the front with each step.
void print(QtMsgType, const QMessageLogContext&, const QString& text) {
  if (text.startsWith(QLatin1String("This plugin does not support "))) return;
  std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
}

}  // namespace

int main(int argc, char** argv) {
  // Windows are measured without a screen, so that figures of different machines compare.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(print);
  const QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
