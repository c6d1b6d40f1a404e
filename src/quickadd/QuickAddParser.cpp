#include "quickadd/QuickAddParser.h"

#include "tasks/entities/TaskEntity.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <functional>

namespace QuickAddParser {

namespace {

// Lower case without accents, one code unit for one: "Mañana" -> "manana", so that positions in
// the folded text are positions in the typed one.
QString fold(QStringView text)
{
    QString folded;
    folded.reserve(text.size());
    for (const QChar c : text) {
        const QString decomposed = c.decomposition();
        const QChar base = (!decomposed.isEmpty() && c.decompositionTag() == QChar::Canonical) ? decomposed.at(0) : c;
        folded.append(base.toLower());
    }
    return folded;
}

struct Token {
    int start = 0;
    // End of the raw token, and of the token without trailing punctuation ("monday," -> "monday").
    int end = 0;
    int wordEnd = 0;
    QString word; // folded, without trailing punctuation
};

QList<Token> tokenize(const QString& text, const QString& folded)
{
    QList<Token> tokens;
    int i = 0;
    const int n = int(text.size());
    while (i < n) {
        while (i < n && text.at(i).isSpace())
            ++i;
        if (i >= n)
            break;
        Token token;
        token.start = i;
        while (i < n && !text.at(i).isSpace())
            ++i;
        token.end = i;
        token.wordEnd = i;
        while (token.wordEnd > token.start + 1 && QStringLiteral(",.;:?").contains(text.at(token.wordEnd - 1)))
            --token.wordEnd;
        token.word = folded.mid(token.start, token.wordEnd - token.start);
        tokens.append(token);
    }
    return tokens;
}

std::optional<int> weekdayOf(const QString& word)
{
    static const QHash<QString, int> names {
        {QStringLiteral("monday"), 1},
        {QStringLiteral("mon"), 1},
        {QStringLiteral("tuesday"), 2},
        {QStringLiteral("tue"), 2},
        {QStringLiteral("tues"), 2},
        {QStringLiteral("wednesday"), 3},
        {QStringLiteral("wed"), 3},
        {QStringLiteral("thursday"), 4},
        {QStringLiteral("thu"), 4},
        {QStringLiteral("thur"), 4},
        {QStringLiteral("thurs"), 4},
        {QStringLiteral("friday"), 5},
        {QStringLiteral("fri"), 5},
        {QStringLiteral("saturday"), 6},
        {QStringLiteral("sat"), 6},
        {QStringLiteral("sunday"), 7},
        {QStringLiteral("sun"), 7},
        {QStringLiteral("lunes"), 1},
        {QStringLiteral("martes"), 2},
        {QStringLiteral("miercoles"), 3},
        {QStringLiteral("jueves"), 4},
        {QStringLiteral("viernes"), 5},
        {QStringLiteral("sabado"), 6},
        {QStringLiteral("domingo"), 7},
        // "todos los sábados"
        {QStringLiteral("mondays"), 1},
        {QStringLiteral("tuesdays"), 2},
        {QStringLiteral("wednesdays"), 3},
        {QStringLiteral("thursdays"), 4},
        {QStringLiteral("fridays"), 5},
        {QStringLiteral("saturdays"), 6},
        {QStringLiteral("sundays"), 7},
        {QStringLiteral("sabados"), 6},
        {QStringLiteral("domingos"), 7},
    };
    const auto found = names.constFind(word);
    if (found == names.constEnd())
        return std::nullopt;
    return *found;
}

// Plain digits, small enough to be a count, a day or an hour.
std::optional<int> numberOf(const QString& word)
{
    if (word.isEmpty() || word.size() > 4)
        return std::nullopt;
    for (const QChar c : word) {
        if (!c.isDigit())
            return std::nullopt;
    }
    return word.toInt();
}

// "15th", "1st", "2nd", "3rd" or "15": a day of the month.
std::optional<int> monthDayOf(const QString& word)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,2})(st|nd|rd|th)?$"));
    const QRegularExpressionMatch match = pattern.match(word);
    if (!match.hasMatch())
        return std::nullopt;
    const int day = match.captured(1).toInt();
    if (day < 1 || day > 31)
        return std::nullopt;
    return day;
}

