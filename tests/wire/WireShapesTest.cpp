#include "support/TestMain.h"
#include "wire/JSONCoding.h"
#include "wire/JSONWriter.h"
#include "wire/events/EventRequestDTO.h"
#include "wire/events/EventResponseDTO.h"
#include "wire/login/SupportDTOs.h"
#include "wire/login/UserDTOs.h"
#include "wire/tasks/BitacoraEntryResponseDTO.h"
#include "wire/tasks/CreateBitacoraEntryRequestDTO.h"
#include "wire/tasks/CreateDailyTaskRequestDTO.h"
#include "wire/tasks/CreateProjectRequestDTO.h"
#include "wire/tasks/CreateTaskListRequestDTO.h"
#include "wire/tasks/CreateTaskRequestDTO.h"
#include "wire/tasks/DailyTaskResponseDTO.h"
#include "wire/tasks/DeleteCompletedTasksRequestDTO.h"
#include "wire/tasks/ProjectResponseDTO.h"
#include "wire/tasks/TaskListResponseDTO.h"
#include "wire/tasks/TaskRecurrenceDTO.h"
#include "wire/tasks/TaskResponseDTO.h"
#include "wire/tasks/UpdateBitacoraEntryRequestDTO.h"
#include "wire/tasks/UpdateDailyTaskRequestDTO.h"
#include "wire/tasks/UpdateProjectRequestDTO.h"
#include "wire/tasks/UpdateTaskListRequestDTO.h"
#include "wire/tasks/UpdateTaskRequestDTO.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <QTimeZone>

namespace {

const QString awkward = QStringLiteral("Quote \" slash \\ / tab\t nl\n cr\r bs\b ff\f ") + QChar(0x01) + QChar(0x1f)
    + QChar(0x7f) + QStringLiteral(" é ñ € ") + QString::fromUcs4(U"\U0001F600") + QStringLiteral(" end");

const QDateTime someInstant = QDateTime(QDate(2026, 11, 21), QTime(9, 30, 15), Qt::UTC);

QByteArray qtCompact(const QByteArray& json)
{
    const QJsonValue value = JSONCoding::parse(json);
    return JSONCoding::serialize(value);
}

template <typename Shape> QByteArray bytes(const Shape& shape)
{
    return QByteArray::fromStdString(JSONCoding::encode(shape));
}

// Writing, reading back and writing again gives the same text: the two halves of a shape agree,
// and the text is what QJsonDocument itself writes for the same object, byte for byte.
template <typename Shape> void checkMirror(const Shape& shape)
{
    const QByteArray written = bytes(shape);
    QCOMPARE(written, qtCompact(written));
    const Shape back = JSONCoding::decode<Shape>(written);
    QCOMPARE(bytes(back), written);
}

template <typename Shape> bool refusesUnknownKey(const Shape& shape)
{
    QJsonObject object = JSONCoding::parse(bytes(shape)).toObject();
    object.insert(QStringLiteral("zzzExtra"), true);
    try {
        JSONCoding::decodeValue<Shape>(object);
    } catch (const DecodingError&) {
        return true;
    }
    return false;
}

} // namespace

class WireShapesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void writer_matchesQtByteForByte()
    {
        JSONWriter out;
        out.beginArray();
        out.string(awkward);
        out.string(std::string_view("utf8 \"é\" \x02"));
        out.integer(0).integer(-42).integer(9007199254740991LL);
        out.boolean(true).boolean(false).null();
        out.beginObject().key("a").beginArray().endArray().key("b").beginObject().endObject().endObject();
        out.optionalString(std::nullopt).optionalDate(someInstant);
        out.endArray();
        const QByteArray written = QByteArray::fromStdString(out.text());
        QCOMPARE(written, qtCompact(written));
        const QJsonArray read = JSONCoding::parse(written).toArray();
        QCOMPARE(read.at(0).toString(), awkward);
        QCOMPARE(read.at(1).toString(), QString::fromUtf8("utf8 \"é\" \x02"));
        QCOMPARE(read.at(10).toString(), QStringLiteral("2026-11-21T09:30:15Z"));

        // A lone surrogate has no UTF-8 form; it is escaped, as Qt does.
        JSONWriter lone;
        lone.string(QString(QChar(0xd800)) + QLatin1Char('x'));
        QCOMPARE(
            QByteArray::fromStdString(lone.text()), JSONCoding::serialize(QString(QChar(0xd800)) + QLatin1Char('x')));
    }

    void dates_matchQDateTimeFormattingAcrossTheCalendar()
    {
        // Leap days, the epoch, before it, the ends of four-digit years and instants with
        // milliseconds (whole seconds only, rounded towards the past).
        const QList<QDateTime> instants {QDateTime(QDate(1970, 1, 1), QTime(0, 0), Qt::UTC),
            QDateTime(QDate(1969, 12, 31), QTime(23, 59, 59, 999), Qt::UTC),
            QDateTime(QDate(2000, 2, 29), QTime(12, 0), Qt::UTC), QDateTime(QDate(2100, 3, 1), QTime(0, 0, 1), Qt::UTC),
            QDateTime(QDate(1, 1, 1), QTime(0, 0), Qt::UTC), QDateTime(QDate(9999, 12, 31), QTime(23, 59, 59), Qt::UTC),
            QDateTime(QDate(2026, 11, 21), QTime(9, 0, 0, 750), Qt::UTC),
            QDateTime(QDate(2026, 3, 29), QTime(3, 30), QTimeZone("Europe/Madrid"))};
        for (const QDateTime& instant : instants) {
            const QString expected = instant.toUTC().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")) + QLatin1Char('Z');
            QCOMPARE(JSONCoding::encodeDate(instant), expected);
        }
        // Every day of four years, leap year included, at a time that is not midnight.
        QDateTime day(QDate(2023, 1, 1), QTime(13, 14, 15), Qt::UTC);
        for (int i = 0; i < 4 * 366; ++i, day = day.addDays(1))
            QCOMPARE(JSONCoding::encodeDate(day), day.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")) + 'Z');
    }

    void requests_mirrorAndRefuseUnknownKeys()
    {
        const QString id = QStringLiteral("0F8FAD5B-D9CB-469F-A165-70867728950E");
        checkMirror(CreateProjectRequestDTO {id, awkward, QStringLiteral("d"), true});
        checkMirror(UpdateProjectRequestDTO {awkward, QString(), false});
        checkMirror(CreateTaskListRequestDTO {id, awkward, QStringLiteral("d"), true});
        checkMirror(UpdateTaskListRequestDTO {awkward, QString(), true});
        checkMirror(CreateTaskRequestDTO {id, id, awkward, someInstant, QStringLiteral("urgent_important")});
        checkMirror(CreateTaskRequestDTO {id, id, awkward, std::nullopt, std::nullopt});
        checkMirror(UpdateTaskRequestDTO {awkward, true, someInstant, QStringLiteral("not_urgent_important")});
        checkMirror(UpdateTaskRequestDTO {awkward, false, std::nullopt, std::nullopt});
        checkMirror(DeleteCompletedTasksRequestDTO {});
        checkMirror(CreateDailyTaskRequestDTO {id, someInstant, awkward});
        checkMirror(UpdateDailyTaskRequestDTO {awkward});
        checkMirror(CreateBitacoraEntryRequestDTO {id, someInstant, awkward});
        checkMirror(UpdateBitacoraEntryRequestDTO {awkward});
        checkMirror(EventRequestDTO {
            awkward, someInstant, 90, true, awkward, QStringLiteral("every_week"), QStringLiteral("mon,wed")});
        checkMirror(EventRequestDTO {awkward, someInstant, 90, false, awkward, QStringLiteral("none"), QString(), id});
        checkMirror(SupportRequestDTO {awkward});
        checkMirror(UserProfileRequestDTO {awkward, QStringLiteral("Last"), QStringLiteral("a@b.example")});

        // What the server reads strictly: a key the shape does not have is an error.
        QVERIFY(refusesUnknownKey(CreateProjectRequestDTO {id, awkward, QString(), false}));
        QVERIFY(refusesUnknownKey(UpdateTaskRequestDTO {awkward, false, std::nullopt, std::nullopt}));
        QVERIFY(refusesUnknownKey(EventRequestDTO {}));
        QVERIFY(refusesUnknownKey(SupportRequestDTO {awkward}));
        QVERIFY(refusesUnknownKey(UserProfileRequestDTO {}));
        QVERIFY(refusesUnknownKey(DeleteCompletedTasksRequestDTO {}));
    }

    void requests_leaveOutOptionalKeysWithoutValue()
    {
        const QString id = QStringLiteral("0F8FAD5B-D9CB-469F-A165-70867728950E");
        QCOMPARE(bytes(CreateTaskRequestDTO {id, id, QStringLiteral("t"), std::nullopt, std::nullopt}),
            QByteArray(R"({"prjId":"0F8FAD5B-D9CB-469F-A165-70867728950E",)"
                       R"("talId":"0F8FAD5B-D9CB-469F-A165-70867728950E","tasTitle":"t"})"));
        QCOMPARE(bytes(UpdateTaskRequestDTO {QStringLiteral("t"), true, someInstant, std::nullopt}),
            QByteArray(R"({"tasDueDate":"2026-11-21T09:30:15Z","tasIsDone":true,"tasTitle":"t"})"));
        // A bulk deletion is confirmed unless the caller says otherwise.
        QCOMPARE(bytes(DeleteCompletedTasksRequestDTO {}), QByteArray(R"({"confirm":true})"));
        // An explicit null is no value too, on the way in.
        const auto read = JSONCoding::decode<UpdateTaskRequestDTO>(
            R"({"tasTitle":"t","tasIsDone":false,"tasDueDate":null,"tasEisenhowerTag":null})");
        QVERIFY(!read.tasDueDate && !read.tasEisenhowerTag);
    }

    // The schedule keys: mirrored with every value, and a task body of an older backend (none of
    // them) reads as a task without a schedule.
    void tasks_carryTheirScheduleAsOptionalKeys()
    {
        const QString id = QStringLiteral("0F8FAD5B-D9CB-469F-A165-70867728950E");
        TaskRecurrenceDTO rule;
        rule.frequency = QStringLiteral("monthly");
        rule.interval = 2;
        rule.weekdayOrdinal = -1;
        rule.ordinalWeekday = 5;
        rule.anchor = QStringLiteral("completion");
        rule.endAfterCount = 6;
        rule.endOnDate = QStringLiteral("2027-12-31");
        TaskRecurrenceDTO weekly;
        weekly.frequency = QStringLiteral("weekly");
        weekly.weekdays = {1, 3, 5};
        weekly.monthDay = -1;

        CreateTaskRequestDTO create {.prjId = id, .talId = id, .tasTitle = awkward, .tasDueDate = someInstant};
        create.tasDueHasTime = true;
        create.tasRecurrence = rule;
        create.tasOccurrence = 3;
        create.tasReminderMinutesBefore = 0;
        create.tasCompletedAt = someInstant;
        checkMirror(create);
        UpdateTaskRequestDTO update {.tasTitle = awkward, .tasIsDone = true};
        update.tasRecurrence = weekly;
        update.tasReminderMinutesBefore = 90;
        checkMirror(update);
        TaskResponseDTO response {.tasId = id, .prjId = id, .talId = id, .tasTitle = awkward};
        response.tasRecurrence = rule;
        response.tasOccurrence = 2;
        response.tasCompletedAt = someInstant;
        checkMirror(response);
        QCOMPARE(JSONCoding::decode<TaskResponseDTO>(bytes(response)).tasRecurrence, std::optional(rule));

        const auto old = JSONCoding::decode<TaskResponseDTO>(
            R"({"tasId":"a","prjId":"b","talId":"c","tasTitle":"t","tasIsDone":false,"tasDueDate":null})");
        QVERIFY(!old.tasDueHasTime && !old.tasRecurrence && !old.tasOccurrence && !old.tasReminderMinutesBefore
            && !old.tasCompletedAt);

        // The rule is read strictly on both sides.
        for (const char* body : {R"({"frequency":"hourly"})", R"({"frequency":"daily","interval":0})",
                 R"({"frequency":"weekly","weekdays":[0]})", R"({"frequency":"monthly","monthDay":32})",
                 R"({"frequency":"monthly","weekdayOrdinal":6,"ordinalWeekday":1})",
                 R"({"frequency":"daily","anchor":"whenever"})", R"({"frequency":"daily","endOnDate":"31/12/2027"})",
                 R"({"frequency":"daily","colour":"red"})"}) {
            bool refused = false;
            try {
                JSONCoding::decode<TaskRecurrenceDTO>(QByteArray(body));
            } catch (const DecodingError&) {
                refused = true;
            }
            QVERIFY2(refused, body);
        }
    }

    void responses_mirrorAndTolerateUnknownKeys()
    {
        const QString id = QStringLiteral("0F8FAD5B-D9CB-469F-A165-70867728950E");
        const ProjectResponseDTO project {id, id, awkward, awkward, true};
        checkMirror(project);
        checkMirror(TaskListResponseDTO {id, id, awkward, QString(), true});
        checkMirror(TaskResponseDTO {id, id, id, awkward, true, someInstant, QStringLiteral("urgent_not_important")});
        checkMirror(TaskResponseDTO {id, id, id, awkward, false, std::nullopt, std::nullopt});
        checkMirror(DailyTaskResponseDTO {id, id, someInstant, awkward, true});
        checkMirror(BitacoraEntryResponseDTO {id, id, id, someInstant, awkward});
        checkMirror(EventResponseDTO {id, awkward, someInstant, 45, awkward, QStringLiteral("none"), QString()});
        checkMirror(SupportResponseDTO {id, id, QStringLiteral("support"), someInstant, awkward});
        checkMirror(UserResponseDTO {id, awkward, QStringLiteral("L"), QStringLiteral("e@x.example"), true});

        // The app reads answers leniently: a newer server may add keys.
        QVERIFY(!refusesUnknownKey(project));
        // Absent values are written as null, which the app reads as absent.
        QCOMPARE(bytes(TaskResponseDTO {id, id, id, QStringLiteral("t"), false, std::nullopt, std::nullopt}),
            QByteArray(
                R"({"prjId":"0F8FAD5B-D9CB-469F-A165-70867728950E",)"
                R"("talId":"0F8FAD5B-D9CB-469F-A165-70867728950E","tasCompletedAt":null,"tasDueDate":null,)"
                R"("tasDueHasTime":false,"tasEisenhowerTag":null,"tasId":"0F8FAD5B-D9CB-469F-A165-70867728950E",)"
                R"("tasIsDone":false,"tasOccurrence":1,"tasRecurrence":null,"tasReminderMinutesBefore":null,)"
                R"("tasTitle":"t"})"));
    }

    void dates_withFractionsAreRefusedOnTheWayIn()
    {
        QVERIFY_THROWS_EXCEPTION(DecodingError, JSONCoding::decode<UpdateDailyTaskRequestDTO>(R"({"tasTitle":1})"));
        QVERIFY_THROWS_EXCEPTION(DecodingError,
            JSONCoding::decode<CreateBitacoraEntryRequestDTO>(
                R"({"prjId":"x","bteDate":"2026-11-21T09:30:15.5Z","bteContent":"c"})"));
        const auto offset = JSONCoding::decode<CreateBitacoraEntryRequestDTO>(
            R"({"prjId":"x","bteDate":"2026-11-21T10:30:15+01:00","bteContent":"c"})");
        QCOMPARE(offset.bteDate, someInstant);
    }
};

TOLVANE_TEST_MAIN(WireShapesTest)
#include "WireShapesTest.moc"
