#include "screens/projects/TaskDueText.h"
#include "screens/projects/TaskRowView.h"
#include "screens/projects/TaskScheduleEditor.h"
#include "support/TestMain.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTimeEdit>
#include <QToolButton>
#include <QTranslator>

namespace {

// Sunday 22 November 2026, 10:00 in the tests' zone.
const QDateTime now(QDate(2026, 11, 22), QTime(10, 0));

TaskEntity dueOn(QDate day)
{
    TaskEntity task;
    task.tasTitle = QStringLiteral("Due");
    task.tasDueDate = TaskEntity::dueOnDay(day);
    return task;
}

TaskEntity dueAt(QDate day, QTime time)
{
    TaskEntity task = dueOn(day);
    task.tasDueDate = QDateTime(day, time);
    task.tasDueHasTime = true;
    return task;
}

} // namespace

Q_DECLARE_METATYPE(TaskEntity)

class TaskScheduleViewsTest : public QObject {
    Q_OBJECT

    QTranslator m_translator;

    void useLanguage(const QString& language)
    {
        QCoreApplication::removeTranslator(&m_translator);
        QVERIFY(m_translator.load(QStringLiteral(":/i18n/tolvane_") + language));
        QCoreApplication::installTranslator(&m_translator);
    }

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<TaskEntity>(); }
    void cleanup() { QCoreApplication::removeTranslator(&m_translator); }

    void dueTextInWords_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<TaskEntity>("task");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("overdue");

        const QDate today = now.date();
        TaskEntity doneYesterday = dueOn(today.addDays(-1));
        doneYesterday.tasIsDone = true;
        for (const auto& [language, words] :
            {std::pair {QStringLiteral("en"),
                 QStringList {QStringLiteral("today"), QStringLiteral("tomorrow"), QStringLiteral("yesterday"),
                     QStringLiteral("in 3 days"), QStringLiteral("3 days ago")}},
                std::pair {QStringLiteral("es"),
                    QStringList {QStringLiteral("hoy"), QString::fromUtf8("mañana"), QStringLiteral("ayer"),
                        QString::fromUtf8("en 3 días"), QString::fromUtf8("hace 3 días")}}}) {
            const QByteArray tag = language.toLatin1() + ": ";
            QTest::newRow(tag + "today") << language << dueOn(today) << words.at(0) << false;
            QTest::newRow(tag + "tomorrow") << language << dueOn(today.addDays(1)) << words.at(1) << false;
            QTest::newRow(tag + "yesterday") << language << dueOn(today.addDays(-1)) << words.at(2) << true;
            QTest::newRow(tag + "in 3 days") << language << dueOn(today.addDays(3)) << words.at(3) << false;
            QTest::newRow(tag + "3 days ago") << language << dueOn(today.addDays(-3)) << words.at(4) << true;
            QTest::newRow(tag + "done is never overdue") << language << doneYesterday << words.at(2) << false;
        }
        // Farther away, the date itself; with a time, the time too, and overdue once it passed.
        QTest::newRow("en: next month") << QStringLiteral("en") << dueOn(QDate(2026, 12, 24))
                                        << QStringLiteral("Dec 24") << false;
        QTest::newRow("en: another year")
            << QStringLiteral("en") << dueOn(QDate(2027, 1, 5)) << QStringLiteral("1/5/27") << false;
        const QLocale locale;
        QTest::newRow("en: earlier today")
            << QStringLiteral("en") << dueAt(today, QTime(9, 0))
            << QStringLiteral("today ") + locale.toString(QTime(9, 0), QLocale::ShortFormat) << true;
        QTest::newRow("es: later today") << QStringLiteral("es") << dueAt(today.addDays(1), QTime(17, 30))
                                         << QString::fromUtf8("mañana ")
                + locale.toString(QTime(17, 30), QLocale::ShortFormat)
                                         << false;
    }

    void dueTextInWords()
    {
        QFETCH(QString, language);
        QFETCH(TaskEntity, task);
        QFETCH(QString, text);
        QFETCH(bool, overdue);
        useLanguage(language);

        QCOMPARE(TaskDueText::of(task, now), (TaskDueLabel {text, overdue}));
    }

    void aRowShowsWhenItIsDueAndThatItRepeats()
    {
        useLanguage(QStringLiteral("en"));
        TaskEntity task = dueOn(QDate::currentDate().addDays(1));
        task.tasRecurrence = TaskRecurrenceEntity {};
        const TaskRowView row(task);
        QCOMPARE(row.findChild<QLabel*>(QStringLiteral("taskDue"))->text(), QStringLiteral("tomorrow"));
        QVERIFY(row.findChild<QLabel*>(QStringLiteral("taskRepeats")));

        const TaskRowView plain(dueOn(QDate::currentDate().addDays(-2)));
        QLabel* due = plain.findChild<QLabel*>(QStringLiteral("taskDue"));
        QCOMPARE(due->text(), QStringLiteral("2 days ago"));
        QVERIFY(due->property("overdue").toBool());
        QVERIFY(!plain.findChild<QLabel*>(QStringLiteral("taskRepeats")));
        QVERIFY(!TaskRowView(TaskEntity {}).findChild<QLabel*>(QStringLiteral("taskDue")));
    }

    void theEditorBuildsTheScheduleFromItsFields()
    {
        TaskEntity task;
        task.tasTitle = QStringLiteral("Review");
        TaskScheduleEditor editor(task, QDate(2026, 11, 27));
        editor.setAttribute(Qt::WA_DeleteOnClose, false);
        QSignalSpy saved(&editor, &TaskScheduleEditor::saved);
        QCOMPARE(editor.edited(), task);

        editor.findChild<QCheckBox*>(QStringLiteral("scheduleHasDue"))->setChecked(true);
        editor.findChild<QCheckBox*>(QStringLiteral("scheduleHasTime"))->setChecked(true);
        editor.findChild<QTimeEdit*>(QStringLiteral("scheduleTime"))->setTime(QTime(8, 15));
        editor.findChild<QComboBox*>(QStringLiteral("scheduleFrequency"))->setCurrentIndex(3);
        editor.findChild<QComboBox*>(QStringLiteral("scheduleMonthly"))->setCurrentIndex(2);
        editor.findChild<QCheckBox*>(QStringLiteral("scheduleFromCompletion"))->setChecked(true);
        editor.findChild<QComboBox*>(QStringLiteral("scheduleEnd"))->setCurrentIndex(1);
        editor.findChild<QSpinBox*>(QStringLiteral("scheduleEndCount"))->setValue(6);
        QComboBox* reminder = editor.findChild<QComboBox*>(QStringLiteral("scheduleReminder"));
        reminder->setCurrentIndex(reminder->findData(15));
        editor.findChild<QPushButton*>(QStringLiteral("scheduleSave"))->click();

        QCOMPARE(saved.size(), 1);
        const TaskEntity chosen = saved.constFirst().constFirst().value<TaskEntity>();
        QCOMPARE(chosen.tasDueDate->toLocalTime(), QDateTime(QDate(2026, 11, 27), QTime(8, 15)));
        QVERIFY(chosen.tasDueHasTime);
        // The 27th of November 2026 is the last Friday of its month.
        QCOMPARE(chosen.tasRecurrence,
            (TaskRecurrenceEntity {.frequency = RecurrenceFrequencyEnum::monthly,
                .weekdayOrdinal = -1,
                .ordinalWeekday = Qt::Friday,
                .anchor = RecurrenceAnchorEnum::completion,
                .endAfterCount = 6}));
        QCOMPARE(chosen.tasReminderMinutesBefore, 15);

        // Opened again on that task, the editor shows it as it was saved.
        const TaskScheduleEditor again(chosen, QDate(2026, 11, 1));
        QCOMPARE(again.edited(), chosen);

        // Weekly on chosen days; without a due date nothing else is kept.
        TaskScheduleEditor weekly(chosen, QDate(2026, 11, 1));
        weekly.findChild<QComboBox*>(QStringLiteral("scheduleFrequency"))->setCurrentIndex(2);
        weekly.findChild<QToolButton*>(QStringLiteral("scheduleWeekday2"))->setChecked(true);
        weekly.findChild<QToolButton*>(QStringLiteral("scheduleWeekday4"))->setChecked(true);
        QCOMPARE(weekly.edited().tasRecurrence->weekdays, (QList<int> {Qt::Tuesday, Qt::Thursday}));
        weekly.findChild<QCheckBox*>(QStringLiteral("scheduleHasDue"))->setChecked(false);
        const TaskEntity undated = weekly.edited();
        QVERIFY(!undated.tasDueDate && !undated.tasRecurrence && !undated.tasReminderMinutesBefore);
    }

    void theEditorSaysWhenADayWithoutATimeReminds()
    {
        useLanguage(QStringLiteral("en"));
        TaskEntity task;
        task.tasDueDate = TaskEntity::dueOnDay(QDate(2026, 11, 27));
        task.tasReminderMinutesBefore = 60;
        const TaskScheduleEditor editor(task, QDate(2026, 11, 1));
        QLabel* note = editor.findChild<QLabel*>(QStringLiteral("scheduleReminderNote"));
        QVERIFY(note->isVisibleTo(&editor));
        QVERIFY(note->text().contains(QStringLiteral("9:00")));

        editor.findChild<QCheckBox*>(QStringLiteral("scheduleHasTime"))->setChecked(true);
        QVERIFY(!note->isVisibleTo(&editor));
        editor.findChild<QCheckBox*>(QStringLiteral("scheduleHasTime"))->setChecked(false);
        QVERIFY(note->isVisibleTo(&editor));
        editor.findChild<QComboBox*>(QStringLiteral("scheduleReminder"))->setCurrentIndex(0);
        QVERIFY(!note->isVisibleTo(&editor));
    }
};

TOLVANE_GUI_TEST_MAIN(TaskScheduleViewsTest)
#include "TaskScheduleViewsTest.moc"