// "first".."fifth", "1st".."5th", "last" and the Spanish ones: which weekday of the month.
std::optional<int> weekdayOrdinalOf(const QString& word)
{
    static const QHash<QString, int> names {
        {QStringLiteral("first"), 1},
        {QStringLiteral("1st"), 1},
        {QStringLiteral("second"), 2},
        {QStringLiteral("2nd"), 2},
        {QStringLiteral("third"), 3},
        {QStringLiteral("3rd"), 3},
        {QStringLiteral("fourth"), 4},
        {QStringLiteral("4th"), 4},
        {QStringLiteral("fifth"), 5},
        {QStringLiteral("5th"), 5},
        {QStringLiteral("last"), -1},
        {QStringLiteral("primer"), 1},
        {QStringLiteral("primero"), 1},
        {QStringLiteral("segundo"), 2},
        {QStringLiteral("tercer"), 3},
        {QStringLiteral("tercero"), 3},
        {QStringLiteral("cuarto"), 4},
        {QStringLiteral("quinto"), 5},
        {QStringLiteral("ultimo"), -1},
    };
    const auto found = names.constFind(word);
    if (found == names.constEnd())
        return std::nullopt;
    return *found;
}

std::optional<RecurrenceFrequencyEnum> periodOf(const QString& word, bool plural)
{
    static const QHash<QString, RecurrenceFrequencyEnum> singular {
        {QStringLiteral("day"), RecurrenceFrequencyEnum::daily},
        {QStringLiteral("week"), RecurrenceFrequencyEnum::weekly},
        {QStringLiteral("month"), RecurrenceFrequencyEnum::monthly},
        {QStringLiteral("year"), RecurrenceFrequencyEnum::yearly},
        {QStringLiteral("dia"), RecurrenceFrequencyEnum::daily},
        {QStringLiteral("semana"), RecurrenceFrequencyEnum::weekly},
        {QStringLiteral("mes"), RecurrenceFrequencyEnum::monthly},
        {QStringLiteral("ano"), RecurrenceFrequencyEnum::yearly},
    };
    static const QHash<QString, RecurrenceFrequencyEnum> plurals {
        {QStringLiteral("days"), RecurrenceFrequencyEnum::daily},
        {QStringLiteral("weeks"), RecurrenceFrequencyEnum::weekly},
        {QStringLiteral("months"), RecurrenceFrequencyEnum::monthly},
        {QStringLiteral("years"), RecurrenceFrequencyEnum::yearly},
        {QStringLiteral("dias"), RecurrenceFrequencyEnum::daily},
        {QStringLiteral("semanas"), RecurrenceFrequencyEnum::weekly},
        {QStringLiteral("meses"), RecurrenceFrequencyEnum::monthly},
        {QStringLiteral("anos"), RecurrenceFrequencyEnum::yearly},
    };
    const QHash<QString, RecurrenceFrequencyEnum>& names = plural ? plurals : singular;
    const auto found = names.constFind(word);
    if (found == names.constEnd())
        return std::nullopt;
    return *found;
}

// "10m", "1h", "2d", "15min" in one word, or the unit alone ("min", "hours", "horas").
std::optional<int> minutesPerUnit(const QString& unit)
{
    static const QHash<QString, int> units {
        {QStringLiteral("m"), 1},
        {QStringLiteral("min"), 1},
        {QStringLiteral("mins"), 1},
        {QStringLiteral("minute"), 1},
        {QStringLiteral("minutes"), 1},
        {QStringLiteral("minuto"), 1},
        {QStringLiteral("minutos"), 1},
        {QStringLiteral("h"), 60},
        {QStringLiteral("hr"), 60},
        {QStringLiteral("hrs"), 60},
        {QStringLiteral("hour"), 60},
        {QStringLiteral("hours"), 60},
        {QStringLiteral("hora"), 60},
        {QStringLiteral("horas"), 60},
        {QStringLiteral("d"), 24 * 60},
        {QStringLiteral("day"), 24 * 60},
        {QStringLiteral("days"), 24 * 60},
        {QStringLiteral("dia"), 24 * 60},
        {QStringLiteral("dias"), 24 * 60},
    };
    const auto found = units.constFind(unit);
    if (found == units.constEnd())
        return std::nullopt;
    return *found;
}

// The first day from `from` on whose day of the month is day (-1: the last), within a year.
std::optional<QDate> nextMonthDay(QDate from, int day)
{
    for (int months = 0; months < 13; ++months) {
        const QDate first = QDate(from.year(), from.month(), 1).addMonths(months);
        const int wanted = day == -1 ? first.daysInMonth() : day;
        if (wanted > first.daysInMonth())
            continue;
        const QDate candidate(first.year(), first.month(), wanted);
        if (candidate >= from)
            return candidate;
    }
    return std::nullopt;
}

