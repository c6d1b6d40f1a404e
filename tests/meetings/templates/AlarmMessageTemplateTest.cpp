#include "meetings/templates/AlarmMessageApplication.h"
#include "meetings/templates/AlarmMessageDomain.h"
#include "meetings/templates/AlarmMessageDomainError.h"
#include "meetings/templates/LocalAlarmMessageTemplateRepositoryImpl.h"
#include "support/TestMain.h"

#include <QTemporaryDir>

class AlarmMessageTemplateTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    UserDefaults m_defaults {QString()};

    AlarmMessageApplication application() const
    {
        return AlarmMessageApplication(
            std::make_shared<LocalAlarmMessageTemplateRepositoryImpl>(AlarmMessageTemplateDatabase(m_defaults)));
    }

private Q_SLOTS:
    void init()
    {
        QVERIFY(m_folder.isValid());
        m_defaults = UserDefaults(m_folder.filePath(QStringLiteral("Tolvane.conf")));
        m_defaults.remove(AlarmMessageTemplateDatabase::key);
    }

    void shouldAcceptOnlyEmptyTextsOrTextsWithThePlaceholder_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::newRow("empty") << QString() << true;
        QTest::newRow("placeholder alone") << QStringLiteral("{event}") << true;
        QTest::newRow("sentence") << QStringLiteral("Ya empieza {event}") << true;
        QTest::newRow("spaces only") << QStringLiteral("   ") << false;
        QTest::newRow("upper case") << QStringLiteral("Time for {EVENT}") << false;
        QTest::newRow("no braces") << QStringLiteral("Time for event") << false;
    }
    void shouldAcceptOnlyEmptyTextsOrTextsWithThePlaceholder()
    {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        try {
            AlarmMessageDomain::validate(text);
            QVERIFY(valid);
        } catch (const AlarmMessageDomainError& error) {
            QVERIFY(!valid);
            QCOMPARE(error.kind(), AlarmMessageDomainError::Case::missingEventPlaceholder);
        }
    }

    void shouldRenderEveryPlaceholderLiterally()
    {
        QCOMPARE(AlarmMessageDomain::render(QStringLiteral("{event}"), QStringLiteral("Team sync")),
            QStringLiteral("Team sync"));
        QCOMPARE(AlarmMessageDomain::render(QStringLiteral("{event}, {event}!"), QStringLiteral("$1 \\n {event}")),
            QStringLiteral("$1 \\n {event}, $1 \\n {event}!"));
    }

    void shouldStoreTheTemplateAsJsonUnderItsKey()
    {
        application().saveTemplateText(QStringLiteral("Ojo: {event}"));
        QCOMPARE(m_defaults.value(AlarmMessageTemplateDatabase::key).toByteArray(),
            QByteArray(R"({"amtText":"Ojo: {event}"})"));
        QCOMPARE(application().message(QStringLiteral("Demo"), QStringLiteral("Tienes a Demo.")),
            QStringLiteral("Ojo: Demo"));
    }

    void shouldStoreNothingWhenTheTemplateIsRefused()
    {
        application().saveTemplateText(QStringLiteral("Ojo: {event}"));
        QVERIFY_THROWS_EXCEPTION(AlarmMessageDomainError, application().saveTemplateText(QStringLiteral("Ojo")));
        QCOMPARE(application().loadTemplateText(), QStringLiteral("Ojo: {event}"));
    }

    void shouldUseTheDefaultSentenceWhenTheTemplateIsEmptyMissingOrUnreadable()
    {
        const QString fallback = QStringLiteral("You have a Demo.");
        QCOMPARE(application().message(QStringLiteral("Demo"), fallback), fallback);

        application().saveTemplateText(QStringLiteral("{event} now"));
        application().saveTemplateText(QString());
        QCOMPARE(application().message(QStringLiteral("Demo"), fallback), fallback);

        m_defaults.setValue(AlarmMessageTemplateDatabase::key, QByteArray("{not json"));
        QCOMPARE(application().loadTemplateText(), QString());
        m_defaults.setValue(AlarmMessageTemplateDatabase::key, QByteArray(R"({"amtText":7})"));
        QCOMPARE(application().message(QStringLiteral("Demo"), fallback), fallback);
    }
};

TOLVANE_TEST_MAIN(AlarmMessageTemplateTest)
#include "AlarmMessageTemplateTest.moc"
