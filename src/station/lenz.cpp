#include "station/lenz.h"

#include "base/bytes.h"
#include "link/lenz.h"
#include "link/lenz_codec.h"
#include "link/lenz_framing.h"
#include "link/lenz_meaning.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/station_protocol.h"
#include "station/flag_lines.h"

namespace lokari {
namespace {

constexpr int kWant = 4;
constexpr qsizetype kUsbHeadSize = 2;
constexpr int kShortHead = 0x62;
constexpr int kLongHead = 0x63;
constexpr int kVersion = 0x21;
constexpr int kState = 0x22;
constexpr int kInterface = 0xF0;
constexpr int kInterfaceHead = 0x02;

/// From here on the USB interface speaks protocol 3.6; compared as text.
constexpr char16_t kFirstV36[] = u"3.6";

constexpr std::array kCentrals{u"LZ100", u"LH200", u"res.", u"compact"};

constexpr std::array kEmergencies{
    FlagLine{0x02, u"Notaus aktiv"},
    FlagLine{0x01, u"Nothalt aktiv"},
};

constexpr std::array kDocumentedCentrals{u"LZ100", u"LH200", u"Compact oder Commander"};

bool isHead(int byte) {
  return byte == kShortHead || byte == kLongHead;
}

QString twoDigits(int number) {
  return QStringLiteral("%1.%2").arg(number / 16).arg(number & 15);
}

bool hasUsbHead(const QByteArray& reply) {
  return byteAt(reply, 0) == 0xFF && byteAt(reply, 1) == 0xFE;
}

qsizetype headSize(const QByteArray& reply, bool usb) {
  return usb || hasUsbHead(reply) ? kUsbHeadSize : 0;
}

/// Bytes of the message that `input` begins with, its check byte and what stands ahead of it
/// included; all of it when that is no such message.
qsizetype messageSize(const QByteArray& input, bool usb) {
  const qsizetype start = headSize(input, usb);
  const int head = byteAt(input, start);
  if (head < 0) return start + 1;
  const bool counts = isHead(head) || head == kInterfaceHead;
  return counts ? start + (head & 0x0F) + 2 : input.size();
}

StationChoice interfaceOf(const QByteArray& reply, int head, const QString& version) {
  if (hasUsbHead(reply)) {
    return {StationKind::LiUsb, version >= QStringView(kFirstV36)};
  }
  return {head == kLongHead ? StationKind::Li100V3 : StationKind::Li100, false};
}

class LenzInquiry final : public StationInquiry {
 public:
  using StationInquiry::StationInquiry;

  void ask() override {
    link().protocol().dropInput();
    framing().lnzSend(lenz::withCheck(bytes({0x21, kVersion})));
    setWant(kWant);
  }

  StationReport evaluate() override {
    const QByteArray answer = takeMessage();
    StationReport report = lenzVersionReport(answer, usb());
    if (!report.connected) return report;
    // The rest of the session speaks to what is really there.
    settings().baseUnit = report.connected->kind;
    const QByteArray version = answer.mid(headSize(answer, usb()));
    // The oldest interface says everything several times.
    link().protocol().dropInput();
    input_.clear();
    framing().lnzSend(lenz::withCheck(bytes({0x21, 0x24})));
    link().WaitForData(kWant);
    report.lines << lenzStateLines(takeState());
    if (!settings().makerForm) return report;
    for (const QString& line : lenzDocumentedLines(version, askInterface())) {
      if (!report.lines.contains(line)) report.lines << line;
    }
    return report;
  }

  bool wantsMakerFormByItsFarewell() override {
    return dynamic_cast<LenzProtocol&>(link().protocol()).framing().saysItOnce();
  }

 private:
  LenzFraming framing() const { return {link(), settings().baseUnit}; }
  bool usb() const { return lenzInterface(settings().baseUnit).usb; }

  /// The next message with all that stands ahead of it. One that is cut gets its time to arrive;
  /// what is there when it does not is given.
  QByteArray takeMessage() {
    input_ += link().serial().read();
    passNews();
    while (messageSize(input_, usb()) > input_.size()) {
      link().WaitForData(static_cast<qint32>(messageSize(input_, usb()) - input_.size()));
      const QByteArray more = link().serial().read();
      if (more.isEmpty()) break;
      input_ += more;
      passNews();
    }
    const qsizetype size = messageSize(input_, usb());
    const QByteArray message = input_.left(size);
    input_.remove(0, size);
    return message;
  }

  /// What is told to everybody is no answer.
  void passNews() { input_ = lenz::withoutNews(input_, usb() || hasUsbHead(input_)); }

  /// The answer to the question for the interface's version, without FF FE.
  QByteArray askInterface() {
    link().protocol().dropInput();
    input_.clear();
    framing().lnzSend(lenz::withCheck(bytes({kInterface})));
    link().WaitForData(kWant);
    const QByteArray raw = takeMessage();
    return raw.mid(headSize(raw, usb()));
  }

  /// The next message but late repeats of the first answer, without what stands ahead of it.
  QByteArray takeState() {
    for (;;) {
      const QByteArray raw = takeMessage();
      const QByteArray message = raw.mid(headSize(raw, usb()));
      if (!isHead(byteAt(message, 0)) || byteAt(message, 1) != kVersion) return message;
    }
  }

  QByteArray input_;
};

}  // namespace

StationReport lenzVersionReport(const QByteArray& reply, bool usb) {
  const QByteArray message = reply.mid(headSize(reply, usb));
  const int head = byteAt(message, 0);
  if (!isHead(head) || byteAt(message, 1) != kVersion) {
    return {.lines = {QStringLiteral("Ungültige Antwort vom LI100")}, .understood = false};
  }
  StationReport report;
  QString version;
  if (const int number = byteAt(message, 2); number >= 0) {
    version = twoDigits(number);
    report.lines << QStringLiteral("Lenz Zentrale Version ") + version;
  }
  report.connected = interfaceOf(reply, head, version);
  const auto central = static_cast<size_t>(byteAt(message, 3));
  if (report.connected->kind == StationKind::Li100V3 && central < kCentrals.size()) {
    report.lines << QString::fromUtf16(kCentrals[central]);
  }
  return report;
}

QStringList lenzDocumentedLines(const QByteArray& version, const QByteArray& interface) {
  QStringList lines;
  if (const auto id = static_cast<size_t>(byteAt(version, 3));
      byteAt(version, 0) == kLongHead && id < kDocumentedCentrals.size()) {
    lines << QString::fromUtf16(kDocumentedCentrals[id]);
  }
  const int number = byteAt(interface, 1);
  if (byteAt(interface, 0) == kInterfaceHead && number >= 0 && lenz::isSound(interface)) {
    lines << QStringLiteral("Interface Version ") + twoDigits(number);
  }
  return lines;
}

QStringList lenzStateLines(const QByteArray& message) {
  const int state = byteAt(message, 2);
  if (byteAt(message, 0) != kShortHead || byteAt(message, 1) != kState || state < 0) return {};
  QStringList lines{
      (state & 0x08) != 0 ? QStringLiteral("Programmiermodus ein")
                          : QStringLiteral("Programmiermodus aus"),
      (state & 0x04) != 0 ? QStringLiteral("Startmodus automatisch")
                          : QStringLiteral("Startmodus manuell"),
  };
  return lines + flagLines(state, kEmergencies);
}

std::unique_ptr<StationInquiry> makeLenzInquiry(StationLink& link, Settings& settings) {
  return std::make_unique<LenzInquiry>(link, settings);
}

}  // namespace lokari