// The ordinal-th weekday of the month of first (ordinal -1: the last), if the month has it.
std::optional<QDate> ordinalWeekdayIn(QDate first, int ordinal, int weekday)
{
    if (ordinal == -1) {
        QDate day(first.year(), first.month(), first.daysInMonth());
        while (day.dayOfWeek() != weekday)
            day = day.addDays(-1);
        return day;
    }
    QDate day = first;
    while (day.dayOfWeek() != weekday)
        day = day.addDays(1);
    day = day.addDays(7 * (ordinal - 1));
    if (day.month() != first.month())
        return std::nullopt;
    return day;
}

// Where a rule typed without a day starts: its first occurrence from today on.
QDate firstOccurrence(const TaskRecurrenceEntity& rule, QDate today)
{
    switch (rule.frequency) {
    case RecurrenceFrequencyEnum::daily:
    case RecurrenceFrequencyEnum::yearly:
        return today;
    case RecurrenceFrequencyEnum::weekly:
        for (int days = 0; days < 7; ++days) {
            const QDate day = today.addDays(days);
            if (rule.weekdays.isEmpty() || rule.weekdays.contains(day.dayOfWeek()))
                return day;
        }
        return today;
    case RecurrenceFrequencyEnum::monthly:
        if (rule.monthDay != 0)
            return nextMonthDay(today, rule.monthDay).value_or(today);
        if (rule.weekdayOrdinal != 0) {
            for (int months = 0; months < 13; ++months) {
                const QDate first = QDate(today.year(), today.month(), 1).addMonths(months);
                const std::optional<QDate> day = ordinalWeekdayIn(first, rule.weekdayOrdinal, rule.ordinalWeekday);
                if (day && *day >= today)
                    return *day;
            }
        }
        return today;
    }
    return today;
}

// One recognised phrase in the making: how many tokens it takes and what it sets.
struct Candidate {
    PhraseKindEnum kind = PhraseKindEnum::date;
    int tokens = 0;
    std::function<void(Fields&)> apply;
};

class Reader {
public:
    Reader(const QString& text, const Options& options)
        : m_text(text)
        , m_folded(fold(text))
        , m_tokens(tokenize(text, m_folded))
        , m_options(options)
        , m_today(options.now.date())
    {
    }

    Fields read()
    {
        QList<bool> taken(m_tokens.size(), false);
        // The project first, so that /List looks among its lists wherever it is typed.
        for (int i = 0; i < m_tokens.size(); ++i) {
            if (m_fields.project.isEmpty()) {
                if (std::optional<Candidate> found = project(i); found && accept(*found, i, taken))
                    i += found->tokens - 1;
            }
        }
        for (int i = 0; i < m_tokens.size(); ++i) {
            if (taken[i])
                continue;
            std::optional<Candidate> best;
            using Matcher = std::optional<Candidate> (*)(Reader&, int);
            static constexpr Matcher matchers[] = {
                [](Reader& reader, int at) { return reader.quadrant(at); },
                [](Reader& reader, int at) { return reader.list(at); },
                [](Reader& reader, int at) { return reader.date(at); },
                [](Reader& reader, int at) { return reader.time(at); },
                [](Reader& reader, int at) { return reader.recurrence(at); },
                [](Reader& reader, int at) { return reader.reminder(at); },
            };
            for (const Matcher matcher : matchers) {
                std::optional<Candidate> found = matcher(*this, i);
                if (!found || isSet(found->kind) || overlapsTaken(i, found->tokens, taken))
                    continue;
                if (!best || found->tokens > best->tokens)
                    best = std::move(found);
            }
            if (best && accept(*best, i, taken))
                i += best->tokens - 1;
        }
        finish(taken);
        return m_fields;
    }

private:
    QString word(int i) const { return i >= 0 && i < m_tokens.size() ? m_tokens.at(i).word : QString(); }
    bool is(int i, QStringView expected) const { return word(i) == expected; }
    bool isAny(int i, std::initializer_list<QStringView> expected) const
    {
        const QString found = word(i);
        for (const QStringView candidate : expected) {
            if (found == candidate)
                return true;
        }
        return false;
    }

    bool isSet(PhraseKindEnum kind) const
    {
        switch (kind) {
        case PhraseKindEnum::date:
            return m_fields.dueDay.has_value();
        case PhraseKindEnum::time:
            return m_fields.dueTime.has_value();
        case PhraseKindEnum::recurrence:
            return m_fields.recurrence.has_value();
        case PhraseKindEnum::project:
            return !m_fields.project.isEmpty();
        case PhraseKindEnum::list:
            return !m_fields.list.isEmpty();
        case PhraseKindEnum::quadrant:
            return m_fields.quadrant.has_value();
        case PhraseKindEnum::reminder:
            return m_fields.reminderMinutesBefore.has_value();
        }
        return false;
    }

