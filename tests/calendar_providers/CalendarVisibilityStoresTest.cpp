#include "calendar_providers/stores/AlarmEnabledCalendarsStore.h"
#include "calendar_providers/stores/EnabledCalendarAccountsStore.h"
#include "calendar_providers/stores/EnabledCalendarProvidersStore.h"
#include "calendar_providers/stores/HiddenCalendarsStore.h"
#include "platform/NotificationCenter.h"
#include "support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

namespace {

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

// The members of a saved file, whatever their order.
QSet<QString> savedMembers(const QString& path)
{
    QJsonParseError error {};
    const QJsonDocument document = QJsonDocument::fromJson(readFile(path), &error);
    if (error.error != QJsonParseError::NoError || !document.isArray())
        return {QStringLiteral("<not a JSON array>")};
    QSet<QString> members;
    for (const QJsonValue& value : document.array())
        members.insert(value.isString() ? value.toString() : QStringLiteral("<not a string>"));
    return members;
}

const AccountProviderSet eventKitOnly {AccountProviderEnum::eventKit};

} // namespace

class CalendarVisibilityStoresTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_directory;

    QString path(const QString& name) const { return m_directory.filePath(name); }

private Q_SLOTS:
    void init()
    {
        for (const QString& name : QDir(m_directory.path()).entryList(QDir::Files))
            QFile::remove(path(name));
    }

    void shouldReadTheKindFilesLeniently_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<bool>("hasEventKit");
        QTest::newRow("a known and an unknown kind") << QByteArray(R"(["eventKit", "other"])") << true;
        QTest::newRow("duplicates collapse") << QByteArray(R"(["eventKit","eventKit"])") << true;
        QTest::newRow("kinds are case-sensitive") << QByteArray(R"(["EventKit", "eventkit"])") << false;
        QTest::newRow("empty array") << QByteArray("[]") << false;
        QTest::newRow("truncated") << QByteArray(R"(["eventKit")") << false;
        QTest::newRow("an object, not an array") << QByteArray(R"({"eventKit": true})") << false;
        QTest::newRow("a bare string") << QByteArray(R"("eventKit")") << false;
        QTest::newRow("a non-string member spoils the array") << QByteArray(R"(["eventKit", 1])") << false;
        QTest::newRow("a null member spoils the array") << QByteArray(R"(["eventKit", null])") << false;
        QTest::newRow("empty file") << QByteArray() << false;
        QTest::newRow("binary garbage") << QByteArray("\x00\xff\xfe[", 4) << false;
    }

    void shouldReadTheKindFilesLeniently()
    {
        QFETCH(QByteArray, contents);
        QFETCH(bool, hasEventKit);
        const AccountProviderSet expected = hasEventKit ? eventKitOnly : AccountProviderSet();
        const EnabledCalendarAccountsStore accounts(m_directory.path());
        const EnabledCalendarProvidersStore providers(m_directory.path());

        writeFile(path(QStringLiteral("enabledCalendarAccounts.json")), contents);
        writeFile(path(QStringLiteral("enabledCalendarProviders.json")), contents);

        QCOMPARE(accounts.load(), expected);
        QCOMPARE(providers.load(), expected);
    }

    void shouldReadMissingFilesAsEmpty()
    {
        const QString nowhere = path(QStringLiteral("never/made"));
        NotificationCenter center;

        QCOMPARE(EnabledCalendarAccountsStore(nowhere).load(), AccountProviderSet());
        QCOMPARE(EnabledCalendarProvidersStore(nowhere).load(), AccountProviderSet());
        QCOMPARE(HiddenCalendarsStore(nowhere, center).load(), QSet<QString>());
        QVERIFY(!QDir(nowhere).exists());
    }

    void shouldReplaceAMalformedFileWithValidJson()
    {
        const EnabledCalendarAccountsStore store(m_directory.path());
        writeFile(store.filePath(), "[\"eventKit\", ");
        QCOMPARE(store.load(), AccountProviderSet());

        store.save(eventKitOnly);

        QCOMPARE(readFile(store.filePath()), QByteArray(R"(["eventKit"])"));
        QCOMPARE(store.load(), eventKitOnly);
        // Only the file itself is left: the temporary file was renamed over it.
        QCOMPARE(QDir(m_directory.path()).entryList(QDir::Files | QDir::Hidden),
            QStringList {QStringLiteral("enabledCalendarAccounts.json")});
    }

    void shouldSaveEmptySetsAndClear()
    {
        const EnabledCalendarAccountsStore accounts(m_directory.path());
        accounts.save(eventKitOnly);
        accounts.save({});
        QCOMPARE(readFile(accounts.filePath()), QByteArray("[]"));

        accounts.save(eventKitOnly);
        accounts.clear();
        QVERIFY(!QFile::exists(accounts.filePath()));
        QCOMPARE(accounts.load(), AccountProviderSet());
    }

    void shouldCreateTheProvidersFolderWithItsParents()
    {
        const QString folder = path(QStringLiteral("data/Tolvane"));
        const EnabledCalendarProvidersStore store(folder);

        store.save(eventKitOnly);

        QCOMPARE(store.filePath(), folder + QStringLiteral("/enabledCalendarProviders.json"));
        QCOMPARE(EnabledCalendarProvidersStore(folder).load(), eventKitOnly);
    }

    void shouldKeepHiddenCalendarsAndAnnounceEachSave()
    {
        NotificationCenter center;
        QList<QVariant> posted;
        center.addObserver(
            NotificationName::hiddenCalendarsDidChange, this, [&](const QVariant& object) { posted.append(object); });
        int otherNotifications = 0;
        QObject::connect(&center, &NotificationCenter::posted, this, [&](const QString& name) {
            if (name != NotificationName::hiddenCalendarsDidChange)
                ++otherNotifications;
        });
        const HiddenCalendarsStore store(m_directory.path(), center);
        // Identifiers as EDS hands them out, with characters JSON has to escape.
        const QSet<QString> hidden {QStringLiteral("system-calendar"),
            QStringLiteral("1700000000.12345.7@host \"quoted\""), QStringLiteral("Calendario de Ñandú \\ cumpleaños")};

        store.save(hidden);
        QCOMPARE(posted.size(), 1);
        QVERIFY(posted.constFirst().isNull());
        QCOMPARE(store.load(), hidden);
        QCOMPARE(savedMembers(store.filePath()), hidden);

        store.save({});
        QCOMPARE(posted.size(), 2);
        QCOMPARE(store.load(), QSet<QString>());
        QCOMPARE(otherNotifications, 0);
    }

    void shouldKeepTheFileAndStayQuietWhenTheWriteFails()
    {
        NotificationCenter center;
        int posts = 0;
        center.addObserver(NotificationName::hiddenCalendarsDidChange, this, [&](const QVariant&) { ++posts; });
        // A plain file where the directory should be: nothing can be created below it.
        const QString blocked = path(QStringLiteral("blocked"));
        writeFile(blocked, "not a directory");

        HiddenCalendarsStore(blocked, center).save({QStringLiteral("work")});
        EnabledCalendarAccountsStore(blocked).save(eventKitOnly);

        QCOMPARE(posts, 0);
        QCOMPARE(readFile(blocked), QByteArray("not a directory"));
    }

    void shouldReadHiddenCalendarFilesLikeTheKindFiles()
    {
        NotificationCenter center;
        const HiddenCalendarsStore store(m_directory.path(), center);

        writeFile(store.filePath(), R"(["a", "b", "a", ""])");
        QCOMPARE(store.load(), (QSet<QString> {QStringLiteral("a"), QStringLiteral("b"), QString()}));

        writeFile(store.filePath(), R"(["a", {"b": 1}])");
        QCOMPARE(store.load(), QSet<QString>());
    }

    void shouldKeepAlarmCalendarsInTheUserDefaults_data()
    {
        QTest::addColumn<QStringList>("identifiers");
        QTest::newRow("one") << QStringList {QStringLiteral("system-calendar")};
        QTest::newRow("several") << QStringList {QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("c")};
        QTest::newRow("commas, quotes, @ and spaces") << QStringList {QStringLiteral("a,b"),
            QStringLiteral("@Invalid()"), QStringLiteral(" \"x\" "), QStringLiteral("1700000000.1@host")};
        QTest::newRow("one with a comma") << QStringList {QStringLiteral("work, home")};
        QTest::newRow("none") << QStringList {};
    }

    void shouldKeepAlarmCalendarsInTheUserDefaults()
    {
        QFETCH(QStringList, identifiers);
        const QString file = path(QStringLiteral("Tolvane.conf"));
        const QSet<QString> members(identifiers.begin(), identifiers.end());
        AlarmEnabledCalendarsStore store {UserDefaults(file)};
        QCOMPARE(store.load(), QSet<QString>());

        store.save(members);

        QCOMPARE(store.load(), members);
        // A copy is parsed from disk rather than served from the process's settings cache.
        const QString copy = path(QStringLiteral("Copy.conf"));
        QVERIFY(QFile::copy(file, copy));
        QCOMPARE(AlarmEnabledCalendarsStore(UserDefaults(copy)).load(), members);
        QVERIFY(UserDefaults(file).contains(QStringLiteral("alarmEnabledCalendarIdentifiers")));
        store.clear();
        QVERIFY(!UserDefaults(file).contains(QStringLiteral("alarmEnabledCalendarIdentifiers")));
        QCOMPARE(store.load(), QSet<QString>());
    }
};

TOLVANE_TEST_MAIN(CalendarVisibilityStoresTest)
#include "CalendarVisibilityStoresTest.moc"
