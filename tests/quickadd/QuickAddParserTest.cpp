#include "quickadd/QuickAddParser.h"

#include "support/TestMain.h"
#include "tasks/entities/TaskEntity.h"

using namespace QuickAddParser;

namespace {

// Monday 23 November 2026, mid-morning.
const QDate today(2026, 11, 23);
const QDateTime now(today, QTime(10, 0));

Options options()
{
    return Options {.now = now,
        .projects = {{QStringLiteral("Home"), {QStringLiteral("Errands"), QStringLiteral("Chores")}},
            {QStringLiteral("Side Project"), {QStringLiteral("Ideas"), QStringLiteral("Big Ideas")}},
            {QStringLiteral("Jardín"), {QStringLiteral("Poda")}}},
        .dismissed = {}};
}

// A rule in a few characters, so that a table row can say which one it expects:
// "weekly/2 on 1,4", "monthly on day -1", "monthly on the -1th 5".
QString describe(const std::optional<TaskRecurrenceEntity>& rule)
{
    if (!rule)
        return {};
    static const QStringList names {"daily", "weekly", "monthly", "yearly"};
    QString text = names.at(int(rule->frequency));
    if (rule->interval != 1)
        text += QStringLiteral("/%1").arg(rule->interval);
    if (!rule->weekdays.isEmpty()) {
        QStringList days;
        for (int day : rule->weekdays)
            days.append(QString::number(day));
        text += QStringLiteral(" on ") + days.join(QLatin1Char(','));
    }
    if (rule->monthDay != 0)
        text += QStringLiteral(" on day %1").arg(rule->monthDay);
    if (rule->weekdayOrdinal != 0)
        text += QStringLiteral(" on the %1th %2").arg(rule->weekdayOrdinal).arg(rule->ordinalWeekday);
    return text;
}

QStringList phraseTexts(const Fields& fields)
{
    QStringList texts;
    for (const Phrase& phrase : fields.phrases)
        texts.append(phrase.text);
    return texts;
}

} // namespace

class QuickAddParserTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shouldReadTheFieldsOutOfOneLine_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QDate>("due");
        QTest::addColumn<QTime>("time");
        QTest::addColumn<QString>("rule");
        QTest::addColumn<QStringList>("phrases");

        const QTime none;
        auto row = [](const char* name) -> QTestData& { return QTest::newRow(name); };
        // Days, English.
        row("tomorrow") << "Pay rent tomorrow"
                        << "Pay rent" << today.addDays(1) << none << "" << QStringList {"tomorrow"};
        row("today at 3pm") << "Call Ana today at 3pm"
                            << "Call Ana" << today << QTime(15, 0) << "" << QStringList {"today", "at 3pm"};
        row("bare afternoon hour") << "Call Ana tomorrow at 3"
                                   << "Call Ana" << today.addDays(1) << QTime(15, 0) << ""
                                   << QStringList {"tomorrow", "at 3"};
        row("day after tomorrow") << "Bins the day after tomorrow"
                                  << "Bins" << today.addDays(2) << none << "" << QStringList {"the day after tomorrow"};
        row("next Monday, on a Monday") << "Gym next Monday"
                                        << "Gym" << QDate(2026, 11, 30) << none << "" << QStringList {"next Monday"};
        row("on Monday, on a Monday") << "Gym on monday"
                                      << "Gym" << QDate(2026, 11, 30) << none << "" << QStringList {"on monday"};
        row("on Wednesday at 9:30") << "Standup on Wednesday at 9:30"
                                    << "Standup" << QDate(2026, 11, 25) << QTime(9, 30) << ""
                                    << QStringList {"on Wednesday", "at 9:30"};
        row("on the 15th, past") << "Invoice on the 15th"
                                 << "Invoice" << QDate(2026, 12, 15) << none << "" << QStringList {"on the 15th"};
        row("on the 23rd, today") << "Invoice on the 23rd"
                                  << "Invoice" << today << none << "" << QStringList {"on the 23rd"};
        row("on the 31st skips a short month")
            << "Party on the 31st"
            << "Party" << QDate(2026, 12, 31) << none << "" << QStringList {"on the 31st"};
        row("in 3 days") << "Follow up in 3 days"
                         << "Follow up" << today.addDays(3) << none << "" << QStringList {"in 3 days"};
        // Day/month.
        row("15/12 ahead") << "Gift 15/12"
                           << "Gift" << QDate(2026, 12, 15) << none << "" << QStringList {"15/12"};
        row("15/1 past: next year") << "Tax 15/1"
                                    << "Tax" << QDate(2027, 1, 15) << none << "" << QStringList {"15/1"};
        row("with a year") << "Trip on 15/12/2027"
                           << "Trip" << QDate(2027, 12, 15) << none << "" << QStringList {"on 15/12/2027"};
        row("29/2 waits for a leap year") << "Leap 29/2"
                                          << "Leap" << QDate(2028, 2, 29) << none << "" << QStringList {"29/2"};
        row("not a date") << "Ratio 31/2 check"
                          << "Ratio 31/2 check" << QDate() << none << "" << QStringList {};
        // Times alone: today, or tomorrow once past.
        row("15:00 later today") << "Report 15:00"
                                 << "Report" << today << QTime(15, 0) << "" << QStringList {"15:00"};
        row("08:00 already past") << "Wake 08:00"
                                  << "Wake" << today.addDays(1) << QTime(8, 0) << "" << QStringList {"08:00"};
        row("at 11 pm") << "Lock up at 11 pm"
                        << "Lock up" << today << QTime(23, 0) << "" << QStringList {"at 11 pm"};
        row("12am is midnight") << "Backup at 12am"
                                << "Backup" << today.addDays(1) << QTime(0, 0) << "" << QStringList {"at 12am"};
        // Rules; without a day they start on their first occurrence.
        row("every day") << "Water plants every day"
                         << "Water plants" << today << none << "daily" << QStringList {"every day"};
        row("every weekday at 17:30") << "Timesheet every weekday at 17:30"
                                      << "Timesheet" << today << QTime(17, 30) << "weekly on 1,2,3,4,5"
                                      << QStringList {"every weekday", "at 17:30"};
        row("every 2 weeks") << "Review every 2 weeks"
                             << "Review" << today << none << "weekly/2" << QStringList {"every 2 weeks"};
        row("every other month") << "Haircut every other month"
                                 << "Haircut" << today << none << "monthly/2" << QStringList {"every other month"};
        row("every month on the 1st") << "Rent every month on the 1st"
                                      << "Rent" << QDate(2026, 12, 1) << none << "monthly on day 1"
                                      << QStringList {"every month on the 1st"};
        row("every month on the last day") << "Close books every month on the last day"
                                           << "Close books" << QDate(2026, 11, 30) << none << "monthly on day -1"
                                           << QStringList {"every month on the last day"};
        row("every last Friday") << "Drinks every last Friday"
                                 << "Drinks" << QDate(2026, 11, 27) << none << "monthly on the -1th 5"
                                 << QStringList {"every last Friday"};
        row("every first Monday, this one") << "Plan every first Monday of the month"
                                            << "Plan" << QDate(2026, 12, 7) << none << "monthly on the 1th 1"
                                            << QStringList {"every first Monday of the month"};
        row("every year") << "Renew passport every year"
                          << "Renew passport" << today << none << "yearly" << QStringList {"every year"};
        row("every Tuesday and Thursday")
            << "Book club every Tuesday and Thursday"
            << "Book club" << today.addDays(1) << none << "weekly on 2,4" << QStringList {"every Tuesday and Thursday"};
        row("every 2 weeks on Friday") << "Payroll every 2 weeks on friday"
                                       << "Payroll" << QDate(2026, 11, 27) << none << "weekly/2 on 5"
                                       << QStringList {"every 2 weeks on friday"};
        row("a rule and a day") << "Rent every month 1/12"
                                << "Rent" << QDate(2026, 12, 1) << none << "monthly"
                                << QStringList {"every month", "1/12"};
        // Días, español.
        row("mañana") << "Pagar alquiler mañana"
                      << "Pagar alquiler" << today.addDays(1) << none << "" << QStringList {"mañana"};
        row("manana without accent") << "pagar manana"
                                     << "pagar" << today.addDays(1) << none << "" << QStringList {"manana"};
        row("hoy a las 9") << "Llamar hoy a las 9"
                           << "Llamar" << today << QTime(9, 0) << "" << QStringList {"hoy", "a las 9"};
        row("pasado mañana a las 9:30") << "Llamar a Ana pasado mañana a las 9:30"
                                        << "Llamar a Ana" << today.addDays(2) << QTime(9, 30) << ""
                                        << QStringList {"pasado mañana", "a las 9:30"};
        row("a la 1 es por la tarde") << "Comer mañana a la 1"
                                      << "Comer" << today.addDays(1) << QTime(13, 0) << ""
                                      << QStringList {"mañana", "a la 1"};
        row("a las 8 de la tarde") << "Cenar a las 8 de la tarde"
                                   << "Cenar" << today << QTime(20, 0) << "" << QStringList {"a las 8 de la tarde"};
        row("el lunes, en lunes") << "Correr el lunes"
                                  << "Correr" << QDate(2026, 11, 30) << none << "" << QStringList {"el lunes"};
        row("el martes") << "Correr el martes"
                         << "Correr" << today.addDays(1) << none << "" << QStringList {"el martes"};
        row("el próximo miércoles") << "Dentista el próximo miércoles"
                                    << "Dentista" << QDate(2026, 11, 25) << none << ""
                                    << QStringList {"el próximo miércoles"};
        row("el día 1") << "Nómina el día 1"
                        << "Nómina" << QDate(2026, 12, 1) << none << "" << QStringList {"el día 1"};
        row("15/12 español") << "Regalo 15/12"
                             << "Regalo" << QDate(2026, 12, 15) << none << "" << QStringList {"15/12"};
        row("cada día") << "Regar cada día"
                        << "Regar" << today << none << "daily" << QStringList {"cada día"};
        row("cada semana") << "Informe cada semana"
                           << "Informe" << today << none << "weekly" << QStringList {"cada semana"};
        row("cada mes el día 1") << "Alquiler cada mes el día 1"
                                 << "Alquiler" << QDate(2026, 12, 1) << none << "monthly on day 1"
                                 << QStringList {"cada mes el día 1"};
        row("cada 2 semanas") << "Reunión cada 2 semanas"
                              << "Reunión" << today << none << "weekly/2" << QStringList {"cada 2 semanas"};
        row("cada último viernes") << "Cena cada último viernes del mes"
                                   << "Cena" << QDate(2026, 11, 27) << none << "monthly on the -1th 5"
                                   << QStringList {"cada último viernes del mes"};
        row("todos los martes") << "Yoga todos los martes"
                                << "Yoga" << today.addDays(1) << none << "weekly on 2"
                                << QStringList {"todos los martes"};
        row("cada día laborable") << "Fichar cada día laborable"
                                  << "Fichar" << today << none << "weekly on 1,2,3,4,5"
                                  << QStringList {"cada día laborable"};
        // Words that only look like phrases stay in the title.
        row("may") << "May the force be with you"
                   << "May the force be with you" << QDate() << none << "" << QStringList {};
        row("el alone") << "El perro come el pienso"
                        << "El perro come el pienso" << QDate() << none << "" << QStringList {};
        row("at without a time") << "Buy 3 apples at the market"
                                 << "Buy 3 apples at the market" << QDate() << none << "" << QStringList {};
        row("a bare number") << "Read chapter 2 on the train"
                             << "Read chapter 2 on the train" << QDate() << none << "" << QStringList {};
        row("the morning, not tomorrow") << "Estudiar por la mañana"
                                         << "Estudiar por la mañana" << QDate() << none << "" << QStringList {};
        row("every alone") << "Eat every vegetable"
                           << "Eat every vegetable" << QDate() << none << "" << QStringList {};
        row("not an hour") << "Meet at 25:00"
                           << "Meet at 25:00" << QDate() << none << "" << QStringList {};
        row("the first day wins") << "Call today tomorrow"
                                  << "Call tomorrow" << today << none << "" << QStringList {"today"};
        row("a comma after a phrase") << "Tomorrow, call Ana"
                                      << "call Ana" << today.addDays(1) << none << "" << QStringList {"Tomorrow"};
    }

    void shouldReadTheFieldsOutOfOneLine()
    {
        QFETCH(QString, text);
        QFETCH(QString, title);
        QFETCH(QDate, due);
        QFETCH(QTime, time);
        QFETCH(QString, rule);
        QFETCH(QStringList, phrases);

        const Fields fields = parse(text, options());
        QCOMPARE(fields.title, title);
        QCOMPARE(fields.dueDay.value_or(QDate()), due);
        QCOMPARE(fields.dueTime.value_or(QTime()), time);
        QCOMPARE(describe(fields.recurrence), rule);
        QCOMPARE(phraseTexts(fields), phrases);
    }

    void shouldReadQuadrantsRemindersProjectsAndLists_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("quadrant");
        QTest::addColumn<int>("reminder");
        QTest::addColumn<QString>("project");
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("unknown");

        QTest::newRow("!1") << "Pay rent !1"
                            << "Pay rent" << 0 << -1 << ""
                            << ""
                            << "";
        QTest::newRow("!4") << "Sort socks !4"
                            << "Sort socks" << 3 << -1 << ""
                            << ""
                            << "";
        QTest::newRow("!5 is text") << "Shout !5"
                                    << "Shout !5" << -1 << -1 << ""
                                    << ""
                                    << "";
        QTest::newRow("remind 10m before") << "Call remind 10m before"
                                           << "Call" << -1 << 10 << ""
                                           << ""
                                           << "";
        QTest::newRow("remind me 1 hour before") << "Dentist remind me 1 hour before"
                                                 << "Dentist" << -1 << 60 << ""
                                                 << ""
                                                 << "";
        QTest::newRow("recordar 1h antes") << "Médico recordar 1h antes"
                                           << "Médico" << -1 << 60 << ""
                                           << ""
                                           << "";
        QTest::newRow("recordar 15 min antes") << "Médico recordar 15 min antes"
                                               << "Médico" << -1 << 15 << ""
                                               << ""
                                               << "";
        QTest::newRow("remind without before") << "remind me 10m"
                                               << "remind me 10m" << -1 << -1 << ""
                                               << ""
                                               << "";
        QTest::newRow("#project /list, any case") << "Buy milk #home /errands"
                                                  << "Buy milk" << -1 << -1 << "Home"
                                                  << "Errands"
                                                  << "";
        QTest::newRow("a name of two words") << "Draft #side project outline"
                                             << "Draft outline" << -1 << -1 << "Side Project"
                                             << ""
                                             << "";
        QTest::newRow("the longest list name") << "Draft /big ideas"
                                               << "Draft" << -1 << -1 << "Side Project"
                                               << "Big Ideas"
                                               << "";
        QTest::newRow("accents do not matter") << "Cortar #jardin /PODA"
                                               << "Cortar" << -1 << -1 << "Jardín"
                                               << "Poda"
                                               << "";
        QTest::newRow("a list picks its project") << "Buy paint /Errands"
                                                  << "Buy paint" << -1 << -1 << "Home"
                                                  << "Errands"
                                                  << "";
        QTest::newRow("a list of another project") << "Buy paint #Home /Ideas"
                                                   << "Buy paint /Ideas" << -1 << -1 << "Home"
                                                   << ""
                                                   << "Ideas";
        QTest::newRow("an unknown project") << "Fix #Garden fence"
                                            << "Fix #Garden fence" << -1 << -1 << ""
                                            << ""
                                            << "Garden";
        QTest::newRow("a path is not a list") << "Clean /tmp/x"
                                              << "Clean /tmp/x" << -1 << -1 << ""
                                              << ""
                                              << "";
        QTest::newRow("everything at once") << "Call Ana tomorrow at 3 #Home !2 remind me 10m before"
                                            << "Call Ana" << 1 << 10 << "Home"
                                            << ""
                                            << "";
    }

    void shouldReadQuadrantsRemindersProjectsAndLists()
    {
        QFETCH(QString, text);
        QFETCH(QString, title);
        QFETCH(int, quadrant);
        QFETCH(int, reminder);
        QFETCH(QString, project);
        QFETCH(QString, list);
        QFETCH(QString, unknown);

        const Fields fields = parse(text, options());
        QCOMPARE(fields.title, title);
        QCOMPARE(fields.quadrant ? int(*fields.quadrant) : -1, quadrant);
        QCOMPARE(fields.reminderMinutesBefore.value_or(-1), reminder);
        QCOMPARE(fields.project, project);
        QCOMPARE(fields.list, list);
        QCOMPARE(fields.unknownProject + fields.unknownList, unknown);
    }

    void shouldLookForAListInTheOpenProjectFirst()
    {
        Options shared = options();
        shared.projects = {{QStringLiteral("Home"), {QStringLiteral("Inbox"), QStringLiteral("Errands")}},
            {QStringLiteral("Work"), {QStringLiteral("Calls"), QStringLiteral("Inbox")}}};
        const auto placeOf = [&shared](const QString& text) {
            const Fields fields = parse(text, shared);
            return fields.project + QLatin1Char('/') + fields.list;
        };

        QCOMPARE(placeOf(QStringLiteral("Sort mail /inbox")), QStringLiteral("Home/Inbox"));
        shared.openProject = QStringLiteral("Work");
        QCOMPARE(placeOf(QStringLiteral("Sort mail /inbox")), QStringLiteral("Work/Inbox"));
        // A list the open project lacks is still found elsewhere, and a #Project still decides.
        QCOMPARE(placeOf(QStringLiteral("Buy soap /errands")), QStringLiteral("Home/Errands"));
        QCOMPARE(placeOf(QStringLiteral("Sort mail /inbox #Home")), QStringLiteral("Home/Inbox"));
        QCOMPARE(placeOf(QStringLiteral("Sort mail")), QStringLiteral("/"));
    }

    void shouldPlaceEachPhraseInTheTypedText()
    {
        const QString text = QStringLiteral("Llamar  mañana a las 9 #Home");
        const Fields fields = parse(text, options());
        QCOMPARE(fields.phrases,
            QList<Phrase>({{PhraseKindEnum::date, 8, 6, QStringLiteral("mañana")},
                {PhraseKindEnum::time, 15, 7, QStringLiteral("a las 9")},
                {PhraseKindEnum::project, 23, 5, QStringLiteral("#Home")}}));
        for (const Phrase& phrase : fields.phrases)
            QCOMPARE(text.mid(phrase.start, phrase.length), phrase.text);
    }

    void shouldLeaveATakenBackPhraseInTheTitle()
    {
        Options taken = options();
        const Fields first = parse(QStringLiteral("Gym next Monday !1"), taken);
        QCOMPARE(first.phrases.size(), 2);

        taken.dismissed = {first.phrases.at(0)};
        const Fields second = parse(QStringLiteral("Gym next Monday !1"), taken);
        QCOMPARE(second.title, QStringLiteral("Gym next Monday"));
        QVERIFY(!second.dueDay);
        QCOMPARE(second.quadrant, EisenhowerTagEnum::doIt);

        // Typing after it keeps it taken back; changing its own words lets them be read again.
        QCOMPARE(
            parse(QStringLiteral("Gym next Monday !1 early"), taken).title, QStringLiteral("Gym next Monday early"));
        QCOMPARE(parse(QStringLiteral("Gym next Tuesday !1"), taken).dueDay, QDate(2026, 11, 24));
    }

    void shouldFillATask()
    {
        TaskEntity task;
        parse(QStringLiteral("Pay rent tomorrow !1 every month"), options()).applyTo(task);
        QCOMPARE(task.tasTitle, QStringLiteral("Pay rent"));
        QCOMPARE(task.tasDueDate, QDateTime(QDate(2026, 11, 24), QTime(0, 0), Qt::UTC));
        QVERIFY(!task.tasDueHasTime);
        QCOMPARE(task.dueDay(), QDate(2026, 11, 24));
        QCOMPARE(task.tasEisenhowerTag, EisenhowerTagEnum::doIt);
        QCOMPARE(task.tasRecurrence->frequency, RecurrenceFrequencyEnum::monthly);

        TaskEntity timed;
        parse(QStringLiteral("Call at 23:30 tomorrow recordar 10 min antes"), options()).applyTo(timed);
        QCOMPARE(timed.tasDueDate, QDateTime(QDate(2026, 11, 24), QTime(23, 30)));
        QVERIFY(timed.tasDueHasTime);
        QCOMPARE(timed.dueDay(), QDate(2026, 11, 24));
        QCOMPARE(timed.tasReminderMinutesBefore, 10);
        QVERIFY(!timed.tasRecurrence);
    }
};

TOLVANE_TEST_MAIN(QuickAddParserTest)
#include "QuickAddParserTest.moc"