    bool overlapsTaken(int first, int count, const QList<bool>& taken) const
    {
        for (int i = first; i < first + count && i < taken.size(); ++i) {
            if (taken[i])
                return true;
        }
        return false;
    }

    bool accept(const Candidate& candidate, int first, QList<bool>& taken)
    {
        const int start = m_tokens.at(first).start;
        const int end = m_tokens.at(first + candidate.tokens - 1).wordEnd;
        for (const Phrase& dismissed : m_options.dismissed) {
            const bool stillThere = m_text.mid(dismissed.start, dismissed.length) == dismissed.text;
            if (stillThere && start < dismissed.start + dismissed.length && dismissed.start < end)
                return false;
        }
        candidate.apply(m_fields);
        for (int i = first; i < first + candidate.tokens; ++i)
            taken[i] = true;
        m_fields.phrases.append({candidate.kind, start, end - start, m_text.mid(start, end - start)});
        return true;
    }

    // "!1".."!4"
    std::optional<Candidate> quadrant(int i) const
    {
        static const QRegularExpression pattern(QStringLiteral("^!([1-4])$"));
        const QRegularExpressionMatch match = pattern.match(word(i));
        if (!match.hasMatch())
            return std::nullopt;
        const EisenhowerTagEnum tag = EisenhowerTag::allCases.at(match.captured(1).toInt() - 1);
        return Candidate {PhraseKindEnum::quadrant, 1, [tag](Fields& fields) { fields.quadrant = tag; }};
    }

    // The longest name among names that the words from token i on spell, after the sigil.
    // Returns the name as the user has it and the number of tokens it takes.
    std::optional<std::pair<QString, int>> longestName(int i, QChar sigil, const QStringList& names) const
    {
        const QString first = word(i);
        if (first.size() < 2 || first.at(0) != sigil)
            return std::nullopt;
        const QString typedFirst = first.mid(1);
        std::optional<std::pair<QString, int>> best;
        for (const QString& name : names) {
            // Most names differ in their first word: tell them apart before folding them whole.
            const QStringView trimmed = QStringView(name).trimmed();
            if (trimmed.size() < typedFirst.size()
                || (trimmed.size() > typedFirst.size() && !trimmed.at(typedFirst.size()).isSpace())
                || fold(trimmed.left(typedFirst.size())) != typedFirst)
                continue;
            const QStringList parts = fold(name.simplified()).split(QLatin1Char(' '), Qt::SkipEmptyParts);
            if (parts.isEmpty() || i + parts.size() > m_tokens.size())
                continue;
            bool matches = true;
            for (int k = 0; k < parts.size() && matches; ++k) {
                const QString typed = k == 0 ? first.mid(1) : word(i + int(k));
                matches = typed == parts.at(k);
            }
            if (matches && (!best || parts.size() > best->second))
                best = std::pair {name, int(parts.size())};
        }
        return best;
    }

    std::optional<Candidate> project(int i)
    {
        QStringList names;
        for (const ProjectNames& project : m_options.projects)
            names.append(project.name);
        const std::optional<std::pair<QString, int>> found = longestName(i, QLatin1Char('#'), names);
        if (!found) {
            if (word(i).size() > 1 && word(i).at(0) == QLatin1Char('#') && m_fields.unknownProject.isEmpty())
                m_fields.unknownProject
                    = m_text.mid(m_tokens.at(i).start + 1, m_tokens.at(i).wordEnd - m_tokens.at(i).start - 1);
            return std::nullopt;
        }
        return Candidate {PhraseKindEnum::project, found->second, [name = found->first](Fields& fields) {
                              fields.project = name;
                              fields.unknownProject.clear();
                          }};
    }

