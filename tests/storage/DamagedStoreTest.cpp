#include "platform/NotificationCenter.h"
#include "storage/RealmDatabase.h"
#include "storage/RealmStoreSetAside.h"
#include "storage/StoreFiles.h"
#include "support/TestMain.h"
#include "tasks/database/ProjectsDatabase.h"
#include "tasks/repositories/local/LocalProjectRepositoryImpl.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

// SQLCipher's page size: damage is laid down a page at a time, as a bad disk sector would.
constexpr qint64 pageSize = 1024;
constexpr int projectCount = 60;

QString fileOf(const ProjectsDatabase& database)
{
    return *database.configuration.fileURL;
}

// Records of fixed ids and a description longer than a page, so that the file is laid out the
// same on every run and most of its pages hold the projects' own text.
ProjectEntity projectNumbered(const QUuid& owner, int number)
{
    return ProjectEntity {
        .prjId = QUuid(QStringLiteral("00000000-0000-0000-0000-%1").arg(number, 12, 10, QLatin1Char('0'))),
        .prjUserId = owner,
        .prjName = QStringLiteral("Project %1").arg(number),
        .prjDescription = QString(3000, QLatin1Char('a' + number % 26))};
}

} // namespace

// A store file damaged after it was written (a crash, a bad disk): the damage is found when an
// operation reads it, the file is set aside with what still reads copied into a new store, and
// the user is told where the old file went.
class DamagedStoreTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory;
    const QUuid owner = QUuid::createUuid();
    QList<ProjectEntity> written;
    QStringList consoleLines;

    ProjectsDatabase store() const
    {
        RealmConfiguration configuration;
        configuration.fileURL = directory->filePath(QStringLiteral("Tasks.Projects.realm"));
        configuration.encryptionKey = QByteArray(64, '\x3c');
        configuration.schemaVersion = 1;
        configuration.objectTypes = ProjectsDatabaseSchema::objectTypes();
        return ProjectsDatabase {configuration};
    }

    QStringList setAside() const
    {
        return QDir(directory->path())
            .entryList({QStringLiteral("Tasks.Projects.realm") + RealmStoreSetAside::marker + QLatin1Char('*')},
                QDir::Files, QDir::Name);
    }

    void verifyUsableAfterwards()
    {
        LocalProjectRepositoryImpl projects(store());
        const ProjectEntity later {.prjUserId = owner, .prjName = QStringLiteral("After the repair")};
        QVERIFY(projects.create(later).result);
        QVERIFY(listedProjects().contains(later));
    }

    QList<ProjectEntity> listedProjects() const
    {
        const TaskResultEntity listed = LocalProjectRepositoryImpl(store()).list(owner);
        return listed.result ? *listed.dataAs<QList<ProjectEntity>>() : QList<ProjectEntity>();
    }

private Q_SLOTS:
    void initTestCase()
    {
        NotificationCenter::defaultCenter().addObserver(NotificationName::storeSetAside, this,
            [this](const QVariant& line) { consoleLines.append(line.toString()); });
    }

    void init()
    {
        directory = std::make_unique<QTemporaryDir>();
        consoleLines.clear();
        written.clear();
        LocalProjectRepositoryImpl projects(store());
        for (int number = 0; number < projectCount; ++number) {
            written.append(projectNumbered(owner, number));
            QVERIFY(projects.create(written.constLast()).result);
        }
    }

    void shouldKeepWhatStillReadsFromADamagedStore_data()
    {
        QTest::addColumn<QString>("damage");
        QTest::newRow("last 500 bytes cut off") << QStringLiteral("truncate");
        QTest::newRow("a page in the middle overwritten") << QStringLiteral("middle");
        QTest::newRow("the last page overwritten") << QStringLiteral("last");
    }

    void shouldKeepWhatStillReadsFromADamagedStore()
    {
        QFETCH(QString, damage);
        const QString file = fileOf(store());
        const qint64 size = QFileInfo(file).size();
        const qint64 pages = size / pageSize;
        if (damage == QStringLiteral("truncate"))
            QVERIFY(QFile::resize(file, size - 500));
        else
            StoreFiles::overwrite(file, (damage == QStringLiteral("middle") ? pages / 2 : pages - 1) * pageSize,
                QByteArray(pageSize, '\x5a'));
        const QByteArray damaged = StoreFiles::read(file);

        // The user lists the projects and opens each one; whichever operation meets the damage
        // sets the store aside and goes on with the new one.
        LocalProjectRepositoryImpl projects(store());
        const TaskResultEntity listed = projects.list(owner);
        QVERIFY2(listed.result, qPrintable(listed.firstMessage().value_or(QString())));
        for (const ProjectEntity& project : std::as_const(written)) {
            const TaskResultEntity found = projects.find(project.prjId);
            QVERIFY2(found.result || found.applicationMessage == QStringLiteral("The project does not exist"),
                qPrintable(found.firstMessage().value_or(QString())));
        }

        const QList<ProjectEntity> kept = listedProjects();
        qInfo("%lld of %d projects read back after the damage", qlonglong(kept.size()), projectCount);
        // A page holds the text of one project, or the index entries or row headers of a few.
        QVERIFY2(kept.size() >= projectCount - 8, "the records on undamaged pages came back");
        for (const ProjectEntity& project : kept)
            QVERIFY2(written.contains(project), qPrintable(project.prjName));

        QCOMPARE(setAside().size(), 1);
        const QString copy = directory->filePath(setAside().constFirst());
        QVERIFY(StoreFiles::read(copy) == damaged);
        QCOMPARE(StoreFiles::mode(copy), 0600);
        QTRY_COMPARE(consoleLines.size(), 1);
        QVERIFY2(consoleLines.constFirst().contains(copy), qPrintable(consoleLines.constFirst()));

        verifyUsableAfterwards();
        QCOMPARE(consoleLines.size(), 1);
    }

    void shouldKeepOnlyTheThreeNewestCopies()
    {
        QStringList expected;
        for (int round = 0; round < 5; ++round) {
            StoreFiles::addProject(store().configuration, QStringLiteral("Round %1").arg(round));
            StoreFiles::overwrite(fileOf(store()), 0, QByteArray(pageSize, char(round)));
            QVERIFY(LocalProjectRepositoryImpl(store()).list(owner).result);
            QTRY_COMPARE(consoleLines.size(), round + 1);
            expected.append(setAside().constLast());
        }
        QCOMPARE(setAside(), expected.mid(2));
        for (const QString& copy : setAside())
            QCOMPARE(StoreFiles::mode(directory->filePath(copy)), 0600);
    }
};

TOLVANE_TEST_MAIN(DamagedStoreTest)
#include "DamagedStoreTest.moc"
