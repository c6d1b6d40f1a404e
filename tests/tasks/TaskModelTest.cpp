#include "support/TestMain.h"
#include "tasks/domain/BitacoraDomain.h"
#include "tasks/domain/DailyTaskDomain.h"
#include "tasks/domain/ProjectDomain.h"
#include "tasks/domain/TaskDomain.h"
#include "tasks/domain/TaskListDomain.h"

#include <QSet>

namespace {

void verifyPassed(const TaskResultEntity& outcome)
{
    QVERIFY(outcome.result);
    QVERIFY(!outcome.data.has_value());
    QCOMPARE(outcome.message, QString());
    QCOMPARE(outcome.firstMessage(), std::nullopt);
}

void verifyFailedInDomain(const TaskResultEntity& outcome, const QString& text)
{
    QVERIFY(!outcome.result);
    QVERIFY(!outcome.data.has_value());
    QCOMPARE(outcome.message, QString());
    QCOMPARE(outcome.domainMessage, std::optional<QString>(text));
    // Only the failing layer speaks.
    QCOMPARE(outcome.databaseMessage, std::nullopt);
    QCOMPARE(outcome.applicationMessage, std::nullopt);
    QCOMPARE(outcome.infrastructureMessage, std::nullopt);
    QCOMPARE(outcome.controllerMessage, std::nullopt);
    QCOMPARE(outcome.stackTrace, std::nullopt);
}

} // namespace

class TaskModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shouldRefuseBlankNamesWithEachResourcesMessage_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("spaces") << QStringLiteral("   ");
        QTest::newRow("line feed and tab") << QStringLiteral("\n\t");
        QTest::newRow("carriage return, form feed, vertical tab") << QStringLiteral("\r\f\v");
        QTest::newRow("no-break space") << QStringLiteral("\u00A0");
        QTest::newRow("next line") << QStringLiteral("\u0085");
        QTest::newRow("line and paragraph separators") << QStringLiteral("\u2028\u2029");
        QTest::newRow("ogham, em and ideographic spaces") << QStringLiteral("\u1680\u2003\u3000");
        QTest::newRow("narrow no-break and medium mathematical spaces") << QStringLiteral("\u202F\u205F");
    }

    void shouldRefuseBlankNamesWithEachResourcesMessage()
    {
        QFETCH(QString, text);
        verifyFailedInDomain(ProjectDomain::validateName(ProjectEntity {.prjName = text}),
            QStringLiteral("The project name cannot be empty"));
        verifyFailedInDomain(TaskListDomain::validateName(TaskListEntity {.talName = text}),
            QStringLiteral("The task list name cannot be empty"));
        verifyFailedInDomain(
            TaskDomain::validateTitle(TaskEntity {.tasTitle = text}), QStringLiteral("The task title cannot be empty"));
        verifyFailedInDomain(DailyTaskDomain::validateTitle(DailyTaskEntity {.dtaTitle = text}),
            QStringLiteral("The daily task title cannot be empty"));
    }

    void shouldRefuseNamesWithAHalfSurrogatePair_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("lone high surrogate at the end") << QStringLiteral("Call mum ") + QChar(0xD83D);
        QTest::newRow("lone low surrogate inside") << QStringLiteral("a") + QChar(0xDE00) + QStringLiteral("b");
        QTest::newRow("pair reversed") << QString(QChar(0xDE00)) + QChar(0xD83D);
    }

    // The store and the backend keep text as UTF-8, which would turn the half pair into "?".
    void shouldRefuseNamesWithAHalfSurrogatePair()
    {
        QFETCH(QString, text);
        verifyFailedInDomain(ProjectDomain::validateName(ProjectEntity {.prjName = text}),
            QStringLiteral("The project name holds a broken character (a lone surrogate)"));
        verifyFailedInDomain(TaskListDomain::validateName(TaskListEntity {.talName = text}),
            QStringLiteral("The task list name holds a broken character (a lone surrogate)"));
        verifyFailedInDomain(TaskDomain::validateTitle(TaskEntity {.tasTitle = text}),
            QStringLiteral("The task title holds a broken character (a lone surrogate)"));
        verifyFailedInDomain(DailyTaskDomain::validateTitle(DailyTaskEntity {.dtaTitle = text}),
            QStringLiteral("The daily task title holds a broken character (a lone surrogate)"));
    }

    void shouldAcceptNamesWithTextAndLeaveTheirSpacesAlone_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("padded") << QStringLiteral(" A ");
        QTest::newRow("inner space") << QStringLiteral("Plan the week");
        QTest::newRow("zero-width space is text") << QStringLiteral("\u200B");
        QTest::newRow("emoji between line breaks") << QStringLiteral("\n\U0001F4C5\n");
    }

    void shouldAcceptNamesWithTextAndLeaveTheirSpacesAlone()
    {
        QFETCH(QString, text);
        const ProjectEntity project {.prjName = text};
        verifyPassed(ProjectDomain::validateName(project));
        QCOMPARE(project.prjName, text);
        verifyPassed(TaskListDomain::validateName(TaskListEntity {.talName = text}));
        verifyPassed(TaskDomain::validateTitle(TaskEntity {.tasTitle = text}));
        verifyPassed(DailyTaskDomain::validateTitle(DailyTaskEntity {.dtaTitle = text}));
    }

    void shouldDeleteAProjectOnlyWithoutTaskLists()
    {
        verifyPassed(ProjectDomain::canDelete({}));
        verifyFailedInDomain(ProjectDomain::canDelete({TaskListEntity {.talName = QStringLiteral("Inbox")}}),
            QStringLiteral("The project still has task lists"));
    }

    void shouldCheckOwnershipOnEveryByteOfTheUserId()
    {
        const QUuid owner = QUuid::fromString(u"6F9619FF-8B86-D011-B42D-00C04FC964FF");
        const QUuid lastByteDiffers = QUuid::fromString(u"6F9619FF-8B86-D011-B42D-00C04FC964FE");
        const ProjectEntity project {.prjUserId = owner};
        const BitacoraEntryEntity entry {.bteUserId = owner};

        verifyPassed(ProjectDomain::belongsToUser(project, owner));
        verifyFailedInDomain(ProjectDomain::belongsToUser(project, lastByteDiffers),
            QStringLiteral("This project does not belong to the given user"));
        verifyPassed(BitacoraDomain::belongsToUser(entry, owner));
        verifyFailedInDomain(BitacoraDomain::belongsToUser(entry, lastByteDiffers),
            QStringLiteral("This bitacora entry does not belong to the given user"));
    }

    void shouldRequireTheParentLookedUp()
    {
        verifyPassed(TaskListDomain::parentProjectExists(ProjectEntity {}));
        verifyFailedInDomain(
            TaskListDomain::parentProjectExists(std::nullopt), QStringLiteral("The parent project does not exist"));
        verifyPassed(TaskDomain::parentTaskListExists(TaskListEntity {}));
        verifyFailedInDomain(
            TaskDomain::parentTaskListExists(std::nullopt), QStringLiteral("The parent task list does not exist"));
    }

    void shouldGiveEveryResultItsOwnIdentifier()
    {
        const ProjectEntity blank;
        QSet<QString> seen;
        for (int i = 0; i < 100; ++i) {
            const TaskResultEntity outcome = ProjectDomain::validateName(blank);
            QCOMPARE(outcome.id, 0);
            QVERIFY(!QUuid::fromString(outcome.guidId).isNull());
            seen.insert(outcome.guidId);
        }
        QCOMPARE(seen.size(), 100);
    }

    void shouldCarryPayloadsAndReportTheFirstMessage()
    {
        const TaskResultEntity found = TaskResultEntity::success(ProjectEntity {.prjName = QStringLiteral("Home")});
        QVERIFY(found.result);
        QCOMPARE(found.dataAs<ProjectEntity>()->prjName, QStringLiteral("Home"));
        QCOMPARE(found.dataAs<TaskEntity>(), nullptr);

        const TaskResultEntity failed
            = TaskResultEntity::infrastructureFailure(QStringLiteral("proyecto no encontrado"));
        QCOMPARE(failed.firstMessage(), std::optional<QString>(QStringLiteral("proyecto no encontrado")));
        QCOMPARE(failed.dataAs<ProjectEntity>(), nullptr);
    }

    void shouldGiveNewEntitiesTheirOwnIdentity()
    {
        QVERIFY(ProjectEntity {}.prjId != ProjectEntity {}.prjId);
        QVERIFY(!TaskEntity {}.tasId.isNull());
        QVERIFY(!TaskEntity {}.tasDueDate.has_value());
        QVERIFY(!TaskEntity {}.tasEisenhowerTag.has_value());
    }

    void shouldMapEachEisenhowerQuadrant_data()
    {
        QTest::addColumn<EisenhowerTagEnum>("tag");
        QTest::addColumn<QString>("raw");
        QTest::addColumn<QString>("api");
        QTest::addColumn<QString>("color");
        QTest::newRow("do it") << EisenhowerTagEnum::doIt << "do"
                               << "urgent_important"
                               << "#E5484D";
        QTest::newRow("planning") << EisenhowerTagEnum::planning << "planning"
                                  << "not_urgent_important"
                                  << "#3E8BFF";
        QTest::newRow("delegate") << EisenhowerTagEnum::delegate << "delegate"
                                  << "urgent_not_important"
                                  << "#F5A623";
        QTest::newRow("delete") << EisenhowerTagEnum::delete_ << "delete"
                                << "not_urgent_not_important"
                                << "#8E8E93";
    }

    void shouldMapEachEisenhowerQuadrant()
    {
        QFETCH(EisenhowerTagEnum, tag);
        QFETCH(QString, raw);
        QFETCH(QString, api);
        QFETCH(QString, color);
        QCOMPARE(EisenhowerTag::rawValue(tag), raw);
        QCOMPARE(EisenhowerTag::fromRawValue(raw), tag);
        QCOMPARE(EisenhowerTag::apiValue(tag), api);
        QCOMPARE(EisenhowerTag::fromApiValue(api), tag);
        QCOMPARE(EisenhowerTag::colorHex(tag), color);
        QCOMPARE(qHash(tag, 7), qHash(raw, 7));
    }

    void shouldListTheQuadrantsInMatrixOrder()
    {
        QCOMPARE(EisenhowerTag::allCases,
            (std::array {EisenhowerTagEnum::doIt, EisenhowerTagEnum::planning, EisenhowerTagEnum::delegate,
                EisenhowerTagEnum::delete_}));
    }

    void shouldTreatAnyOtherApiValueAsNoTag_data()
    {
        QTest::addColumn<std::optional<QString>>("api");
        QTest::newRow("absent") << std::optional<QString>();
        QTest::newRow("empty") << std::optional<QString>(QString());
        QTest::newRow("upper case") << std::optional<QString>(QStringLiteral("URGENT_IMPORTANT"));
        QTest::newRow("one capital") << std::optional<QString>(QStringLiteral("Urgent_important"));
        QTest::newRow("trailing space") << std::optional<QString>(QStringLiteral("urgent_important "));
        QTest::newRow("a stored raw value") << std::optional<QString>(QStringLiteral("do"));
    }

    void shouldTreatAnyOtherApiValueAsNoTag()
    {
        QFETCH(std::optional<QString>, api);
        QCOMPARE(EisenhowerTag::fromApiValue(api), std::nullopt);
    }

    void shouldReadNoTagFromAnUnknownStoredValue()
    {
        QCOMPARE(EisenhowerTag::fromRawValue(QStringLiteral("doIt")), std::nullopt);
        QCOMPARE(EisenhowerTag::fromRawValue(QStringLiteral("urgent_important")), std::nullopt);
    }
};

TOLVANE_TEST_MAIN(TaskModelTest)
#include "TaskModelTest.moc"