    // "/List": among the chosen project's lists; with none chosen, among the open project's
    // lists, then every project's.
    std::optional<Candidate> list(int i)
    {
        const QString first = word(i);
        // "/tmp/notes" is a path, not a list.
        if (first.size() < 2 || first.at(0) != QLatin1Char('/') || !first.at(1).isLetter()
            || first.indexOf(QLatin1Char('/'), 1) != -1)
            return std::nullopt;
        std::optional<std::pair<QString, int>> best;
        QString owner;
        const auto lookIn = [&](const QString& only) {
            for (const ProjectNames& project : m_options.projects) {
                if (!only.isEmpty() && project.name != only)
                    continue;
                const std::optional<std::pair<QString, int>> found = longestName(i, QLatin1Char('/'), project.lists);
                if (found && (!best || found->second > best->second)) {
                    best = found;
                    owner = project.name;
                }
            }
        };
        if (!m_fields.project.isEmpty())
            lookIn(m_fields.project);
        else {
            if (!m_options.openProject.isEmpty())
                lookIn(m_options.openProject);
            if (!best)
                lookIn({});
        }
        if (!best) {
            if (m_fields.unknownList.isEmpty())
                m_fields.unknownList
                    = m_text.mid(m_tokens.at(i).start + 1, m_tokens.at(i).wordEnd - m_tokens.at(i).start - 1);
            return std::nullopt;
        }
        return Candidate {PhraseKindEnum::list, best->second, [name = best->first, owner](Fields& fields) {
                              fields.list = name;
                              fields.project = owner;
                              fields.unknownList.clear();
                          }};
    }

    static Candidate day(int tokens, QDate date)
    {
        return Candidate {PhraseKindEnum::date, tokens, [date](Fields& fields) { fields.dueDay = date; }};
    }

    QDate nextWeekday(int weekday) const
    {
        QDate day = m_today.addDays(1);
        while (day.dayOfWeek() != weekday)
            day = day.addDays(1);
        return day;
    }

    std::optional<Candidate> date(int i) const
    {
        if (isAny(i, {u"today", u"hoy"}))
            return day(1, m_today);
        if (is(i, u"tomorrow"))
            return day(1, m_today.addDays(1));
        if (is(i, u"pasado") && is(i + 1, u"manana"))
            return day(2, m_today.addDays(2));
        // "por la mañana", "esta mañana", "de la mañana": the morning, not tomorrow.
        if (is(i, u"manana") && !isAny(i - 1, {u"la", u"esta"}))
            return day(1, m_today.addDays(1));
        if (is(i, u"the") && is(i + 1, u"day") && is(i + 2, u"after") && is(i + 3, u"tomorrow"))
            return day(4, m_today.addDays(2));
        if (is(i, u"day") && is(i + 1, u"after") && is(i + 2, u"tomorrow"))
            return day(3, m_today.addDays(2));

        // Weekdays: "on/next/this Monday", "el (próximo) lunes (que viene)", "próximo lunes".
        if (isAny(i, {u"on", u"next", u"this", u"este", u"proximo"})) {
            if (const std::optional<int> weekday = weekdayOf(word(i + 1)))
                return day(2, nextWeekday(*weekday));
        }
        if (is(i, u"el")) {
            const int at = is(i + 1, u"proximo") ? i + 2 : i + 1;
            if (const std::optional<int> weekday = weekdayOf(word(at))) {
                const int tokens = (is(at + 1, u"que") && is(at + 2, u"viene")) ? at - i + 3 : at - i + 1;
                return day(tokens, nextWeekday(*weekday));
            }
        }

        // A day of the month: "on the 15th", "el día 15", "el 15".
        if (is(i, u"on") && is(i + 1, u"the")) {
            if (const std::optional<int> monthDay = monthDayOf(word(i + 2)))
                if (const std::optional<QDate> date = nextMonthDay(m_today, *monthDay))
                    return day(3, *date);
        }
        if (is(i, u"el")) {
            const int at = is(i + 1, u"dia") ? i + 2 : i + 1;
            if (const std::optional<int> number = numberOf(word(at)); number && *number >= 1 && *number <= 31)
                if (const std::optional<QDate> date = nextMonthDay(m_today, *number))
                    return day(at - i + 1, *date);
        }

        // "15/12", "15/12/2027", optionally after "on" or "el".
        const int at = isAny(i, {u"on", u"el"}) ? i + 1 : i;
        static const QRegularExpression dayMonth(QStringLiteral("^(\\d{1,2})/(\\d{1,2})(?:/(\\d{4}))?$"));
        if (const QRegularExpressionMatch match = dayMonth.match(word(at)); match.hasMatch()) {
            const int dayOfMonth = match.captured(1).toInt();
            const int month = match.captured(2).toInt();
            if (match.hasCaptured(3)) {
                const QDate date(match.captured(3).toInt(), month, dayOfMonth);
                if (date.isValid())
                    return day(at - i + 1, date);
            } else {
                // 29/2 waits for the next leap year.
                for (int year = m_today.year(); year < m_today.year() + 8; ++year) {
                    const QDate date(year, month, dayOfMonth);
                    if (date.isValid() && date >= m_today)
                        return day(at - i + 1, date);
                }
            }
        }

        // "in 3 days", "in 2 weeks", "en 3 días".
        if (isAny(i, {u"in", u"en"})) {
            if (const std::optional<int> count = numberOf(word(i + 1)); count && *count > 0) {
                if (isAny(i + 2, {u"day", u"days", u"dia", u"dias"}))
                    return day(3, m_today.addDays(*count));
                if (isAny(i + 2, {u"week", u"weeks", u"semana", u"semanas"}))
                    return day(3, m_today.addDays(7 * *count));
                if (isAny(i + 2, {u"month", u"months", u"mes", u"meses"}))
                    return day(3, m_today.addMonths(*count));
            }
        }
        return std::nullopt;
    }

