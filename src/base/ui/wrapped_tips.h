// Tool tips of any length, in lines that an eye can follow.
#pragma once

#include <QObject>
#include <QString>

namespace lokari {

/// The text in lines of about 60 characters, broken between words; its own line breaks stay.
QString wrappedTip(const QString& text);

/// Installed on the application it wraps the tool tip of every control and every cell, so that
/// nobody who sets one has to think of its length.
class WrappedTips final : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace lokari
