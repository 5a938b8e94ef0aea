#include "ui/RunTexts.h"

#include <QCoreApplication>

#include "core/SizeText.h"
#include "ui/Texts.h"

namespace korvenal::ui {

namespace {

/// Whose words the texts of this file are for a translator.
class RunWords {
  Q_DECLARE_TR_FUNCTIONS(RunWords)
};

QString sizeText(std::int64_t bytes) {
  return toQt(formatSizeText(Fixed4(bytes), true));
}

/// "1.7 of 4.4 GB"; both units where they differ.
QString partText(std::int64_t done, std::int64_t total) {
  const QString whole = sizeText(total);
  QString part = sizeText(done);
  const QString unit = whole.section(QLatin1Char(' '), 1);
  if (part.section(QLatin1Char(' '), 1) == unit) part = part.section(QLatin1Char(' '), 0, 0);
  return RunWords::tr("%1 of %2").arg(part, whole);
}

QString workText(const RunDisc& disc, const RunProgress& at) {
  switch (disc.work) {
    case RunDisc::Work::Data: {
      const QString rest = paceText(at);
      return rest.isEmpty() ? RunWords::tr("%1 %").arg(disc.percent)
                            : RunWords::tr("%1 %  %2").arg(disc.percent).arg(rest);
    }
    case RunDisc::Work::Verifying:
      return RunWords::tr("verifying, %1 %").arg(disc.percent);
    case RunDisc::Work::Erasing:
      return RunWords::tr("erasing...");
    case RunDisc::Work::None:
      break;
  }
  return toQt(at.progress.text);
}

QString doneText(const RunDisc& disc) {
  const bool burned = disc.note == "Success.";
  if (disc.verified && burned) return RunWords::tr("verified, 0 errors");
  return toQt(disc.note);
}

QString textOf(const RunDisc& disc, const RunProgress& at) {
  switch (disc.state) {
    case RunDiscState::Writing:
      return workText(disc, at);
    case RunDiscState::Verified:
      return doneText(disc);
    case RunDiscState::Failed:
      return toQt(disc.note);
    case RunDiscState::Planned:
      break;
  }
  if (!disc.note.empty()) return toQt(disc.note);
  return disc.bytes > Fixed4(0) ? toQt(formatSizeText(disc.bytes, true)) : QString();
}

}  // namespace

QString paceText(const RunProgress& at) {
  const Progress& progress = at.progress;
  if (progress.bytesTotal <= 0) return {};
  QStringList parts{partText(progress.bytesDone, progress.bytesTotal)};
  if (const auto speed = at.pace.perSecond())
    parts += RunWords::tr("%1/s").arg(sizeText(static_cast<std::int64_t>(*speed)));
  if (const auto left = at.pace.secondsLeft()) parts += toQt(aboutTime(*left));
  return parts.join(QStringLiteral(", "));
}

DiscFill discFill(const RunDisc& disc, const RunProgress& at) {
  DiscFill fill;
  fill.label = disc.number > 0 ? RunWords::tr("disc %1").arg(disc.number)
                               : QString(QLatin1Char(disc.drive)) + QLatin1Char(':');
  fill.state = disc.state;
  fill.text = textOf(disc, at);
  fill.percent = disc.percent;
  // Between two whole percents lie seconds of a large disc.
  if (disc.work == RunDisc::Work::Data && at.progress.bytesTotal > 0)
    fill.percent = 100.0 * static_cast<double>(at.progress.bytesDone) /
                   static_cast<double>(at.progress.bytesTotal);
  return fill;
}

}  // namespace korvenal::ui