    // "3pm", "3:30pm", "15:00", "15h", "9" (only after "at"/"a las"): the hour and minute, and
    // whether am/pm settled the half of the day.
    struct ClockTime {
        int hour = 0;
        int minute = 0;
        bool hasHalf = false;
        bool hasMinutes = false;
    };
    static std::optional<ClockTime> clockOf(const QString& word, bool bareAllowed)
    {
        static const QRegularExpression pattern(
            QStringLiteral("^(\\d{1,2})(?::(\\d{2}))?(am|pm|h|a\\.m\\.|p\\.m\\.)?$"));
        const QRegularExpressionMatch match = pattern.match(word);
        if (!match.hasMatch())
            return std::nullopt;
        ClockTime clock {match.captured(1).toInt(), match.hasCaptured(2) ? match.captured(2).toInt() : 0};
        clock.hasMinutes = match.hasCaptured(2);
        const QString suffix = match.captured(3);
        if (!bareAllowed && suffix.isEmpty() && !clock.hasMinutes)
            return std::nullopt;
        if (clock.minute > 59)
            return std::nullopt;
        if (suffix.startsWith(u'a') || suffix.startsWith(u'p')) {
            if (clock.hour < 1 || clock.hour > 12)
                return std::nullopt;
            clock.hasHalf = true;
            clock.hour = clock.hour % 12 + (suffix.startsWith(u'p') ? 12 : 0);
        }
        if (clock.hour > 23)
            return std::nullopt;
        return clock;
    }

    std::optional<Candidate> time(int i) const
    {
        int at = i;
        bool introduced = false;
        if (is(i, u"at")) {
            at = i + 1;
            introduced = true;
        } else if (is(i, u"a") && isAny(i + 1, {u"las", u"la"})) {
            at = i + 2;
            introduced = true;
        }
        std::optional<ClockTime> clock = clockOf(word(at), introduced);
        if (!clock)
            return std::nullopt;
        // A bare "3pm" or "15:00" is plain enough; a bare "9" is not.
        const QString typed = word(at);
        if (!introduced && !typed.contains(u':') && !clock->hasHalf)
            return std::nullopt;
        int end = at + 1;
        if (!clock->hasHalf && isAny(end, {u"am", u"pm", u"a.m.", u"p.m."}) && clock->hour >= 1 && clock->hour <= 12) {
            clock->hour = clock->hour % 12 + (word(end).startsWith(u'p') ? 12 : 0);
            clock->hasHalf = true;
            ++end;
        }
        if (!clock->hasHalf && is(end, u"de") && is(end + 1, u"la")) {
            if (isAny(end + 2, {u"tarde", u"noche"}) && clock->hour >= 1 && clock->hour <= 12) {
                clock->hour = clock->hour % 12 + 12;
                clock->hasHalf = true;
                end += 3;
            } else if (is(end + 2, u"manana") && clock->hour <= 12) {
                clock->hour %= 12;
                clock->hasHalf = true;
                end += 3;
            }
        }
        if (!clock->hasHalf && clock->hour >= 1 && clock->hour <= 6 && !typed.startsWith(u'0'))
            clock->hour += 12;
        const QTime when(clock->hour, clock->minute);
        return Candidate {PhraseKindEnum::time, end - i, [when](Fields& fields) { fields.dueTime = when; }};
    }

    // Weekday lists: "monday and thursday", "lunes, miércoles y viernes". Returns the days and
    // the tokens read.
    std::pair<QList<int>, int> weekdayList(int i) const
    {
        QList<int> days;
        int at = i;
        while (const std::optional<int> weekday = weekdayOf(word(at))) {
            if (!days.contains(*weekday))
                days.append(*weekday);
            ++at;
            if (isAny(at, {u"and", u"y", u"e"}) && weekdayOf(word(at + 1)))
                ++at;
        }
        std::sort(days.begin(), days.end());
        return {days, at - i};
    }

