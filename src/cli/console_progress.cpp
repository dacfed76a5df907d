#include "cli/console_progress.h"

#include "base/clock.h"
#include "base/text_file.h"
#include "cli/console.h"
#include "cli/console_view.h"
#include "cli/context.h"

namespace lokari {
namespace {

class ConsoleProgress final : public Progress {
 public:
  explicit ConsoleProgress(CliContext& context) : context_(context), view_(context.console) {}

  void setStatus(const QString& text) override {
    lines_ = splitLines(text);
    lines_.removeAll(QString());
    view_.setDetail(lines_.join(u' '));
  }
  void setPercent(double percent) override { view_.setProgress(percent); }
  bool cancelled() override {
    context_.clock.pump();
    return context_.interrupt.raised;
  }

  void tellResult() const {
    for (const QString& line : lines_) context_.console.result(line);
  }

 private:
  CliContext& context_;
  ConsoleView view_;
  QStringList lines_;
};

}  // namespace

RunWithProgress consoleProgress(CliContext& context) {
  return [&context](const std::function<void(Progress&)>& work) {
    ConsoleProgress progress(context);
    work(progress);
    progress.tellResult();
  };
}

}  // namespace lokari
