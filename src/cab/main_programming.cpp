#include "cab/main_programming.h"

#include <QFileInfo>

#include <algorithm>

#include "base/numbers.h"
#include "base/paths.h"
#include "base/text_file.h"

namespace lokari {
namespace {

/// Files of the catalogue have names of at most so many characters.
constexpr int kFileNameLength = 8;
constexpr int kHighestValue = 255;

/// The set in use when the record was saved, 1 when no set has that name.
int currentSet(const CvRecord& cvs) {
  const auto& names = cvs.recCvName;
  const auto current = std::find(names.begin(), names.end(), cvs.recSetName);
  return current == names.end() ? 1 : static_cast<int>(current - names.begin()) + 1;
}

std::optional<QString> descriptionText(const CabRecord& record, const QString& basePath) {
  const QString type = record.cvs.recDecoder.left(kFileNameLength);
  const QString file =
      findFile(insideFolder(basePath, {record.maker, type + QStringLiteral(".dec")}));
  if (file.isEmpty() || !QFileInfo(file).isFile()) return std::nullopt;
  return readTextFile(file);
}

}  // namespace

void MainProgramming::load(const CabRecord& record, const QString& basePath,
                           const StationKindRow& kind) {
  *this = MainProgramming();
  cvSet_ = currentSet(record.cvs);
  cvValues_ = chkCVVar(record.cvs.recCvValues[static_cast<size_t>(cvSet_ - 1)]);
  settled_ = cvValues_;
  if (record.cvs.recDecoder.isEmpty() || !kind.cab.programsOnMain) return;
  const auto text = descriptionText(record, basePath);
  if (!text) return;
  list_ = readMainCVs(*text, kind.highestWritableCv);
  available_ = list_.progMain;
}

QStringList MainProgramming::names() const {
  QStringList names;
  for (const MainCV& cv : list_.entries) names << cv.name;
  return names;
}

const MainCV* MainProgramming::shown() const {
  return list_.entries.empty() ? nullptr : &list_.entries[static_cast<size_t>(cvIndex_)];
}

int MainProgramming::valueOf(const MainCV& cv) const {
  return static_cast<quint8>(cvValues_[cv.number - 1]);
}

QString MainProgramming::shownName() const {
  const MainCV* cv = shown();
  return cv == nullptr ? QString() : QStringLiteral("CV%1: %2").arg(printed(cv->number), cv->name);
}

QString MainProgramming::shownValue() const {
  const MainCV* cv = shown();
  return cv == nullptr ? QString() : QString::number(valueOf(*cv));
}

QString MainProgramming::shownHint() const {
  const MainCV* cv = shown();
  return cv == nullptr ? QString() : cv->hint;
}

void MainProgramming::show(const QString& name) {
  const auto& entries = list_.entries;
  const auto entry = std::find_if(entries.begin(), entries.end(),
                                  [&](const MainCV& each) { return each.name == name; });
  if (entry != entries.end()) cvIndex_ = static_cast<int>(entry - entries.begin());
}

void MainProgramming::take(const Step& step) {
  cvValues_[step.number - 1] = static_cast<char>(step.value);
}

void MainProgramming::settle(const Step& step) {
  settled_[step.number - 1] = static_cast<char>(step.value);
}

std::optional<MainProgramming::Step> MainProgramming::step(int by) {
  const MainCV* cv = shown();
  if (cv == nullptr || !available_) return std::nullopt;
  const int value = valueOf(*cv) + by;
  if (value < 0 || value > kHighestValue) return std::nullopt;
  cvValues_[cv->number - 1] = static_cast<char>(value);
  return Step{cv->number, value};
}

}  // namespace lokari