    static Candidate rule(int tokens, TaskRecurrenceEntity recurrence)
    {
        return Candidate {
            PhraseKindEnum::recurrence, tokens, [recurrence](Fields& fields) { fields.recurrence = recurrence; }};
    }

    // After "every month"/"cada mes": "on the 1st", "on the last day", "el día 1", "el último día".
    int monthDaySuffix(int at, TaskRecurrenceEntity& recurrence) const
    {
        if (is(at, u"on") && is(at + 1, u"the")) {
            if (const std::optional<int> monthDay = monthDayOf(word(at + 2))) {
                recurrence.monthDay = *monthDay;
                return 3;
            }
            if (is(at + 2, u"last") && is(at + 3, u"day")) {
                recurrence.monthDay = -1;
                return 4;
            }
        }
        if (is(at, u"el")) {
            const int number = is(at + 1, u"dia") ? at + 2 : at + 1;
            if (const std::optional<int> day = numberOf(word(number)); day && *day >= 1 && *day <= 31) {
                recurrence.monthDay = *day;
                return number - at + 1;
            }
            if (is(at + 1, u"ultimo") && is(at + 2, u"dia")) {
                recurrence.monthDay = -1;
                return 3;
            }
        }
        return 0;
    }

    // After "every week"/"every 2 weeks": "on Monday and Friday"; "cada semana el lunes".
    int weekdaysSuffix(int at, TaskRecurrenceEntity& recurrence) const
    {
        if (!isAny(at, {u"on", u"el", u"los"}))
            return 0;
        const auto [days, tokens] = weekdayList(at + 1);
        if (days.isEmpty())
            return 0;
        recurrence.weekdays = days;
        return tokens + 1;
    }

    std::optional<Candidate> recurrence(int i) const
    {
        TaskRecurrenceEntity recurrence;
        // "todos los días", "todas las semanas", "todos los lunes"
        if (isAny(i, {u"todos", u"todas"}) && isAny(i + 1, {u"los", u"las"})) {
            if (const std::optional<RecurrenceFrequencyEnum> period = periodOf(word(i + 2), true)) {
                recurrence.frequency = *period;
                int tokens = 3;
                if (*period == RecurrenceFrequencyEnum::monthly)
                    tokens += monthDaySuffix(i + 3, recurrence);
                return rule(tokens, recurrence);
            }
            const auto [days, tokens] = weekdayList(i + 2);
            if (!days.isEmpty()) {
                recurrence.frequency = RecurrenceFrequencyEnum::weekly;
                recurrence.weekdays = days;
                return rule(2 + tokens, recurrence);
            }
            return std::nullopt;
        }
        if (!isAny(i, {u"every", u"cada"}))
            return std::nullopt;
        int at = i + 1;
        if (isAny(at, {u"weekday", u"weekdays"}) || (is(at, u"dia") && isAny(at + 1, {u"laborable", u"habil"}))) {
            recurrence.frequency = RecurrenceFrequencyEnum::weekly;
            recurrence.weekdays = {1, 2, 3, 4, 5};
            return rule(is(at, u"dia") ? 3 : 2, recurrence);
        }
        // "every last Friday (of the month)", "cada primer lunes (del mes)"
        if (const std::optional<int> ordinal = weekdayOrdinalOf(word(at))) {
            if (const std::optional<int> weekday = weekdayOf(word(at + 1))) {
                recurrence.frequency = RecurrenceFrequencyEnum::monthly;
                recurrence.weekdayOrdinal = *ordinal;
                recurrence.ordinalWeekday = *weekday;
                int end = at + 2;
                if (is(end, u"of") && is(end + 1, u"the") && is(end + 2, u"month"))
                    end += 3;
                else if (is(end, u"del") && is(end + 1, u"mes"))
                    end += 2;
                return rule(end - i, recurrence);
            }
        }
        bool plural = false;
        if (is(at, u"other")) {
            recurrence.interval = 2;
            ++at;
        } else if (const std::optional<int> count = numberOf(word(at)); count && *count >= 1) {
            recurrence.interval = *count;
            plural = *count > 1;
            ++at;
        }
        std::optional<RecurrenceFrequencyEnum> period = periodOf(word(at), plural);
        if (!period && recurrence.interval == 1 && at > i + 1)
            period = periodOf(word(at), true); // "every 1 days"
        if (period) {
            recurrence.frequency = *period;
            ++at;
            if (*period == RecurrenceFrequencyEnum::monthly)
                at += monthDaySuffix(at, recurrence);
            else if (*period == RecurrenceFrequencyEnum::weekly)
                at += weekdaysSuffix(at, recurrence);
            return rule(at - i, recurrence);
        }
        if (at == i + 1) {
            const auto [days, tokens] = weekdayList(at);
            if (!days.isEmpty()) {
                recurrence.frequency = RecurrenceFrequencyEnum::weekly;
                recurrence.weekdays = days;
                return rule(1 + tokens, recurrence);
            }
        }
        return std::nullopt;
    }

