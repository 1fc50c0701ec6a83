#include "texts/LocaleFormats.h"

#include <QDate>
#include <QTime>
#include <algorithm>
#include <vector>

namespace tollbeam {

namespace {

// A piece of a date or time format: a field ("mm", "AP") or the text between two.
struct Piece {
  QChar field;  // null for text
  QString text;
};

constexpr QChar kWeekday = u'D';

class Format {
 public:
  Format(const QString& format, const QString& fields) {
    for (qsizetype at = 0; at < format.size();) {
      const QChar c = format[at];
      qsizetype end = at + 1;
      if (c == u'\'') {
        end = format.indexOf(u'\'', at + 1);
        if (end < 0) end = format.size();
        // Two quotes stand for one.
        addText(end == at + 1 ? QStringLiteral("'") : format.mid(at + 1, end - at - 1));
        ++end;
      } else if (!fields.contains(c)) {
        addText(c);
      } else if (c == u'A' || c == u'a') {
        if (end < format.size() && format[end].toUpper() == u'P') ++end;
        pieces_.push_back({u'A', format.mid(at, end - at)});
      } else {
        while (end < format.size() && format[end] == c) ++end;
        // "dddd" is the weekday, "d" the day of the month.
        pieces_.push_back({c == u'd' && end - at > 2 ? kWeekday : c, format.mid(at, end - at)});
      }
      at = end;
    }
  }

  [[nodiscard]] qsizetype indexOf(QChar field) const {
    const auto found = std::find_if(pieces_.begin(), pieces_.end(),
                                    [field](const Piece& p) { return p.field == field; });
    return found == pieces_.end() ? -1 : found - pieces_.begin();
  }

  [[nodiscard]] QString textAfter(qsizetype field) const {
    const auto next = static_cast<std::size_t>(field + 1);
    return next < pieces_.size() && pieces_[next].field.isNull() ? pieces_[next].text : QString();
  }

  /// Takes the field out, and the text that joins it to the one before.
  void drop(QChar field) {
    const qsizetype at = indexOf(field);
    if (at < 0) return;
    const bool joined = at > 0 && pieces_[static_cast<std::size_t>(at - 1)].field.isNull();
    pieces_.erase(pieces_.begin() + at - (joined ? 1 : 0), pieces_.begin() + at + 1);
  }

  [[nodiscard]] QString toString() const {
    QString result;
    for (const Piece& piece : pieces_) {
      QString text = piece.text;
      if (piece.field.isNull()) text = u'\'' + text.replace(u'\'', QStringLiteral("''")) + u'\'';
      result += text;
    }
    return result;
  }

 private:
  void addText(const QString& text) {
    if (pieces_.empty() || !pieces_.back().field.isNull()) pieces_.push_back({});
    pieces_.back().text += text;
  }

  std::vector<Piece> pieces_;
};

Format shortTime(const QLocale& locale) {
  QString format = locale.timeFormat(QLocale::ShortFormat);
  // Some Qt versions return "B" (in the morning, at noon …), which none of them can format.
  if (!format.contains(u'\'')) format.replace(u'B', QStringLiteral("AP"));
  Format result(format, QStringLiteral("hHmszAa"));
  result.drop(u's');
  return result;
}

QString filledIn(const Format& format, TimeOfDay time, const QLocale& locale) {
  return locale.toString(QTime(time.hour, time.minute), format.toString());
}

QDate date(CalendarDay day) { return {day.year, day.month, day.day}; }

// "." in German, "日" in Japanese; without what belongs to the month or the year that follows.
QString markAfterDay(const QString& text) {
  if (text.startsWith(u'.')) return QStringLiteral(".");
  const auto end = std::find_if_not(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
  return text.left(end - text.begin());
}

}  // namespace

QString shortTimeFormat(const QLocale& locale) { return shortTime(locale).toString(); }

QString timeText(TimeOfDay time, const QLocale& locale) {
  return filledIn(shortTime(locale), time, locale);
}

QString hourText(TimeOfDay time, const QLocale& locale) {
  Format format = shortTime(locale);
  if (format.indexOf(u'A') >= 0 && time.minute == 0) format.drop(u'm');
  return filledIn(format, time, locale);
}

QString weekdayText(CalendarDay day, const QLocale& locale, bool narrow) {
  return locale.standaloneDayName(date(day).dayOfWeek(),
                                  narrow ? QLocale::NarrowFormat : QLocale::ShortFormat);
}

QString weekdayAndDayText(CalendarDay day, const QLocale& locale) {
  const Format format(locale.dateFormat(QLocale::LongFormat), QStringLiteral("dMy"));
  const qsizetype dayAt = format.indexOf(u'd');
  const QString number = locale.toString(day.day) + markAfterDay(format.textAfter(dayAt));
  const QString weekday = locale.dayName(date(day).dayOfWeek(), QLocale::ShortFormat);
  if (format.indexOf(kWeekday) <= dayAt) return weekday + u' ' + number;
  // A single letter or ideograph after the number would read as its unit.
  return number + u' ' + (weekday.size() == 1 ? u'(' + weekday + u')' : weekday);
}

}  // namespace tollbeam