    // "remind (me) 10m before", "remind me 1 hour before", "recordar 1h antes", "avísame 15 min antes".
    std::optional<Candidate> reminder(int i) const
    {
        int at = i;
        bool english = false;
        if (is(at, u"remind")) {
            english = true;
            ++at;
            if (is(at, u"me"))
                ++at;
        } else if (isAny(at, {u"recordar", u"recordarme", u"recuerdame", u"avisar", u"avisame"})) {
            ++at;
        } else {
            return std::nullopt;
        }
        std::optional<int> minutes;
        static const QRegularExpression joined(QStringLiteral("^(\\d{1,4})([a-z]+)$"));
        if (const QRegularExpressionMatch match = joined.match(word(at)); match.hasMatch()) {
            if (const std::optional<int> unit = minutesPerUnit(match.captured(2)))
                minutes = match.captured(1).toInt() * *unit;
            ++at;
        } else if (const std::optional<int> count = numberOf(word(at))) {
            if (const std::optional<int> unit = minutesPerUnit(word(at + 1)))
                minutes = *count * *unit;
            at += 2;
        }
        if (!minutes || !is(at, english ? u"before" : u"antes"))
            return std::nullopt;
        return Candidate {PhraseKindEnum::reminder, at + 1 - i,
            [value = *minutes](Fields& fields) { fields.reminderMinutesBefore = value; }};
    }

    void finish(const QList<bool>& taken)
    {
        QStringList words;
        for (int i = 0; i < m_tokens.size(); ++i) {
            // "tomorrow, call Ana": the comma after a phrase goes with it.
            if (!taken[i])
                words.append(m_text.mid(m_tokens.at(i).start, m_tokens.at(i).end - m_tokens.at(i).start));
        }
        m_fields.title = words.join(QLatin1Char(' ')).simplified();
        if (!m_fields.dueDay && m_fields.recurrence)
            m_fields.dueDay = firstOccurrence(*m_fields.recurrence, m_today);
        if (!m_fields.dueDay && m_fields.dueTime)
            m_fields.dueDay = *m_fields.dueTime > m_options.now.time() ? m_today : m_today.addDays(1);
        std::sort(m_fields.phrases.begin(), m_fields.phrases.end(),
            [](const Phrase& a, const Phrase& b) { return a.start < b.start; });
    }

    const QString& m_text;
    const QString m_folded;
    const QList<Token> m_tokens;
    const Options& m_options;
    const QDate m_today;
    Fields m_fields;
};

} // namespace

std::optional<QDateTime> Fields::dueDate() const
{
    if (!dueDay)
        return std::nullopt;
    if (!dueTime)
        return TaskEntity::dueOnDay(*dueDay);
    return QDateTime(*dueDay, *dueTime);
}

void Fields::applyTo(TaskEntity& task) const
{
    task.tasTitle = title;
    task.tasDueDate = dueDate();
    task.tasDueHasTime = dueDay.has_value() && dueTime.has_value();
    task.tasRecurrence = recurrence;
    task.tasEisenhowerTag = quadrant;
    task.tasReminderMinutesBefore = reminderMinutesBefore;
}

Fields parse(const QString& text, const Options& options)
{
    return Reader(text, options).read();
}

QString kindLabel(PhraseKindEnum kind)
{
    switch (kind) {
    case PhraseKindEnum::date:
        //% "Date"
        return qtTrId("quick-add-kind-date");
    case PhraseKindEnum::time:
        //% "Time"
        return qtTrId("quick-add-kind-time");
    case PhraseKindEnum::recurrence:
        //% "Repeats"
        return qtTrId("quick-add-kind-recurrence");
    case PhraseKindEnum::project:
        //% "Project"
        return qtTrId("quick-add-kind-project");
    case PhraseKindEnum::list:
        //% "List"
        return qtTrId("quick-add-kind-list");
    case PhraseKindEnum::quadrant:
        //% "Quadrant"
        return qtTrId("quick-add-kind-quadrant");
    case PhraseKindEnum::reminder:
        //% "Reminder"
        return qtTrId("quick-add-kind-reminder");
    }
    return {};
}

} // namespace QuickAddParser
